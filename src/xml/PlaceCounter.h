// SPDX-License-Identifier: MIT
#pragma once

#include <cassert>

namespace Xml::detail {

/// A line and a position in it, both from 1 on; the position counts characters.
struct Place {
    int line;
    int column;
};

/// Counts lines and columns, but only when somebody asks.
///
/// An anchor stands at some byte of the buffer whose place is known. The place of a later byte is
/// found by counting from there: line breaks (CR LF, CR or LF), and after the last one the bytes
/// that start a character. So the cost is one vectorised pass over the input, whatever the number
/// of tokens, and none where nobody wants to know.
///
/// The byte before the anchor is readable, too: a LF behind a CR is no line break of its own. So
/// are kScanPadding bytes behind each position that is asked about (RunScan.h).
///
/// Deliberate: the colon of a qualified name adds nothing to the column. SkipColon() records where
/// one stood; clients rely on the positions that result.
class PlaceCounter {
public:
    /// Starts at line 1, column 1, with the anchor at `position`.
    void Start(const unsigned char* position);

    /// Starts at the known `place`, with the anchor at `position`.
    void Start(const unsigned char* position, Place place);

    /// Returns the place of `position`, which is at or after the anchor.
    Place At(const unsigned char* position) const;

    /// Moves the anchor forward to `position`.
    void Advance(const unsigned char* position);

    /// Says that the byte at `position`, after the anchor, is a colon that does not count.
    void SkipColon(const unsigned char* position) {
        assert(colonCount_ < kMostColons);
        colons_[colonCount_++] = position;
    }

    /// Forgets the colons recorded after `position`, because the bytes will be scanned again.
    void ForgetColonsFrom(const unsigned char* position) {
        while (colonCount_ > 0 && colons_[colonCount_ - 1] >= position)
            --colonCount_;
    }

    /// Says that the byte at the anchor has moved to `position`.
    void Relocate(const unsigned char* position) { anchor_ = position; }

    const unsigned char* Anchor() const { return anchor_; }

private:
    // A buffer of 1024 bytes has no more: a colon that does not count has a letter before it.
    static constexpr int kMostColons = 512;

    int ColonsBetween(const unsigned char* begin, const unsigned char* end) const;

    const unsigned char* anchor_ = nullptr;
    Place place_{1, 1};  // of the anchor
    int colonCount_ = 0;
    const unsigned char* colons_[kMostColons];  // ascending, at or after the anchor
};

}  // namespace Xml::detail
