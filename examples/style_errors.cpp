// SPDX-License-Identifier: MIT
// Provokes the messages of style sheets and prints them: style_errors
//
// The tables in docs/errors.md show the same calls and texts; a test compares the two.
#include <espalier/css.h>
#include <espalier/dom.h>
#include <espalier/io/Exception.h>

#include <iostream>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace {

using Dom::CSS::CSSRule;
using Dom::CSS::CSSStyleDeclaration;
using Dom::CSS::CSSStyleSheet;
using Dom::CSS::Selector;
using Value = Dom::CSS::CSSPrimitiveValue;

struct Calls {
    const char* shown;
    void (*call)();
};

const Calls kCalls[] = {
    // Values.
    {"SetFloatValue(CSS_STRING, 1) of 1px",
     [] { Value(nullptr, "1px").SetFloatValue(Value::CSS_STRING, 1); }},
    {"GetFloatValue(CSS_STRING) of 1px",
     [] { Value(nullptr, "1px").GetFloatValue(Value::CSS_STRING); }},
    {"GetFloatValue(CSS_DEG) of 1px", [] { Value(nullptr, "1px").GetFloatValue(Value::CSS_DEG); }},
    {"SetStringValue(CSS_PX, \"1\") of a",
     [] { Value(nullptr, "a").SetStringValue(Value::CSS_PX, "1"); }},
    {"GetStringValue() of 1px", [] { Value(nullptr, "1px").GetStringValue(); }},
    {"GetCounterValue() of 1px", [] { Value(nullptr, "1px").GetCounterValue(); }},
    {"GetRectValue() of 1px", [] { Value(nullptr, "1px").GetRectValue(); }},
    {"GetRGBColorValue() of red", [] { Value(nullptr, "red").GetRGBColorValue(); }},
    {"SetCssText(\"1px\") of inherit",
     [] {
         CSSStyleDeclaration style(nullptr);
         style.SetProperty("color", "inherit", "");
         style.GetPropertyCSSValue("color")->SetCssText("1px");
     }},

    // Declarations.
    {"SetCssText(\"*zoom: 1\")", [] { CSSStyleDeclaration(nullptr).SetCssText("*zoom: 1"); }},
    {"SetCssText(\"color red\")", [] { CSSStyleDeclaration(nullptr).SetCssText("color red"); }},
    {"SetCssText(\"color: red !\")",
     [] { CSSStyleDeclaration(nullptr).SetCssText("color: red !"); }},
    {"SetCssText(\"color: red !important x\")",
     [] { CSSStyleDeclaration(nullptr).SetCssText("color: red !important x"); }},
    {"SetCssText(\"margin: \")", [] { CSSStyleDeclaration(nullptr).SetCssText("margin: "); }},

    // Rules and sheets.
    {"Selector(\"a > > b\")", [] { Selector("a > > b"); }},
    {"InsertRule(\"p\", 0)",
     [] { CSSStyleSheet(CSSRule::Author, nullptr, "", "").InsertRule("p", 0); }},
    {"InsertRule(\"p { color: red\", 0)",
     [] { CSSStyleSheet(CSSRule::Author, nullptr, "", "").InsertRule("p { color: red", 0); }},
    {"InsertRule(\"p { color: red }\", 1), and there is no rule",
     [] { CSSStyleSheet(CSSRule::Author, nullptr, "", "").InsertRule("p { color: red }", 1); }},
    {"DeleteRule(1), and there is no rule",
     [] { CSSStyleSheet(CSSRule::Author, nullptr, "", "").DeleteRule(1); }},
};

// Sheets in which ParseStyleSheet() leaves something out.
const std::string kSheets[] = {
    "p { color: red) }",
    "p { @media print { } }",
    "p",
    "@import red;",
    "p { color: red } @import 'a.css';",
    "p { color: red } @charset 'utf-8';",
    "257 times @media all {",
    "@font-face x { }",
};

bool Provoke(const Calls& calls) {
    constexpr std::string_view kBegin = "DOMException: ";
    try {
        calls.call();
    } catch (const Dom::DOMException& error) {
        std::cout << calls.shown << "\n    " << std::string_view(error.What()).substr(kBegin.size())
                  << " (" << error.Code() << ")\n";
        return true;
    }
    std::cerr << calls.shown << ": nothing was thrown\n";
    return false;
}

bool LeaveOut(const std::string& shown) {
    std::string text = shown;
    if (shown.starts_with("257 times ")) {
        text.clear();
        for (int i = 0; i < 257; ++i)
            text += "@media all {";
    }
    std::vector<Dom::CSS::DroppedText> dropped;
    const auto sheet = Dom::CSS::ParseStyleSheet(text, {.dropped = &dropped});
    if (dropped.empty()) {
        std::cerr << shown << ": nothing was left out\n";
        return false;
    }
    std::cout << shown << "\n    " << dropped.front().reason << "\n";
    return true;
}

// Collects the sheets of a document that leads to "a.css", which has this text; "b.css" has none.
bool Miss(const char* shown, std::string_view text, const Dom::CSS::SheetLimits& limits) {
    Dom::Document document;
    document.LoadXml("<?xml-stylesheet href='a.css' type='text/css'?><a/>");
    const Dom::CSS::StyleSheetHost host = [text](const astring& address,
                                                 const astring&) -> std::optional<astring> {
        if (address != "a.css") return astring();
        if (text.empty()) return std::nullopt;
        return astring(text);
    };
    std::vector<Dom::CSS::MissingSheet> missing;
    Dom::CSS::CollectStyleSheets(document, host, &missing, limits);
    if (missing.empty()) {
        std::cerr << shown << ": nothing is missing\n";
        return false;
    }
    std::cout << shown << "\n    " << missing.front().reason << "\n";
    return true;
}

bool MissAll() {
    bool all = Miss("a sheet that the host does not have", "", {});
    all &= Miss("a.css with @import 'a.css'", "@import 'a.css';", {});
    all &= Miss("@import with importDepth 0", "@import 'b.css';", {.importDepth = 0});
    all &= Miss("a sheet of 16 bytes with bytes 8", "p { color: red }", {.bytes = 8});
    all &= Miss("@import with sheets 1", "@import 'b.css';", {.sheets = 1});
    return all;
}

}  // namespace

int main() {
    bool all = true;
    for (const Calls& calls : kCalls)
        all &= Provoke(calls);
    for (const std::string& sheet : kSheets)
        all &= LeaveOut(sheet);
    all &= MissAll();
    return all ? 0 : 1;
}
