// SPDX-License-Identifier: MIT
// Xerces' DOM, with namespaces and without validation. Declarations of namespaces are attributes.
#include "dom/TreeLibrary.h"
#include "reader/Utf16Length.h"

#include <stdexcept>
#include <xercesc/dom/DOM.hpp>
#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/parsers/XercesDOMParser.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XMLString.hpp>
#include <xercesc/util/XMLUni.hpp>
#include <xercesc/util/XercesVersion.hpp>

namespace bench {

namespace {

namespace xc = xercesc;

// What Xerces needs as long as it is used: to the end of the program.
void NeedPlatform() {
    static const bool isReady = (xc::XMLPlatformUtils::Initialize(), true);
    static_cast<void>(isReady);
}

class XercesTree final : public Tree {
public:
    explicit XercesTree(std::string_view document) {
        NeedPlatform();
        xc::XercesDOMParser parser;
        parser.useScanner(xc::XMLUni::fgWFXMLScanner);
        parser.setDoNamespaces(true);
        const xc::MemBufInputSource source(reinterpret_cast<const XMLByte*>(document.data()),
                                           document.size(), "document", false);
        parser.parse(source);
        if (parser.getErrorCount() != 0) throw std::runtime_error("not well-formed");
        document_ = parser.adoptDocument();
    }
    XercesTree(const XercesTree&) = delete;
    XercesTree& operator=(const XercesTree&) = delete;
    ~XercesTree() override { document_->release(); }

    void Walk(TreeTotals& totals) const override {
        const xc::DOMNode* node = document_->getFirstChild();
        while (node != nullptr) {
            Visit(*node, totals);
            if (const xc::DOMNode* const child = node->getFirstChild()) {
                node = child;
                continue;
            }
            while (node != nullptr && node->getNextSibling() == nullptr)
                node = node->getParentNode();
            if (node != nullptr) node = node->getNextSibling();
        }
    }

private:
    static std::size_t LengthOf(const XMLCh* text) {
        return text == nullptr ? 0 : static_cast<std::size_t>(Utf8Length(text));
    }

    static void Visit(const xc::DOMNode& node, TreeTotals& totals) {
        switch (node.getNodeType()) {
        case xc::DOMNode::ELEMENT_NODE: VisitElement(node, totals); break;
        case xc::DOMNode::TEXT_NODE:
        case xc::DOMNode::CDATA_SECTION_NODE: totals.AddText(LengthOf(node.getNodeValue())); break;
        case xc::DOMNode::COMMENT_NODE: totals.AddOther(LengthOf(node.getNodeValue())); break;
        case xc::DOMNode::PROCESSING_INSTRUCTION_NODE:
            totals.AddOther(LengthOf(node.getNodeName()) + LengthOf(node.getNodeValue()));
            break;
        default: break;
        }
    }

    static void VisitElement(const xc::DOMNode& element, TreeTotals& totals) {
        ++totals.elements;
        totals.AddName(LengthOf(element.getNodeName()));
        const xc::DOMNamedNodeMap& attributes = *element.getAttributes();
        const XMLSize_t count = attributes.getLength();
        for (XMLSize_t i = 0; i < count; ++i) {
            const xc::DOMNode& attribute = *attributes.item(i);
            ++totals.attributes;
            totals.AddName(LengthOf(attribute.getNodeName()));
            totals.AddValue(LengthOf(attribute.getNodeValue()));
        }
    }

    xc::DOMDocument* document_ = nullptr;  // owned
};

}  // namespace

std::unique_ptr<Tree> LoadXercesTree(std::string_view document) {
    return std::make_unique<XercesTree>(document);
}

std::string XercesTreeVersion() { return XERCES_FULLVERSIONDOT; }

}  // namespace bench
