// SPDX-License-Identifier: MIT
#include "SourceText.h"

#include <espalier/encoding/Encoding.h>

#include "Utf8.h"

#include <algorithm>
#include <array>

namespace Tool {

namespace {

constexpr char32_t kReplacement = 0xFFFD;

}  // namespace

std::size_t UnitLength(SourceForm form) {
    switch (form) {
    case SourceForm::Utf16LE:
    case SourceForm::Utf16BE: return 2;
    case SourceForm::Ucs4LE:
    case SourceForm::Ucs4BE: return 4;
    case SourceForm::Utf8:
    case SourceForm::Latin1:
    case SourceForm::CodePage: break;
    }
    return 1;
}

SourceForm DetectForm(std::string_view head, std::string_view encoding) {
    using std::string_view_literals::operator""sv;
    if (head.starts_with("\xFF\xFE\0\0"sv) || head.starts_with("<\0\0\0"sv)) {
        return SourceForm::Ucs4LE;
    }
    if (head.starts_with("\0\0\xFE\xFF"sv) || head.starts_with("\0\0\0<"sv)) {
        return SourceForm::Ucs4BE;
    }
    if (head.starts_with("\xFF\xFE"sv) || head.starts_with("<\0"sv)) return SourceForm::Utf16LE;
    if (head.starts_with("\xFE\xFF"sv) || head.starts_with("\0<"sv)) return SourceForm::Utf16BE;
    return encoding == "ISO-8859-1" ? SourceForm::Latin1 : SourceForm::Utf8;
}

std::string_view SourceDecoder::Decode(std::string_view bytes) {
    text_.clear();
    if (form_ == SourceForm::Utf8) {
        const bool drops = atStart_ && badBytes_ == BadBytes::Shown;
        if (drops && bytes.starts_with("\xEF\xBB\xBF")) bytes.remove_prefix(3);
        atStart_ = atStart_ && bytes.empty();
        return bytes;
    }
    if (UnitLength(form_) > 1) {
        DecodeUnits(bytes);
    } else if (page_ != nullptr) {
        DecodePage(bytes);
    } else {
        DecodeLatin1(bytes);
    }
    return text_;
}

std::string_view SourceDecoder::Finish() {
    text_.clear();
    if (surrogate_ != 0 || !rest_.empty()) AppendBad();
    surrogate_ = 0;
    rest_.clear();
    return text_;
}

void SourceDecoder::DecodeUnits(std::string_view bytes) {
    const std::size_t length = UnitLength(form_);
    const bool bigEndian = form_ == SourceForm::Utf16BE || form_ == SourceForm::Ucs4BE;
    for (const char byte : bytes) {
        rest_.push_back(byte);
        if (rest_.size() < length) continue;
        if (!bigEndian) std::reverse(rest_.begin(), rest_.end());
        char32_t unit = 0;
        for (const char part : rest_)
            unit = unit << 8 | static_cast<unsigned char>(part);
        rest_.clear();
        AppendUnit(unit);
    }
}

void SourceDecoder::AppendUnit(char32_t unit) {
    const bool isMark = atStart_ && unit == 0xFEFF;
    atStart_ = false;
    if (isMark) return;

    const bool isFirstHalf = unit >= 0xD800 && unit < 0xDC00;
    const bool isSecondHalf = unit >= 0xDC00 && unit < 0xE000;
    if (surrogate_ != 0) {
        const char32_t first = surrogate_;
        surrogate_ = 0;
        if (isSecondHalf) {
            AppendCharacter(text_, 0x10000 + ((first - 0xD800) << 10) + (unit - 0xDC00));
            return;
        }
        AppendBad();
    }
    if (isFirstHalf && UnitLength(form_) == 2) {
        surrogate_ = unit;
    } else if (isFirstHalf || isSecondHalf || unit > 0x10FFFF) {
        AppendBad();
    } else {
        AppendCharacter(text_, unit);
    }
}

void SourceDecoder::DecodeLatin1(std::string_view bytes) {
    for (const char byte : bytes)
        AppendCharacter(text_, static_cast<unsigned char>(byte));
}

void SourceDecoder::DecodePage(std::string_view bytes) {
    for (const char byte : bytes) {
        if (rest_.empty() && static_cast<unsigned char>(byte) < 0x80) {
            text_.push_back(byte);
            continue;
        }
        rest_.push_back(byte);
        while (!rest_.empty() && DecodeRest())
            continue;
    }
}

// Decodes one character of `rest_`; false when it needs more bytes.
bool SourceDecoder::DecodeRest() {
    std::array<unsigned char, 8> character;
    unsigned consumed = 0;
    const unsigned length = Xml::Encoding::ConvertChar(
        page_, Xml::Encoding::UTF8(), reinterpret_cast<const unsigned char*>(rest_.data()),
        static_cast<unsigned>(rest_.size()), character.data(),
        static_cast<unsigned>(character.size()), consumed);
    if (consumed == 0) return false;
    const std::string_view text(reinterpret_cast<const char*>(character.data()), length);
    // No byte above 0x7F stands for a question mark but one that is no character.
    if (text == "?" && rest_.front() != '?') {
        AppendBad();
    } else {
        text_.append(text);
    }
    rest_.erase(0, consumed);
    return true;
}

void SourceDecoder::AppendBad() {
    if (badBytes_ == BadBytes::Kept) {
        text_.push_back('\xFF');
    } else {
        AppendCharacter(text_, kReplacement);
    }
}

}  // namespace Tool
