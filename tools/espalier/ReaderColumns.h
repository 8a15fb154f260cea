// SPDX-License-Identifier: MIT
#pragma once

#include "MarkupTracker.h"
#include "SourceText.h"

#include <cstddef>
#include <deque>
#include <optional>
#include <string>
#include <string_view>

namespace Tool {

/// Turns the columns that the reader tells into those that people count, by following the text that
/// the reader reads: the reader leaves out colons that cannot be seen in its nodes, like those in a
/// document type or in references that it has replaced.
class ReaderColumns {
public:
    /// \param names what the reader takes names for
    explicit ReaderColumns(MarkupTracker::Names names) : tracker_(names) {}

    /// Takes note of what the reader is given.
    void Take(std::string_view bytes);

    /// Says which encoding the reader has found. To be called when the start of the document has
    /// been read; later calls change nothing.
    void SetEncoding(std::string_view encoding) { encoding_ = encoding; }

    /// Returns the column of a place as people count it. Places are asked for in the order of the
    /// document; between them may be some that the reader has made up, which lie further on.
    long ColumnOf(Place place);

private:
    // A colon that the reader does not count.
    struct Colon {
        Place place;           // of it and of what follows, as the reader counts
        long count;            // how many there are on the line with it
        std::size_t position;  // in the text
    };

    void Follow();
    void FollowText(std::string_view text);

    std::string encoding_;
    std::string pending_;  // bytes that have not been followed yet
    std::optional<SourceDecoder> decoder_;
    MarkupTracker tracker_;
    std::size_t position_ = 0;  // bytes of text that the tracker has passed
    std::deque<Colon> colons_;  // in order
    std::size_t passed_ = 0;    // how many of them stand before the place asked for last
};

}  // namespace Tool
