// SPDX-License-Identifier: MIT
// Tells which style the elements of a page have, and why: computed_style samples/page.xhtml
#include <espalier/css.h>
#include <espalier/dom.h>
#include <espalier/io.h>

#include <iostream>
#include <optional>

namespace {

using Dom::CSS::DeclaredValue;
using Dom::CSS::StyleExplanation;
using Dom::CSS::StyleResolver;

// Gives the one sheet that a page may have.
std::optional<astring> ReadSheet(const astring& address, const astring& allowed) {
    if (address != allowed) return std::nullopt;
    IO::FileStream file(address, IO::FileMode::Open, 1, 1);
    astring sheet;
    for (int byte = file.ReadByte(); byte >= 0; byte = file.ReadByte())
        sheet += static_cast<char>(byte);
    return sheet;
}

//! [explain]
// Prints where the value of a property comes from: what wins, and what lost.
void Explain(StyleResolver& resolver, const Dom::Element& element, const char* property) {
    const StyleExplanation why = resolver.Explain(element, property);
    std::cout << property << ": " << why.value;
    if (why.kind == StyleExplanation::Kind::Initial) std::cout << ", as by default";
    if (why.kind == StyleExplanation::Kind::Inherited)
        std::cout << ", from \"" << why.element->NodeName() << "\"";
    std::cout << "\n";
    for (const DeclaredValue& declared : why.declarations) {
        std::cout << "    " << declared.value << (declared.important ? " !important" : "");
        if (declared.rule != nullptr) {
            std::cout << "  by \"" << declared.rule->SelectorText() << "\" in line "
                      << declared.place.line;
        }
        std::cout << "\n";
    }
}
//! [explain]

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) return 2;
    try {
        //! [resolve]
        Dom::HTMLDocument page;
        page.Load(argv[1]);
        const astring allowed = page.BaseURI() + "page.css";
        StyleResolver resolver;
        resolver.AddSheet(Dom::CSS::HtmlStyleSheet());
        resolver.AddSheetsOf(page, [&allowed](const astring& address, const astring&) {
            return ReadSheet(address, allowed);
        });
        const Dom::Element& notice = *Dom::CSS::QuerySelector(page, "#notice");
        std::cout << resolver.StyleOf(notice).Value("border-left-width") << "\n";  // "4px"
        //! [resolve]
        Explain(resolver, notice, "color");
        Explain(resolver, notice, "font-family");
        Explain(resolver, notice, "float");
        return 0;
    } catch (const Xml::Exception& error) {
        std::cerr << error.What() << "\n";
        return 1;
    }
}
