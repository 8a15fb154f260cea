// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/dom/HTMLDocument.h>
#include <espalier/dom/css/CSSStyleRule.h>
#include <espalier/dom/css/StyleResolver.h>

#include <cstddef>
#include <string>

namespace bench {

/// A page with the one sheet that it links to, in our library.
class EspalierPage {
public:
    /// Loads the page.
    explicit EspalierPage(const std::string& page) { document_.LoadXml(page, "page.html"); }

    /// Reads the sheet.
    void AddSheet(const std::string& sheet);
    /// Asks for the style of each element, in document order, and for a value of each.
    /// \return how many elements there are
    std::size_t Style();
    /// Returns how many elements kRareClass selects, and have a style that says so.
    std::size_t CountRare(const char* fontStyle);
    /// Changes the rule for kRareClass, so that it says something else.
    /// \throws std::runtime_error when the sheet has none
    void ChangeRareRule(const char* fontStyle);

private:
    Dom::HTMLDocument document_;
    Dom::CSS::StyleResolver resolver_;
};

/// Loads a page, reads its sheet, styles all elements and frees it all.
/// \return how many elements there are
std::size_t StyleEspalierPage(const std::string& page, const std::string& sheet);

/// Does the same with litehtml, which styles the elements when it makes them. Nothing is laid out.
std::size_t StyleLitehtmlPage(const std::string& page, const std::string& sheet);

}  // namespace bench
