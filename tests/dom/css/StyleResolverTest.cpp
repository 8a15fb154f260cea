// SPDX-License-Identifier: MIT
#include <espalier/dom/Text.h>
#include <espalier/dom/css/CSSStyleRule.h>
#include <espalier/dom/css/KnownProperty.h>
#include <espalier/dom/css/ParseStyleSheet.h>
#include <espalier/dom/css/StyleResolver.h>

#include "dom/css/StyledPage.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using Dom::CSS::ComputedStyle;
using Dom::CSS::CSSRule;
using Dom::CSS::CSSStyleRule;
using support::StyledPage;

constexpr char kPage[] =
    "<html><body id='b'><div class='a'><p id='p' class='c d'>x<i>y</i></p></div></body></html>";

// What the sheets say, and what a property of "#p" is then.
struct CascadeCase {
    const char* name;
    const char* agent;
    const char* user;
    const char* author;
    const char* attribute;
    const char* property;
    const char* value;
};

const CascadeCase kCascadeCases[] = {
    {"NothingIsSaid", "", "", "", "", "float", "none"},
    {"TheAuthorWinsOverTheReader", "#p {float: left}", "#p {float: left}", "p {float: right}", "",
     "float", "right"},
    {"TheReaderWinsOverTheProgram", "#p {float: left}", "p {float: right}", "", "", "float",
     "right"},
    {"ImportantOfTheReaderWinsOverImportantOfTheAuthor", "", "p {float: left !important}",
     "#p {float: right !important}", "", "float", "left"},
    {"ImportantOfTheProgramWinsOverAll", "p {float: left !important}",
     "#p {float: right !important}", "#p {float: none !important}", "float: right !important",
     "float", "left"},
    {"ImportantWinsOverSpecific", "", "", "p {float: left !important} #p {float: right}", "",
     "float", "left"},
    {"TheMoreSpecificWins", "", "", "#p {float: left} p.c.d {float: right}", "", "float", "left"},
    {"TheLaterOfEqualsWins", "", "", ".c {float: left} .d {float: right}", "", "float", "right"},
    {"TheLaterInARuleWins", "", "", "p {float: left; float: right}", "", "float", "right"},
    {"ImportantInARuleWins", "", "", "p {float: left !important; float: right}", "", "float",
     "left"},
    {"TheSelectorThatSelectsCounts", "", "", "#x, p {float: left} .c {float: right}", "", "float",
     "right"},
    {"TheGreatestSelectorOfARuleCounts", "", "",
     ".c {float: left} p, #p {float: right} .d {float: "
     "none}",
     "", "float", "right"},
    {"TheAttributeWins", "", "", "#p {float: left}", "float: right", "float", "right"},
    {"ImportantWinsOverTheAttribute", "", "", "p {float: left !important}", "float: right", "float",
     "left"},
    {"ImportantInTheAttributeWins", "", "", "#p {float: left !important}",
     "float: right !important", "float", "right"},
    {"AValueThatIsNoneDoesNotCount", "", "", "p {float: left} #p {float: middle}", "", "float",
     "left"},
    {"AShorthandIsTakenApart", "", "", "p {border: 1px solid blue}", "", "border-left-color",
     "rgb(0, 0, 255)"},
    {"AShorthandWinsOverItsPartBefore", "", "", "p {margin-top: 5px; margin: 1px 2px}", "",
     "margin-top", "1px"},
    {"APartWinsOverItsShorthandBefore", "", "", "p {margin: 1px 2px; margin-top: 5px}", "",
     "margin-top", "5px"},
    {"SpecificityCountsForShorthandsToo", "", "", "#p {margin: 1px} p {margin-top: 5px}", "",
     "margin-top", "1px"},
    {"AShorthandInTheAttribute", "", "", "#p {font-size: 5px}", "font: 12px serif", "font-size",
     "12px"},
    {"AnUnknownPropertyIsKept", "", "", "p {x-mood: Good}", "", "X-Mood", "Good"},
    {"AnUnknownPropertyIsMerged", "", "", "#p {x-mood: Good} p {x-mood: Bad}", "", "x-mood",
     "Good"},
};

