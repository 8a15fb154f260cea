// SPDX-License-Identifier: MIT
#include "encoding/PageTexts.h"

#include "encoding/Codecs.h"

#include <cstdint>
#include <iconv.h>
#include <random>
#include <stdexcept>

namespace bench {

Iconv::Iconv(const char* from, const char* to) : converter_(iconv_open(to, from)) {
    // It returns minus one, as a pointer.
    if (reinterpret_cast<std::intptr_t>(converter_) == -1) {
        throw std::runtime_error(std::string("iconv does not know ") + from + " or " + to);
    }
}

Iconv::~Iconv() { iconv_close(converter_); }

std::size_t Iconv::Convert(const std::string& source, std::string& output) {
    char* sourceAt = const_cast<char*>(source.data());  // iconv does not write there
    char* outputAt = output.data();
    std::size_t sourceLeft = source.size(), outputLeft = output.size();
    iconv(converter_, nullptr, nullptr, nullptr, nullptr);
    if (iconv(converter_, &sourceAt, &sourceLeft, &outputAt, &outputLeft) != 0) {
        throw std::runtime_error("iconv cannot convert the text");
    }
    return output.size() - outputLeft;
}

namespace {

// How words are made.
struct Script {
    std::vector<std::string> syllables;  // UTF-8
    unsigned mostSyllables;              // of a word
    const char* between;                 // words
    const char* end;                     // of a sentence
};

// The characters are such that they are UTF-8 here and there: none of a Windows page is above
// U+07FF.
const Script kFrench = {
    {"a",  "e",    "i",    "an",  "en",     "on",     "er",     "re",     "te",     "de",
     "la", "ment", "tion", "que", "\u00E9", "\u00E8", "\u00E0", "\u00E7", "\u00EA", "\u0153"},
    4,
    " ",
    ". "};
const Script kRussian = {{"\u043E",
                          "\u0435",
                          "\u0430",
                          "\u0438",
                          "\u043D\u0430",
                          "\u043F\u043E",
                          "\u0441\u0442",
                          "\u0440\u043E",
                          "\u043A\u043E",
                          "\u043D\u0435",
                          "\u0442\u043E",
                          "\u0433\u043E",
                          "\u043D\u0438",
                          "\u0440\u0435",
                          "\u043F\u0440\u0438",
                          "\u043E\u0432\u0430",
                          "\u0435\u043D\u0438\u0435",
                          "\u044B\u0439",
                          "\u044F",
                          "\u0441\u043A\u0438"},
                         4,
                         " ",
                         ". "};

// The characters of the rows from `first` to `last` in a plane, the frequent ones first, as far as
// the order of the rows tells.
std::vector<std::string> CharactersOf(const char* iconvName, int first, int last) {
    Iconv toUtf8(iconvName, "UTF-8");
    std::vector<std::string> characters;
    for (int row = first; row <= last; ++row) {
        for (int column = 0xA1; column <= 0xF9; ++column) {
            std::string character(4, '\0');
            const std::string pair = {static_cast<char>(row), static_cast<char>(column)};
            character.resize(toUtf8.Convert(pair, character));
            characters.push_back(std::move(character));
        }
    }
    return characters;
}

std::string MakeText(const Script& script, std::size_t size) {
    std::mt19937 random(1);  // any fixed number
    // Few syllables are frequent and many are rare, as in any text.
    std::vector<double> weights;
    for (std::size_t rank = 0; rank < script.syllables.size(); ++rank)
        weights.push_back(1.0 / static_cast<double>(rank + 10));
    std::discrete_distribution<std::size_t> syllable(weights.begin(), weights.end());
    std::string text;
    while (text.size() < size) {
        for (auto words = 5 + random() % 20; words > 0; --words) {
            for (auto length = 1 + random() % script.mostSyllables; length > 0; --length)
                text += script.syllables[syllable(random)];
            text += words > 1 ? script.between : script.end;
        }
        if (random() % 3 == 0) text += '\n';
    }
    return text;
}

PageText Make(const char* title, const char* iconvName, const Xml::detail::CharCodec& codec,
              const Script& script) {
    constexpr std::size_t kSize = 2'000'000;  // in UTF-8
    const std::string text = MakeText(script, kSize);
    std::string bytes(text.size(), '\0');
    bytes.resize(Iconv("UTF-8", iconvName).Convert(text, bytes));
    return {title, iconvName, &codec, std::move(bytes)};
}

}  // namespace

std::vector<PageText> MakePageTexts() {
    using namespace Xml::detail;
    const Script chinese = {CharactersOf("EUC-CN", 0xB0, 0xD6), 12, "\uFF0C", "\u3002"};
    const Script korean = {CharactersOf("EUC-KR", 0xB0, 0xC7), 4, " ", ". "};
    std::vector<PageText> texts;
    texts.push_back(Make("windows-1252, French", "CP1252", Windows1252Codec(), kFrench));
    texts.push_back(Make("windows-1251, Russian", "CP1251", Windows1251Codec(), kRussian));
    texts.push_back(Make("GB2312, Chinese", "EUC-CN", Gb2312Codec(), chinese));
    texts.push_back(Make("EUC-KR, Korean", "EUC-KR", EucKrCodec(), korean));
    return texts;
}

}  // namespace bench
