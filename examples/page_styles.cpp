// SPDX-License-Identifier: MIT
// Loads a page with all of its style sheets, and changes the style of an element:
// page_styles samples/page.xhtml
#include <espalier/css.h>
#include <espalier/dom.h>
#include <espalier/io.h>

#include <cstddef>
#include <iostream>
#include <optional>
#include <string_view>

namespace {

using Dom::CSS::CSSStyleSheet;

//! [host]
// Gives the sheets that lie beside the page. The page says which: others it does not get.
std::optional<astring> ReadBeside(const Dom::Document& page, const astring& address) {
    const astring folder = page.BaseURI();
    if (!address.view().starts_with(folder)) return std::nullopt;
    const std::string_view name = address.view().substr(folder.size());
    if (name.find_first_of("/\\:") != std::string_view::npos) return std::nullopt;
    try {
        IO::FileStream file(address, IO::FileMode::Open, 1, 1);
        astring sheet;
        unsigned char bytes[4096];
        while (const int count = file.Read(bytes, 0, sizeof bytes))
            sheet.append(reinterpret_cast<const char*>(bytes), static_cast<std::size_t>(count));
        return sheet;
    } catch (const Xml::Exception&) {
        return std::nullopt;  // a link that leads nowhere has no sheet
    }
}
//! [host]

//! [print sheets]
void PrintSheets(const Dom::Document& page) {
    for (Dom::StyleSheets::StyleSheet* const sheet : page.StyleSheets()) {
        const auto& rules = static_cast<const CSSStyleSheet*>(sheet)->CssRules();
        std::cout << sheet->OwnerNode()->NodeName() << " " << sheet->Href() << ": "
                  << rules.Length() << " rules for \"" << sheet->GetMediaList().MediaText() << "\""
                  << (sheet->Disabled() ? ", disabled" : "") << "\n";
    }
}
//! [print sheets]

//! [change a style]
// Makes the text of the paragraphs of a page grey, in their attributes "style".
void MakeGrey(Dom::HTMLDocument& page) {
    for (Dom::Node* const node : page.GetElementsByTagName("p")) {
        auto* const paragraph = static_cast<Dom::HTMLElement*>(node);
        paragraph->Style().SetProperty("color", "#555", "");
        paragraph->SyncStyle();
        std::cout << "p " << paragraph->ClassName() << ": " << paragraph->GetAttribute("style")
                  << "\n";
    }
}
//! [change a style]

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "usage: page_styles FILE\n";
        return 2;
    }
    try {
        //! [load a page]
        Dom::HTMLDocument page;
        page.Load(argv[1]);
        Dom::CSS::LoadStyleSheets(page, [&page](const astring& address, const astring&) {
            return ReadBeside(page, address);
        });
        std::cout << page.Title() << ": " << page.StyleSheets().Length() << " sheets\n";
        //! [load a page]
        PrintSheets(page);
        MakeGrey(page);
    } catch (const Xml::Exception& error) {
        std::cerr << argv[1] << ": " << error.What() << "\n";
        return 1;
    }
    return 0;
}