class StyleCascadeTest : public testing::TestWithParam<CascadeCase> {};

struct ComputedCase {
    const char* name;
    const char* css;
    const char* selector;
    const char* property;
    const char* value;
};

const ComputedCase kInheritanceCases[] = {
    {"ColourIsInherited", "body {color: red}", "i", "color", "rgb(255, 0, 0)"},
    {"BordersAreNot", "body {border: 1px solid red}", "div", "border-top-style", "none"},
    {"InheritTakesWhatIsAbove", "body {border: 1px solid red} div {border-top-style: inherit}",
     "div", "border-top-style", "solid"},
    {"InheritTakesWhatIsNotThere", "div {border: inherit; border-top-style: solid}", "div",
     "border-top-width", "0px"},
    {"InheritOfTheRootIsInitial", "html {color: inherit; float: inherit}", "html", "color",
     "rgb(0, 0, 0)"},
    {"InheritOfNothingIsInitial", "div {float: inherit}", "div", "float", "none"},
    {"InitialEndsInheritance", "body {color: red} div {color: initial}", "i", "color",
     "rgb(0, 0, 0)"},
    {"UnsetOfInherited", "body {color: red} div {color: blue} p {color: unset}", "p", "color",
     "rgb(0, 0, 255)"},
    {"UnsetOfOthers", "p {float: left} #p {float: unset}", "p", "float", "none"},
    {"KeywordsHaveAnyCase", "body {color: red} div {color: INITIAL}", "div", "color",
     "rgb(0, 0, 0)"},
    {"ComputedValuesAreInherited", "body {font-size: 20px; text-indent: 2em} div {font-size: 10px}",
     "p", "text-indent", "40px"},
    {"SizesOfFontsMultiply", "html {font-size: 10px} * {font-size: 2em}", "i", "font-size",
     "160px"},
    {"PercentagesOfFonts", "body {font-size: 150%} p {font-size: 50%}", "i", "font-size", "12px"},
    {"RemIsOfTheRoot", "html {font-size: 10px} p {font-size: 3px; margin-top: 2rem}", "p",
     "margin-top", "20px"},
    {"EmIsOfTheElement", "p {margin-top: 2em; font-size: 10px}", "p", "margin-top", "20px"},
    {"LineHeightAsANumberIsInherited",
     "body {line-height: 1.5; font-size: 20px} p {font-size: "
     "10px}",
     "p", "line-height", "1.5"},
    {"LineHeightInPercentIsComputed",
     "body {line-height: 150%; font-size: 20px} p {font-size: "
     "10px}",
     "p", "line-height", "30px"},
    {"BolderIsOfWhatIsAbove", "body {font-weight: bold} p {font-weight: bolder}", "p",
     "font-weight", "900"},
    {"CurrentColourIsThatOfTheElement",
     "body {color: red} p {color: blue; border-top-color: "
     "currentcolor}",
     "p", "border-top-color", "rgb(0, 0, 255)"},
    {"CurrentColourIsInheritedAsAWord", "body {color: red; fill: CurrentColor} p {color: blue}",
     "i", "fill", "rgb(0, 0, 255)"},
    {"CurrentColourOfAShorthandIsInheritedAsAWord",
     "div {color: red; border: 1px solid} p {color: blue; border: inherit}", "p",
     "border-top-color", "rgb(0, 0, 255)"},
    {"BordersHaveTheColourOfTheText", "p {color: blue}", "p", "border-left-color",
     "rgb(0, 0, 255)"},
    {"BordersWithoutStyleHaveNoWidth", "p {border-width: 5px}", "p", "border-top-width", "0px"},
    {"BordersWithAStyleAreMedium", "p {border-style: solid}", "p", "border-top-width", "3px"},
    {"WhatFloatsIsABlock", "i {float: left}", "i", "display", "block"},
    {"WhatIsPositionedIsABlock", "i {position: absolute; display: inline-table}", "i", "display",
     "table"},
    {"WhatIsPositionedDoesNotFloat", "i {position: fixed; float: left}", "i", "float", "none"},
    {"TheRootIsABlock", "", "html", "display", "block"},
    {"WhatIsNotShownStaysSo", "i {float: left; display: none}", "i", "display", "none"},
    {"WhatIsInAFlexContainerIsABlock", "p {display: inline-flex}", "i", "display", "block"},
    {"WhatIsInAGridIsABlock", "p {display: grid} i {display: inline-table}", "i", "display",
     "table"},
    {"RelativePositionChangesNothing", "i {position: relative}", "i", "display", "inline"},
};

