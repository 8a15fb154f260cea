// SPDX-License-Identifier: MIT
#include <espalier/dom/css/CSSStyleRule.h>

#include "dom/css/StyledPage.h"

#include <gtest/gtest.h>

#include <string>

// Documents and sheets that are made to be slow or large. None of these may take more than a moment
// or more memory than in proportion to the input; the limits of the test run would tell.

namespace {

using Dom::CSS::ComputedStyle;
using support::StyledPage;

std::string Repeated(std::string_view text, int count) {
    std::string result;
    for (int i = 0; i < count; ++i)
        result += text;
    return result;
}

std::string Nested(int depth, std::string_view begin, std::string_view inside,
                   std::string_view end) {
    return Repeated(begin, depth) + std::string(inside) + Repeated(end, depth);
}

}  // namespace

TEST(StyleResolverHostileTest, ADeepTree) {
    constexpr int kDepth = 100'000;
    const std::string xml = Nested(kDepth, "<e>", "<last/>", "</e>");
    StyledPage page(xml.c_str(),
                    "e { border-style: inherit; text-indent: 1em } e e last { color: "
                    "red } x e last { color: blue } e > e { font-size: 101% }");
    EXPECT_EQ(page.Value("last", "color"), "rgb(255, 0, 0)");
    EXPECT_EQ(page.Explain("last", "text-indent").kind,
              Dom::CSS::StyleExplanation::Kind::Inherited);
}

TEST(StyleResolverHostileTest, ADeepTreeIsComparedWithRulesForWhatIsNotAbove) {
    constexpr int kDepth = 50'000;
    std::string sheet;
    for (int i = 0; i < 50; ++i)
        sheet += ".menu" + std::to_string(i) + " e { color: red }";
    const std::string xml = Nested(kDepth, "<e>", "<last/>", "</e>");
    StyledPage page(xml.c_str(), sheet);
    EXPECT_EQ(page.Value("last", "color"), "rgb(0, 0, 0)");
}

TEST(StyleResolverHostileTest, VariablesThatDoubleEachOther) {
    std::string sheet = "html { --v0: 0123456789; ";
    for (int i = 1; i < 60; ++i) {
        const std::string before = "var(--v" + std::to_string(i - 1) + ")";
        sheet += "--v" + std::to_string(i) + ": " + before + before + "; ";
    }
    StyledPage page("<html><p/></html>",
                    sheet + "} p { a: var(--v3); b: var(--v59, none); c: var(--v59) }");
    EXPECT_EQ(page.Value("p", "a").size(), 87U) << "with blanks between the copies";
    EXPECT_EQ(page.Value("p", "b"), "none") << "what is too long has no value";
    EXPECT_EQ(page.Value("p", "c"), "");
}

