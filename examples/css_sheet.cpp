// SPDX-License-Identifier: MIT
// Reads a style sheet, and prints its rules with their properties: css_sheet samples/page.css
#include <espalier/css.h>
#include <espalier/dom/DOMException.h>
#include <espalier/io.h>

#include <iostream>
#include <string_view>

namespace {

using Dom::CSS::CSSStyleRule;
using Dom::CSS::CSSStyleSheet;

//! [skip the charset]
// Passes over an "@charset" at the beginning, which a CssReader takes for the begin of a rule.
void SkipCharset(IO::Stream& stream) {
    for (const char character : std::string_view("@charset")) {
        if (stream.ReadByte() == character) continue;
        stream.Seek(0, IO::SeekOrigin::Begin);
        return;
    }
    int byte = 0;
    while (byte >= 0 && byte != ';')
        byte = stream.ReadByte();
}
//! [skip the charset]

//! [read a sheet]
// Adds the rules that stand in a stream to a sheet; one that is refused is printed.
void ReadRules(IO::Stream& stream, CSSStyleSheet& sheet) {
    Dom::CSS::CssReader reader(&stream, "UTF-8");
    while (reader.Read()) {
        const astring rule = reader.ReadRule();
        if (rule.empty()) continue;  // white space, or the end of a block that was given up
        try {
            sheet.InsertRule(rule, sheet.CssRules().Length());
        } catch (const Dom::DOMException& error) {
            std::cout << error.What() << ": " << rule << "\n";
        }
    }
}
//! [read a sheet]

//! [print a rule]
void Print(const CSSStyleRule& rule) {
    std::cout << rule.SelectorText() << "  (" << rule.Specificity() << ")\n";
    for (const Dom::CSS::CSSPropertyImpl* const property : rule.Style().Properties()) {
        std::cout << "    " << property->Name() << ": " << property->Value();
        if (property->Important()) std::cout << ", important";
        if (property->Shorthand()) std::cout << ", of a shorthand";
        std::cout << "\n";
    }
}
//! [print a rule]

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "usage: css_sheet FILE\n";
        return 2;
    }
    try {
        IO::FileStream file(argv[1], IO::FileMode::Open, 1, 1);
        SkipCharset(file);
        CSSStyleSheet sheet(Dom::CSS::CSSRule::Author, nullptr, argv[1], "");
        ReadRules(file, sheet);
        for (const Dom::CSS::CSSRule* const rule : sheet.CssRules()) {
            if (const auto* const style = dynamic_cast<const CSSStyleRule*>(rule)) {
                Print(*style);
            } else {
                std::cout << rule->CssText() << "  (as it is)\n";
            }
        }
    } catch (const Xml::Exception& error) {
        std::cerr << argv[1] << ": " << error.What() << "\n";
        return 1;
    }
    return 0;
}
