// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/Export.h>
#include <espalier/encoding/Encoding.h>

namespace Xml {

/// UTF-8: encoding name "UTF8", web name "UTF-8".
class ESPALIER_EXPORT UTF8Encoding : public Encoding {
public:
    /// Makes an encoding without a byte-order mark that does not throw.
    UTF8Encoding();
    UTF8Encoding(bool emitByteOrderMark, bool throwOnError);
    UTF8Encoding(const UTF8Encoding& other);
    UTF8Encoding& operator=(const UTF8Encoding& other);

    ~UTF8Encoding() override;

    using Encoding::GetByteCount;
    using Encoding::GetBytes;

    /// Returns `length`: the text is UTF-8 already.
    unsigned GetByteCount(const char* text, unsigned length) const override;

    /// Copies the text unchanged.
    /// \pre the destination takes `length` bytes; `capacity` is not looked at
    /// \return `length`
    unsigned GetBytes(const char* text, unsigned length, unsigned char* destination,
                      unsigned capacity) const override;

    /// Counts the characters of UTF-8. A byte that begins no character of up to four bytes counts
    /// as one; overlong forms and surrogates are not told from characters. \throws Xml::Exception
    /// "Invalid argument: Invalid character in source string" at such a byte
    ///     when the encoding throws on errors
    unsigned GetCharCount(const unsigned char* bytes, unsigned count) const override;

    /// Writes EF BB BF when the encoding emits a mark and `capacity` is at least 3.
    unsigned GetPreamble(unsigned char* destination, unsigned capacity) const override;

private:
    bool emitByteOrderMark_;
};

/// UTF-16: encoding name "Unicode", web name "UTF-16BE" or "UTF-16LE" (from the default constructor
/// "UTF-16").
class ESPALIER_EXPORT UnicodeEncoding : public Encoding {
public:
    /// Makes a little-endian encoding without a byte-order mark that does not throw.
    UnicodeEncoding();
    UnicodeEncoding(bool bigEndian, bool emitByteOrderMark, bool throwOnError);
    UnicodeEncoding(const UnicodeEncoding& other);
    UnicodeEncoding& operator=(const UnicodeEncoding& other);

    ~UnicodeEncoding() override;

    using Encoding::GetByteCount;
    using Encoding::GetBytes;

    /// Returns 2 bytes for each character up to U+FFFF and 4 for each above.
    unsigned GetByteCount(const char* text, unsigned length) const override;

    /// Writes the text, up to the first byte that is no UTF-8 or the first character for which
    /// there is no room. \param capacity the room in 16-bit units, not bytes \return how many bytes
    /// were written
    unsigned GetBytes(const char* text, unsigned length, unsigned char* destination,
                      unsigned capacity) const override;

    /// Counts the 16-bit units; a high surrogate and the unit after it are one.
    unsigned GetCharCount(const unsigned char* bytes, unsigned count) const override;

    /// Writes FE FF or FF FE when the encoding emits a mark and `capacity` is at least 2.
    unsigned GetPreamble(unsigned char* destination, unsigned capacity) const override;

private:
    bool bigEndian_;
    bool emitByteOrderMark_;
};

/// UCS-4: encoding name "Unicode"; the web names are those of UnicodeEncoding.
class ESPALIER_EXPORT Ucs4UnicodeEncoding : public Encoding {
public:
    /// Makes a little-endian encoding without a byte-order mark that does not throw.
    /// Encoding::Convert takes it for UTF-16.
    Ucs4UnicodeEncoding();
    Ucs4UnicodeEncoding(bool bigEndian, bool emitByteOrderMark, bool throwOnError);
    Ucs4UnicodeEncoding(const Ucs4UnicodeEncoding& other);
    Ucs4UnicodeEncoding& operator=(const Ucs4UnicodeEncoding& other);

    ~Ucs4UnicodeEncoding() override;

    using Encoding::GetByteCount;
    using Encoding::GetBytes;

    /// Returns 4 times `length`, which is at least what the text takes.
    unsigned GetByteCount(const char* text, unsigned length) const override;

    /// Writes the text, up to the first byte that is no UTF-8 or the first character for which
    /// there is no room. \param capacity the room in 32-bit units, not bytes \return how many bytes
    /// were written
    unsigned GetBytes(const char* text, unsigned length, unsigned char* destination,
                      unsigned capacity) const override;

    /// Returns `count` divided by 4.
    unsigned GetCharCount(const unsigned char* bytes, unsigned count) const override;

    /// Writes 00 00 FE FF or FF FE 00 00 when the encoding emits a mark and `capacity` is at
    /// least 4.
    unsigned GetPreamble(unsigned char* destination, unsigned capacity) const override;

private:
    bool bigEndian_;
    bool emitByteOrderMark_;
};

}  // namespace Xml
