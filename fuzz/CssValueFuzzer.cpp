// SPDX-License-Identifier: MIT
//
// Reads arbitrary bytes as a value, as a list of values, as a list of media, and from every place
// on, by each of the helpers. What a helper refuses it leaves where it is.

#include <espalier/css.h>
#include <espalier/dom/DOMException.h>

#include "CssInput.h"
#include "ReaderStory.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <string>

namespace {

using Dom::CSS::CSSPrimitiveValue;
using Dom::CSS::CSSValueList;
using Dom::StyleSheets::MediaList;
using fuzz::Require;

constexpr char kBefore[] = "before";
constexpr std::size_t kMostPlaces = 64;  // that the helpers read from
constexpr std::size_t kMostMedia = 32;   // that are looked for

template <typename Call>
bool Succeeds(Call call) {
    try {
        call();
        return true;
    } catch (const Dom::DOMException&) {
        return false;
    }
}

bool IsNumber(CSSPrimitiveValue::UnitTypes type) {
    return type >= CSSPrimitiveValue::CSS_NUMBER && type <= CSSPrimitiveValue::CSS_DIMENSION;
}

bool IsString(CSSPrimitiveValue::UnitTypes type) {
    return type >= CSSPrimitiveValue::CSS_STRING && type <= CSSPrimitiveValue::CSS_ATTR;
}

// Each part of a value can be had of one kind only.
void CheckParts(const CSSPrimitiveValue& value) {
    const CSSPrimitiveValue::UnitTypes type = value.PrimitiveType();
    Require(Succeeds([&] { value.GetStringValue(); }) == IsString(type));
    Require(Succeeds([&] { value.GetCounterValue(); }) == (type == CSSPrimitiveValue::CSS_COUNTER));
    Require(Succeeds([&] { value.GetRectValue(); }) == (type == CSSPrimitiveValue::CSS_RECT));
    Require(Succeeds([&] { value.GetRGBColorValue(); }) ==
            (type == CSSPrimitiveValue::CSS_RGBCOLOR));
    for (unsigned number = 0; number <= CSSPrimitiveValue::CSS_RGBCOLOR + 1; ++number) {
        const auto unit = static_cast<CSSPrimitiveValue::UnitTypes>(number);
        const bool isThere = Succeeds([&] { value.GetFloatValue(unit); });
        if (!IsNumber(unit)) Require(!isThere);
        if (IsNumber(unit) && unit < CSSPrimitiveValue::CSS_CM) Require(isThere);
    }
}

void CheckPrimitive(const std::string& text) {
    float number = -1.25F;
    astring string = kBefore;
    const auto type = Dom::CSS::ParsePrimitive(text.c_str(), number, string);
    Require(IsNumber(type) || number == -1.25F);
    if (IsNumber(type) || type == CSSPrimitiveValue::CSS_UNKNOWN) Require(string == kBefore);

    CSSPrimitiveValue value(nullptr, text.c_str());
    CheckParts(value);
    const char* behindSpace = text.c_str();
    if (!CssHelpers::ParseWhitespace(behindSpace)) Require(value.PrimitiveType() == type);
    const std::unique_ptr<CSSPrimitiveValue> clone(value.Clone());
    Require(clone->CssText() == value.CssText() && clone->PrimitiveType() == value.PrimitiveType());
    value.SetCssText(value.CssText());
    CheckParts(value);
}

void CheckList(const std::string& text) {
    CSSValueList list(text.c_str(), ',');
    Require(list.Length() <= text.size() + 1);
    const CSSValueList copy(list);
    Require(copy.CssText() == list.CssText() && copy.Separator() == list.Separator());
    for (const Dom::CSS::CSSValue* const item : list)
        Require(item->CssValueType() == Dom::CSS::CSSValue::CSS_PRIMITIVE_VALUE);
    list.SetCssText(list.CssText());
    list = copy;
    Require(list.CssText() == copy.CssText());
}

void CheckMedia(const std::string& text) {
    MediaList media(text);
    const std::size_t length = media.Length();
    for (std::size_t i = 0; i < std::min(length, kMostMedia); ++i)
        Require(!media.Item(i).empty() && media.Contains(media.Item(i)));
    Require(media.Item(length).empty());
    media.DeleteMedium(media.Item(length / 2));
    Require(media.Length() == (length == 0 ? 0 : length - 1));
    media.AppendMedium("print");
    Require(media.Length() >= 1);
}

// Calls a helper that moves a place, and returns whether it did.
template <typename Parse, typename Result>
bool CheckHelper(Parse parse, const char* begin, const char* end, Result& result) {
    const Result before = result;
    const char* place = begin;
    if (!parse(place, result)) {
        Require(place == begin && result == before);
        return false;
    }
    Require(place > begin && place <= end);
    return true;
}

using ParseText = bool (*)(const char*&, astring&);
constexpr ParseText kAppending[] = {CssHelpers::ParseEscape, CssHelpers::ParseIdent,
                                    CssHelpers::ParseName, CssHelpers::ParseString};
using ReadText = bool (*)(const char*, astring&);
constexpr ReadText kReading[] = {CssHelpers::ParseUrl, CssHelpers::ParseRgbColor,
                                 CssHelpers::ParseAttr, CssHelpers::ParseCounter};

void CheckNumbers(const char* begin, const char* end) {
    int hex = -1;
    CheckHelper(CssHelpers::ParseHexValue, begin, end, hex);
    long integer = -7;
    if (CheckHelper(CssHelpers::ParseInteger, begin, end, integer)) {
        Require(integer >= INT32_MIN && integer <= INT32_MAX);
    }
    astring text;
    unsigned color = 0x1000000;
    const bool isColor = CssHelpers::ParseRgbColor(begin, color);
    Require(isColor == CssHelpers::ParseRgbColor(begin, text) && isColor == (color <= 0xFFFFFF));
    Require(begin == end || CssHelpers::ConvertHexDigit(*begin) < 16);
}

void CheckTexts(const char* begin, const char* end) {
    for (const ParseText parse : kAppending) {
        astring text = kBefore;
        CheckHelper(parse, begin, end, text);
        Require(text.view().starts_with(kBefore));
    }
    for (const ReadText read : kReading) {
        astring text = kBefore;
        const bool isThere = read(begin, text);
        Require(isThere ? text.view().starts_with(kBefore) : text == kBefore);
    }
    astring medium = kBefore;
    if (CheckHelper(CssHelpers::ParseMedium, begin, end, medium)) Require(!medium.empty());
    const char* place = begin;
    Require(CssHelpers::ParseWhitespace(place) == (place > begin));
    place = begin;
    Require(CssHelpers::ParseCommaWhitespace(place) == (place > begin));
}

// An identifier is a name that begins in a certain way.
void CheckIdent(const char* begin) {
    astring ident;
    const char* behindIdent = begin;
    if (!CssHelpers::ParseIdent(behindIdent, ident)) return;
    astring name;
    const char* behindName = begin;
    Require(CssHelpers::ParseName(behindName, name));
    Require(behindName == behindIdent && name == ident);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text = fuzz::CssInput(data, size).Text();
    CheckPrimitive(text);
    CheckList(text);
    CheckMedia(text);
    const char* const end = text.c_str() + text.size();
    const char* const last = text.c_str() + std::min(text.size(), kMostPlaces);
    for (const char* place = text.c_str(); place <= last; ++place) {
        CheckNumbers(place, end);
        CheckTexts(place, end);
        CheckIdent(place);
    }
    return 0;
}
