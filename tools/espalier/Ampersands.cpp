// SPDX-License-Identifier: MIT
#include "Ampersands.h"

namespace Tool {

namespace {

constexpr std::string_view kEscaped = "&amp;";

// Returns an ASCII text in a form whose units are `length` bytes long.
std::string InUnits(std::string_view ascii, std::size_t length, bool bigEndian) {
    std::string units;
    for (const char byte : ascii) {
        const std::string zeros(length - 1, '\0');
        units += bigEndian ? zeros + byte : byte + zeros;
    }
    return units;
}

}  // namespace

AmpersandEscaper::AmpersandEscaper(SourceForm form) : unitLength_(UnitLength(form)) {
    const bool bigEndian = form == SourceForm::Utf16BE || form == SourceForm::Ucs4BE;
    ampersand_ = InUnits(kEscaped.substr(0, 1), unitLength_, bigEndian);
    rest_ = InUnits(kEscaped.substr(1), unitLength_, bigEndian);
}

void AmpersandEscaper::Escape(std::string_view bytes, std::string& out) {
    if (unitLength_ > 1) {
        EscapeUnits(bytes, out);
        return;
    }
    for (std::size_t at = bytes.find('&'); at != std::string_view::npos; at = bytes.find('&')) {
        out.append(bytes.substr(0, at + 1)).append(rest_);
        bytes.remove_prefix(at + 1);
    }
    out.append(bytes);
}

void AmpersandEscaper::EscapeUnits(std::string_view bytes, std::string& out) {
    for (const char byte : bytes) {
        out.push_back(byte);
        cut_.push_back(byte);
        if (cut_.size() < unitLength_) continue;
        if (cut_ == ampersand_) out.append(rest_);
        cut_.clear();
    }
}

std::string UnescapeAmpersands(std::string_view text) {
    std::string result;
    result.reserve(text.size());
    for (std::size_t at = text.find('&'); at != std::string_view::npos; at = text.find('&')) {
        result.append(text.substr(0, at + 1));
        text.remove_prefix(at + kEscaped.size());
    }
    return result.append(text);
}

}  // namespace Tool
