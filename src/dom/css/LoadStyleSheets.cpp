// SPDX-License-Identifier: MIT
#include <espalier/dom/HTMLLinkElement.h>
#include <espalier/dom/HTMLStyleElement.h>
#include <espalier/dom/StyleProcessingInstruction.h>
#include <espalier/dom/css/CSSStyleSheet.h>
#include <espalier/dom/css/LoadStyleSheets.h>
#include <espalier/io/MemoryStream.h>

#include "dom/NodeAccess.h"
#include "dom/UriReference.h"
#include "dom/css/SheetLink.h"
#include "dom/css/SheetMaking.h"

namespace Dom::CSS {

using Dom::detail::NodeAccess;

namespace {

// Returns the object as the class `T`, which has that name, or null.
template <typename T>
T* As(Node& node, const char* name) {
    return static_cast<T*>(node.QueryInterface(name));
}

class Loader {
public:
    Loader(Document& document, const StyleSheetHost& host) : document_(document), host_(host) {}

    // Makes the sheet of a node that may have one.
    void Load(Node& node) {
        if (node.NodeType() == Node::PROCESSING_INSTRUCTION_NODE) {
            using Instruction = StyleProcessingInstruction;
            auto* const style = As<Instruction>(node, "Dom::StyleProcessingInstruction");
            if (style != nullptr) List(MakeLinked(*style));
            return;
        }
        if (node.NodeType() != Node::ELEMENT_NODE) return;
        // Nearly all elements have nothing to do with sheets.
        if (node.QueryInterface("Dom::StyleSheets::LinkStyle") == nullptr) return;
        if (auto* const style = As<HTMLStyleElement>(node, "Dom::HTMLStyleElement")) {
            return List(style->CreateStyleSheet());
        }
        auto* const link = As<HTMLLinkElement>(node, "Dom::HTMLLinkElement");
        if (link == nullptr) return;
        CSSStyleSheet* const sheet =
            detail::HasWord(link->Rel(), "stylesheet") ? MakeLinked(*link) : Refuse(*link);
        if (sheet != nullptr && detail::HasWord(link->Rel(), "alternate")) sheet->Disable();
        List(sheet);
    }

private:
    static CSSStyleSheet* Refuse(const StyleSheets::LinkStyle& link) {
        delete link.Sheet();
        return nullptr;
    }

    // Makes the sheet that a link or an instruction leads to.
    template <typename Link>
    CSSStyleSheet* MakeLinked(Link& link) {
        const astring& href = link.Href();
        if (!host_ || !detail::LeadsElsewhere(href) || link.Type() != detail::kSheetType)
            return Refuse(link);
        const astring address = Dom::detail::ResolveReference(document_.DocumentURI(), href);
        const std::optional<astring> bytes = host_(address, link.Charset());
        if (!bytes) return Refuse(link);
        IO::MemoryStream stream(reinterpret_cast<const unsigned char*>(bytes->data()),
                                static_cast<long>(bytes->size()));
        return link.CreateStyleSheet(&stream);
    }

    void List(CSSStyleSheet* sheet) {
        if (sheet != nullptr) document_.StyleSheets().AddItem(sheet);
    }

    Document& document_;
    const StyleSheetHost& host_;
};

}  // namespace

void LoadStyleSheets(Document& document, const StyleSheetHost& host) {
    Loader loader(document, host);
    bool isInProlog = true;
    for (Node* node = NodeAccess::First(document); node != nullptr;
         node = NodeAccess::NextBelow(document, *node)) {
        if (node->NodeType() == Node::ELEMENT_NODE) isInProlog = false;
        if (isInProlog || node->NodeType() == Node::ELEMENT_NODE) loader.Load(*node);
    }
}

}  // namespace Dom::CSS
