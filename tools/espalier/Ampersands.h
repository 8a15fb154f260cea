// SPDX-License-Identifier: MIT
#pragma once

#include "SourceText.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace Tool {

/// Writes every "&" of a document as "&amp;", in the form that the document has. What reads the
/// result is shown references as texts, exactly as they are written.
class AmpersandEscaper {
public:
    explicit AmpersandEscaper(SourceForm form);

    /// Appends to `out` the escaped form of `bytes`, which go on where the last ones ended.
    void Escape(std::string_view bytes, std::string& out);

private:
    void EscapeUnits(std::string_view bytes, std::string& out);

    std::size_t unitLength_;  // bytes that a character of ASCII takes
    std::string ampersand_;   // "&" in the form of the document
    std::string rest_;        // what makes "&amp;" of it
    std::string cut_;         // the bytes of a unit that was cut
};

/// Takes back what AmpersandEscaper has done to a text that is no text to a reader, but taken as it
/// is: a comment, a CDATA section.
std::string UnescapeAmpersands(std::string_view text);

}  // namespace Tool
