// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

namespace Xml::detail {

/// What a text to be written needs.
struct TextNeeds {
    bool escapes;  ///< it has a character that is written as a reference, or a line break or tab
    bool checks;   ///< it has bytes above ASCII or controls, which may be no XML characters
};

/// Looks at a text once.
TextNeeds ExamineText(std::string_view text);

/// Copies a text that can be written as it is: nothing in it is to be escaped or refused.
/// \param breaksArePlain whether line breaks and tabs are written as they are
/// \return whether it is such a text; if not, what was copied means nothing
/// \pre `to` has room for the text and kCopySlack bytes more, which are overwritten
bool CopyPlain(unsigned char* to, std::string_view text, bool breaksArePlain);

inline constexpr int kCopySlack = 32;

/// Returns the first position in [at, end) of "<", ">", "&", a quotation mark or a control
/// character; `end` when there is none.
const char* FindEscape(const char* at, const char* end);

/// Tells whether a text is UTF-8 without the controls that XML does not allow (XML 1.0 [2]).
bool IsXmlText(std::string_view text);

}  // namespace Xml::detail
