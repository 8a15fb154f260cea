// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/Export.h>
#include <espalier/base/astring.h>

#include <cstdio>

namespace IO {
class Stream;
}

namespace Xml {
class XmlTextReader;
}

namespace sax {

/// Says where a document comes from. Of several sources, XMLReader takes the first of this order:
/// byte stream, file, character stream, reader, system identifier.
///
/// An InputSource owns none of them: each must outlive the parse. A null pointer for an identifier is
/// an empty text, for anything else it is none.
class ESPALIER_EXPORT InputSource {
public:
    InputSource();

    /// Names a file.
    explicit InputSource(const char* systemId);
    explicit InputSource(const astring& systemId);

    /// Takes bytes from a stream. The identifier is for messages and names nothing to be opened.
    InputSource(IO::Stream* stream, const char* systemId);

    /// Takes bytes from a file that is open for reading.
    InputSource(std::FILE* file, const char* systemId);

    /// Takes the nodes that a reader has still to read.
    explicit InputSource(Xml::XmlTextReader* reader);

    InputSource(const InputSource& other);
    InputSource& operator=(const InputSource& other);

    // The order of the virtual functions is part of the binary interface: append, never reorder.

    virtual ~InputSource();

    void setPublicId(const astring& publicId) { publicId_ = publicId; }
    const astring& getPublicId() const { return publicId_; }

    void setSystemId(const astring& systemId) { systemId_ = systemId; }
    const astring& getSystemId() const { return systemId_; }

    /// Keeps the name of an encoding for whoever asks for it; the document says itself which one it
    /// has.
    void setEncoding(const astring& encoding) { encoding_ = encoding; }
    const astring& getEncoding() const { return encoding_; }

    /// Takes a document from memory, up to its zero byte. It is not copied.
    void setCharacterStream(const char* text) { characterStream_ = text; }
    const char* getCharacterStream() const { return characterStream_; }

    void setByteStream(IO::Stream* stream, const astring& systemId);
    IO::Stream* getByteStream() const { return byteStream_; }

    void setByteStream(std::FILE* file, const astring& systemId);
    std::FILE* getFile() const { return file_; }

    Xml::XmlTextReader* getReader() const { return reader_; }

private:
    astring publicId_;
    astring systemId_;
    astring encoding_;
    const char* characterStream_ = nullptr;  // this and the following are not owned
    IO::Stream* byteStream_ = nullptr;
    Xml::XmlTextReader* reader_ = nullptr;
    std::FILE* file_ = nullptr;
};

}  // namespace sax
