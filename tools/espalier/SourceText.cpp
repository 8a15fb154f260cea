// SPDX-License-Identifier: MIT
#include "SourceText.h"

#include "Utf8.h"

#include <algorithm>
#include <initializer_list>

namespace Tool {

namespace {

constexpr char32_t kReplacement = 0xFFFD;

bool IsOneOf(std::string_view name, std::initializer_list<std::string_view> names) {
    return std::find(names.begin(), names.end(), name) != names.end();
}

}  // namespace

std::size_t UnitLength(SourceForm form) {
    switch (form) {
    case SourceForm::Utf16LE:
    case SourceForm::Utf16BE: return 2;
    case SourceForm::Ucs4LE:
    case SourceForm::Ucs4BE: return 4;
    case SourceForm::Utf8:
    case SourceForm::Latin1:
    case SourceForm::SingleByte:
    case SourceForm::DoubleByte: break;
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
    if (encoding == "ISO-8859-1") return SourceForm::Latin1;
    if (IsOneOf(encoding, {"GB2312", "EUC-KR"})) return SourceForm::DoubleByte;
    if (IsOneOf(encoding, {"", "UTF-8", "ASCII"})) return SourceForm::Utf8;
    return SourceForm::SingleByte;
}

std::string_view SourceDecoder::Decode(std::string_view bytes) {
    text_.clear();
    if (form_ == SourceForm::Utf8) {
        if (atStart_ && bytes.starts_with("\xEF\xBB\xBF")) bytes.remove_prefix(3);
        atStart_ = atStart_ && bytes.empty();
        return bytes;
    }
    if (UnitLength(form_) == 1) {
        DecodeBytes(bytes);
    } else {
        DecodeUnits(bytes);
    }
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
        AppendCharacter(text_, kReplacement);
    }
    if (isFirstHalf && UnitLength(form_) == 2) {
        surrogate_ = unit;
    } else {
        AppendCharacter(text_,
                        isFirstHalf || isSecondHalf || unit > 0x10FFFF ? kReplacement : unit);
    }
}

void SourceDecoder::DecodeBytes(std::string_view bytes) {
    for (const char byte : bytes) {
        const char32_t code = static_cast<unsigned char>(byte);
        if (code < 0x80 || form_ == SourceForm::Latin1) {
            rest_.clear();
            AppendCharacter(text_, code);
        } else if (form_ == SourceForm::DoubleByte && rest_.empty()) {
            rest_.push_back(byte);
        } else {
            rest_.clear();
            AppendCharacter(text_, kReplacement);
        }
    }
}

}  // namespace Tool
