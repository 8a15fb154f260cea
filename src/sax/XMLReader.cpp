// SPDX-License-Identifier: MIT
#include <espalier/sax/InputSource.h>
#include <espalier/sax/SAXNotRecognizedException.h>
#include <espalier/sax/XMLReader.h>

#include "sax/Messages.h"
#include "sax/Parser.h"
#include "sax/ViewOf.h"

namespace sax {

namespace {

using detail::ViewOf;

[[noreturn]] void ThrowUnknownProperty(const char* name) {
    astring text(detail::Message::kPropertyNotRecognized);
    text += ViewOf(name);
    throw SAXNotRecognizedException(text);
}

}  // namespace

XMLReader::XMLReader() : parser_(std::make_unique<detail::Parser>()) {}

XMLReader::XMLReader(const XMLReader& other) : XMLReader() {
    parser_->settings = other.parser_->settings;
}

XMLReader& XMLReader::operator=(const XMLReader& other) {
    parser_->settings = other.parser_->settings;
    return *this;
}

XMLReader::~XMLReader() = default;

void XMLReader::setEntityResolver(EntityResolver* resolver) {
    parser_->settings.entityResolver = resolver;
}

EntityResolver* XMLReader::getEntityResolver() const { return parser_->settings.entityResolver; }

void XMLReader::setContentHandler(ContentHandler* handler) {
    parser_->settings.contentHandler = handler;
}

ContentHandler* XMLReader::getContentHandler() const { return parser_->settings.contentHandler; }

void XMLReader::setDTDHandler(DTDHandler* handler) { parser_->settings.dtdHandler = handler; }

DTDHandler* XMLReader::getDTDHandler() const { return parser_->settings.dtdHandler; }

void XMLReader::setErrorHandler(ErrorHandler* handler) { parser_->settings.errorHandler = handler; }

ErrorHandler* XMLReader::getErrorHandler() const { return parser_->settings.errorHandler; }

bool XMLReader::getFeature(const char* name) const { return parser_->GetFeature(ViewOf(name)); }

void XMLReader::setFeature(const char* name, bool value) {
    parser_->SetFeature(ViewOf(name), value);
}

void* XMLReader::getProperty(const char* name) const { ThrowUnknownProperty(name); }

void XMLReader::setProperty(const char* name, const void*) { ThrowUnknownProperty(name); }

void XMLReader::setReportReaderErrors(bool report) {
    parser_->settings.reportsReaderErrors = report;
}

bool XMLReader::getReportReaderErrors() const { return parser_->settings.reportsReaderErrors; }

void XMLReader::setEntityLimits(const Xml::XmlEntityLimits& limits) {
    parser_->settings.entityLimits = limits;
}

const Xml::XmlEntityLimits& XMLReader::getEntityLimits() const {
    return parser_->settings.entityLimits;
}

void XMLReader::parse(const InputSource& input) { parser_->Parse(input); }

void XMLReader::parse(const astring& systemId) { parse(InputSource(systemId)); }

void XMLReader::parse(const char* systemId) { parse(InputSource(systemId)); }

}  // namespace sax