const ComputedCase kVariableCases[] = {
    {"AVariable", "html {--c: red} p {color: var(--c)}", "p", "color", "rgb(255, 0, 0)"},
    {"ItIsThatOfTheElement", "html {--c: red} div {--c: blue} p {color: var(--c)}", "p", "color",
     "rgb(0, 0, 255)"},
    {"NamesHaveTheirCase", "html {--c: red; --C: blue} p {color: var(--C)}", "p", "color",
     "rgb(0, 0, 255)"},
    {"AFallback", "p {color: var(--c, blue)}", "p", "color", "rgb(0, 0, 255)"},
    {"AFallbackThatIsAVariable", "html {--d: red} p {color: var(--c, var(--d))}", "p", "color",
     "rgb(255, 0, 0)"},
    {"WithoutAValueItIsUnset", "body {color: red} p {color: blue; color: var(--c)}", "p", "color",
     "rgb(255, 0, 0)"},
    {"AValueThatDoesNotFitIsUnset", "html {--c: 12px} body {color: red} p {color: var(--c)}", "p",
     "color", "rgb(255, 0, 0)"},
    {"AValueThatDoesNotFitDoesNotBringBackOthers",
     "html {--f: 12px} p {float: left; float: "
     "var(--f)}",
     "p", "float", "none"},
    {"InAShorthand", "html {--w: 3px} p {border: var(--w) solid blue}", "p", "border-top-width",
     "3px"},
    {"InAShorthandThatDoesNotFit", "html {--w: red} p {margin: 1px; margin: var(--w)}", "p",
     "margin-top", "0px"},
    {"VariablesOfVariables", "html {--a: var(--b); --b: var(--c); --c: red} p {color: var(--a)}",
     "p", "color", "rgb(255, 0, 0)"},
    {"ACircleHasNoValue", "html {--a: var(--b); --b: var(--a)} p {color: var(--a, blue)}", "p",
     "color", "rgb(0, 0, 255)"},
    {"WhatLeadsIntoACircleHasItsFallback",
     "html {--a: var(--b); --b: var(--a); --c: var(--a, red)}"
     " p {color: var(--c)}",
     "p", "color", "rgb(255, 0, 0)"},
    {"ItDependsOnItself", "html {--a: red} p {--a: var(--a); color: var(--a, blue)}", "p", "color",
     "rgb(0, 0, 255)"},
    {"VariablesAreComputedWhereTheyAreDeclared",
     "html {--a: var(--b, red)} p {--b: blue; color: "
     "var(--a)}",
     "p", "color", "rgb(255, 0, 0)"},
    {"TheValueOfAVariable", "html {--a:  one two }", "i", "--a", "one two"},
    {"AVariableThatIsMiswrittenDoesNotCount",
     "p {color: red; color: var(c); float: left; float: var(--a b)}", "p", "float", "left"},
    {"AVariableThatIsInitial", "html {--a: red} div {--a: initial} p {color: var(--a, blue)}", "p",
     "color", "rgb(0, 0, 255)"},
    {"AVariableThatIsInherited", "html {--a: red} div {--a: inherit} p {color: var(--a, blue)}",
     "p", "color", "rgb(255, 0, 0)"},
    {"EmOfAVariable", "html {--w: 2em} p {font-size: 10px; margin-top: var(--w)}", "p",
     "margin-top", "20px"},
};

template <typename Case>
std::string NameOf(const testing::TestParamInfo<Case>& info) {
    return info.param.name;
}

class StyleInheritanceTest : public testing::TestWithParam<ComputedCase> {};
class StyleVariableTest : public testing::TestWithParam<ComputedCase> {};

}  // namespace

