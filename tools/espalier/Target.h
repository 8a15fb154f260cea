// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/encoding/Encoding.h>

#include "SourceText.h"

#include <memory>
#include <string>
#include <string_view>

namespace Tool {

/// The encodings in which documents are written.
enum class TargetForm { Utf8, Utf16LE, Utf16BE, Ucs4LE, Ucs4BE, Latin1, Ascii };

/// In which encoding a document is written, and with which marks of it.
class Target {
public:
    /// The encoding that the document itself has.
    /// \param encoding as the reader names it
    /// \param head the first bytes of the document
    static Target Same(std::string_view encoding, std::string_view head);

    /// The one that a document has that has been turned into UTF-8, and declares another one.
    static Target Recoded(std::string_view head);

    /// Another one, for a document that has been written in `source`.
    static Target Other(TargetForm form, const Target& source);

    /// Returns the encoding; it writes no byte-order mark of itself.
    Xml::Encoding& Encoding() const { return *encoding_; }

    /// Returns the name to declare.
    const char* Name() const;

    /// Tells whether a document has to declare the encoding.
    bool HasToBeDeclared() const;

    /// Tells whether a declared name may stay, since the encoding is the one that it was.
    bool KeepsDeclaredName() const { return keepsName_; }

    /// Tells whether the document begins with a byte-order mark.
    bool HasMark() const { return hasMark_; }

    /// Tells whether the encoding has all characters.
    bool HasAllCharacters() const { return LastCharacter() == kLastCharacter; }

    /// Returns the last character that the encoding has. It has all before it.
    char32_t LastCharacter() const;

    /// Tells whether a character may be in a name, if it may be in one at all: the reader takes
    /// next to none for letters that it is shown in ISO-8859-1.
    bool HasInNames(char32_t code) const;

private:
    static constexpr char32_t kLastCharacter = 0x10FFFF;

    Target(TargetForm form, bool hasMark, bool keepsName);

    TargetForm form_;
    bool hasMark_;
    bool keepsName_;
    std::unique_ptr<Xml::Encoding> encoding_;
};

}  // namespace Tool
