// SPDX-License-Identifier: MIT
#include "support/NodeDump.h"

#include <espalier/io/Exception.h>

#include "support/DocumentStream.h"
#include "support/EscapedText.h"

#include <gtest/gtest.h>

#include <vector>

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

std::string DumpAttributes(XmlTextReader& reader) {
    const int count = reader.AttributeCount();
    const std::string element = reader.Name().str();
    std::string out;
    int index = 0;
    for (bool more = reader.MoveToFirstAttribute(); more; more = reader.MoveToNextAttribute()) {
        EXPECT_EQ(reader.AttributeCount(), count);
        out += DumpAttribute(reader, index++);
    }
    EXPECT_EQ(index, count);
    EXPECT_EQ(reader.MoveToElement(), count > 0);
    EXPECT_EQ(reader.NodeType(), XmlNodeType::Element);
    EXPECT_EQ(reader.Name(), element);
    return out;
}

std::string DumpPseudoAttributes(XmlTextReader& reader) {
    std::string out;
    int index = 0;
    for (const char* name : {"version", "encoding", "standalone"}) {
        const std::string value = reader.GetAttribute(name).str();
        if (value.empty()) continue;
        EXPECT_EQ(reader.GetAttribute(index++), value);
        out += std::string("  Pseudo ") + name + "=\"" + Escape(value) + "\"\n";
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

}  // namespace

std::string DumpNode(XmlTextReader& reader) {
    ExpectConsistentNode(reader);
    const XmlNodeType type = reader.NodeType();
    const bool isTag = type == XmlNodeType::Element || type == XmlNodeType::EndElement;
    std::string out = type.ToString();
    if (!reader.Name().empty()) out += " " + Escape(reader.Name());
    if (isTag) out += NameParts(reader);
    if (reader.HasValue() && type != XmlNodeType::DocumentType) {
        out += " \"" + Escape(reader.Value()) + "\"";
    }
    out += " depth=" + std::to_string(reader.Depth());
    if (reader.IsEmptyElement()) out += " empty";
    out += Scope(reader) + Place(reader) + "\n";
    if (type == XmlNodeType::Element) out += DumpAttributes(reader);
    if (type == XmlNodeType::XmlDeclaration) out += DumpPseudoAttributes(reader);
    return out;
}

std::string DumpNodes(XmlTextReader& reader) {
    std::string out;
    try {
        while (reader.Read())
            out += DumpNode(reader);
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
    return DumpNodes(reader);
}

}  // namespace support
