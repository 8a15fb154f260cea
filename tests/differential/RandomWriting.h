// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/xml/XmlTextWriter.h>

#include "Events.h"

#include <cstddef>
#include <initializer_list>
#include <map>
#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace differential {

/// Writes random documents with a writer, call by call, and knows the events that they have; the
/// same row of documents for the same seed.
///
/// The calls are those that make a well-formed document: no end tags of WriteFullEndElement(), no
/// "--" in a comment. All names and texts are in ASCII or, if `isWide`, in all of Unicode.
class RandomWriting {
public:
    explicit RandomWriting(unsigned seed) : random_(seed) {}

    /// Writes a document and closes the writer, which is new and has settings of its own choice.
    void Write(Xml::XmlTextWriter& writer, bool isWide);

    /// The same with line breaks and indentation, which the events do not tell of: texts of nothing
    /// but white space.
    void WriteIndented(Xml::XmlTextWriter& writer, bool isWide);

    /// Returns the events for who normalizes line ends and values as XML 1.0 asks for.
    const std::vector<std::string>& StandardLines() { return standard_.Lines(); }

    /// Returns the events for who takes line ends as they are.
    const std::vector<std::string>& PlainLines() { return plain_.Lines(); }

    /// Returns a number below `limit`.
    std::size_t Below(std::size_t limit) {
        return std::uniform_int_distribution<std::size_t>(0, limit - 1)(random_);
    }

private:
    /// A text as the two kinds of readers tell it.
    struct Told {
        std::string plain;
        std::string standard;

        void Add(const Told& other) {
            plain += other.plain;
            standard += other.standard;
        }
    };
    struct Scope {
        std::string defaultNs;
        std::map<std::string, std::string> prefixes;  ///< to namespaces
    };
    struct Attribute {
        std::string name;
        Told value;
    };

    void ChooseSettings();
    void Misc();
    void Element(int depth, bool isLeftOpen);
    std::string StartElement();
    void Attributes(std::vector<Attribute>& attributes);
    std::string StartAttribute(int index);
    Told AttributeValue();
    void Content(int depth);
    void OneContent(int depth);
    void Simple();
    void Comment();
    void Instruction();
    void Text(const Told& told);
    void Whole(const std::string& name, const Told& told);

    Told InContent(std::string_view text) const;
    Told InValue(std::string_view text) const;
    static Told AsWritten(std::string_view text);

    bool IsBound(const std::string& uri) const;
    std::string Uri();
    std::string Name();
    std::string Words(std::string_view forbidden);
    std::string OneOf(std::initializer_list<std::string_view> choices) {
        return std::string(choices.begin()[Below(choices.size())]);
    }

    std::mt19937 random_;
    Xml::XmlTextWriter* writer_ = nullptr;  // not owned
    bool isWide_ = false;
    bool hasEntity_ = false;
    Xml::NewLineHandling::NEWLINE_HANDLING handling_ = Xml::NewLineHandling::Replace;
    std::string newLine_;
    std::vector<Scope> scopes_;
    EventList plain_{Detail::Whole};
    EventList standard_{Detail::Whole};
};

}  // namespace differential
