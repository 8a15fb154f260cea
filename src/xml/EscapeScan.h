// SPDX-License-Identifier: MIT
#pragma once

#include <bit>  // std::countr_zero
#include <cstdint>
#include <string_view>

namespace Xml::detail {

/// What a text to be written needs.
struct TextNeeds {
    bool escapes;  ///< it has a character that is written as a reference, or a control character
    bool isBad;  ///< it has bytes that are no XML characters (XML 1.0 [2]); seen only if asked for
};

/// Looks at a text once.
/// \param breaksArePlain whether line breaks and tabs are written as they are
/// \param checks whether it is asked for bytes that are no characters
TextNeeds ExamineText(std::string_view text, bool breaksArePlain, bool checks);

/// Copies a text that can be written as it is: nothing in it is to be escaped or refused.
/// \param breaksArePlain whether line breaks and tabs are written as they are
/// \return whether it is such a text; if not, what was copied means nothing
/// \pre `to` has room for the text and kCopySlack bytes more, which are overwritten
bool CopyPlain(unsigned char* to, std::string_view text, bool breaksArePlain);

inline constexpr int kCopySlack = 32;

/// Finds "<", ">", "&", quotation marks and control characters in a text, one after the other.
class EscapeFinder {
public:
    /// \param breaksArePlain whether line breaks and tabs are passed over
    EscapeFinder(std::string_view text, bool breaksArePlain)
        : block_(text.data()),
          next_(text.data()),
          end_(text.data() + text.size()),
          breaksArePlain_(breaksArePlain) {}

    /// Returns the position of the next one from `from` on; the end of the text when there is none.
    /// \pre `from` is not before what was returned last
    const char* Next(const char* from) {
        for (;;) {
            while (mask_ != 0) {
                const char* const found = block_ + std::countr_zero(mask_);
                mask_ &= mask_ - 1;
                if (found >= from) return found;
            }
            if (next_ == end_) return end_;
            LoadMask();
        }
    }

private:
    void LoadMask();

    const char* block_;
    const char* next_;
    const char* const end_;
    const bool breaksArePlain_;
    std::uint64_t mask_ = 0;  // those in [block_, next_) that have not been returned
};

}  // namespace Xml::detail
