// SPDX-License-Identifier: MIT
//
// Style sheets that are in use (scripts/fetch-sheets), read by CssReader and by tinycss2 for
// Python. These sheets have names that CssReader does not take ("-webkit-appearance", "--bs-blue")
// and at-rules. So two things are compared: the rules before the first of these, and all the rules
// of the sheet when they are cut out, names of properties included.
#include <espalier/dom/DOMException.h>
#include <espalier/dom/css/CSSStyleRule.h>
#include <espalier/dom/css/CSSStyleSheet.h>

#include "SheetOracle.h"
#include "dom/css/CssText.h"
#include "support/FileTest.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <filesystem>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace {

using differential::FindPython;
using differential::Plain;
using Dom::CSS::CssNodeType;
using Dom::CSS::CSSRule;
using Dom::CSS::CSSStyleRule;
using Dom::CSS::CSSStyleSheet;

// Returns a line for each rule: the selectors and the names of the properties, with tabs between
// them.
std::string ListRules(std::string_view sheet) {
    support::CssText reader(sheet);
    std::string list;
    while (reader->Read()) {
        switch (reader->NodeType()) {
        case CssNodeType::Selector: list += Plain(reader->Value().str()); break;
        case CssNodeType::Property: list += "\t" + reader->Name().str(); break;
        case CssNodeType::EndDecl: list += "\n"; break;
        default: break;
        }
    }
    return list;
}

std::vector<std::string> RulesOf(std::string_view sheet) {
    support::CssText reader(sheet);
    std::vector<std::string> rules;
    while (reader->Read()) {
        const astring rule = reader->ReadRule();
        if (!rule.empty()) rules.push_back(rule.str());
    }
    return rules;
}

class SheetsTest : public support::FileTest, public testing::WithParamInterface<const char*> {
protected:
    void SetUp() override {
        const std::string path = std::string(ESPALIER_SHEETS) + "/" + GetParam() + ".css";
        if (!std::filesystem::exists(path)) GTEST_SKIP() << path << " is not there";
        const std::string python = FindPython();
        if (python.empty()) GTEST_SKIP() << "tinycss2 for Python is not installed";
        const std::string command = python + " " ESPALIER_UNDERSTOOD_RULES " " + path + " " +
                                    Path("first") + " " + Path("cut") + " " + Path("rules");
        ASSERT_EQ(std::system(command.c_str()), 0) << command;
        sheet_ = Content(path);
        cut_ = Content(Path("cut"));
        rules_ = Content(Path("rules"));
        std::istringstream(Content(Path("first"))) >> first_ >> what_;
    }

    std::size_t RuleCount() const {
        return static_cast<std::size_t>(std::count(rules_.begin(), rules_.end(), '\n'));
    }

    std::string sheet_;      // as it was made
    std::string cut_;        // without what CssReader does not understand
    std::string rules_;      // of that, as tinycss2 sees them
    std::size_t first_ = 0;  // rules of the sheet up to what is not understood, ...
    std::string what_;       // ... and what that is
};

TEST_P(SheetsTest, RulesAreReadUpToWhatIsNotUnderstood) {
    const std::vector<std::string> rules = RulesOf(sheet_);
    if (what_ == "at-rule") {
        ASSERT_GT(rules.size(), first_);
        EXPECT_EQ(rules[first_][0], '@');
    } else {
        // The rule with such a declaration is the last one.
        EXPECT_EQ(rules.size(), first_);
    }
    for (std::size_t i = 0; i < first_; ++i)
        EXPECT_NE(rules[i][0], '@') << rules[i];
}

TEST_P(SheetsTest, AllRulesAreReadWhenEverythingIsUnderstood) {
    EXPECT_GT(RuleCount(), 500U);
    EXPECT_EQ(RulesOf(cut_).size(), RuleCount());
    // Line by line, for the first difference is what one wants to see.
    std::istringstream ours(ListRules(cut_));
    std::istringstream theirs(rules_);
    for (std::string our, their; std::getline(theirs, their);) {
        ASSERT_TRUE(std::getline(ours, our)) << "ends before " << their;
        ASSERT_EQ(our, their);
    }
}

// A sheet refuses some of the selectors of later levels, and "!" and ";" in strings.
TEST_P(SheetsTest, ASheetTakesTheRulesOfCss2) {
    CSSStyleSheet sheet(CSSRule::Author, nullptr, "", "");
    for (const std::string& rule : RulesOf(cut_)) {
        SCOPED_TRACE(rule);
        const unsigned before = sheet.CssRules().Length();
        try {
            sheet.InsertRule(rule.c_str(), before);
        } catch (const Dom::DOMException& exception) {
            EXPECT_EQ(exception.Code(), Dom::DOMException::SYNTAX_ERR);
            EXPECT_EQ(sheet.CssRules().Length(), before);
            const std::string selectors = rule.substr(0, rule.find('{'));
            EXPECT_TRUE(selectors.find("::") != std::string::npos ||
                        selectors.find_first_of("~[") != std::string::npos);
            continue;
        }
        ASSERT_EQ(sheet.CssRules().Length(), before + 1);
        const auto* const made = static_cast<const CSSStyleRule*>(sheet.CssRules().Item(before));
        EXPECT_EQ(Plain(made->SelectorText().str()), Plain(rule.substr(0, rule.find('{'))));
        EXPECT_GE(made->Specificity(), 0);
    }
    EXPECT_GT(sheet.CssRules().Length(), RuleCount() / 2);
}

INSTANTIATE_TEST_SUITE_P(Fetched, SheetsTest, testing::ValuesIn(differential::kSheets),
                         [](const auto& sheet) { return differential::TestName(sheet); });

}  // namespace
