// SPDX-License-Identifier: MIT
// Prints which rules of the style sheet in a page select which of its elements, and what they make
// of them: css_match samples/page.xhtml
#include <espalier/css.h>
#include <espalier/dom.h>
#include <espalier/io/StringStream.h>

#include <iostream>

namespace {

using Dom::Element;
using Dom::CSS::CSSStyleSheet;
using Dom::CSS::MatchedRule;
using Dom::CSS::RuleIndex;

//! [sheet of a document]
// Makes a sheet of all "style" elements. It belongs to the document.
const CSSStyleSheet& MakeSheet(Dom::Document& document) {
    auto* const sheet = new CSSStyleSheet(Dom::CSS::CSSRule::Author, nullptr, "", "");
    document.StyleSheets().AddItem(sheet);
    for (const Dom::Node* const element : document.GetElementsByTagName("style")) {
        IO::StringStream text(element->TextContent(), false);
        Dom::CSS::CssReader reader(&text, "UTF-8");
        while (reader.Read()) {
            const astring rule = reader.ReadRule();
            if (!rule.empty()) sheet->InsertRule(rule, sheet->CssRules().Length());
        }
    }
    return *sheet;
}
//! [sheet of a document]

//! [style of an element]
// Returns what the rules that select an element declare for it.
Dom::CSS::CSSStyleDeclaration StyleOf(const RuleIndex& index, const Element& element) {
    Dom::CSS::CSSStyleDeclaration style(nullptr);
    for (const MatchedRule& match : index.Match(element)) {
        // A copy that is no rule's weighs what the selector does that selects, not the whole group.
        Dom::CSS::CSSStyleDeclaration declaration(nullptr);
        declaration = match.rule->Style();
        style.Cascade(declaration, match.rule->Origin(), match.specificity);
    }
    return style;
}
//! [style of an element]

//! [match]
// Prints the rules that select an element or one below it.
void PrintMatches(const RuleIndex& index, const Element& element) {
    for (const MatchedRule& match : index.Match(element))
        std::cout << element.NodeName() << " <- " << match.rule->SelectorText() << "\n";
    for (const Dom::Node& child : element.Children()) {
        if (child.NodeType() != Dom::DOMNodeType::ELEMENT_NODE) continue;
        PrintMatches(index, static_cast<const Element&>(child));
    }
}
//! [match]

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "usage: css_match FILE\n";
        return 2;
    }
    try {
        Dom::Document document;
        document.Load(argv[1]);
        RuleIndex index;
        index.Add(MakeSheet(document));
        PrintMatches(index, *document.DocumentElement());
        if (const Element* const notice = document.GetElementById("notice")) {
            std::cout << "notice: " << StyleOf(index, *notice).CssText() << "\n";
        }
    } catch (const Xml::Exception& error) {
        std::cerr << argv[1] << ":" << error.LineNumber() << ":" << error.LinePos() << ": "
                  << error.What() << "\n";
        return 1;
    }
    return 0;
}
