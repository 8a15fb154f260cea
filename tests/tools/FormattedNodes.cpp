// SPDX-License-Identifier: MIT
#include "tools/FormattedNodes.h"

#include <espalier/io/MemoryStream.h>
#include <espalier/xml/XmlTextReader.h>

#include <cstddef>
#include <memory>
#include <utility>

namespace {

using Type = Xml::XmlNodeType;

// An element of a document as a whole, which knows more than one who has to write it at once.
struct Element {
    std::size_t parent = 0;
    bool isMixed = false;
    bool preserves = false;
    std::size_t children = 0;  // white space included
};

struct Line {
    std::string text;
    std::size_t element = 0;  // in which it stands
    bool isText = false;
    bool isBlank = false;
};

std::string WithFeeds(std::string_view text) {
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool isPair = text.substr(i).starts_with("\r\n");
        result += text[i] == '\r' ? '\n' : text[i];
        if (isPair) ++i;
    }
    return result;
}

class NodeLister {
public:
    explicit NodeLister(Xml::XmlTextReader& reader) : reader_(reader), elements_(1) {}

    std::vector<std::string> List() {
        while (reader_.Read())
            Take();
        std::vector<std::string> lines;
        for (Line& line : lines_) {
            if (!line.isBlank || IsKept(line.element)) lines.push_back(std::move(line.text));
        }
        return lines;
    }

private:
    void Take() {
        switch (reader_.NodeType()) {
        case Type::EndElement:
            Add();
            inside_ = elements_[inside_].parent;
            return;
        case Type::Element: TakeElement(); return;
        case Type::XmlDeclaration:  // it may be added
            if (!reader_.GetAttribute("standalone").empty()) Add();
            return;
        case Type::Whitespace:
        case Type::SignificantWhitespace:
        case Type::Text: TakeText(WithFeeds(reader_.Value())); return;
        case Type::CDATA:
        case Type::EntityReference: elements_[inside_].isMixed = true; break;
        default: break;
        }
        ++elements_[inside_].children;
        Add();
    }

    void TakeElement() {
        ++elements_[inside_].children;
        Add();
        if (reader_.IsEmptyElement()) return;
        Element element;
        element.parent = inside_;
        element.preserves = elements_[inside_].preserves;
        const std::string space = reader_.GetAttribute("xml:space").str();
        if (!space.empty()) element.preserves = space == "preserve";
        elements_.push_back(element);
        inside_ = elements_.size() - 1;
    }

    // The reader may tell text in pieces, of white space and others.
    void TakeText(const std::string& text) {
        const bool isBlank = text.find_first_not_of(" \t\n") == std::string::npos;
        if (!isBlank) elements_[inside_].isMixed = true;
        if (lines_.empty() || !lines_.back().isText) {
            ++elements_[inside_].children;
            lines_.push_back({"Text ", inside_, true, true});
        }
        lines_.back().text += text;
        lines_.back().isBlank = lines_.back().isBlank && isBlank;
    }

    void Add() {
        std::string text(reader_.NodeType().ToString());
        text += " " + reader_.Name().str() + (reader_.IsEmptyElement() ? "/" : "");
        for (const Xml::XmlAttributeRef attribute : reader_.Attributes()) {
            if (attribute.Name() == "encoding") continue;
            text += " " + attribute.Name().str() + "=[" + WithFeeds(attribute.Value()) + "]";
        }
        const bool isDeclaration = reader_.NodeType() == Type::XmlDeclaration;
        if (!isDeclaration) text += " " + WithFeeds(reader_.Value());
        lines_.push_back({std::move(text), inside_});
    }

    bool IsKept(std::size_t element) const {
        if (element == 0) return false;
        const bool isAll = elements_[element].children == 1;
        if (isAll || elements_[element].preserves) return true;
        for (; element != 0; element = elements_[element].parent) {
            if (elements_[element].isMixed) return true;
        }
        return false;
    }

    Xml::XmlTextReader& reader_;
    std::vector<Element> elements_;  // the first is the document
    std::size_t inside_ = 0;
    std::vector<Line> lines_;
};

}  // namespace

std::vector<std::string> FormattedNodes(std::string_view document,
                                        Xml::XmlEntityHandling::XML_ENTITY_HANDLING handling) {
    IO::MemoryStream stream(reinterpret_cast<const unsigned char*>(document.data()),
                            static_cast<long>(document.size()));
    Xml::XmlTextReader reader;
    reader.SetStream(&stream, false);
    reader.SetEntityHandling(handling);
    return NodeLister(reader).List();
}
