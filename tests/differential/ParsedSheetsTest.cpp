// SPDX-License-Identifier: MIT
//
// Style sheets that are in use (scripts/fetch-sheets), and damaged copies of one of them, read by
// ParseStyleSheet() and by tinycss2 for Python: all rules with their lines, also those in others,
// and the names and the importance of all declarations must be the same.
#include <espalier/dom/css/CSSFontFaceRule.h>
#include <espalier/dom/css/CSSMediaRule.h>
#include <espalier/dom/css/CSSPageRule.h>
#include <espalier/dom/css/CSSStyleRule.h>
#include <espalier/dom/css/ParseStyleSheet.h>

#include "SheetOracle.h"
#include "support/FileTest.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace {

using Dom::CSS::CSSRule;
using Dom::CSS::CSSRuleList;

// The quotation marks of strings are those of tinycss2.
std::string Head(std::string text) {
    std::replace(text.begin(), text.end(), '\'', '"');
    return differential::Plain(text);
}

// Tells whether a name is that of a shorthand which is taken apart unless its value is not valid.
bool IsShorthand(std::string name) {
    constexpr const char* kShorthands[] = {"margin",        "padding",      "background",
                                           "border",        "border-width", "border-style",
                                           "border-color",  "border-top",   "border-right",
                                           "border-bottom", "border-left"};
    std::ranges::transform(name, name.begin(), [](unsigned char c) { return std::tolower(c); });
    return std::ranges::find(kShorthands, name) != std::end(kShorthands);
}

void ListStyle(std::string& list, const Dom::CSS::CSSStyleDeclaration& style) {
    for (const Dom::CSS::CSSPropertyImpl* const property : style.Properties()) {
        const std::string name = property->Name().str();
        // A star before a name is no CSS.
        if (property->Shorthand() || IsShorthand(name) || name.starts_with('*')) continue;
        list += "\t" + name + (property->Important() ? "!" : "");
    }
}

bool IsInName(char c) { return std::isalnum(c) != 0 || c == '-' || c == '_'; }

// Returns what stands before the block of a rule with "@", or before its end; of rules that are not
// known only the name.
std::string AtHead(const CSSRule& rule) {
    const std::string text = rule.CssText().str();
    switch (rule.Type()) {
    case CSSRule::MEDIA_RULE:
    case CSSRule::SUPPORTS_RULE: {
        const auto& group = static_cast<const Dom::CSS::CSSGroupingRule&>(rule);
        return Head(text.substr(0, text.find(' ')) + " " + group.ConditionText().str());
    }
    case CSSRule::UNKNOWN_RULE: {
        return {text.begin(), std::find_if_not(text.begin() + 1, text.end(), IsInName)};
    }
    default: return Head(text.substr(0, text.find(';')));
    }
}

void ListRules(std::string& list, const CSSRuleList& rules, int depth) {
    for (const CSSRule* const rule : rules) {
        list += std::to_string(rule->Place().line) + " " + std::to_string(depth) + "\t";
        switch (rule->Type()) {
        case CSSRule::STYLE_RULE: {
            const auto& style = static_cast<const Dom::CSS::CSSStyleRule&>(*rule);
            list += Head(style.SelectorText().str());
            ListStyle(list, style.Style());
            break;
        }
        case CSSRule::FONT_FACE_RULE:
            list += "@font-face";
            ListStyle(list, static_cast<const Dom::CSS::CSSFontFaceRule&>(*rule).Style());
            break;
        case CSSRule::PAGE_RULE: {
            const auto& page = static_cast<const Dom::CSS::CSSPageRule&>(*rule);
            list += Head("@page " + page.SelectorText().str());
            ListStyle(list, page.Style());
            break;
        }
        default: list += AtHead(*rule); break;
        }
        list += "\n";
        if (rule->Type() == CSSRule::MEDIA_RULE || rule->Type() == CSSRule::SUPPORTS_RULE) {
            ListRules(list, static_cast<const Dom::CSS::CSSGroupingRule&>(*rule).CssRules(),
                      depth + 1);
        }
    }
}

