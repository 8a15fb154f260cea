// SPDX-License-Identifier: MIT
#include "dom/css/RepeatedText.h"
#include "dom/css/computed/VariableSubstitution.h"
#include "support/PrintAstring.h"

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <string_view>

using namespace Dom::CSS::detail;

namespace {

const std::map<std::string_view, std::string_view> kVariables = {
    {"--a", "1px"},   {"--b", " red "},   {"--empty", ""},     {"--A", "2px"},      {"--one", "1"},
    {"--x-y_z", "3"}, {"--paren", "(1)"}, {"--\xC3\xA9", "4"}, {"--list", "a, (b)"}};

std::optional<std::string_view> Lookup(std::string_view name) {
    const auto found = kVariables.find(name);
    if (found == kVariables.end()) return {};
    return found->second;
}

// Returns "(none)" where a value has no result.
std::string Substituted(std::string_view value) {
    const std::optional<astring> result = SubstituteVariables(value, Lookup);
    return result ? std::string(result->view()) : "(none)";
}

}  // namespace

// CSS Custom Properties Level 1 section 3.
TEST(VariableSubstitution, PutsValuesInPlaceOfVariables) {
    const struct {
        std::string_view value;
        std::string_view expected;
    } kCases[] = {
        {"", ""},
        {"red", "red"},
        {"var(--a)", "1px"},
        {"VAR(--a)", "1px"},  // functions are the same in any case
        {"var(--A)", "2px"},  // but names of custom properties are not
        {"var( --a )", "1px"},
        {"var(/* c */--a/**/)", "1px"},
        {"solid var(--b) var(--a)", "solid red 1px"},
        {"calc(var(--a) * 2)", "calc(1px * 2)"},
        {"rgb(var(--one),var(--one), 2)", "rgb(1,1, 2)"},
        {"var(--x-y_z)", "3"},
        {"var(--\xC3\xA9)", "4"},
        {"var(--empty)", ""},
        {"a var(--empty) b", "a  b"},
        {"var(--list)", "a, (b)"},
    };
    for (const auto& test : kCases)
        EXPECT_EQ(Substituted(test.value), test.expected) << test.value;
}

TEST(VariableSubstitution, TakesTheFallbackWhereThereIsNoValue) {
    const struct {
        std::string_view value;
        std::string_view expected;
    } kCases[] = {
        {"var(--no, 5px)", "5px"},
        {"var(--no,5px )", "5px"},
        {"var(--no,)", ""},
        {"var(--no, )", ""},
        {"var(--no, a, b)", "a, b"},  // what is behind the first comma, with others
        {"var(--no, rgb(1, 2, 3))", "rgb(1, 2, 3)"},
        {"var(--a, 5px)", "1px"},
        {"var(--empty, 5px)", ""},  // an empty value is one
        {"var(--no, var(--a))", "1px"},
        {"var(--no, var(--no, var(--a)))", "1px"},
        {"var(--no, var(--no, 7px)) 1px", "7px 1px"},
        {"var(--a, var(--no))", "1px"},  // what is not needed needs no value
        {"var(--a, [var(--no)]) x", "1px x"},
        {"var(--no, calc(1px + var(--a)))", "calc(1px + 1px)"},
    };
    for (const auto& test : kCases)
        EXPECT_EQ(Substituted(test.value), test.expected) << test.value;
}

TEST(VariableSubstitution, LeavesOtherTokensAlone) {
    for (const std::string_view value :
         {"\"var(--a)\"", "'var(--a)'", "\"\\\"var(--a)\"", "/* var(--a) */", "url(var\\(--a\\))",
          "url( x\\)var--a)", "xvar(--a)", "-var(--a)", "1var(--a)", "#var(--a)", "var", "var-x",
          "a\\(var", "calc(1px + 2px)", "counter(var)"}) {
        EXPECT_FALSE(HasVariables(value)) << value;
        EXPECT_EQ(Substituted(value), value);
    }
    EXPECT_EQ(Substituted("'\\'' var(--a)"), "'\\'' 1px");
    EXPECT_EQ(Substituted("url(x) var(--a)"), "url(x) 1px");
    EXPECT_EQ(Substituted("url('x') var(--a)"), "url('x') 1px");
}

