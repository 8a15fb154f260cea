// SPDX-License-Identifier: MIT
#include "support/NodeDump.h"

#include <espalier/io/Exception.h>

#include "support/DocumentStream.h"
#include "support/EscapedText.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace support {
namespace {

using Xml::XmlNodeType;
using Xml::XmlSpace;
using Xml::XmlTextReader;

bool TypeHasValue(XmlNodeType type) {
    switch (type) {
    case XmlNodeType::Attribute:
    case XmlNodeType::Text:
    case XmlNodeType::CDATA:
    case XmlNodeType::ProcessingInstruction:
    case XmlNodeType::Comment:
    case XmlNodeType::DocumentType:
    case XmlNodeType::XmlDeclaration:
    case XmlNodeType::SignificantWhitespace:
    case XmlNodeType::Whitespace: return true;
    default: return false;
    }
}

bool TypeHasAttributes(XmlNodeType type) {
    return type == XmlNodeType::Element || type == XmlNodeType::Attribute ||
           type == XmlNodeType::DocumentType || type == XmlNodeType::XmlDeclaration;
}

// What must hold on every node that is not an attribute, whatever the document.
void ExpectConsistentNode(XmlTextReader& reader) {
    const XmlNodeType type = reader.NodeType();
    EXPECT_EQ(reader.ReadState(), XmlTextReader::Interactive);
    EXPECT_FALSE(reader.Eof());
    EXPECT_EQ(reader.HasValue(), TypeHasValue(type)) << type.ToString();
    if (!reader.HasValue()) {
        EXPECT_EQ(reader.Value(), "") << type.ToString();
    }
    if (type != XmlNodeType::Element) {
        EXPECT_FALSE(reader.IsEmptyElement()) << type.ToString();
    }
    EXPECT_EQ(reader.QuoteChar(), '"') << type.ToString();
    EXPECT_EQ(reader.HasAttributes(), reader.AttributeCount() > 0);
    EXPECT_EQ(reader.GetAttribute(-1), "");
    EXPECT_EQ(reader.GetAttribute(reader.AttributeCount()), "");
    EXPECT_FALSE(reader.MoveToElement()) << type.ToString();
    EXPECT_FALSE(reader.MoveToNextAttribute()) << type.ToString();
    if (!TypeHasAttributes(type)) {
        EXPECT_EQ(reader.AttributeCount(), 0) << type.ToString();
    }
    if (type != XmlNodeType::Element) {
        EXPECT_FALSE(reader.MoveToFirstAttribute());
    }
    EXPECT_EQ(reader.NodeType(), type);
}

std::string Place(const XmlTextReader& reader) {
    return " @" + std::to_string(reader.LineNumber()) + ":" + std::to_string(reader.LinePosition());
}

std::string NameParts(const XmlTextReader& reader) {
    std::string out;
    if (!reader.Prefix().empty()) out += " prefix=" + Escape(reader.Prefix());
    if (reader.LocalName() != reader.Name()) out += " local=" + Escape(reader.LocalName());
    if (!reader.NamespaceURI().empty()) out += " ns=" + Escape(reader.NamespaceURI());
    return out;
}

std::string Scope(const XmlTextReader& reader) {
    std::string out;
    if (!reader.XmlLang().empty()) out += " lang=" + Escape(reader.XmlLang());
    const XmlSpace space = reader.GetXmlSpace();
    if (space != XmlSpace::SpaceNone) out += std::string(" space=") + space.ToString();
    return out;
}

// The current part of a value: it stands inside the element, at the element's place.
std::string DumpPart(XmlTextReader& reader, int depth, const std::string& elementPlace) {
    const XmlNodeType type = reader.NodeType();
    EXPECT_EQ(reader.Depth(), depth) << type.ToString();
    EXPECT_EQ(Place(reader), elementPlace) << type.ToString();
    EXPECT_EQ(reader.AttributeCount(), 0) << type.ToString();
    EXPECT_EQ(reader.HasValue(), TypeHasValue(type)) << type.ToString();
    std::string out = std::string("    Part ") + type.ToString();
    if (!reader.Name().empty()) out += " " + Escape(reader.Name());
    if (reader.HasValue()) out += " \"" + Escape(reader.Value()) + "\"";
    return out + "\n";
}

void AppendParts(std::string& out, XmlTextReader& reader, const std::string& elementPlace,
                 bool resolve) {
    const std::string name = reader.Name().str();
    const std::string value = reader.Value().str();
    const int depth = reader.Depth();
    while (reader.ReadAttributeValue()) {
        out += DumpPart(reader, depth, elementPlace);
        EXPECT_EQ(reader.GetAttribute(name), value);
        if (resolve && reader.NodeType() == XmlNodeType::EntityReference) reader.ResolveEntity();
    }
    EXPECT_EQ(reader.NodeType(), XmlNodeType::Attribute);
    EXPECT_EQ(reader.Name(), name);
    EXPECT_EQ(reader.Value(), value);
}

std::string DumpAttribute(XmlTextReader& reader, int index) {
    EXPECT_EQ(reader.NodeType(), XmlNodeType::Attribute);
    EXPECT_EQ(reader.GetCurrentAttributeIndex(), index);
    EXPECT_TRUE(reader.HasValue());
    EXPECT_FALSE(reader.IsEmptyElement());
    EXPECT_EQ(reader.GetAttribute(index), reader.Value());
    EXPECT_EQ(reader.GetAttribute(reader.Name().view()), reader.Value());
    if (!reader.NamespaceURI().empty()) {
        EXPECT_EQ(reader.GetAttribute(reader.LocalName().view(), reader.NamespaceURI().view()),
                  reader.Value());
    }
    std::string out = "  Attribute " + Escape(reader.Name()) + "=";
    out += reader.QuoteChar() + Escape(reader.Value()) + reader.QuoteChar();
    return out + NameParts(reader) + " depth=" + std::to_string(reader.Depth()) + Place(reader) +
           "\n";
}

void AppendAttributes(std::string& out, XmlTextReader& reader, const ReaderSettings& settings) {
    const int count = reader.AttributeCount();
    const std::string element = reader.Name().str();
    const std::string elementPlace = Place(reader);
    int index = 0;
    for (bool more = reader.MoveToFirstAttribute(); more; more = reader.MoveToNextAttribute()) {
        EXPECT_EQ(reader.AttributeCount(), count);
        out += DumpAttribute(reader, index++);
        if (settings.parts) AppendParts(out, reader, elementPlace, settings.resolve);
    }
    EXPECT_EQ(index, count);
    EXPECT_EQ(reader.MoveToElement(), count > 0);
    EXPECT_EQ(reader.NodeType(), XmlNodeType::Element);
    EXPECT_EQ(reader.Name(), element);
}

std::string DumpPseudoAttributes(XmlTextReader& reader) {
    std::string out;
    int index = 0;
    for (const Xml::XmlAttributeRef attribute : reader.Attributes()) {
        EXPECT_EQ(reader.GetAttribute(index++), attribute.Value());
        EXPECT_EQ(reader.GetAttribute(attribute.Name().view()), attribute.Value());
        out += "  Pseudo " + Escape(attribute.Name()) + "=\"" + Escape(attribute.Value()) + "\"\n";
    }
    EXPECT_EQ(reader.AttributeCount(), index);
    return out;
}

std::string DumpError(const Xml::Exception& error) {
    std::string out = "error " + std::to_string(error.LineNumber()) + ":" +
                      std::to_string(error.LinePos()) + " " + Escape(error.What());
    if (*error.Argument() != '\0') out += " [" + Escape(error.Argument()) + "]";
    return out + "\n";
}

// Appends what has been found out even where a part of the node cannot be read.
void AppendNode(std::string& out, XmlTextReader& reader, const ReaderSettings& settings) {
    ExpectConsistentNode(reader);
    const XmlNodeType type = reader.NodeType();
    const bool isTag = type == XmlNodeType::Element || type == XmlNodeType::EndElement;
    out += type.ToString();
    if (!reader.Name().empty()) out += " " + Escape(reader.Name());
    if (isTag) out += NameParts(reader);
    if (reader.HasValue()) out += " \"" + Escape(reader.Value()) + "\"";
    out += " depth=" + std::to_string(reader.Depth());
    if (reader.IsEmptyElement()) out += " empty";
    out += Scope(reader) + Place(reader) + "\n";
    if (type == XmlNodeType::Element) {
        AppendAttributes(out, reader, settings);
    } else if (TypeHasAttributes(type)) {
        out += DumpPseudoAttributes(reader);
    }
}

}  // namespace

