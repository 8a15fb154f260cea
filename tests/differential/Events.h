// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// \file
/// What a parser tells about a document, in one form for all parsers: one line an event.
///
///     start {urn:x}a {}x="1" {urn:y}y="2"
///     text "one\ntwo"
///     end {urn:x}a
///     comment "c"
///     instruction target "data"
///
/// Texts are joined across CDATA sections, references and the ends of entities; attributes are
/// sorted, and declarations of namespaces and attributes that the document type supplies left out;
/// what stands in the document type is left out, and so is white space outside the root element.
/// Line ends and blanks are made alike.
///
/// With Detail::Exact nothing is sorted, left out of a tag or made alike: a start tells
/// declarations of namespaces (`xmlns:p="urn:x"`), attributes of the tag, and those that the
/// document type supplies. A reference to an entity that is not read is a line `reference`.
namespace differential {

/// Says how much of a document is compared.
enum class Detail {
    Whole,
    Structure,  ///< local names only: no texts, no values of attributes, no namespaces
    Exact       ///< every character, in the order in which it is told
};

/// Collects events.
class EventList {
public:
    using Attributes = std::vector<std::pair<std::string, std::string>>;  ///< name, value

    explicit EventList(Detail detail) : detail_(detail) {}

    void Start(const std::string& name, Attributes attributes);
    void End(const std::string& name);
    void Text(std::string_view text);  ///< joined with the texts before it
    void Comment(std::string_view text);
    void Instruction(std::string_view target, std::string_view data);
    void Reference();  ///< to an entity that is not read

    /// Tells whether an element has begun.
    bool HasStarted() const { return hasStarted_; }

    /// Returns the lines, after the last event.
    const std::vector<std::string>& Lines();

private:
    void FlushText();
    std::string Shown(const std::string& name) const;
    std::string Quoted(std::string_view text) const;

    Detail detail_;
    std::vector<std::string> lines_;
    std::string text_;  // not yet a line
    int depth_ = 0;     // number of open elements
    bool hasStarted_ = false;
};

/// Says whether names are split and resolved.
enum class Names { Qualified, Plain };

/// Returns the name with its namespace.
std::string ExpandedName(std::string_view uri, std::string_view localName);

/// What a parser made of a document: the events, or why it refused it.
struct Reading {
    std::vector<std::string> lines;
    std::string error;              ///< "" when it was read to the end
    int errorCode = 0;              ///< expat's number of the error
    std::size_t errorOffset = 0;    ///< told by expat: the byte at which it found the error
    bool failedBeforeRoot = false;  ///< told by expat: the error stands before the root element
    bool hasMarkupEntity = false;   ///< told by expat: the document declares an entity with a tag
    bool hasSkippedEntity =
        false;  ///< told by expat: it refers to one declared elsewhere, if at all
    bool hasMissedParameter = false;  ///< told by expat: a parameter entity was not read
};

/// Reads with the reader: entities are expanded, or for Detail::Structure kept as they are
/// written. The error is the message, with its place in front.
Reading ReadWithReader(const std::string& document, Detail detail);

/// Reads with the reader, entity by entity: each reference that it reports is resolved, those in
/// attributes too.
Reading ReadByResolving(const std::string& document);

/// Reads with the reader, with all entities expanded and nothing normalized.
Reading ReadUnnormalized(const std::string& document);

/// Reads with XMLReader, normalizing. Comments are not reported, so texts around them are one.
Reading ReadWithEvents(const std::string& document);

/// Returns what a reading tells without its comments.
Reading WithoutComments(Reading reading);

/// Reads with the reader in standard mode, all entities expanded. For Detail::Whole and ::Exact.
Reading ReadByStandard(const std::string& document, Detail detail, Names names = Names::Qualified);

/// Reads with expat. For Detail::Exact internal parameter entities are expanded.
Reading ReadWithExpat(const std::string& document, Detail detail, Names names = Names::Qualified);

/// Reads with libxml2. External entities stand for nothing, and what is wrong with namespaces is
/// an error, too.
Reading ReadWithLibxml(const std::string& document, Detail detail);

}  // namespace differential
