// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/encoding/UnicodeEncodings.h>
#include <espalier/xml/XmlTextWriter.h>

#include "support/RecordingStream.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace support {

/// A writer on a stream in memory, which it keeps. Without an encoding of the caller's it writes
/// UTF-8 without a byte-order mark.
class DocumentWriter {
public:
    explicit DocumentWriter(Xml::Encoding* encoding = nullptr)
        : writer_(&stream_, encoding != nullptr ? encoding : &utf8_) {}

    Xml::XmlTextWriter* operator->() { return &writer_; }
    Xml::XmlTextWriter& operator*() { return writer_; }

    /// Indents with `newLine` for a line break.
    void Indent(const char* newLine = "\n") {
        writer_.SetFormatting(Xml::Formatting::Indented);
        writer_.SetNewLineChars(newLine);
    }

    /// Returns all that was written so far.
    std::string Text() {
        if (writer_.GetWriteState() != Xml::WriteState::Closed) writer_.Flush();
        return stream_.Content();
    }

    /// Returns what was written since the last call.
    std::string Take() {
        const std::string text = Text();
        std::string added = text.substr(taken_);
        taken_ = text.size();
        return added;
    }

    RecordingStream& Stream() { return stream_; }

    /// Returns the calls that reached the stream since the last call.
    std::vector<std::string> TakeCalls() { return stream_.TakeCalls(); }

private:
    RecordingStream stream_;
    Xml::UTF8Encoding utf8_;
    Xml::XmlTextWriter writer_;
    std::size_t taken_ = 0;  // how many bytes Take() has returned
};

/// A sequence of calls, a row of a table.
using WriterCalls = void (*)(Xml::XmlTextWriter& writer);

/// Returns what a new writer gives for the calls.
inline std::string WrittenBy(WriterCalls calls) {
    DocumentWriter writer;
    calls(*writer);
    return writer.Text();
}

/// Returns the name of a state, for messages of tests.
inline const char* NameOf(Xml::WriteState state) {
    switch (state) {
    case Xml::WriteState::Start: return "Start";
    case Xml::WriteState::Prolog: return "Prolog";
    case Xml::WriteState::Element: return "Element";
    case Xml::WriteState::Attribute: return "Attribute";
    case Xml::WriteState::Content: return "Content";
    case Xml::WriteState::Closed: return "Closed";
    }
    return "?";
}

}  // namespace support
