// SPDX-License-Identifier: MIT
// Finds elements of a page by selectors: css_query samples/page.xhtml
#include <espalier/css.h>
#include <espalier/dom.h>

#include <iostream>

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "usage: css_query FILE\n";
        return 2;
    }
    try {
        Dom::Document page;
        page.Load(argv[1]);
        //! [query]
        for (const Dom::Element* const cell :
             Dom::CSS::QuerySelectorAll(page, "tr.odd > td:first-child"))
            std::cout << cell->TextContent() << "\n";
        const Dom::Element* const link = Dom::CSS::QuerySelector(page, "a[href^='mailto:']");
        if (link != nullptr) {
            std::cout << link->GetAttribute("href") << ", in "
                      << Dom::CSS::Closest(*link, "body > *")->NodeName() << "\n";
        }
        // Prefixes are those of a list, whatever the document calls them.
        const Dom::CSS::Selector html("h|title, |title", {{"h", "http://www.w3.org/1999/xhtml"}});
        std::cout << Dom::CSS::QuerySelectorAll(page, html).size() << " title\n";
        //! [query]
        //! [one selector]
        const Dom::CSS::Selector selector("tr.odd, a[href^='mailto:']");
        int matches = 0;
        for (const Dom::Node* const row : page.GetElementsByTagName("tr")) {
            if (selector.Matches(static_cast<const Dom::Element&>(*row))) ++matches;
        }
        std::cout << matches << " rows\n";
        //! [one selector]
    } catch (const Xml::Exception& error) {
        std::cerr << error.What() << "\n";
        return 1;
    }
    return 0;
}
