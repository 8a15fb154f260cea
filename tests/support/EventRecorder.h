// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/sax/Attributes.h>
#include <espalier/sax/Locator.h>
#include <espalier/sax/SAXParseException.h>
#include <espalier/sax/XMLReader.h>
#include <espalier/sax/helpers/DefaultHandler.h>

#include "support/EscapedText.h"

#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace support {

/// Thrown by a recorder that was told to throw.
struct RecorderError {
    int event;  ///< the number of the event, from 1 on
};

/// Writes down each call as a line.
///
///     locator
///     document
///     start a
///     start {urn:x}b p:b x="1" {urn:x}y p:y="2"
///     text "one\ntwo"
///     blank " "
///     end {urn:x}b p:b
///     instruction target "data"
///     notation n "public" "system"
///     unparsed e "public" "system" n
///     fatal "message" @1:2
///     end document
///
/// A name without a namespace, and with nothing in front of its local part, is written once.
class EventRecorder : public sax::helpers::DefaultHandler {
public:
    using Lines = std::vector<std::string>;

    /// Calls a function after each line.
    std::function<void(const std::string& line)> onEvent;

    /// The number of the event that throws a RecorderError, from 1 on; 0 for none.
    int throwAt = 0;

    const Lines& lines() const { return lines_; }
    const sax::Locator* locator() const { return locator_; }

    Lines TakeLines() { return std::exchange(lines_, {}); }

    /// Has a reader call this object for everything.
    void Attach(sax::XMLReader& reader) {
        reader.setContentHandler(this);
        reader.setDTDHandler(this);
        reader.setErrorHandler(this);
        reader.setEntityResolver(this);
    }

    sax::InputSource* resolveEntity(const char*, const char* systemId) override {
        Add("resolve " + Quoted(systemId));
        return nullptr;
    }
    void notationDecl(const char* name, const char* publicId, const char* systemId) override {
        Add("notation " + std::string(name) + " " + Quoted(publicId) + " " + Quoted(systemId));
    }
    void unparsedEntityDecl(const char* name, const char* publicId, const char* systemId,
                            const char* notationName) override {
        Add("unparsed " + std::string(name) + " " + Quoted(publicId) + " " + Quoted(systemId) +
            " " + notationName);
    }
    void setDocumentLocator(const sax::Locator* locator) override {
        locator_ = locator;
        Add("locator");
    }
    void startDocument() override { Add("document"); }
    void endDocument() override { Add("end document"); }
    void startPrefixMapping(const char* prefix, const char* uri) override {
        Add("prefix " + std::string(prefix) + " " + Quoted(uri));
    }
    void endPrefixMapping(const char* prefix) override { Add("end prefix " + std::string(prefix)); }
    void startElement(const char* uri, const char* localName, const char* qName,
                      const sax::Attributes& attributes) override {
        Add("start " + Name(uri, localName, qName) + Shown(attributes));
    }
    void endElement(const char* uri, const char* localName, const char* qName) override {
        Add("end " + Name(uri, localName, qName));
    }
    void characters(const char* text, int start, int length) override {
        Add("text " + Quoted(Part(text, start, length)));
    }
    void ignorableWhitespace(const char* text, int start, int length) override {
        Add("blank " + Quoted(Part(text, start, length)));
    }
    void processingInstruction(const char* target, const char* data) override {
        Add("instruction " + std::string(target) + " " + Quoted(data));
    }
    void skippedEntity(const char* name) override { Add("skipped " + std::string(name)); }
    void warning(const sax::SAXParseException& exception) override {
        AddError("warning", exception);
    }
    void error(const sax::SAXParseException& exception) override { AddError("error", exception); }
    void fatalError(const sax::SAXParseException& exception) override {
        AddError("fatal", exception);
    }

    /// Returns all attributes as they stand in a line, each with a blank in front.
    static std::string Shown(const sax::Attributes& attributes) {
        std::string text;
        for (int i = 0; i < attributes.getLength(); ++i) {
            text += " " +
                    Name(attributes.getURI(i), attributes.getLocalName(i), attributes.getQName(i)) +
                    "=" + Quoted(attributes.getValue(i));
            if (std::string_view(attributes.getType(i)) != "CDATA") {
                text += std::string(" of the type ") + attributes.getType(i);
            }
        }
        return text;
    }

private:
    static std::string Quoted(std::string_view text) { return "\"" + Escape(text) + "\""; }

    static std::string Name(std::string_view uri, std::string_view localName,
                            std::string_view qName) {
        if (uri.empty() && localName == qName) return std::string(qName);
        return "{" + std::string(uri) + "}" + std::string(localName) + " " + std::string(qName);
    }

    static std::string_view Part(const char* text, int start, int length) {
        return {text + start, static_cast<std::size_t>(length)};
    }

    void AddError(const char* kind, const sax::SAXParseException& exception) {
        Add(std::string(kind) + " " + Quoted(exception.getMessage().view()) + " @" +
            std::to_string(exception.getLineNumber()) + ":" +
            std::to_string(exception.getColumnNumber()));
    }

    void Add(std::string line) {
        lines_.push_back(std::move(line));
        const int number = static_cast<int>(lines_.size());
        if (number == throwAt) throw RecorderError{number};
        // A copy: the function may put another in its place.
        if (const auto call = onEvent) call(lines_.back());
    }

    Lines lines_;
    const sax::Locator* locator_ = nullptr;
};

}  // namespace support
