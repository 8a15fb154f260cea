// SPDX-License-Identifier: MIT
#pragma once

#include "support/ReaderSettings.h"
#include "support/Refusal.h"

#include <cstddef>
#include <string>

namespace support {

/// A piece of a document, a row of a table: "^" marks where the reader refuses it, or does not
/// stand in it, and then the reader has to accept it.
struct Marked {
    const char* text;
    const char* message = "";
    const char* argument = "";
};

/// Reads `before`, the text of the row and `behind` as a document, with all forms of the document
/// and sizes of reads, and expects what the row tells.
void ExpectMarked(const Marked& row, const std::string& before, const std::string& behind,
                  const ReaderSettings& settings, Cause cause = Cause::Text);

/// Does so with each row of a table.
template <std::size_t kCount>
void ExpectAllMarked(const Marked (&rows)[kCount], const std::string& before,
                     const std::string& behind, const ReaderSettings& settings,
                     Cause cause = Cause::Text) {
    for (const Marked& row : rows)
        ExpectMarked(row, before, behind, settings, cause);
}

/// The same for rows that are a document.
template <std::size_t kCount>
void ExpectDocuments(const Marked (&rows)[kCount], Cause cause = Cause::Text) {
    ExpectAllMarked(rows, "", "", StandardSettings(), cause);
}

/// The same for rows that are an internal subset in standard mode.
template <std::size_t kCount>
void ExpectSubsets(const Marked (&rows)[kCount], bool namespaces = true) {
    ExpectAllMarked(rows, "<!DOCTYPE a [", "]><a/>", StandardSettings(namespaces));
}

/// The same for rows that an internal subset begins with and nothing follows.
template <std::size_t kCount>
void ExpectEnds(const Marked (&rows)[kCount]) {
    ExpectAllMarked(rows, "<!DOCTYPE a [", "", StandardSettings(), Cause::End);
}

}  // namespace support
