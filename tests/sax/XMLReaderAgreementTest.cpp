// SPDX-License-Identifier: MIT
//
// The parser tells what somebody who drives a pull reader by hand would: for the golden cases of
// the reader, and for the samples.
#include <espalier/sax/Features.h>
#include <espalier/sax/XMLReader.h>
#include <espalier/sax/helpers/AttributesImpl.h>
#include <espalier/xml/XmlTextReader.h>

#include "sax/SaxParse.h"
#include "support/CaseFile.h"
#include "support/DocumentReader.h"
#include "support/EventRecorder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace {

using support::EventRecorder;
using support::ReaderSettings;
using Xml::XmlNodeType;
using Xml::XmlTextReader;
using Lines = std::vector<std::string>;

const char* LocalName(const XmlTextReader& reader) {
    return (reader.LocalName().empty() ? reader.Name() : reader.LocalName()).c_str();
}

std::string ValueOf(XmlTextReader& reader) {
    std::string value;
    while (reader.ReadAttributeValue()) {
        if (reader.NodeType() == XmlNodeType::Text) value += reader.Value().str();
        if (reader.NodeType() == XmlNodeType::EntityReference) reader.ResolveEntity();
    }
    return value;
}

void AddAttributes(XmlTextReader& reader, sax::helpers::AttributesImpl& attributes) {
    for (bool is = reader.MoveToFirstAttribute(); is; is = reader.MoveToNextAttribute()) {
        const std::string uri = reader.NamespaceURI().str();
        const std::string localName = LocalName(reader);
        const std::string qName = reader.Name().str();
        attributes.addAttribute(uri.c_str(), localName.c_str(), qName.c_str(), "CDATA",
                                ValueOf(reader).c_str());
    }
    reader.MoveToElement();
}

void TellElement(XmlTextReader& reader, sax::ContentHandler& handler) {
    sax::helpers::AttributesImpl attributes;
    AddAttributes(reader, attributes);
    const char* const uri = reader.NamespaceURI().c_str();
    handler.startElement(uri, LocalName(reader), reader.Name().c_str(), attributes);
    if (reader.IsEmptyElement()) handler.endElement(uri, LocalName(reader), reader.Name().c_str());
}

void TellNode(XmlTextReader& reader, sax::ContentHandler& handler) {
    const astring& value = reader.Value();
    const int length = static_cast<int>(value.length());
    switch (reader.NodeType()) {
    case XmlNodeType::Element: TellElement(reader, handler); break;
    case XmlNodeType::EndElement:
        handler.endElement(reader.NamespaceURI().c_str(), LocalName(reader), reader.Name().c_str());
        break;
    case XmlNodeType::Text:
    case XmlNodeType::CDATA:
    case XmlNodeType::SignificantWhitespace: handler.characters(value.c_str(), 0, length); break;
    case XmlNodeType::Whitespace: handler.ignorableWhitespace(value.c_str(), 0, length); break;
    case XmlNodeType::EntityReference: reader.ResolveEntity(); break;
    case XmlNodeType::ProcessingInstruction:
        handler.processingInstruction(reader.Name().c_str(), value.c_str());
        break;
    default: break;
    }
}

std::string At(int line, int column) {
    return " @" + std::to_string(line) + ":" + std::to_string(column);
}

// What is told about a document, each event with its place, and the error at its end.
Lines ToldByHand(const std::string& document, const ReaderSettings& settings) {
    support::DocumentReader reader(document, settings);
    Lines lines;
    EventRecorder recorder;
    recorder.onEvent = [&](const std::string& line) {
        lines.push_back(line + At(reader->LineNumber(), reader->LinePosition()));
    };
    const std::string thrown = support::WhatIsThrown([&] {
        while (reader->Read())
            TellNode(*reader, recorder);
    });
    lines.push_back(thrown);
    return lines;
}

Lines ToldByTheParser(const std::string& document, const ReaderSettings& settings) {
    sax::XMLReader parser;
    parser.setFeature(sax::features::kNamespaces, settings.namespaces);
    parser.setFeature(sax::features::kNormalization, settings.normalization);
    Lines lines;
    EventRecorder recorder;
    recorder.onEvent = [&](const std::string& line) {
        if (line == "locator" || line == "document" || line == "end document") return;
        const sax::Locator& locator = *recorder.locator();
        lines.push_back(line + At(locator.getLineNumber(), locator.getColumnNumber()));
    };
    parser.setContentHandler(&recorder);
    const std::string thrown = support::WhatIsThrown([&] { support::ParseText(parser, document); });
    lines.push_back(thrown);
    return lines;
}

void ExpectAgreement(const std::string& document, ReaderSettings settings) {
    settings.entities = Xml::XmlEntityHandling::ExpandCharEntities;
    settings.whitespace = XmlTextReader::WsAll;
    EXPECT_EQ(ToldByTheParser(document, settings), ToldByHand(document, settings));
}

TEST(XMLReaderAgreement, WithAReaderDrivenByHandOnItsCases) {
    int cases = 0;
    for (const auto& entry :
         std::filesystem::directory_iterator(std::string(ESPALIER_TEST_CASES) + "/reader")) {
        for (const auto& one : support::CaseFile::Load(entry.path().string()).cases) {
            SCOPED_TRACE(entry.path().string() + ":" + std::to_string(one.line));
            ExpectAgreement(one.Document(), one.Settings());
            ++cases;
        }
    }
    EXPECT_GT(cases, 300);
}

TEST(XMLReaderAgreement, WithAReaderDrivenByHandOnTheSamples) {
    int samples = 0;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(ESPALIER_SAMPLES)) {
        const std::string extension = entry.path().extension().string();
        if (extension != ".xml" && extension != ".svg" && extension != ".xhtml") continue;
        SCOPED_TRACE(entry.path().string());
        std::ifstream in(entry.path(), std::ios::binary);
        const std::string document(std::istreambuf_iterator<char>(in), {});
        for (const bool normalization : {false, true}) {
            for (const bool namespaces : {false, true}) {
                ReaderSettings settings;
                settings.normalization = normalization;
                settings.namespaces = namespaces;
                ExpectAgreement(document, settings);
            }
        }
        ++samples;
    }
    EXPECT_GT(samples, 7);
}

}  // namespace