std::string DumpNode(XmlTextReader& reader) {
    std::string out;
    AppendNode(out, reader, {});
    return out;
}

std::string DumpNodes(XmlTextReader& reader, const ReaderSettings& settings) {
    std::string out;
    try {
        while (reader.Read()) {
            AppendNode(out, reader, settings);
            if (settings.resolve && reader.NodeType() == XmlNodeType::EntityReference) {
                reader.ResolveEntity();
            }
        }
    } catch (const Xml::Exception& error) {
        EXPECT_EQ(reader.ReadState(), XmlTextReader::Error);
        EXPECT_FALSE(reader.Read());
        EXPECT_EQ(reader.ReadState(), XmlTextReader::Error);
        return out + DumpError(error);
    }
    EXPECT_TRUE(reader.Eof());
    EXPECT_EQ(reader.ReadState(), XmlTextReader::EndOfFile);
    EXPECT_FALSE(reader.Read());
    EXPECT_EQ(reader.ReadState(), XmlTextReader::EndOfFile);
    return out;
}

std::string DumpDocument(std::string_view bytes, const ReaderSettings& settings, int bytesPerRead) {
    DocumentStream stream(bytes, bytesPerRead);
    XmlTextReader reader;
    EXPECT_TRUE(reader.SetStream(stream.get(), false));
    settings.ApplyTo(reader);
    return DumpNodes(reader, settings);
}

}  // namespace support