TEST_P(StyleCascadeTest, TheRightOneWins) {
    const CascadeCase& c = GetParam();
    StyledPage page(kPage);
    page.AddSheet(c.author);
    page.AddSheet(c.agent, CSSRule::UserAgent);
    page.AddSheet(c.user, CSSRule::User);
    if (*c.attribute != '\0') page.Element("#p").SetAttribute("style", c.attribute);
    EXPECT_EQ(page.Value("#p", c.property), c.value);
}

INSTANTIATE_TEST_SUITE_P(Style, StyleCascadeTest, testing::ValuesIn(kCascadeCases),
                         NameOf<CascadeCase>);

TEST_P(StyleInheritanceTest, Value) {
    StyledPage page(kPage, GetParam().css);
    EXPECT_EQ(page.Value(GetParam().selector, GetParam().property), GetParam().value);
}

INSTANTIATE_TEST_SUITE_P(Style, StyleInheritanceTest, testing::ValuesIn(kInheritanceCases),
                         NameOf<ComputedCase>);

TEST_P(StyleVariableTest, Value) {
    StyledPage page(kPage, GetParam().css);
    EXPECT_EQ(page.Value(GetParam().selector, GetParam().property), GetParam().value);
}

INSTANTIATE_TEST_SUITE_P(Style, StyleVariableTest, testing::ValuesIn(kVariableCases),
                         NameOf<ComputedCase>);

TEST(StyleResolverTest, PartsInheritFromTheirElement) {
    StyledPage page(kPage,
                    "p {color: red; float: left} p::before {content: 'x'; display: block} "
                    "p:after {color: blue; float: inherit}");
    EXPECT_EQ(page.Value("p", "color", "before"), "rgb(255, 0, 0)");
    EXPECT_EQ(page.Value("p", "float", "before"), "none");
    EXPECT_EQ(page.Value("p", "display", ":before"), "block");
    EXPECT_EQ(page.Value("p", "color", "::after"), "rgb(0, 0, 255)");
    EXPECT_EQ(page.Value("p", "float", "after"), "left");
    EXPECT_EQ(page.Value("p", "color"), "rgb(255, 0, 0)");
    EXPECT_EQ(page.resolver.StyleOf(page.Element("p"), "middle"), ComputedStyle());
}

TEST(StyleResolverTest, MediaCount) {
    constexpr char kSheet[] =
        "@media print {p {float: left}} @media (min-width: 1000px) {"
        "@media screen {p {float: right}}}";
    StyledPage page(kPage, kSheet);
    EXPECT_EQ(page.Value("p", "float"), "right");
    Dom::CSS::MediaContext context;
    context.width = 800;
    page.resolver.SetContext(context);
    EXPECT_EQ(page.Value("p", "float"), "none");
    context.type = "print";
    page.resolver.SetContext(context);
    EXPECT_EQ(page.Value("p", "float"), "left");
    page.sheets[0]->GetMediaList().SetMediaText("screen");
    page.resolver.SheetsHaveChanged();
    EXPECT_EQ(page.Value("p", "float"), "none");
}

TEST(StyleResolverTest, DisabledSheetsDoNotCount) {
    StyledPage page(kPage, "p {float: left}");
    EXPECT_EQ(page.Value("p", "float"), "left");
    page.sheets[0]->Disable();
    page.resolver.SheetsHaveChanged();
    EXPECT_EQ(page.Value("p", "float"), "none");
}

TEST(StyleResolverTest, ChangesOfTheTreeCountAtOnce) {
    StyledPage page(kPage, ".new {float: left} [title] {clear: both} div + p {color: red}");
    Dom::Element& paragraph = page.Element("#p");
    EXPECT_EQ(page.Value("#p", "float"), "none");
    paragraph.SetAttribute("class", "new");
    EXPECT_EQ(page.Value("#p", "float"), "left");
    paragraph.SetAttribute("title", "x");
    EXPECT_EQ(page.Value("#p", "clear"), "both");
    paragraph.RemoveAttribute("class");
    EXPECT_EQ(page.Value("#p", "float"), "none");
    page.Element("#b").AppendChild(paragraph.ParentNode()->RemoveChild(&paragraph));
    EXPECT_EQ(page.Value("#p", "color"), "rgb(255, 0, 0)");
    paragraph.SetAttribute("style", "color: blue");
    EXPECT_EQ(page.Value("#p", "color"), "rgb(0, 0, 255)");
}

