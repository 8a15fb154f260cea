// SPDX-License-Identifier: MIT
#include "ReaderColumns.h"

#include <algorithm>

namespace Tool {

namespace {

// Bytes that may wait to be followed.
constexpr std::size_t kMostPending = 65536;

// Colons of so many last bytes are kept in any case. Places within the text of an entity lie behind
// its reference, and what has been read of the document then is at most 1024 characters more.
constexpr std::size_t kKept = 65536;

bool IsBefore(Place a, Place b) { return a.line != b.line ? a.line < b.line : a.column < b.column; }

}  // namespace

void ReaderColumns::Take(std::string_view bytes) {
    pending_ += bytes;
    if (pending_.size() > kMostPending) Follow();
}

long ReaderColumns::ColumnOf(Place place) {
    Follow();
    while (passed_ < colons_.size() && !IsBefore(place, colons_[passed_].place))
        ++passed_;
    while (passed_ > 0 && IsBefore(place, colons_[passed_ - 1].place))
        --passed_;
    if (passed_ == 0) return place.column;
    const Colon last = colons_[passed_ - 1];
    for (; passed_ > 1 && colons_.front().position + kKept < position_; --passed_)
        colons_.pop_front();
    return place.column + (last.place.line == place.line ? last.count : 0);
}

// Moves over all bytes that have come.
void ReaderColumns::Follow() {
    if (pending_.empty()) return;
    if (!decoder_) decoder_.emplace(DetectForm(pending_, encoding_));
    FollowText(decoder_->Decode(pending_));
    pending_.clear();
}

void ReaderColumns::FollowText(std::string_view text) {
    position_ += text.size();
    while (!text.empty()) {
        const std::size_t length = std::min(text.find(':'), text.size());
        tracker_.Advance(text.substr(0, length));
        text.remove_prefix(length);
        if (text.empty()) return;
        if (tracker_.IsSilent(':')) {
            const Place place{tracker_.Line(), tracker_.ReaderColumn()};
            const bool isFirst = colons_.empty() || colons_.back().place.line != place.line;
            const long count = isFirst ? 1 : colons_.back().count + 1;
            colons_.push_back({place, count, position_ - text.size()});
        }
        tracker_.Step(':');
        text.remove_prefix(1);
    }
}

}  // namespace Tool
