// SPDX-License-Identifier: MIT
#include "RecodedStream.h"

#include <espalier/encoding/Encoding.h>

#include <algorithm>

namespace Tool {

namespace {

// Tells whether a reader would take a text for something else than UTF-8 by its first byte. None
// that begins so is a document.
bool IsMistakenFor(char first) { return first == '\xFE' || first == '\xFF' || first == 'L'; }

}  // namespace

RecodedStream::RecodedStream(std::unique_ptr<IO::Stream> next, const InputEncoding& encoding)
    : next_(std::move(next)),
      decoder_(encoding.form, encoding.page == nullptr ? nullptr : encoding.page(),
               BadBytes::Kept) {}

// Puts the next piece into `text_`; false at the end.
bool RecodedStream::Fill() {
    if (atEnd_) return false;
    const int count = std::max(0, next_->Read(block_.data(), 0, kBlock));
    const std::string_view bytes(reinterpret_cast<const char*>(block_.data()),
                                 static_cast<std::size_t>(count));
    atEnd_ = bytes.empty();
    text_ = atEnd_ ? decoder_.Finish() : decoder_.Decode(bytes);
    std::replace(text_.begin(), text_.end(), '\0', '\xFF');  // is no character in XML, either
    if (atStart_ && !text_.empty()) {
        if (IsMistakenFor(text_.front())) text_.insert(0, "\xEF\xBB\xBF");
        atStart_ = false;
    }
    hasChanges_ = hasChanges_ || text_ != bytes;
    taken_ = 0;
    return true;
}

int RecodedStream::Read(unsigned char* buffer, int offset, int count) {
    while (taken_ == text_.size()) {
        if (!Fill()) return 0;
    }
    const std::size_t given =
        std::min(text_.size() - taken_, static_cast<std::size_t>(std::max(0, count)));
    std::copy_n(text_.data() + taken_, given, buffer + offset);
    taken_ += given;
    return static_cast<int>(given);
}

}  // namespace Tool
