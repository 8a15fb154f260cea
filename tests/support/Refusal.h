// SPDX-License-Identifier: MIT
#pragma once

#include "support/ReaderSettings.h"

#include <cstddef>
#include <string>

namespace support {

/// A document that the reader refuses, a row of a table.
struct Refusal {
    static constexpr int kAny = -2;  ///< any column

    const char* input;  ///< with the escapes of EscapedText.h
    const char* message;
    const char* argument;
    int line;
    int column;
    const char* reason;
};

/// What is wrong: what stands in the document, or that it ends there.
enum class Cause { Text, End };

/// Reads `document` to the error that the row tells (whose input is only named) and compares it,
/// with all forms of the document and sizes of reads. Resolves references and steps through values
/// where the settings say so.
void ExpectRefusal(const std::string& document, const Refusal& refusal,
                   const ReaderSettings& settings, Cause cause = Cause::Text);

/// Does so with the row's own input.
void ExpectRefusal(const Refusal& refusal, const ReaderSettings& settings,
                   Cause cause = Cause::Text);

template <std::size_t kCount>
void ExpectRefusals(const Refusal (&refusals)[kCount], const ReaderSettings& settings = {},
                    Cause cause = Cause::Text) {
    for (const Refusal& refusal : refusals)
        ExpectRefusal(refusal, settings, cause);
}

/// Returns the message of the error in `document`, or "" when it is read to the end.
/// \param bytesPerRead how many bytes the stream gives at a time, 0 for all
std::string ErrorOf(const std::string& document, int bytesPerRead = 0);

}  // namespace support
