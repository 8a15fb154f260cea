// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/io/Exception.h>
#include <espalier/xml/XmlTextReader.h>

#include <cstddef>
#include <cstdlib>
#include <string>
#include <string_view>

/// \file
/// What a reader tells, in a form that can be compared, with what holds for every node.
namespace fuzz {

inline void Require(bool condition) {
    if (!condition) std::abort();
}

/// Returns the length of the character of UTF-8 that `text` starts with; 0 when it is none.
/// \param leastLead the first lead byte; C0 for the text of a Windows page, whose dashes and
///     quotation marks are overlong
inline std::size_t LengthOfCharacter(std::string_view text, unsigned leastLead) {
    const auto lead = static_cast<unsigned char>(text[0]);
    if (lead < 0x80) return 1;
    const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
    if (lead < leastLead || lead > 0xF4 || text.size() < length) return 0;
    unsigned code = lead & (0xFFU >> (length + 1));
    for (std::size_t i = 1; i < length; ++i) {
        const auto byte = static_cast<unsigned char>(text[i]);
        if ((byte & 0xC0U) != 0x80) return 0;
        code = code << 6 | (byte & 0x3FU);
    }
    const bool isShortest = length == 2 || (length == 3 ? code >= 0x800 : code >= 0x10000);
    const bool isSurrogate = code >= 0xD800 && code <= 0xDFFF;
    return isShortest && !isSurrogate && code <= 0x10FFFF ? length : 0;
}

inline bool IsUtf8(std::string_view text, unsigned leastLead = 0xC2) {
    while (!text.empty()) {
        const std::size_t length = LengthOfCharacter(text, leastLead);
        if (length == 0) return false;
        text.remove_prefix(length);
    }
    return true;
}

/// Collects what a reading tells.
class Story {
public:
    void Tell(std::string_view text) {
        Require(IsUtf8(text, leastLead_));
        text_ += text;
        text_ += '\x1F';
    }
    /// Says what the document is in.
    void SetEncoding(std::string_view name) {
        leastLead_ = name.starts_with("Windows-") ? 0xC0 : 0xC2;
    }

    void Tell(int number) { Tell(std::to_string(number)); }

    void TellError(const Xml::Exception& error) {
        Tell(error.What());
        Tell(error.Argument());
        Tell(error.LineNumber());
        Tell(error.LinePos());
    }

    /// Tells all properties of the node that the reader stands on.
    void TellNode(const Xml::XmlTextReader& reader) {
        SetEncoding(reader.Encoding());
        Tell(reader.NodeType());
        for (const astring* text : {&reader.Name(), &reader.LocalName(), &reader.Prefix(),
                                    &reader.NamespaceURI(), &reader.Value(), &reader.XmlLang()}) {
            Tell(*text);
        }
        Tell(reader.Depth());
        Tell(reader.LineNumber());
        Tell(reader.LinePosition());
        Tell(reader.IsEmptyElement());
        Tell(reader.QuoteChar());
        Tell(reader.GetXmlSpace());
        Tell(reader.AttributeCount());
        Tell(reader.LookupNamespace(reader.Prefix()));
        Require(reader.Depth() >= 1);
        Require(reader.LineNumber() >= 1 && reader.LinePosition() >= 1);
        Require(reader.HasValue() || reader.Value().empty());
        Require(reader.HasAttributes() == (reader.AttributeCount() > 0));
    }

    bool operator==(const Story& other) const { return text_ == other.text_; }

private:
    unsigned leastLead_ = 0xC2;
    std::string text_;
};

}  // namespace fuzz
