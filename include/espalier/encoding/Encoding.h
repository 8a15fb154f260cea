// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/Export.h>
#include <espalier/base/astring.h>
#include <espalier/encoding/Forward.h>

namespace Xml {

/// An encoding: turns the UTF-8 text of the library into bytes, counts the characters in bytes, and
/// converts bytes from one encoding to another.
///
/// Texts given to an encoding are always UTF-8. The static functions return shared encodings, made
/// when they are first asked for; they belong to the library and must not be deleted, nor used by
/// destructors of other static objects. An encoding that an application makes itself belongs to it.
///
/// \code
///     astring text("na\xC3\xAFve");
///     unsigned char bytes[16];
///     unsigned written = Xml::Encoding::Convert(
///         Xml::Encoding::UTF8(), Xml::Encoding::Latin1(),
///         reinterpret_cast<const unsigned char*>(text.c_str()), unsigned(text.length()), bytes,
///         sizeof bytes);  // 5
/// \endcode
///
/// \note Encodings do not change once made and may be used from several threads at once; assigning
/// to one is a change.
class ESPALIER_EXPORT Encoding {
public:
    /// Makes an encoding with the names and settings of another.
    Encoding(const Encoding& other);
    /// Takes over the names and settings of another encoding.
    Encoding& operator=(const Encoding& other);

    // The order of the virtual functions is part of the binary interface: append, never reorder.

    virtual ~Encoding();

    /// Returns how many bytes a text takes.
    /// \param length the length of the text in bytes
    virtual unsigned GetByteCount(const char* text, unsigned length) const = 0;

    /// Writes a text in this encoding. What `capacity` counts and what is returned differs; see the
    /// derived classes.
    virtual unsigned GetBytes(const char* text, unsigned length, unsigned char* destination,
                              unsigned capacity) const = 0;

    /// Counts the characters in `count` bytes of this encoding.
    virtual unsigned GetCharCount(const unsigned char* bytes, unsigned count) const = 0;

    /// Writes the byte-order mark when the encoding emits one and `capacity` bytes can take it.
    /// \return how many bytes were written, possibly 0
    virtual unsigned GetPreamble(unsigned char* destination, unsigned capacity) const;

    /// Returns the name of the encoding.
    const astring& EncodingName() const { return encodingName_; }
    /// Returns the name that stands in the encoding declaration of a document.
    const astring& WebName() const { return webName_; }
    /// Tells whether every character is one byte.
    bool IsSingleByte() const { return isSingleByte_; }

    /// \name The same for a string
    /// @{
    unsigned GetByteCount(const astring& text) const;
    unsigned GetBytes(const astring& text, unsigned char* destination, unsigned capacity) const;
    /// @}

    /// \name Shared encodings
    /// None of them throws on errors. Those of Unicode emit a byte-order mark.
    /// @{
    static Encoding* UTF8();
    /// Returns UTF-16, little-endian.
    static Encoding* Unicode();
    /// Returns a second UTF-16, little-endian.
    static Encoding* NativeWide();
    /// Returns UTF-16, big-endian.
    static Encoding* BigEndianUnicode();
    static Encoding* ASCII();
    static Encoding* Latin1();
    static Encoding* GB2312();
    static Encoding* EUC_KR();
    static Encoding* Windows_1250();
    static Encoding* Windows_1251();
    static Encoding* Windows_1252();
    static Encoding* Windows_1254();
    static Encoding* Windows_1257();
    /// @}

    /// Converts bytes from one encoding to another, until the source is used up, the destination
    /// cannot take more, or a character turns up for which nothing can be written.
    ///
    /// A character that `to` cannot write becomes '?'. UTF-8 cannot write U+0000 and has no '?' for
    /// it: the conversion ends there. Bytes that are no character end a conversion to UTF-8, too,
    /// and become '?' elsewhere.
    ///
    /// \return how many bytes were written
    /// \throws Xml::Exception "Invalid argument: Invalid character in source string" when bytes
    ///     cannot be decoded and `from` throws on errors
    static unsigned Convert(Encoding* from, Encoding* to, const unsigned char* source,
                            unsigned sourceLength, unsigned char* destination,
                            unsigned destinationLength);

    /// Converts as the function above, but never throws: bytes that are no character become '?'. A
    /// character that the end of the source cuts short is left there when fewer than 5 bytes come
    /// before it, and becomes '?' otherwise.
    /// \param[out] consumed how many bytes of the source were used
    static unsigned Convert(Encoding* from, Encoding* to, const unsigned char* source,
                            unsigned sourceLength, unsigned char* destination,
                            unsigned destinationLength, unsigned& consumed);

    /// Converts one character; bytes that are no character become '?'.
    /// \param[out] consumed the length of the character in the source, also when nothing could be
    ///     written for it; 0 when the end of the source cuts it short
    /// \return how many bytes were written
    static unsigned ConvertChar(Encoding* from, Encoding* to, const unsigned char* source,
                                unsigned sourceLength, unsigned char* destination,
                                unsigned destinationLength, unsigned& consumed);

    /// Returns the engine that the encoding works with. For the library's own use.
    const detail::CharCodec& Codec() const { return *codec_; }

protected:
    /// Makes an encoding that reads and writes UTF-8 until SetCodec() is called.
    Encoding(const astring& encodingName, const astring& webName, bool isSingleByte,
             bool throwOnError);

    /// Tells whether bytes that are no character are an error to be thrown.
    bool ThrowOnError() const { return throwOnError_; }

    /// Sets the engine that the encoding works with. For the library's own use.
    void SetCodec(const detail::CharCodec& codec) { codec_ = &codec; }

private:
    const detail::CharCodec* codec_;  // a constant of the library, never null, not owned
    astring encodingName_;
    astring webName_;
    bool isSingleByte_;
    bool throwOnError_;
};

}  // namespace Xml
