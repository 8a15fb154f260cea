// SPDX-License-Identifier: MIT
#include "support/NodeCopy.h"

#include "support/EscapedText.h"

#include <string_view>
#include <utility>

namespace support {
namespace {

using Xml::XmlNodeType;
using Xml::XmlTextReader;
using Xml::XmlTextWriter;

bool IsText(XmlNodeType type) {
    return type == XmlNodeType::Text || type == XmlNodeType::Whitespace ||
           type == XmlNodeType::SignificantWhitespace;
}

// Whether the reader stands on white space outside the root element.
bool IsOutside(const XmlTextReader& reader) {
    return reader.NodeType() != XmlNodeType::Text && reader.Depth() == 1;
}

// Whether the element that the reader stands on declares its own prefix.
bool DeclaresItsPrefix(const XmlTextReader& reader) {
    for (const Xml::XmlAttributeRef attribute : reader.Attributes()) {
        if (attribute.Name().view() == "xmlns:" + reader.Prefix().str()) return true;
    }
    return false;
}

void CopyValue(XmlTextReader& reader, XmlTextWriter& writer) {
    while (reader.ReadAttributeValue()) {
        if (reader.NodeType() == XmlNodeType::EntityReference) {
            writer.WriteEntityRef(reader.Name());
        } else {
            writer.WriteString(reader.Value());
        }
    }
    writer.WriteEndAttribute();
}

void CopyElement(XmlTextReader& reader, XmlTextWriter& writer) {
    const bool isEmpty = reader.IsEmptyElement();
    // Declarations are written where they stand, so the namespace is given only to a prefix that
    // is declared on the element itself.
    if (reader.Prefix().empty()) {
        writer.WriteStartElement(reader.Name());
    } else if (DeclaresItsPrefix(reader)) {
        writer.WriteStartElement(reader.Prefix(), reader.LocalName(), reader.NamespaceURI());
    } else {
        writer.WriteStartElement(reader.Prefix(), reader.LocalName(), "");
    }
    for (bool more = reader.MoveToFirstAttribute(); more; more = reader.MoveToNextAttribute()) {
        if (reader.Prefix().empty()) {
            writer.WriteStartAttribute(reader.Name());
        } else {
            writer.WriteStartAttribute(reader.Prefix(), reader.LocalName(), reader.NamespaceURI());
        }
        CopyValue(reader, writer);
    }
    if (isEmpty) {
        writer.WriteEndElement();
    } else {
        writer.WriteString("");
    }
}

void CopyDocType(const XmlTextReader& reader, XmlTextWriter& writer) {
    const astring publicId = reader.GetAttribute("PUBLIC");
    const astring systemId = reader.GetAttribute("SYSTEM");
    const char quote = writer.GetQuoteChar();
    const bool isQuoted = publicId.view().find('"') != std::string_view::npos ||
                          systemId.view().find('"') != std::string_view::npos;
    if (isQuoted) writer.SetQuoteChar('\'');
    writer.WriteDocType(reader.Name(), publicId, systemId, reader.Value());
    writer.SetQuoteChar(quote);
}

void CopyDeclaration(const XmlTextReader& reader, XmlTextWriter& writer) {
    const astring& standalone = reader.GetAttribute("standalone");
    if (standalone.empty()) {
        writer.WriteStartDocument();
    } else {
        writer.WriteStartDocument(standalone == "yes");
    }
}

void CopyNode(XmlTextReader& reader, XmlTextWriter& writer) {
    switch (reader.NodeType()) {
    case XmlNodeType::Element: CopyElement(reader, writer); break;
    case XmlNodeType::EndElement: writer.WriteEndElement(); break;
    case XmlNodeType::Text: writer.WriteString(reader.Value()); break;
    case XmlNodeType::CDATA: writer.WriteCData(reader.Value()); break;
    case XmlNodeType::EntityReference: writer.WriteEntityRef(reader.Name()); break;
    case XmlNodeType::ProcessingInstruction:
        writer.WriteProcessingInstruction(reader.Name(), reader.Value());
        break;
    case XmlNodeType::Comment: writer.WriteComment(reader.Value()); break;
    case XmlNodeType::DocumentType: CopyDocType(reader, writer); break;
    case XmlNodeType::SignificantWhitespace:
    case XmlNodeType::Whitespace:
        if (!IsOutside(reader)) writer.WriteWhitespace(reader.Value());
        break;
    default: break;
    }
}

// The line of the node, and those of its attributes.
class NodeLines {
public:
    void Add(XmlTextReader& reader) {
        const XmlNodeType type = reader.NodeType();
        if (IsText(type)) {
            if (!IsOutside(reader)) text_ += reader.Value();
            return;
        }
        if (type == XmlNodeType::EndEntity) return;
        FlushText();
        if (type == XmlNodeType::XmlDeclaration) {
            const astring& standalone = reader.GetAttribute("standalone");
            if (!standalone.empty()) lines_.push_back("standalone " + standalone.str());
            return;
        }
        lines_.push_back(Line(reader) + (reader.IsEmptyElement() ? " empty" : ""));
        if (type == XmlNodeType::DocumentType) {
            for (const char* name : {"PUBLIC", "SYSTEM"})
                lines_.back() += " " + Escape(reader.GetAttribute(name));
        }
        if (type != XmlNodeType::Element) return;
        for (bool more = reader.MoveToFirstAttribute(); more; more = reader.MoveToNextAttribute())
            lines_.push_back("  " + Line(reader));
        reader.MoveToElement();
    }

    std::vector<std::string> Take() {
        FlushText();
        return std::move(lines_);
    }

private:
    static std::string Line(const XmlTextReader& reader) {
        std::string line = reader.NodeType().ToString();
        line += " {" + Escape(reader.NamespaceURI()) + "}" + Escape(reader.Name());
        if (reader.HasValue()) line += " \"" + Escape(reader.Value()) + "\"";
        line += " depth=" + std::to_string(reader.Depth()) + " " + reader.GetXmlSpace().ToString();
        return line + " " + Escape(reader.XmlLang());
    }

    void FlushText() {
        if (!text_.empty()) lines_.push_back("Text \"" + Escape(text_) + "\"");
        text_.clear();
    }

    std::vector<std::string> lines_;
    std::string text_;  // not yet a line
};

}  // namespace

void CopyNodes(XmlTextReader& reader, XmlTextWriter& writer, bool declares) {
    bool isFirst = true;
    while (reader.Read()) {
        if (reader.NodeType() == XmlNodeType::XmlDeclaration) {
            CopyDeclaration(reader, writer);
        } else if (isFirst && declares) {
            writer.WriteStartDocument();
        }
        isFirst = false;
        CopyNode(reader, writer);
    }
    writer.Close();
}

std::vector<std::string> TellNodes(XmlTextReader& reader) {
    NodeLines lines;
    while (reader.Read())
        lines.Add(reader);
    return lines.Take();
}

}  // namespace support