TEST(StyleResolverTest, ARuleThatHasChangedChangesNoOtherStyles) {
    StyledPage page(kPage, "div {color: red} p {margin-top: 1px; quotes: none} i {float: left}");
    const ComputedStyle body = page.resolver.StyleOf(page.Element("body"));
    const ComputedStyle division = page.resolver.StyleOf(page.Element("div"));
    const ComputedStyle paragraph = page.resolver.StyleOf(page.Element("p"));
    const ComputedStyle inner = page.resolver.StyleOf(page.Element("i"));
    auto& rule = static_cast<CSSStyleRule&>(*page.sheets[0]->CssRules().Item(1));
    rule.Style().SetProperty("margin-top", "7px", "");
    EXPECT_EQ(page.Value("p", "margin-top"), "1px") << "nobody has told it";
    page.resolver.RuleHasChanged(rule);
    EXPECT_EQ(page.Value("p", "margin-top"), "7px");
    EXPECT_EQ(paragraph.Value("margin-top"), "1px") << "what somebody has stays what it is";
    EXPECT_EQ(page.resolver.StyleOf(page.Element("body")), body);
    EXPECT_EQ(page.resolver.StyleOf(page.Element("div")), division);
    EXPECT_EQ(page.resolver.StyleOf(page.Element("i")), inner)
        << "margins are not inherited, so what is below has the style that it had";

    auto& above = static_cast<CSSStyleRule&>(*page.sheets[0]->CssRules().Item(0));
    above.Style().SetProperty("color", "blue", "");
    page.resolver.RuleHasChanged(above);
    EXPECT_EQ(page.Value("i", "color"), "rgb(0, 0, 255)");
    EXPECT_EQ(page.resolver.StyleOf(page.Element("body")), body);
}

TEST(StyleResolverTest, EqualElementsShareAStyle) {
    StyledPage page("<r><p class='a'><i/></p><q><p class='a'><i/></p></q><p class='b'/></r>",
                    ".a {color: red} i {float: left} q {float: left}");
    EXPECT_EQ(page.resolver.StyleOf(page.Element("r > .a")),
              page.resolver.StyleOf(page.Element("q > .a")));
    EXPECT_EQ(page.resolver.StyleOf(page.Element("r > .a > i")),
              page.resolver.StyleOf(page.Element("q > .a > i")));
    EXPECT_FALSE(page.resolver.StyleOf(page.Element(".a")) ==
                 page.resolver.StyleOf(page.Element(".b")));
}

TEST(StyleResolverTest, AStyleOutlivesItsResolver) {
    ComputedStyle style;
    EXPECT_EQ(style.Value("color"), "rgb(0, 0, 0)");
    {
        StyledPage page(kPage, "p {color: red; --a: b; mood: good; margin-top: 2px}");
        style = page.resolver.StyleOf(page.Element("p"));
    }
    EXPECT_EQ(style.Value("color"), "rgb(255, 0, 0)");
    EXPECT_EQ(style.Value("COLOR"), "rgb(255, 0, 0)");
    EXPECT_EQ(style.Value("--a"), "b");
    EXPECT_EQ(style.Value("mood"), "good");
    EXPECT_EQ(style.Value("--A"), "");
    EXPECT_EQ(style.Value("margin"), "");
    EXPECT_TRUE(style.IsSet("margin-top"));
    EXPECT_FALSE(style.IsSet("margin-left"));
    EXPECT_EQ(style.Value("margin-left"), "0px");
    const std::vector<astring> names = style.Names();
    EXPECT_EQ(names, (std::vector<astring>{"--a", "color", "margin-top", "mood"}));
}

