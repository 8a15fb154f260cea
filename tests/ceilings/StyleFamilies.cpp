// SPDX-License-Identifier: MIT
#include <espalier/css.h>
#include <espalier/dom.h>
#include <espalier/io/MemoryStream.h>

#include "ceilings/Family.h"

#include <optional>
#include <vector>

namespace ceilings {
namespace {

using Dom::CSS::ParseStyleSheet;

// Parses a sheet and asks for the properties of all of its rules.
void ParseSheet(const std::string& input) {
    std::vector<Dom::CSS::DroppedText> dropped;
    const auto sheet = ParseStyleSheet(input, {.dropped = &dropped});
    for (Dom::CSS::CSSRule* const rule : sheet->CssRules()) {
        if (rule->Type() == Dom::CSS::CSSRule::STYLE_RULE)
            (void)static_cast<Dom::CSS::CSSStyleRule*>(rule)->Style().Length();
    }
}

void ReadSheet(const std::string& input) {
    IO::MemoryStream stream(reinterpret_cast<const unsigned char*>(input.data()),
                            static_cast<long>(input.size()));
    Dom::CSS::CssReader reader(&stream, "utf-8");
    while (reader.Read())
        continue;
}

// Computes the styles of all elements of a small page.
void Resolve(const std::string& input) {
    Dom::HTMLDocument page;
    page.LoadXml(
        "<html xmlns='http://www.w3.org/1999/xhtml'><body><p class='k'><q/></p><p/></body></html>");
    const auto sheet = ParseStyleSheet(input);
    Dom::CSS::StyleResolver resolver;
    resolver.AddSheet(*sheet);
    for (const Dom::Element* const element : Dom::CSS::QuerySelectorAll(page, "*"))
        (void)resolver.StyleOf(*element).Value("color");
}

// Computes the styles of all elements of a tree.
void ResolveTree(const std::string& input) {
    Dom::Document document;
    document.LoadXml(input);
    const auto sheet = ParseStyleSheet("a { font-size: 101%; --x: 1 } a a { color: red }");
    Dom::CSS::StyleResolver resolver;
    resolver.AddSheet(*sheet);
    for (const Dom::Element* const element : Dom::CSS::QuerySelectorAll(document, "*"))
        (void)resolver.StyleOf(*element).Value("color");
}

// Selects in a tree that is a little deep and a little wide.
void Select(const std::string& input) {
    Dom::Document document;
    document.LoadXml("<a>" + Nested(350, "<a><b/>", "", "</a>") + "</a>");
    (void)Dom::CSS::QuerySelectorAll(document, input);
}

void AskMedia(const std::string& input) { (void)Dom::CSS::MediaQueryList(input).Matches({}); }

// Every import leads to a sheet that imports the same twice.
void Import(const std::string& input) {
    Dom::HTMLDocument page;
    page.LoadXml(
        "<html xmlns='http://www.w3.org/1999/xhtml'><head><style>@import "
        "'a';</style></head></html>",
        "http://host.example/");
    const std::string sheet = "@import 'b'; @import 'c'; /*" + input + "*/";
    (void)Dom::CSS::CollectStyleSheets(
        page,
        [&sheet](const astring&, const astring&) -> std::optional<astring> {
            return astring(sheet);
        },
        nullptr, {.bytes = input.size() * 4});
}

std::string Selectors(std::size_t size) {
    return Numbered(size, [](auto i) { return "e" + i + ".k > f,"; }) + "z";
}

std::string Variables(std::size_t size, std::string_view reference) {
    return "html {" +
           Numbered(size,
                    [&](const std::string& i) {
                        std::string text = "--v" + i + ":";
                        for (int k = 0; k < 2; ++k)
                            text += std::string(reference) + std::to_string(std::stoi(i) + 1) + ")";
                        return text + ";";
                    }) +
           "} p { color: var(--v0) }";
}

constexpr Family kSheets[] = {
    {"braces in each other, read", 1, [](std::size_t size) { return Filled(size, "a{"); },
     ReadSheet},
    {"braces in each other, parsed", 4, [](std::size_t size) { return Filled(size, "a{"); },
     ParseSheet},
    {"groups in each other", 2,
     [](std::size_t size) { return Nested(size, "@media x{", "p{a:b}", "}"); }, ParseSheet},
    {"parentheses in each other", 4,
     [](std::size_t size) { return "p { a: " + Nested(size, "(", "", ")") + " }"; }, ParseSheet},
    {"rules", 110, [](std::size_t size) { return Filled(size, "p{a:b}"); }, ParseSheet},
    {"properties of one rule", 32,
     [](std::size_t size) {
         return "p{" + Numbered(size, [](auto i) { return "a" + i + ":b;"; }) + "}";
     },
     ParseSheet},
    {"declarations that are left out", 200,
     [](std::size_t size) { return "p{" + Filled(size, "a;") + "}"; }, ParseSheet},
    {"a long value of a property", 4,
     [](std::size_t size) { return "p { a: '" + Filled(size, "v ") + "' }"; }, ParseSheet},
    {"a list of values", 36,
     [](std::size_t size) { return "p { a: " + Filled(size, "v, ") + "v }"; }, ParseSheet},
    {"escapes", 26, [](std::size_t size) { return "p { a: " + Filled(size, "\\41 ") + " }"; },
     ParseSheet},
    {"a comment in a sheet", 2, [](std::size_t size) { return "/*" + Filled(size, "* ") + "*/"; },
     ParseSheet},
    {"a string that has no end", 6,
     [](std::size_t size) { return "p { a: \"" + Filled(size, "v "); }, ParseSheet},
    {"imports of each other", 8, [](std::size_t size) { return Filled(size, "c "); }, Import},
};

constexpr Family kStyles[] = {
    {"selectors of a rule", 70,
     [](std::size_t size) { return Selectors(size) + " { color: red }"; }, Resolve},
    {"selectors of a query", 70, Selectors, Select},
    {"a selector of many compounds", 280, [](std::size_t size) { return Filled(size, "a ") + "b"; },
     Select},
    {"a selector of many tests", 100,
     [](std::size_t size) { return "a" + Filled(size, ":not(.k)"); }, Select},
    {"media queries", 34, [](std::size_t size) { return Filled(size, "print,") + "screen"; },
     AskMedia},
    {"conditions of a media query", 9,
     [](std::size_t size) { return "screen" + Filled(size, " and (color)"); }, AskMedia},
    {"variables that double each other", 20,
     [](std::size_t size) { return Variables(size, "var(--v"); }, Resolve},
    {"a variable that refers to itself", 12,
     [](std::size_t size) {
         return "html { --a: " + Filled(size, "var(--a) ") + "} p { color: var(--a) }";
     },
     Resolve},
    {"a deep tree with styles", 120,
     [](std::size_t size) { return Nested(size, "<a>", "", "</a>"); }, ResolveTree},
};

}  // namespace

std::span<const Family> SheetFamilies() { return kSheets; }
std::span<const Family> StyleFamilies() { return kStyles; }

}  // namespace ceilings