TEST(VariableSubstitution, TellsWhetherThereAreVariables) {
    for (const std::string_view value : {"var(--a)", "1px var(--a)", "calc(var(--a))", "Var(",
                                         "rgb(1,var(--a),2)", "url('x') var(--a)"}) {
        EXPECT_TRUE(HasVariables(value)) << value;
    }
}

// CSS Syntax Level 3 section 9: what a variable stands for is tokens, which do not join others.
TEST(VariableSubstitution, KeepsTokensApart) {
    EXPECT_EQ(Substituted("var(--one)px"), "1 px");
    EXPECT_EQ(Substituted("var(--one)var(--one)"), "1 1");
    EXPECT_EQ(Substituted("var(--one)%"), "1 %");
    EXPECT_EQ(Substituted("var(--b)var(--paren)"), "red (1)");
    EXPECT_EQ(Substituted("var(--no,1)px"), "1 px");
    EXPECT_EQ(Substituted("var(--one),var(--one)"), "1,1");
    EXPECT_EQ(Substituted("(var(--one))"), "(1)");
}

TEST(VariableSubstitution, HasNoResultForWhatIsWrong) {
    const struct {
        std::string_view value;
        const char* reason;
    } kCases[] = {
        {"var(--no)", "there is no value"},
        {"1px var(--no)", "there is no value"},
        {"var(--no, var(--no))", "nor for the fallback"},
        {"var()", "no name"},
        {"var( )", "no name"},
        {"var(a)", "no name of a custom property"},
        {"var(-a)", "no name of a custom property"},
        {"var(--)", "a name that is reserved"},
        {"var(--a b)", "neither a comma nor the end"},
        {"var(--a;)", "neither a comma nor the end"},
        {"var(--a", "no end"},
        {"var(--a,", "no end"},
        {"var(--no, (1)", "no end"},
        {"var(", "no end"},
        {"var(--a))", "nothing to close"},
        {"var(--no, ])", "nothing to close"},
        {"(var(--a)]", "another bracket"},
        // CSS Syntax Level 3 section 4.3.14: an address with "(" is a bad one, up to the first ")".
        {"url(var(--a))", "nothing to close"},
        {"var(--a, var(a))", "no name in what is not needed"},
    };
    for (const auto& test : kCases)
        EXPECT_EQ(Substituted(test.value), "(none)") << test.value << ": " << test.reason;
}

TEST(VariableSubstitution, HasABoundForTheResult) {
    constexpr std::size_t kBound = 65536;
    const std::string value(kBound, 'x');
    const VariableLookup lookup = [&value](std::string_view) { return std::string_view(value); };
    const auto fits = SubstituteVariables("var(--x)", lookup);
    ASSERT_TRUE(fits);
    EXPECT_EQ(fits->size(), kBound);
    EXPECT_FALSE(SubstituteVariables("var(--x)/", lookup));
    EXPECT_FALSE(SubstituteVariables("var(--x) var(--x)", lookup));
    // One that is not needed does not count.
    EXPECT_TRUE(SubstituteVariables("var(--x, " + value + ")", lookup));
}

TEST(VariableSubstitutionHostile, NestsWithoutABoundForTheStack) {
    constexpr int kDepth = 200'000;
    const std::string fallbacks = Repeated("var(--no,", kDepth) + "1px" + Repeated(")", kDepth);
    EXPECT_EQ(Substituted(fallbacks), "1px");
    EXPECT_EQ(Substituted(Repeated("(", kDepth)), "(none)");  // more than fits
    EXPECT_EQ(Substituted("var(--a," + Repeated("[", kDepth) + Repeated("]", kDepth) + ")"), "1px");
    EXPECT_EQ(Substituted(Repeated("var(--no,", kDepth)), "(none)");
    EXPECT_EQ(Substituted("var(--a," + Repeated("'", kDepth) + ")"), "1px");
    EXPECT_EQ(Substituted("var(--a," + Repeated("/*", kDepth)), "(none)");
    EXPECT_TRUE(HasVariables(Repeated("url(", kDepth) + ") var(--a)"));
}
