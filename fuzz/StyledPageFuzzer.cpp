// SPDX-License-Identifier: MIT
//
// Loads a page and the sheets that it links to. The input is settings, a byte each: how the page is
// loaded (bit 0: with namespaces, bit 1: a document that is no page), in which order all is
// destroyed, the seed of the changes between; then texts: the page, and the sheet that every link
// leads to.
//
// All sheets are made twice, which gives the same rules; styles are read, changed and written; then
// sheets, nodes and the document go in varying order, and none of them may be missed by the others.

#include <espalier/css.h>
#include <espalier/dom.h>
#include <espalier/io/MemoryStream.h>
#include <espalier/xml/XmlTextReader.h>

#include "CssInput.h"
#include "ReaderStory.h"

#include <algorithm>  // std::reverse
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace {

using Dom::Document;
using Dom::HTMLDocument;
using Dom::HTMLElement;
using Dom::Node;
using Dom::StyleSheets::LinkStyle;
using Dom::StyleSheets::StyleSheet;
using fuzz::Require;

template <typename T>
T* As(Node& node, const char* name) {
    return static_cast<T*>(node.QueryInterface(name));
}

// All nodes below a document, in its order.
std::vector<Node*> NodesOf(const Document& document) {
    std::vector<Node*> nodes;
    std::vector<Node*> pending;
    const auto push = [&pending](const Node& parent) {
        const std::size_t first = pending.size();
        for (Node& child : parent.Children())
            pending.push_back(&child);
        std::reverse(pending.begin() + static_cast<std::ptrdiff_t>(first), pending.end());
    };
    push(document);
    while (!pending.empty()) {
        Node* const node = pending.back();
        pending.pop_back();
        nodes.push_back(node);
        push(*node);
    }
    return nodes;
}

void Load(Document& document, const std::string& text, bool namespaces) {
    IO::MemoryStream stream(reinterpret_cast<const unsigned char*>(text.data()),
                            static_cast<long>(text.size()));
    Xml::XmlTextReader reader;
    reader.SetStream(&stream, false);
    reader.SetNamespaces(namespaces);
    try {
        document.Load(reader, "http://host.example/dir/page.xhtml");
    } catch (const Xml::Exception&) {
        // What was read before is a page, too.
    }
}

// Every sheet in the list is that of the node that owns it, and the nodes' are in the list.
std::string RulesOf(const Document& document, const std::vector<Node*>& nodes) {
    std::string rules;
    for (StyleSheet* const sheet : document.StyleSheets()) {
        Require(sheet->OwnerNode() != nullptr);
        Require(As<LinkStyle>(*sheet->OwnerNode(), "Dom::StyleSheets::LinkStyle")->Sheet() ==
                sheet);
        rules += sheet->Href().str() + (sheet->Disabled() ? "-" : "+");
        for (const Dom::CSS::CSSRule* const rule :
             static_cast<Dom::CSS::CSSStyleSheet*>(sheet)->CssRules())
            rules += rule->CssText().str() + "\n";
    }
    unsigned count = 0;
    for (Node* const node : nodes) {
        const auto* const link = As<LinkStyle>(*node, "Dom::StyleSheets::LinkStyle");
        if (link != nullptr && link->Sheet() != nullptr) ++count;
    }
    Require(count == document.StyleSheets().Length());
    return rules;
}

// What a style attribute says is what is written into it, once it has been read.
void CheckStyle(HTMLElement& element) {
    const std::string before = element.Style().CssText().str();
    element.SyncStyle();
    Require(element.Style().CssText() == before);
    element.Style().SetProperty("color", "red", "");
    element.SyncStyle();
    Require(element.Style().GetPropertyValue("color") == "red" || !before.empty());
    element.SetLang("en");
    Require(element.Lang() == "en");
    element.SetId("i");
    Require(element.Id() == "i");
}

void CheckPage(HTMLDocument& page, const std::vector<Node*>& nodes) {
    const Dom::HTMLCollection collections[] = {page.Forms(), page.Images(), page.Applets(),
                                               page.Links(), page.Anchors()};
    for (const Dom::HTMLCollection& collection : collections) {
        std::size_t count = 0;
        for (Node* const member : collection)
            Require(collection.Item(count++) == member);
        Require(collection.Length() == count);
    }
    for (Node* const node : nodes) {
        auto* const element = As<HTMLElement>(*node, "Dom::HTMLElement");
        if (element == nullptr) continue;
        page.GetOverrideStyle(element)->SetProperty("margin", "1px", "");
        CheckStyle(*element);
    }
    page.SetTitle("title");
    Require(page.DocumentElement() == nullptr || page.Title() == "title");
}

// A source of small numbers.
class Numbers {
public:
    explicit Numbers(unsigned seed) : state_(seed + 1) {}
    std::size_t Below(std::size_t limit) {
        state_ = state_ * 1103515245U + 12345U;
        return (state_ >> 16) % limit;
    }

private:
    std::uint32_t state_;
};

// Destroys sheets and nodes until a few are left.
void DestroySome(Document& document, Numbers& numbers, std::vector<Dom::NodePtr>& free) {
    for (int i = 0; i < 8; ++i) {
        const std::vector<Node*> nodes = NodesOf(document);
        const unsigned sheets = document.StyleSheets().Length();
        switch (numbers.Below(4)) {
        case 0:
            if (sheets > 0) delete document.StyleSheets().Item(numbers.Below(sheets));
            break;
        case 1:
            if (sheets > 0) document.StyleSheets().RemoveItemAt(numbers.Below(sheets));
            break;
        case 2:
            if (!nodes.empty()) delete nodes[numbers.Below(nodes.size())];
            break;
        default:
            if (nodes.empty()) break;
            Node* const node = nodes[numbers.Below(nodes.size())];
            free.emplace_back(node->ParentNode()->RemoveChild(node));
        }
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::CssInput input(data, size);
    const unsigned settings = input.Byte();
    const unsigned order = input.Byte();
    Numbers numbers(input.Byte());
    const std::string pageText = input.Text();
    const astring sheetText(input.Text());

    const bool isPage = (settings & 2) == 0;
    std::unique_ptr<Document> document =
        isPage ? std::make_unique<HTMLDocument>() : std::make_unique<Document>();
    Load(*document, pageText, (settings & 1) != 0);
    const std::vector<Node*> nodes = NodesOf(*document);
    const auto host = [&sheetText](const astring& address,
                                   const astring&) -> std::optional<astring> {
        if (address.size() % 7 == 6) return std::nullopt;
        return sheetText;
    };
    Dom::CSS::LoadStyleSheets(*document, host);
    const std::string rules = RulesOf(*document, nodes);
    Dom::CSS::LoadStyleSheets(*document, host);
    Require(RulesOf(*document, nodes) == rules);
    if (isPage) CheckPage(static_cast<HTMLDocument&>(*document), nodes);

    std::vector<Dom::NodePtr> free;
    DestroySome(*document, numbers, free);
    switch (order % 4) {
    case 0: document.reset(); break;
    case 1: free.clear(); break;
    case 2: document->LoadXml("<a/>"); break;
    default:
        if (isPage) static_cast<HTMLDocument&>(*document).Open();
    }
    return 0;
}
