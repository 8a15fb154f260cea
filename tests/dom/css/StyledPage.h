// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/dom/Document.h>
#include <espalier/dom/Element.h>
#include <espalier/dom/css/CSSStyleSheet.h>
#include <espalier/dom/css/ParseStyleSheet.h>
#include <espalier/dom/css/QuerySelector.h>
#include <espalier/dom/css/StyleResolver.h>

#include <deque>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>

/// \file
/// A tree with style sheets, for tests.

namespace support {

/// A tree, sheets, and the styles that the elements have by them.
class StyledPage {
public:
    explicit StyledPage(const char* xml, const Dom::CSS::MediaContext& context = {})
        : resolver(context) {
        document.LoadXml(xml);
    }
    StyledPage(const char* xml, std::string_view css) : StyledPage(xml) { AddSheet(css); }

    Dom::CSS::CSSStyleSheet& AddSheet(
        std::string_view css, Dom::CSS::CSSRule::RULE_ORIGIN origin = Dom::CSS::CSSRule::Author) {
        sheets.push_back(Dom::CSS::ParseStyleSheet(css, {.origin = origin}));
        resolver.AddSheet(*sheets.back());
        return *sheets.back();
    }

    Dom::Element& Element(std::string_view selector) {
        Dom::Element* const element = Dom::CSS::QuerySelector(document, selector);
        if (element == nullptr) throw std::invalid_argument(std::string(selector));
        return *element;
    }
    std::string Value(std::string_view selector, std::string_view property,
                      std::string_view pseudo = {}) {
        return resolver.StyleOf(Element(selector), pseudo).Value(property);
    }
    Dom::CSS::StyleExplanation Explain(std::string_view selector, std::string_view property,
                                       std::string_view pseudo = {}) {
        return resolver.Explain(Element(selector), property, pseudo);
    }

    Dom::Document document;
    std::deque<std::unique_ptr<Dom::CSS::CSSStyleSheet>> sheets;
    Dom::CSS::StyleResolver resolver;
};

}  // namespace support
