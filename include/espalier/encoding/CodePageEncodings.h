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

// The Windows pages. Each writes the characters up to U+084B that it has; those above it, quotation
// marks, dashes, the euro sign and the like, it only reads. A writer writes them as references.

/// Windows-1250, the Latin letters of Central Europe: encoding name "Windows-1250", web name
/// "windows-1250".
class ESPALIER_EXPORT Windows1250Encoding : public SingleByteEncoding {
public:
    explicit Windows1250Encoding(bool throwOnError);
    Windows1250Encoding(const Windows1250Encoding& other);
    Windows1250Encoding& operator=(const Windows1250Encoding& other);

    ~Windows1250Encoding() override;
};

/// Windows-1251, Cyrillic letters: encoding name "Windows-1251", web name "windows-1251".
class ESPALIER_EXPORT Windows1251Encoding : public SingleByteEncoding {
public:
    explicit Windows1251Encoding(bool throwOnError);
    Windows1251Encoding(const Windows1251Encoding& other);
    Windows1251Encoding& operator=(const Windows1251Encoding& other);

    ~Windows1251Encoding() override;
};

/// Windows-1252, the Latin letters of Western Europe: encoding name "Windows-1252", web name
/// "windows-1252".
class ESPALIER_EXPORT Windows1252Encoding : public SingleByteEncoding {
public:
    explicit Windows1252Encoding(bool throwOnError);
    Windows1252Encoding(const Windows1252Encoding& other);
    Windows1252Encoding& operator=(const Windows1252Encoding& other);

    ~Windows1252Encoding() override;
};

/// Windows-1254, the Latin letters of Turkish and of Western Europe: encoding name "Windows-1254",
/// web name "windows-1254".
class ESPALIER_EXPORT Windows1254Encoding : public SingleByteEncoding {
public:
    explicit Windows1254Encoding(bool throwOnError);
    Windows1254Encoding(const Windows1254Encoding& other);
    Windows1254Encoding& operator=(const Windows1254Encoding& other);

    ~Windows1254Encoding() override;
};

/// Windows-1257, the Latin letters of the Baltic languages: encoding name "Windows-1257", web name
/// "windows-1257".
class ESPALIER_EXPORT Windows1257Encoding : public SingleByteEncoding {
public:
    explicit Windows1257Encoding(bool throwOnError);
    Windows1257Encoding(const Windows1257Encoding& other);
    Windows1257Encoding& operator=(const Windows1257Encoding& other);

    ~Windows1257Encoding() override;
};

}  // namespace Xml
