// SPDX-License-Identifier: MIT
#pragma once

#include "xml/RunScan.h"

#include <cstddef>
#include <cstring>
#include <memory>
#include <string_view>

namespace support {

/// A text as scans want it, with zero bytes behind it, at the end of an allocation: a read behind
/// those is seen by the sanitizers.
class PaddedText {
public:
    /// \param before bytes that come before the text, so that it stands at any alignment
    explicit PaddedText(std::string_view text, std::size_t before = 0)
        : store_(
              std::make_unique<unsigned char[]>(before + text.size() + Xml::detail::kScanPadding)),
          begin_(store_.get() + before),
          end_(begin_ + text.size()) {
        std::memset(store_.get(), 'x', before);
        if (!text.empty()) std::memcpy(begin_, text.data(), text.size());
    }

    const unsigned char* begin() const { return begin_; }
    const unsigned char* end() const { return end_; }

    /// Returns where `at` stands in the text.
    std::ptrdiff_t Offset(const unsigned char* at) const { return at - begin_; }

private:
    std::unique_ptr<unsigned char[]> store_;
    unsigned char* begin_;
    unsigned char* end_;
};

}  // namespace support
