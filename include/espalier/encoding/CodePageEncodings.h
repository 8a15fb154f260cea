// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/Export.h>
#include <espalier/encoding/Encoding.h>

namespace Xml {

/// What the encodings have in common in which every character is one byte. Made by itself it writes
/// ISO-8859-1 under the names that it is given.
class ESPALIER_EXPORT SingleByteEncoding : public Encoding {
public:
    SingleByteEncoding(const astring& encodingName, const astring& webName, bool throwOnError);
    SingleByteEncoding(const SingleByteEncoding& other);
    SingleByteEncoding& operator=(const SingleByteEncoding& other);

    ~SingleByteEncoding() override;

    using Encoding::GetByteCount;
    using Encoding::GetBytes;

    /// Returns the number of characters in the text.
    unsigned GetByteCount(const char* text, unsigned length) const override;

    /// Writes the characters of the text, a byte each.
    ///
    /// A character that the encoding cannot write moves the output back by one byte, so that the
    /// next one replaces the byte before it; what would stand before the destination is dropped,
    /// and so is what comes after its end. To get '?' instead, use Encoding::Convert().
    ///
    /// \param capacity the room in bytes
    /// \return the number of characters in the text, whatever became of them
    unsigned GetBytes(const char* text, unsigned length, unsigned char* destination,
                      unsigned capacity) const override;

    /// Returns `count`.
    unsigned GetCharCount(const unsigned char* bytes, unsigned count) const override;
};

/// ASCII: encoding name "ASCII", web name "US-ASCII". Bytes and characters from 0x80 to 0xFF pass
/// as in ISO-8859-1.
class ESPALIER_EXPORT ASCIIEncoding : public SingleByteEncoding {
public:
    explicit ASCIIEncoding(bool throwOnError);
    ASCIIEncoding(const ASCIIEncoding& other);
    ASCIIEncoding& operator=(const ASCIIEncoding& other);

    ~ASCIIEncoding() override;
};

/// ISO-8859-1: encoding name "Latin1", web name "iso-8859-1".
class ESPALIER_EXPORT Latin1Encoding : public SingleByteEncoding {
public:
    explicit Latin1Encoding(bool throwOnError);
    Latin1Encoding(const Latin1Encoding& other);
    Latin1Encoding& operator=(const Latin1Encoding& other);

    ~Latin1Encoding() override;
};

}  // namespace Xml