class ParsedSheetsTest : public support::FileTest, public testing::WithParamInterface<const char*> {
protected:
    void SetUp() override {
        path_ = std::string(ESPALIER_SHEETS) + "/" + GetParam() + ".css";
        if (!std::filesystem::exists(path_)) GTEST_SKIP() << path_ << " is not there";
        python_ = differential::FindPython();
        if (python_.empty()) GTEST_SKIP() << "tinycss2 for Python is not installed";
    }

    // Has tinycss2 tell the outlines of some files.
    std::istringstream Outlines(const std::string& paths) {
        const std::string command =
            python_ + " " ESPALIER_SHEET_OUTLINE " " + paths + " >" + Path("outline");
        EXPECT_EQ(std::system(command.c_str()), 0) << command;
        return std::istringstream(Content(Path("outline")));
    }

    std::string path_;
    std::string python_;
};

// Compares what we make of a sheet with the lines up to the next "end". Whether something is a
// selector is not asked of tinycss2: those that we refuse are passed over.
// Returns how many rules were compared.
int Compare(const std::string& sheet, std::istringstream& theirs) {
    std::string list;
    ListRules(list, Dom::CSS::ParseStyleSheet(sheet)->CssRules(), 0);
    std::istringstream ours(list);
    std::string our;
    int count = 0;
    for (std::string their; std::getline(theirs, their) && their != "end";) {
        const std::size_t begin = their.find('\t') + 1;
        const std::size_t end = std::min(their.find('\t', begin), their.size());
        const std::string head = Head(their.substr(begin, end - begin));
        const bool isAtRule = head.size() > 1 && head[0] == '@' && IsInName(head[1]);
        if (!isAtRule && Dom::CSS::ParseStyleSheet(head + "{}")->CssRules().Length() == 0) {
            continue;
        }
        if (!std::getline(ours, our)) our = "the end";
        // Of a string that its line ends tinycss2 does not say what it was.
        if (head.find("[bad string]") != std::string::npos) continue;
        their = their.substr(0, begin) + head + their.substr(end);
        EXPECT_EQ(our, their);
        if (our == their) ++count;
    }
    EXPECT_FALSE(std::getline(ours, our)) << our;
    return count;
}

TEST_P(ParsedSheetsTest, AllRulesAreTheSame) {
    std::istringstream theirs = Outlines(path_);
    EXPECT_GT(Compare(Content(path_), theirs), 700);
}

// Cuts pieces out of a sheet and puts characters into them that begin or end something. Not
// backslashes: tinycss2 prints escapes in another form.
TEST_P(ParsedSheetsTest, DamagedPiecesRecoverInTheSameWay) {
    constexpr std::size_t kLength = 1500;
    constexpr int kPieces = 150;
    constexpr std::string_view kDamage = "{}()[]\"';:!@/*<>-,.# \n";
    const std::string sheet = Content(path_);
    std::mt19937 random(20261121);
    const auto below = [&random](std::size_t limit) { return random() % limit; };
    std::vector<std::string> pieces;
    std::string paths;
    for (int i = 0; i < kPieces; ++i) {
        std::string piece = sheet.substr(below(sheet.size() - kLength), kLength);
        std::erase_if(piece,
                      [](char character) { return static_cast<signed char>(character) < 0; });
        for (std::size_t edits = below(5); edits > 0; --edits) {
            const char damage = kDamage[below(kDamage.size())];
            piece.insert(below(piece.size()), 1, damage);
        }
        pieces.push_back(piece);
        const std::string path = Path("piece" + std::to_string(i));
        std::ofstream(path, std::ios::binary) << piece;
        paths += " " + path;
    }
    std::istringstream theirs = Outlines(paths);
    int count = 0;
    for (const std::string& piece : pieces) {
        count += Compare(piece, theirs);
        if (HasFailure()) FAIL() << piece;
    }
    EXPECT_GT(count, kPieces);
}

INSTANTIATE_TEST_SUITE_P(Fetched, ParsedSheetsTest, testing::ValuesIn(differential::kSheets),
                         [](const auto& sheet) { return differential::TestName(sheet); });

}  // namespace
