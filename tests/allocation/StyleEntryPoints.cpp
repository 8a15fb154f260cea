// SPDX-License-Identifier: MIT
#include <espalier/css.h>
#include <espalier/dom.h>

#include "allocation/EntryPoints.h"
#include "support/FailingAllocation.h"

#include <array>
#include <memory>
#include <optional>
#include <vector>

namespace allocation {
namespace {

using Dom::CSS::CSSRule;
using Dom::CSS::CSSStyleSheet;

// No string keeps it inside.
#define LONG(text) text "-that-is-longer-than-what-a-string-keeps-inside"

constexpr std::string_view kSheet =
    "@charset \"utf-8\";\n@import url(" LONG("address") ") screen;\n"
    "@namespace h url(http://www.w3.org/1999/xhtml);\n"
    ":root { --size: 12px; --family: '" LONG("family") "', serif; font: var(--size) var(--family) }\n"
    "body > p.k:not(.l), h|p[id=i]:nth-child(2) { color: #123 !important; margin: 1px 2px;\n"
    "  background: url(" LONG("image") ") red; width: calc(1px + 2em); unknown: " LONG("u") " }\n"
    "@media screen and (min-width: 10px) { p::before { content: 'a' counter(b) } }\n"
    "@font-face { font-family: " LONG("face") "; src: url(x) }\n"
    "p { no colon; color red }\n@page :first { margin: 1in }\n";

constexpr std::string_view kPage =
    "<html xmlns='http://www.w3.org/1999/xhtml'><head><link rel='stylesheet' type='text/css' "
    "href='" LONG("sheet") ".css'/><style media='screen'>p { a: b }</style></head>"
    "<body><h1/><p class='k' id='i' style='border: 1px solid " LONG("no") "'>text</p></body></html>";

// A page that all runs share. What comes with it is made by none of them.
Dom::HTMLDocument& Page() {
    static const auto kShared = FailingAllocation::Exempt([] {
        auto page = std::make_unique<Dom::HTMLDocument>();
        page->LoadXml(kPage, "http://host.example/");
        return page;
    });
    return *kShared;
}

Dom::Element& Paragraph() { return *Page().GetElementById("i"); }

void AddRules(const Dom::CSS::CSSRuleList& rules, Sum& sum) {
    for (const CSSRule* const rule : rules)
        sum.Add(rule->CssText());
}

void ReadNodes(IO::Stream& stream, Sum& sum) {
    Dom::CSS::CssReader reader(&stream, "utf-8");
    while (reader.Read()) {
        sum.Add(reader.Name());
        sum.Add(reader.Value());
        sum.Add(reader.Priority());
    }
    sum.Add(reader.StreamError());
}

void ReadRules(IO::Stream& stream, Sum& sum) {
    Dom::CSS::CssReader reader(&stream, "utf-8");
    while (!reader.IsAtEnd()) {
        const astring rule = reader.ReadRule();
        if (rule.empty()) break;
        sum.Add(rule);
    }
    sum.Add(reader.StreamError());
}

void ParseFromStream(IO::Stream& stream, Sum& sum) {
    std::vector<Dom::CSS::DroppedText> dropped;
    const auto sheet = Dom::CSS::ParseStyleSheet(stream, {.dropped = &dropped});
    AddRules(sheet->CssRules(), sum);
    for (const Dom::CSS::DroppedText& drop : dropped)
        sum.Add(drop.reason);
}

void InsertRules(IO::Stream& stream, Sum& sum) {
    const std::string text = TextOf(stream);
    CSSStyleSheet sheet(CSSRule::Author, nullptr, "", "");
    std::size_t begin = 0;
    for (std::size_t end = text.find('\n'); end != std::string::npos;
         end = text.find('\n', begin)) {
        try {
            sheet.InsertRule(text.substr(begin, end - begin), sheet.CssRules().Length());
        } catch (const Dom::DOMException&) {
            sum.Add("refused");  // a rule that goes over the end of the line
        }
        begin = end + 1;
    }
    AddRules(sheet.CssRules(), sum);
}

void ParseADeclaration(IO::Stream& stream, Sum& sum) {
    std::vector<Dom::CSS::DroppedText> dropped;
    const auto declaration = Dom::CSS::ParseDeclarations(TextOf(stream), &dropped);
    sum.Add(declaration->CssText());
    for (unsigned i = 0; i < declaration->Length(); ++i) {
        const astring name = declaration->Item(i);
        sum.Add(declaration->GetPropertyValue(name));
        sum.Add(declaration->GetPropertyCSSValue(name)->CssText());
    }
    sum.Add(dropped.size());
}

void Query(IO::Stream& stream, Sum& sum) {
    const Dom::CSS::Selector selector(TextOf(stream));
    sum.Add(Dom::CSS::QuerySelectorAll(Page(), selector).size());
    sum.Add(Dom::CSS::Matches(Paragraph(), selector));
    sum.Add(Dom::CSS::Closest(Paragraph(), selector) != nullptr);
}

void AskMedia(IO::Stream& stream, Sum& sum) {
    const Dom::CSS::MediaQueryList queries(TextOf(stream));
    sum.Add(queries.Matches({}));
    sum.Add(queries.Text());
    sum.Add(queries.Length());
}

void Index(IO::Stream& stream, Sum& sum) {
    const auto sheet = Dom::CSS::ParseStyleSheet(TextOf(stream));
    Dom::CSS::RuleIndex index;
    index.Add(*sheet, {});
    for (const Dom::CSS::MatchedRule& matched : index.Match(Paragraph()))
        sum.Add(static_cast<std::size_t>(matched.specificity));
}

void Resolve(IO::Stream& stream, Sum& sum) {
    const auto sheet = Dom::CSS::ParseStyleSheet(TextOf(stream));
    Dom::CSS::StyleResolver resolver;
    resolver.AddSheet(*sheet);
    for (const char* const pseudo : {"", "before"}) {
        const Dom::CSS::ComputedStyle style = resolver.StyleOf(Paragraph(), pseudo);
        for (const char* const name : {"color", "font-family", "width", "content", "margin-left"})
            sum.Add(style.Value(name));
        sum.Add(style.Names().size());
    }
    resolver.SheetsHaveChanged();
    const Dom::CSS::StyleExplanation explanation = resolver.Explain(Paragraph(), "color");
    sum.Add(explanation.value);
    sum.Add(explanation.declarations.size());
}

// The stream is what every link leads to.
void Collect(IO::Stream& stream, Sum& sum) {
    const std::string text = TextOf(stream);
    std::vector<Dom::CSS::MissingSheet> missing;
    const auto sheets = Dom::CSS::CollectStyleSheets(
        Page(),
        [&](const astring&, const astring&) -> std::optional<astring> { return astring(text); },
        &missing, {.importDepth = 2});
    for (const Dom::CSS::CollectedSheet& collected : sheets)
        AddRules(collected.sheet->CssRules(), sum);
    sum.Add(missing.size());
}

void LoadSheets(IO::Stream& stream, Sum& sum) {
    const std::string text = TextOf(stream);
    Dom::HTMLDocument page;
    page.LoadXml(kPage, "http://host.example/");
    Dom::CSS::LoadStyleSheets(page, [&](const astring&, const astring&) -> std::optional<astring> {
        return astring(text);
    });
    for (const Dom::StyleSheets::StyleSheet* const sheet : page.StyleSheets())
        sum.Add(sheet->Href());
}

void Decode(IO::Stream& stream, Sum& sum) {
    const std::string text = TextOf(stream);
    for (const char* const encoding : {"", "windows-1252", "utf-16", LONG("unknown")}) {
        sum.Add(Dom::CSS::DecodeStyleSheet(
            {reinterpret_cast<const unsigned char*>(text.data()), text.size()}, encoding));
    }
}

void ReadHelpers(IO::Stream& stream, Sum& sum) {
    const std::string text = TextOf(stream);
    astring result;
    const char* place = text.c_str();
    sum.Add(CssHelpers::ParseString(place, result));
    sum.Add(result);
    sum.Add(CssHelpers::ParseWhitespace(place));
    sum.Add(CssHelpers::ParseIdent(place, result));
    sum.Add(result);
    sum.Add(CssHelpers::ParseUrl(place, result));
    sum.Add(result);
}

constexpr EntryPoint kPoints[] = {
    {"CssReader::Read()", kSheet, ReadNodes},
    {"CssReader::ReadRule()",
     LONG("p") " > q { a: b; " LONG("n") ": 'c' !important }\n/* c */ r, s { d: e }\nt { }",
     ReadRules},
    {"ParseStyleSheet()", kSheet, ParseFromStream},
    {"CSSStyleSheet::InsertRule()", kSheet, InsertRules},
    {"ParseDeclarations()",
     "color: red; margin: 1px 2px !important; no; font: 12px/2 '" LONG(
         "f") "'; --x: {a b}; "
              "background: url(" LONG("image") "), none; width: calc(1px * (2 + 3))",
     ParseADeclaration},
    {"Selector, QuerySelector()",
     "body > p." LONG("k") ":not([id=j]), h1 + p.k:nth-child(2n), p:first-line, :root p ~ *",
     Query},
    {"MediaQueryList",
     "screen and (min-width: 10px), not print and (" LONG("feature") "), (color), " LONG("type"),
     AskMedia},
    {"RuleIndex", kSheet, Index},
    {"StyleResolver", kSheet, Resolve},
    {"CollectStyleSheets()", kSheet, Collect},
    {"LoadStyleSheets()", kSheet, LoadSheets},
    {"DecodeStyleSheet()", "@charset \"iso-8859-1\"; p { a: \xE4 " LONG("b") " }", Decode},
    {"CssHelpers", "'" LONG("string") "\\41 '  " LONG("ident") "url('" LONG("address") "')",
     ReadHelpers},
};

}  // namespace

std::span<const EntryPoint> StyleEntryPoints() { return kPoints; }

}  // namespace allocation
