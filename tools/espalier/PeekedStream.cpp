// SPDX-License-Identifier: MIT
#include "PeekedStream.h"

#include <espalier/io/Exception.h>

#include <algorithm>

namespace Tool {

bool PeekedStream::PeekMore(std::size_t most) {
    const std::size_t before = peeked_.size();
    if (before >= most) return false;
    peeked_.resize(most);
    int count = 0;
    try {
        count = next_->Read(reinterpret_cast<unsigned char*>(peeked_.data() + before), 0,
                            static_cast<int>(most - before));
    } catch (const Xml::Exception&) {
        count = 0;  // thrown again by Read()
    }
    peeked_.resize(before + static_cast<std::size_t>(std::max(0, count)));
    return count > 0;
}

int PeekedStream::Read(unsigned char* buffer, int offset, int count) {
    if (peeked_.empty()) return next_->Read(buffer, offset, count);
    const std::size_t given =
        std::min(peeked_.size(), static_cast<std::size_t>(std::max(0, count)));
    std::copy_n(peeked_.data(), given, buffer + offset);
    peeked_.erase(0, given);
    return static_cast<int>(given);
}

}  // namespace Tool
