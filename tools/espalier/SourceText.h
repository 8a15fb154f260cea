// SPDX-License-Identifier: MIT
#pragma once

#include "MarkupTracker.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace Tool {

/// How the bytes of a document are to be read in order to show them.
enum class SourceForm {
    Utf8,
    Latin1,
    SingleByte,  ///< a byte is a character; above 0x7F it is not known which
    DoubleByte,  ///< two bytes above 0x7F are a character; it is not known which
    Utf16LE,
    Utf16BE,
    Ucs4LE,
    Ucs4BE
};

/// Returns the form of a document from its first bytes and the name of the encoding that the
/// reader found for it (empty: not known).
SourceForm DetectForm(std::string_view head, std::string_view encoding);

/// Returns how many bytes a "<" takes.
std::size_t UnitLength(SourceForm form);

/// Turns the bytes of a document into UTF-8, piece by piece, for people to read: never fails, and
/// shows what it cannot decode as U+FFFD. UTF-8 itself is passed on as it is. A byte-order mark at
/// the start is dropped.
class SourceDecoder {
public:
    explicit SourceDecoder(SourceForm form) : form_(form) {}

    /// Decodes `bytes`, which go on where the last ones ended.
    /// \return text that is valid until the next call
    std::string_view Decode(std::string_view bytes);

private:
    void DecodeUnits(std::string_view bytes);
    void AppendUnit(char32_t unit);
    void DecodeBytes(std::string_view bytes);

    SourceForm form_;
    bool atStart_ = true;     // nothing has been decoded yet
    std::string rest_;        // bytes of a unit that was cut
    char32_t surrogate_ = 0;  // first half of a pair that was cut
    std::string text_;        // what the last call returned
};

/// Text of a document from some place on, delivered in pieces of UTF-8.
class SourceText {
public:
    virtual ~SourceText() = default;

    /// Returns a tracker that stands at the start of the text.
    virtual const MarkupTracker& Start() const = 0;

    /// Returns the next piece, valid until the next call; empty at the end.
    virtual std::string_view Next() = 0;
};

}  // namespace Tool
