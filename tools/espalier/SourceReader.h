// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/io/Stream.h>
#include <espalier/xml/XmlNodeType.h>
#include <espalier/xml/XmlTextReader.h>

#include "Ampersands.h"
#include "Document.h"

#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace Tool {

/// An attribute as it is written.
struct SourceAttribute {
    std::string name;
    std::string value;  ///< between its quotation marks, references included
    Place place;        ///< see SourceNode
};

/// A node as it is written: texts and values with their references and line breaks. There are no
/// EntityReference nodes, since references are part of texts.
struct SourceNode {
    Xml::XmlNodeType type;
    std::string name;
    std::string value;
    std::vector<SourceAttribute> attributes;
    bool isEmpty = false;  ///< of an element: it is an empty-element tag
    Place place;           ///< as ColumnCount::Escaped, where such places have been asked for
};

/// Tells whether a node is white space between markup.
inline bool IsBlank(const SourceNode& node) {
    return node.type == Xml::XmlNodeType::Whitespace ||
           node.type == Xml::XmlNodeType::SignificantWhitespace;
}

/// Tells whether a node is text, which makes the element around it mixed.
inline bool IsText(const SourceNode& node) {
    return node.type == Xml::XmlNodeType::Text || node.type == Xml::XmlNodeType::CDATA;
}

/// Thrown for what the standard allows, but not the reader that tells how it is written.
class UnreadableSource : public std::runtime_error {
public:
    UnreadableSource(const std::string& message, Place where)
        : std::runtime_error(message), where_(where) {}

    /// Returns where it is, as ColumnCount::Escaped.
    Place Where() const { return where_; }

private:
    Place where_;
};

/// Reads a document for the sake of how it is written.
///
/// Two readers go through it. One is the Document's, which finds what is wrong; its nodes are not
/// looked at. The other one comes behind it, is given every "&" as "&amp;", and thus tells texts as
/// they are written. It is only given what the first has found to be in order, so what goes wrong
/// does so in the Document, and is thrown by it. The second one always judges by its own rules, as
/// by the standard it would normalize what it reads; a document that is judged by the standard has
/// to please both.
class SourceReader {
public:
    /// \param document not owned; must not have been read
    explicit SourceReader(Document& document) : document_(document) {}

    /// Takes what the document is read from; to be called by what observes it.
    void Take(std::string_view bytes);

    /// Begins to read.
    /// \throws Xml::Exception for an error in the document, as Next() does
    void Start();

    /// Returns the first bytes of the document, up to four.
    std::string_view Head() const { return head_; }

    /// Says that nodes are to have places.
    void TellPlaces() { tellsPlaces_ = true; }

    /// Reads the next node.
    /// \return false at the end
    /// \throws Xml::Exception for an error in the document; UnreadableSource
    bool Next(SourceNode& node);

private:
    // What the second reader reads from.
    class Feed final : public IO::Stream {
    public:
        explicit Feed(SourceReader& source) : source_(source) {}

        bool CanRead() const override { return true; }
        void Close() override {}
        int Read(unsigned char* buffer, int offset, int count) override;

    private:
        SourceReader& source_;
    };

    bool ReadAsWritten();
    bool Approve();
    Place CurrentPlace() const;
    void ReadAttributes(SourceNode& node);

    Document& document_;
    Feed feed_{*this};
    Xml::XmlTextReader reader_;
    std::string head_;
    std::string first_;                        // what came before the form was known
    std::optional<AmpersandEscaper> escaper_;  // null until then
    std::string unapproved_;                   // escaped, but the first reader is still in it
    std::string waiting_;                      // for the second reader
    std::size_t taken_ = 0;                    // bytes of it that it has
    bool tellsPlaces_ = false;
    bool hasFailed_ = false;  // the first reader has
};

}  // namespace Tool
