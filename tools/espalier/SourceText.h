// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/encoding/Forward.h>

#include "MarkupTracker.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace Tool {

/// How the bytes of a document are to be read.
enum class SourceForm {
    Utf8,
    Latin1,
    CodePage,  ///< ASCII, and characters of one or two bytes above 0x7F
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

/// What becomes of bytes that cannot be decoded.
enum class BadBytes {
    Shown,  ///< U+FFFD, for people to see
    Kept    ///< a byte that is none in UTF-8, for a reader to refuse
};

/// Turns the bytes of a document into UTF-8, piece by piece. Never fails. A byte-order mark at the
/// start is dropped. UTF-8 itself is passed on as it is, but when it is to be shown, without such a
/// mark.
class SourceDecoder {
public:
    /// \param page the encoding of SourceForm::CodePage, not owned
    explicit SourceDecoder(SourceForm form, Xml::Encoding* page = nullptr,
                           BadBytes badBytes = BadBytes::Shown)
        : form_(form), page_(page), badBytes_(badBytes) {}

    /// Decodes `bytes`, which go on where the last ones ended.
    /// \return text that is valid until the next call
    std::string_view Decode(std::string_view bytes);

    /// Decodes what is left at the end of the document, which is cut.
    /// \return text that is valid until the next call
    std::string_view Finish();

private:
    void DecodeUnits(std::string_view bytes);
    void AppendUnit(char32_t unit);
    void DecodeLatin1(std::string_view bytes);
    void DecodePage(std::string_view bytes);
    bool DecodeRest();
    void AppendBad();

    SourceForm form_;
    Xml::Encoding* page_;
    BadBytes badBytes_;
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
