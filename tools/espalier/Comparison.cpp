// SPDX-License-Identifier: MIT
#include "Comparison.h"

#include <algorithm>

namespace Tool {

void Comparison::Write(const unsigned char* buffer, int offset, int count) {
    const auto* const bytes = reinterpret_cast<const char*>(buffer) + offset;
    Take({bytes, static_cast<std::size_t>(std::max(0, count))}, Side::Written);
    if (next_ != nullptr) next_->Write(buffer, offset, count);
}

void Comparison::Take(std::string_view bytes, Side side) {
    if (differs_) return;
    if (side != longer_ && !ahead_.empty()) {
        const std::size_t common = std::min(ahead_.size(), bytes.size());
        if (bytes.substr(0, common) != std::string_view(ahead_).substr(0, common)) {
            differs_ = true;
            ahead_ = {};
            return;
        }
        ahead_.erase(0, common);
        bytes.remove_prefix(common);
    }
    if (bytes.empty()) return;
    longer_ = side;
    ahead_.append(bytes);
}

}  // namespace Tool