TEST(StyleResolverTest, AddressesAreRelativeToTheSheet) {
    StyledPage page(kPage);
    page.document.SetDocumentURI("http://host/page/index.xml");
    Dom::CSS::CSSStyleSheet sheet(CSSRule::Author, nullptr, "http://host/sheets/a.css", "");
    ParseStyleSheet(sheet, "p {background: url(img/a.png)}");
    page.resolver.AddSheet(sheet);
    EXPECT_EQ(page.Value("p", "background-image"), "url(\"http://host/sheets/img/a.png\")");
    page.Element("i").SetAttribute("style", "background-image: url(b.png)");
    EXPECT_EQ(page.Value("i", "background-image"), "url(\"http://host/page/b.png\")");
}

TEST(StyleResolverTest, ElementsOfDifferentDocumentsInTurn) {
    StyledPage page(kPage, "p {float: left} * > q {float: right}");
    Dom::Document other;
    other.LoadXml("<p><q/></p>");
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(page.Value("p", "float"), "left");
        EXPECT_EQ(page.resolver.StyleOf(*Dom::CSS::QuerySelector(other, "q")).Value("float"),
                  "right");
    }
}

TEST(StyleResolverTest, TheSizeOfTheRootCountsBelowElementsThatDoNotInheritIt) {
    StyledPage page(kPage, "html {font-size: 10px} body {font-size: 16px} p {width: 2rem}");
    EXPECT_EQ(page.Value("p", "width"), "20px");
    auto& rule = static_cast<CSSStyleRule&>(*page.sheets[0]->CssRules().Item(0));
    rule.Style().SetProperty("font-size", "20px", "");
    page.resolver.RuleHasChanged(rule);
    EXPECT_EQ(page.Value("p", "width"), "40px");
    page.Element("html").SetAttribute("style", "font-size: 5px");
    EXPECT_EQ(page.Value("p", "width"), "10px");
}

TEST(StyleResolverTest, ChangesOfTextsCountAtOnce) {
    StyledPage page(kPage, "i:empty {color: red} p:contains('z') {float: left}");
    EXPECT_EQ(page.Value("i", "color"), "rgb(0, 0, 0)");
    auto& text = static_cast<Dom::Text&>(*page.Element("i").FirstChild());
    text.SetData("");
    EXPECT_EQ(page.Value("i", "color"), "rgb(255, 0, 0)");
    text.SetData("z");
    EXPECT_EQ(page.Value("i", "color"), "rgb(0, 0, 0)");
    EXPECT_EQ(page.Value("p", "float"), "left");
}

TEST(StyleResolverTest, TheAddressOfTheDocumentMayChange) {
    StyledPage page(kPage);
    page.document.SetDocumentURI("http://one/x");
    page.Element("p").SetAttribute("style", "background-image: url(a.png)");
    EXPECT_EQ(page.Value("p", "background-image"), "url(\"http://one/a.png\")");
    page.document.SetDocumentURI("http://two/x");
    EXPECT_EQ(page.Value("p", "background-image"), "url(\"http://two/a.png\")");
}

TEST(StyleResolverTest, TellsItsSheetsInTheirOrder) {
    const auto first = Dom::CSS::ParseStyleSheet("p { color: red }");
    const auto second = Dom::CSS::ParseStyleSheet("p { color: blue }");
    Dom::CSS::StyleResolver resolver;
    EXPECT_TRUE(resolver.Sheets().empty());
    resolver.AddSheet(*second);
    resolver.AddSheet(*first);
    EXPECT_EQ(resolver.Sheets(),
              (std::vector<const Dom::CSS::CSSStyleSheet*>{second.get(), first.get()}));
}

TEST(IsKnownProperty, IsTrueForShorthandsLonghandsAndCustomProperties) {
    for (const char* const name : {"color", "COLOR", "margin", "margin-left", "--x", "--X"})
        EXPECT_TRUE(Dom::CSS::IsKnownProperty(name)) << name;
    for (const char* const name : {"", "colour", "color ", "-x", "margin-middle"})
        EXPECT_FALSE(Dom::CSS::IsKnownProperty(name)) << name;
}
