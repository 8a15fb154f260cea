// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/Export.h>
#include <espalier/encoding/Encoding.h>

namespace Xml {

/// GB 2312 in the form EUC-CN, simplified Chinese: encoding name "GB2312", web name "gb2312".
///
/// ASCII characters are one byte, all others two bytes from A1 to FE each.
class ESPALIER_EXPORT Gb2312Encoding : public Encoding {
public:
    explicit Gb2312Encoding(bool throwOnError);
    Gb2312Encoding(const Gb2312Encoding& other);
    Gb2312Encoding& operator=(const Gb2312Encoding& other);

    ~Gb2312Encoding() override;

    using Encoding::GetByteCount;
    using Encoding::GetBytes;

    /// Returns how many bytes GetBytes() writes where there is room.
    unsigned GetByteCount(const char* text, unsigned length) const override;

    /// Writes the text, '?' for each character that the encoding does not have, up to the first
    /// character for which there is no room.
    /// \param capacity the room in bytes
    /// \return how many bytes were written
    unsigned GetBytes(const char* text, unsigned length, unsigned char* destination,
                      unsigned capacity) const override;

    /// Counts the characters. A byte that begins none counts as one.
    /// \throws Xml::Exception "Invalid argument: Invalid character in source string" at such a byte
    ///     when the encoding throws on errors
    unsigned GetCharCount(const unsigned char* bytes, unsigned count) const override;
};

/// EUC-KR, KS X 1001, Korean: encoding name and web name "EUC-KR".
///
/// ASCII characters are one byte, all others two bytes from A1 to FE each.
class ESPALIER_EXPORT EucKrEncoding : public Encoding {
public:
    explicit EucKrEncoding(bool throwOnError);
    EucKrEncoding(const EucKrEncoding& other);
    EucKrEncoding& operator=(const EucKrEncoding& other);

    ~EucKrEncoding() override;

    using Encoding::GetByteCount;
    using Encoding::GetBytes;

    /// Returns how many bytes GetBytes() writes where there is room.
    unsigned GetByteCount(const char* text, unsigned length) const override;

    /// Writes the text, '?' for each character that the encoding does not have, up to the first
    /// character for which there is no room.
    /// \param capacity the room in bytes
    /// \return how many bytes were written
    unsigned GetBytes(const char* text, unsigned length, unsigned char* destination,
                      unsigned capacity) const override;

    /// Counts the characters. A byte that begins none counts as one.
    /// \throws Xml::Exception "Invalid argument: Invalid character in source string" at such a byte
    ///     when the encoding throws on errors
    unsigned GetCharCount(const unsigned char* bytes, unsigned count) const override;
};

}  // namespace Xml
