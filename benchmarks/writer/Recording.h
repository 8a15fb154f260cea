// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace bench {

enum class CallKind : unsigned char { Start, Attribute, Text, End };

/// A call to a writer. Its texts stand in the buffer of the recording, each with a NUL behind it:
/// the name, and right behind that the value.
struct Call {
    std::uint32_t offset = 0;       ///< of the name in the buffer
    std::uint32_t valueLength = 0;  ///< of an attribute or a text
    std::uint16_t nameLength = 0;   ///< of an element or an attribute
    CallKind kind = CallKind::End;

    bool operator==(const Call&) const = default;
};
static_assert(sizeof(Call) == 12);

/// The calls that write a document: elements, attributes and texts, without two texts in a row.
/// Small and in one piece, so that going through it costs little beside the writing.
struct Recording {
    std::vector<Call> calls;
    std::string buffer;

    std::string_view Name(const Call& call) const {
        return {buffer.data() + call.offset, call.nameLength};
    }
    std::string_view Value(const Call& call) const {
        return {buffer.data() + call.offset + call.nameLength + 1, call.valueLength};
    }

    bool operator==(const Recording&) const = default;
};

/// Reads a document and records the calls that write its elements, attributes and texts, comments
/// and the like left out. Names are qualified names, declarations of namespaces are attributes.
/// \param mostBytes recording stops when it takes so many bytes to write the calls, and what is
/// open
///     then is ended
/// \throws Xml::Exception when the document is refused
Recording Record(std::string_view document, std::size_t mostBytes);

/// Makes the calls on `writer`, which has operations of the names of CallKind. All texts have a NUL
/// behind them.
template <typename Writer>
void Replay(const Recording& recording, Writer& writer) {
    for (const Call& call : recording.calls) {
        switch (call.kind) {
        case CallKind::Start: writer.Start(recording.Name(call)); break;
        case CallKind::Attribute:
            writer.Attribute(recording.Name(call), recording.Value(call));
            break;
        case CallKind::Text: writer.Text(recording.Value(call)); break;
        case CallKind::End: writer.End(); break;
        }
    }
}

}  // namespace bench