TEST(StyleResolverHostileTest, VariablesThatManyElementsRepeat) {
    const std::string value(60'000, 'v');
    std::string xml = "<html>";
    for (int i = 0; i < 5'000; ++i)
        xml += "<e style='--a" + std::to_string(i) + ":var(--v) " + std::to_string(i) + "'/>";
    StyledPage page((xml + "</html>").c_str(), "html { --v: " + value + " } e { mood: var(--v) }");
    std::size_t bytes = 0;
    for (const Dom::Element* const each : Dom::CSS::QuerySelectorAll(page.document, "e"))
        bytes += page.resolver.StyleOf(*each).Value("mood").size();
    EXPECT_GT(bytes, value.size()) << "the first ones have it";
    EXPECT_LE(bytes, std::size_t{64} << 20U) << "all together have no more than the limit";
}

TEST(StyleResolverHostileTest, VariablesThatReferToManyOthers) {
    constexpr int kCount = 2'000;
    std::string sheet = "html { ";
    for (int i = 0; i < kCount; ++i)
        sheet += "--v" + std::to_string(i) + ": var(--v" + std::to_string(i + 1) + "); ";
    sheet += "--v" + std::to_string(kCount) + ": red } p { color: var(--v" +
             std::to_string(kCount - 10) + ", blue) }";
    StyledPage page("<html><p/></html>", sheet);
    EXPECT_EQ(page.Value("html", "--v" + std::to_string(kCount)), "red");
}

TEST(StyleResolverHostileTest, ManyCustomPropertiesInADeepTree) {
    constexpr int kDepth = 20'000;
    std::string xml = "<html>";
    for (int i = 0; i < kDepth; ++i)
        xml += "<e style='--v" + std::to_string(i) + ":" + std::to_string(i) + "'>";
    xml += "<last/>" + Repeated("</e>", kDepth) + "</html>";
    StyledPage page(xml.c_str(), "last { a: var(--v0); b: var(--v2047); c: var(--v2048, none) }");
    EXPECT_EQ(page.Value("last", "a"), "0");
    EXPECT_EQ(page.Value("last", "b"), "2047");
    EXPECT_EQ(page.Value("last", "c"), "none") << "more are not inherited";
    EXPECT_EQ(page.resolver.StyleOf(page.Element("last")).Names().size(), 2'051U);
}

TEST(StyleResolverHostileTest, ManyChangesOfARule) {
    StyledPage page("<r><p><i/></p><p><i/></p></r>", "p { font-size: 1px } i { margin-top: 1em }");
    auto& rule = static_cast<Dom::CSS::CSSStyleRule&>(*page.sheets[0]->CssRules().Item(0));
    for (int i = 1; i <= 10'000; ++i) {
        const std::string size = std::to_string(i) + "px";
        rule.Style().SetProperty("font-size", size, "");
        page.resolver.RuleHasChanged(rule);
        ASSERT_EQ(page.Value("i", "margin-top"), size.size() > 6 ? "10000px" : size);
    }
}

TEST(StyleResolverHostileTest, ManyDeclarationsOfOneProperty) {
    std::string sheet = "p {";
    for (int i = 0; i < 50'000; ++i)
        sheet += "margin: " + std::to_string(i) + "px;";
    StyledPage page("<p/>", sheet + "}");
    EXPECT_EQ(page.Value("p", "margin-left"), "49999px");
    EXPECT_EQ(page.Explain("p", "margin-left").declarations.size(), 50'000U);
}

TEST(StyleResolverHostileTest, ManyRulesForManyElementsThatAreNotAlike) {
    constexpr int kCount = 1'700;
    std::string xml = "<html>";
    for (int i = 0; i < kCount; ++i)
        xml += "<e style='--a:" + std::to_string(i) + "'><f/></e>";
    StyledPage page((xml + "</html>").c_str(), Repeated("* { color: red }", kCount));
    for (const Dom::Element* const each : Dom::CSS::QuerySelectorAll(page.document, "e, f"))
        ASSERT_EQ(page.resolver.StyleOf(*each).Value("color"), "rgb(255, 0, 0)");
    EXPECT_EQ(page.Explain("e", "color").declarations.size(), std::size_t{kCount});
    EXPECT_EQ(page.resolver.StyleOf(page.Element("f"), "before").Value("color"), "rgb(255, 0, 0)");
}

TEST(StyleResolverHostileTest, ADeepTreeOfElementsThatAreNotAlike) {
    constexpr int kDepth = 1'700;
    std::string xml = "<html>";
    for (int i = 0; i < kDepth; ++i)
        xml += "<e style='font-size:" + std::to_string(i + 1) + "px'>";
    xml += "<last/>" + Repeated("</e>", kDepth) + "</html>";
    StyledPage page(xml.c_str(), Repeated("* { margin-top: 1em }", kDepth));
    EXPECT_EQ(page.Value("last", "margin-top"), "1700px");
    EXPECT_EQ(page.Value("e > e", "margin-top"), "2px");
    EXPECT_EQ(page.Value("last", "margin-top", "before"), "0px");
}

TEST(StyleResolverHostileTest, AConditionWithManyOperands) {
    std::string condition = "(a: b)";
    for (int i = 0; i < 100'000; ++i)
        condition += "or (a: b)";
    StyledPage page("<p/>", "@supports " + condition + " or (float: left) { p { float: left } }");
    EXPECT_EQ(page.Value("p", "float"), "left");
}

TEST(StyleResolverHostileTest, ManyNamespaces) {
    std::string sheet;
    for (int i = 0; i < 5'000; ++i)
        sheet += "@namespace a" + std::to_string(i) + " 'urn:" + std::to_string(i) + "';";
    StyledPage page("<p xmlns='urn:255'/>", sheet + Repeated("q|x { }", 5'000) +
                                                "a255|p { float: left } a256|p { float: "
                                                "right } p { clear: both }");
    EXPECT_EQ(page.Value("*", "float"), "left") << "so many are known";
    EXPECT_EQ(page.Value("*", "clear"), "both");
}

TEST(StyleResolverHostileTest, ALongBaseAndManyStyles) {
    const std::string xml = "<html><base href='http://b/" + std::string(100'000, 'x') + "'/>" +
                            Repeated("<style>a { }</style>", 5'000) + "</html>";
    Dom::Document document;
    document.LoadXml(xml.c_str());
    document.SetDocumentURI("http://a/");
    const auto sheets = Dom::CSS::CollectStyleSheets(document);
    ASSERT_EQ(sheets.size(), 5'000U);
    EXPECT_EQ(sheets[0].sheet->Href(), "http://a/");
}
