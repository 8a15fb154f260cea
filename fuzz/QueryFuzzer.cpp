// SPDX-License-Identifier: MIT
//
// A selector that ends with a NUL, and a document behind it that is searched. What is found is what
// Matches() says of each element, in the order of the document.

#include <espalier/css.h>
#include <espalier/dom.h>

#include "CssInput.h"
#include "ReaderStory.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace {

using Dom::Element;
using Dom::Node;
using Dom::CSS::NamespacePrefixes;
using Dom::CSS::QuerySelector;
using Dom::CSS::QuerySelectorAll;
using Dom::CSS::Selector;
using fuzz::Require;

const NamespacePrefixes& Prefixes() {
    static const NamespacePrefixes prefixes = {{"s", "urn:s"}, {"n", ""}};
    return prefixes;
}

std::optional<Selector> MakeSelector(const std::string& text) {
    try {
        return std::optional<Selector>(std::in_place, text, Prefixes());
    } catch (const Dom::CSS::SelectorException& error) {
        Require(error.Position() <= text.size());
        return {};
    }
}

// All elements below a node, found by their children alone.
void Collect(const Node& root, std::vector<const Element*>& elements) {
    std::vector<const Node*> waiting{&root};
    while (!waiting.empty()) {
        const Node* const node = waiting.back();
        waiting.pop_back();
        if (node != &root && node->NodeType() == Dom::DOMNodeType::ELEMENT_NODE) {
            elements.push_back(static_cast<const Element*>(node));
        }
        std::vector<const Node*> children;
        for (const Node& child : node->Children())
            children.push_back(&child);
        waiting.insert(waiting.end(), children.rbegin(), children.rend());
    }
}

void CheckBelow(const Node& root, const Selector& selector) {
    std::vector<const Element*> all;
    Collect(root, all);
    std::vector<const Element*> expected;
    for (const Element* const element : all) {
        if (Matches(*element, selector)) expected.push_back(element);
    }
    Require(QuerySelectorAll(root, selector) == expected);
    Require(QuerySelector(root, selector) == (expected.empty() ? nullptr : expected.front()));
    for (const Element* const element : all) {
        const Element* const closest = Closest(*element, selector);
        Require(closest == nullptr || Matches(*closest, selector));
        Require((closest == element) == Matches(*element, selector));
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::CssInput input(data, size);
    const std::string text = input.Text();
    const std::optional<Selector> selector = MakeSelector(text);
    if (!selector) return 0;
    Dom::Document document;
    try {
        document.LoadXml(input.Text());
    } catch (const Xml::Exception&) {
        // What came before the error is there.
    }
    CheckBelow(document, *selector);
    if (document.DocumentElement() != nullptr) CheckBelow(*document.DocumentElement(), *selector);
    return 0;
}
