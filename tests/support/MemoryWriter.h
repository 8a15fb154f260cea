// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/encoding/UnicodeEncodings.h>
#include <espalier/xml/XmlTextWriter.h>

#include "support/RecordingStream.h"

#include <string>

namespace support {

/// A writer on a stream in memory, which notes the sizes in which it is written.
class MemoryWriter {
public:
    /// Writes UTF-8 without a byte-order mark.
    MemoryWriter() : writer_(&stream_, &utf8_) {}

    /// \param encoding is not owned
    explicit MemoryWriter(Xml::Encoding& encoding) : writer_(&stream_, &encoding) {}

    MemoryWriter(const MemoryWriter&) = delete;
    MemoryWriter& operator=(const MemoryWriter&) = delete;

    Xml::XmlTextWriter* operator->() { return &writer_; }
    Xml::XmlTextWriter& operator*() { return writer_; }

    /// Returns all that has been written, after a Flush() where the writer is open.
    std::string Text() {
        if (writer_.GetWriteState() != Xml::WriteState::Closed) writer_.Flush();
        return stream_.Content();
    }

    RecordingStream& stream() { return stream_; }

private:
    Xml::UTF8Encoding utf8_;
    RecordingStream stream_;
    Xml::XmlTextWriter writer_;
};

}  // namespace support
