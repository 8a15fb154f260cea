// SPDX-License-Identifier: MIT
#include "support/StandardReading.h"

#include <espalier/io/Exception.h>
#include <espalier/xml/XmlTextReader.h>

#include "support/DocumentStream.h"
#include "support/EscapedText.h"

#include <gtest/gtest.h>

#include <array>
#include <optional>

namespace support {
namespace {

using Xml::XmlNodeType;
using Xml::XmlTextReader;

std::string NameOf(const XmlTextReader& reader) {
    if (reader.NamespaceURI().empty()) return Escape(reader.Name());
    return "{" + Escape(reader.NamespaceURI()) + "}" + Escape(reader.LocalName());
}

void AddElement(XmlTextReader& reader, std::string& nodes) {
    const bool isEmpty = reader.IsEmptyElement();
    nodes += "<" + NameOf(reader);
    for (bool more = reader.MoveToFirstAttribute(); more; more = reader.MoveToNextAttribute()) {
        nodes += " " + NameOf(reader) + "=\"" + Escape(reader.Value()) + "\"";
    }
    reader.MoveToElement();
    nodes += isEmpty ? "/>" : ">";
}

void AddNode(XmlTextReader& reader, std::string& nodes) {
    switch (reader.NodeType()) {
    case XmlNodeType::Element: AddElement(reader, nodes); break;
    case XmlNodeType::EndElement: nodes += "</" + NameOf(reader) + ">"; break;
    case XmlNodeType::Text:
    case XmlNodeType::CDATA:
    case XmlNodeType::SignificantWhitespace: nodes += Escape(reader.Value()); break;
    case XmlNodeType::Whitespace:
        if (reader.Depth() > 1) nodes += Escape(reader.Value());
        break;
    case XmlNodeType::Comment: nodes += "<!--" + Escape(reader.Value()) + "-->"; break;
    case XmlNodeType::ProcessingInstruction:
        nodes += "<?" + Escape(reader.Name()) + " " + Escape(reader.Value()) + "?>";
        break;
    case XmlNodeType::EntityReference: nodes += "&" + Escape(reader.Name()) + ";"; break;
    default: break;
    }
}

void ExpectSameReading(const StandardReading& reading, const StandardReading& first) {
    EXPECT_EQ(reading.nodes, first.nodes);
    EXPECT_EQ(reading.message, first.message);
    EXPECT_EQ(reading.line, first.line);
    EXPECT_EQ(reading.column, first.column);
}

bool IsTried(const DocumentForm& form, Forms forms) {
    using Unit = DocumentForm::Unit;
    if (form.unit == Unit::Utf8) return forms == Forms::All || !form.mark;
    const bool isUtf16 = form.unit == Unit::Utf16LE || form.unit == Unit::Utf16BE;
    return forms == Forms::All && isUtf16 && form.mark;  // without a mark it must be declared
}

}  // namespace

StandardReading ReadByStandard(std::string_view bytes, const StandardOptions& settings,
                               int bytesPerRead) {
    StandardReading reading;
    DocumentStream stream(bytes, bytesPerRead);
    XmlTextReader reader;
    reader.SetConformance(Xml::XmlConformance::Standard);
    reader.SetNamespaces(settings.namespaces);
    reader.SetEntityHandling(settings.entities);
    reader.SetStream(stream.get(), false);
    try {
        while (reader.Read())
            AddNode(reader, reading.nodes);
    } catch (const Xml::Exception& error) {
        reading.message = error.What();
        EXPECT_NE(reading.message, "");
        reading.line = error.LineNumber();
        reading.column = error.LinePos();
    }
    return reading;
}

StandardReading ReadInForms(const std::string& document, const StandardOptions& settings,
                            Forms forms) {
    const StandardReading first = ReadByStandard(document, settings);
    int runs = 0;
    for (const DocumentForm& form : AllDocumentForms()) {
        if (!IsTried(form, forms)) continue;
        const std::optional<std::string> bytes = WriteInForm(document, form);
        if (!bytes) continue;
        for (const int bytesPerRead : std::array{0, 1, 3}) {
            SCOPED_TRACE(std::string(form.name) +
                         ", bytes per read: " + std::to_string(bytesPerRead));
            ExpectSameReading(ReadByStandard(*bytes, settings, bytesPerRead), first);
            ++runs;
        }
    }
    EXPECT_GE(runs, 3);
    return first;
}

void ExpectAccepted(std::initializer_list<AcceptedDocument> documents,
                    const StandardOptions& settings, Forms forms) {
    for (const AcceptedDocument& document : documents) {
        SCOPED_TRACE(document.input);
        const StandardReading reading = ReadInForms(Unescape(document.input), settings, forms);
        EXPECT_EQ(reading.message, "") << reading.line << ":" << reading.column;
        EXPECT_EQ(reading.nodes, document.nodes);
    }
}

void ExpectRefused(std::initializer_list<RefusedDocument> documents,
                   const StandardOptions& settings, Forms forms) {
    for (const RefusedDocument& document : documents) {
        SCOPED_TRACE(std::string(document.input) + "  (" + document.reason + ")");
        const StandardReading reading = ReadInForms(Unescape(document.input), settings, forms);
        if (reading.message.empty()) {
            ADD_FAILURE() << "is accepted as " << reading.nodes;
            continue;
        }
        SCOPED_TRACE(reading.message);
        EXPECT_EQ(reading.line, document.line);
        if (document.column != RefusedDocument::kAny) {
            EXPECT_EQ(reading.column, document.column);
        }
    }
}

}  // namespace support
