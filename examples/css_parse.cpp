// SPDX-License-Identifier: MIT
// Reads a damaged style sheet: prints what is left out, and the rules for a narrow screen. Then
// reads what may stand in an attribute "style".
#include <espalier/css.h>

#include <iostream>
#include <vector>

namespace {

using Dom::CSS::CSSRule;
using Dom::CSS::CSSStyleRule;

constexpr char kSheet[] =
    "@import url(base.css);\n"
    "h1 { color red; margin: 0; -x-fade: 2s }\n"
    "p:{ color: blue }\n"
    "@media screen and (max-width: 40em) {\n"
    "    nav { display: none }\n"
    "}\n"
    "@media print { nav { display: none } }\n";

//! [rules for a medium]
// Prints the style rules that count for a medium, with the places of their declarations.
void PrintRules(const Dom::CSS::CSSRuleList& rules, const Dom::CSS::MediaContext& medium) {
    for (const CSSRule* const rule : rules) {
        if (rule->Type() == CSSRule::MEDIA_RULE) {
            const auto& media = static_cast<const Dom::CSS::CSSMediaRule&>(*rule);
            if (MatchesMedia(media.GetMediaList(), medium)) PrintRules(media.CssRules(), medium);
        }
        if (rule->Type() != CSSRule::STYLE_RULE) continue;
        const auto& style = static_cast<const CSSStyleRule&>(*rule);
        std::cout << style.SelectorText() << "\n";
        for (unsigned i = 0; i < style.Style().Length(); ++i) {
            const Dom::CSS::SourcePlace place = PlaceOf(style.Style(), i);
            std::cout << "    " << style.Style().Properties().Item(i)->CssText() << "  (line "
                      << place.line << ", column " << place.column << ")\n";
        }
    }
}
//! [rules for a medium]

}  // namespace

int main() {
    //! [parse a sheet]
    std::vector<Dom::CSS::DroppedText> dropped;
    const auto sheet = Dom::CSS::ParseStyleSheet(kSheet, {.dropped = &dropped});
    for (const Dom::CSS::DroppedText& drop : dropped) {
        std::cout << drop.place.line << ":" << drop.place.column << ": " << drop.reason << ": "
                  << drop.text << "\n";
    }
    //! [parse a sheet]
    Dom::CSS::MediaContext phone;
    phone.width = 360;
    PrintRules(sheet->CssRules(), phone);
    //! [parse declarations]
    const auto style = Dom::CSS::ParseDeclarations("color red; border: 1px solid blue", &dropped);
    std::cout << style->GetPropertyValue("border-top-color") << "\n";  // blue
    //! [parse declarations]
    //! [convert a length]
    Dom::CSS::CSSPrimitiveValue width(nullptr, "12px");
    std::cout << width.GetFloatValue(Dom::CSS::CSSPrimitiveValue::CSS_IN) << "\n";  // 0.125
    width.SetFloatValue(Dom::CSS::CSSPrimitiveValue::CSS_EMS, 1.5F);
    std::cout << width.CssText() << "\n";  // 1.5em
    //! [convert a length]
}
