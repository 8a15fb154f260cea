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
/// An InputSource owns none of them: each must outlive the parse. A null pointer for an identifier
/// is an empty text, for anything else it is none.
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

    /// Names the document for messages; nothing is looked up by it.
    void setPublicId(const astring& publicId) { publicId_ = publicId; }
    /// Returns the public identifier, or an empty string.
    const astring& getPublicId() const { return publicId_; }

    /// Names the file to read where there is no other source, and the document for messages.
    void setSystemId(const astring& systemId) { systemId_ = systemId; }
    /// Returns the system identifier, or an empty string.
    const astring& getSystemId() const { return systemId_; }

    /// Keeps the name of an encoding for whoever asks for it; the document says itself which one it
    /// has.
    void setEncoding(const astring& encoding) { encoding_ = encoding; }
    /// Returns the name that was kept, or an empty string.
    const astring& getEncoding() const { return encoding_; }

    /// Takes a document from memory, up to its zero byte. It is not copied.
    void setCharacterStream(const char* text) { characterStream_ = text; }
    /// Returns the text, or null.
    const char* getCharacterStream() const { return characterStream_; }

    /// Takes bytes from a stream, or with null from none, and sets the system identifier.
    void setByteStream(IO::Stream* stream, const astring& systemId);
    /// Returns the stream, or null.
    IO::Stream* getByteStream() const { return byteStream_; }

    /// Takes bytes from an open file, or with null from none, and sets the system identifier.
    void setByteStream(std::FILE* file, const astring& systemId);
    /// Returns the open file, or null.
    std::FILE* getFile() const { return file_; }

    /// Returns the reader, or null.
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
