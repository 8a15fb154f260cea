// SPDX-License-Identifier: MIT
#include "dom/DomNodes.h"
#include "dom/ExpectDomError.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

namespace {

using Dom::DOMNodeType;
using Dom::NodePtr;
using support::Add;
using support::AddElement;
using support::AddText;
using support::AnyNode;
using support::Links;
using support::Lockable;

using LockableElement = Lockable<Dom::Element>;

constexpr char kNull[] = "8 Node expected";
constexpr char kReadOnly[] = "7 This node is read-only";
constexpr char kParentReadOnly[] = "7 The parent of the node being appended is read-only";
constexpr char kOtherDocument[] =
    "4 The node to append is was created from a different document than the one that created this "
    "node";
constexpr char kAncestor[] = "3 The node to append is one of this node's ancestors";
constexpr char kAlreadyChild[] = "3 The node is already a child of this node";
constexpr char kOneRoot[] = "3 A document can only have one root element";
constexpr char kOneDoctype[] = "3 A document can only have one DTD";
constexpr char kPrologueOnly[] = "3 Document type description only allowed in document prologue";
constexpr char kDeclaration[] = "3 XML declaration not allowed in non-document nodes";
constexpr char kText[] = "3 Non-whitespace text node not allowed as child of document";
constexpr char kNotInDocument[] = "3 Node not allowed as child of document";

// --- links ---

TEST(AppendChild, LinksTheNodeBehindTheLastChild) {
    Dom::Document document;
    Dom::Element* root = AddElement(document, "root");
    Dom::Element* a = document.CreateElement("a");
    Dom::Element* b = document.CreateElement("b");
    Dom::Element* c = document.CreateElement("c");
    EXPECT_EQ(root->AppendChild(a), a);
    EXPECT_EQ(Links(*root, {a}), "first=a last=a a(-,-)");
    EXPECT_EQ(root->AppendChild(b), b);
    EXPECT_EQ(Links(*root, {a, b}), "first=a last=b a(-,b) b(a,-)");
    EXPECT_EQ(root->AppendChild(c), c);
    EXPECT_EQ(Links(*root, {a, b, c}), "first=a last=c a(-,b) b(a,c) c(b,-)");
    EXPECT_EQ(support::TrueChildren(*root), "a b c");
    EXPECT_TRUE(root->HasChildNodes());
}

TEST(AppendChild, TakesTheNodeOutOfItsOldParent) {
    const struct {
        int position;
        const char* expected;  // the links below the old parent
    } kCases[] = {
        {0, "first=b last=c a(-,-)@q b(-,c) c(b,-)"},
        {1, "first=a last=c a(-,c) b(-,-)@q c(a,-)"},
        {2, "first=a last=b a(-,b) b(a,-) c(-,-)@q"},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.position);
        Dom::Document document;
        Dom::Element* root = AddElement(document, "root");
        Dom::Element* p = AddElement(*root, "p");
        Dom::Element* q = AddElement(*root, "q");
        const std::vector<Dom::Node*> nodes = {AddElement(*p, "a"), AddElement(*p, "b"),
                                               AddElement(*p, "c")};
        Dom::Node* moved = nodes[static_cast<std::size_t>(c.position)];
        EXPECT_EQ(q->AppendChild(moved), moved);
        EXPECT_EQ(Links(*p, nodes), c.expected);
        EXPECT_EQ(q->FirstChild(), moved);
        EXPECT_EQ(q->LastChild(), moved);
    }
}

TEST(AppendChild, TakesAnOnlyChildOutOfItsOldParent) {
    Dom::Document document;
    Dom::Element* root = AddElement(document, "root");
    Dom::Element* p = AddElement(*root, "p");
    Dom::Element* q = AddElement(*root, "q");
    Dom::Element* a = AddElement(*p, "a");
    Dom::Element* b = AddElement(*q, "b");
    q->AppendChild(a);
    EXPECT_EQ(Links(*q, {b, a}), "first=b last=a b(-,a) a(b,-)");
    EXPECT_FALSE(p->HasChildNodes());
    EXPECT_EQ(p->LastChild(), nullptr);
}

TEST(AppendChild, MovesANodeWithAllThatIsBelowIt) {
    Dom::Document document;
    Dom::Element* root = AddElement(document, "root");
    Dom::Element* p = AddElement(*root, "p");
    Dom::Element* q = AddElement(*root, "q");
    AddElement(*p, "a");
    AddText(*p, "text");
    q->AppendChild(p);
    EXPECT_EQ(support::TrueChildren(*root), "q");
    EXPECT_EQ(support::TrueChildren(*q), "p");
    EXPECT_EQ(support::TrueChildren(*p), "a 'text'");
}

// Deliberate: a fragment is appended as itself, with its children below it.
TEST(AppendChild, DoesNotSpliceTheChildrenOfAFragment) {
    Dom::Document document;
    Dom::Element* root = AddElement(document, "root");
    Dom::DocumentFragment* fragment = document.CreateDocumentFragment();
    AddElement(*fragment, "a");
    EXPECT_EQ(root->AppendChild(fragment), fragment);
    EXPECT_EQ(support::TrueChildren(*root), "#document-fragment");
    EXPECT_EQ(support::TrueChildren(*fragment), "a");
    EXPECT_EQ(fragment->ParentNode(), root);
}

TEST(AppendChild, OtherParentsThanDocumentsTakeAnyType) {
    Dom::Document document;
    const NodePtr kParents[] = {NodePtr(document.CreateElement("e")),
                                NodePtr(document.CreateAttribute("a")),
                                NodePtr(document.CreateTextNode("t")),
                                NodePtr(document.CreateCDATASection("t")),
                                NodePtr(document.CreateComment("c")),
                                NodePtr(document.CreateEntityReference("r")),
                                NodePtr(document.CreateDocumentFragment()),
                                NodePtr(document.CreateProcessingInstruction("p", "d"))};
    for (const NodePtr& parent : kParents) {
        SCOPED_TRACE(parent->NodeName());
        for (int type = 0; type < 14; ++type) {
            if (type == DOMNodeType::DOCUMENT_NODE) continue;  // never of the same document
            const auto value = static_cast<DOMNodeType::DOM_NODE_TYPE>(type);
            auto* child = new AnyNode(value, "n" + std::to_string(type), &document);
            EXPECT_EQ(parent->AppendChild(child), child);
        }
        EXPECT_EQ(parent->ChildNodes().Length(), 13u);
        EXPECT_EQ(parent->FirstChild()->NodeName(), "n0");
        EXPECT_EQ(parent->LastChild()->NodeName(), "n13");
    }
}

// --- checks, and their order ---

TEST(AppendChild, RefusesNull) {
    Dom::Document document;
    EXPECT_DOM_ERROR(document.AppendChild(nullptr), kNull);
    EXPECT_DOM_ERROR(AddElement(document, "root")->AppendChild(nullptr), kNull);
}

TEST(AppendChild, RefusesNodesOfOtherDocuments) {
    Dom::Document document;
    Dom::Document other;
    Dom::Element* root = AddElement(document, "root");
    const NodePtr stranger(other.CreateElement("stranger"));
    EXPECT_DOM_ERROR(root->AppendChild(stranger.get()), kOtherDocument);
    EXPECT_DOM_ERROR(document.AppendChild(stranger.get()), kOtherDocument);
    EXPECT_FALSE(root->HasChildNodes());
    EXPECT_EQ(stranger->ParentNode(), nullptr);
}

// A document has no owner document, so it is of no document, not even of its own.
TEST(AppendChild, RefusesDocumentsAsThoseOfAnotherDocument) {
    Dom::Document document;
    Dom::Document other;
    Dom::Element* root = AddElement(document, "root");
    EXPECT_DOM_ERROR(root->AppendChild(&document), kOtherDocument);
    EXPECT_DOM_ERROR(document.AppendChild(&document), kOtherDocument);
    EXPECT_DOM_ERROR(document.AppendChild(&other), kOtherDocument);
}

TEST(AppendChild, RefusesTheNodeItselfAndThoseAboveIt) {
    Dom::Document document;
    Dom::Element* root = AddElement(document, "root");
    Dom::Element* a = AddElement(*root, "a");
    Dom::Element* b = AddElement(*a, "b");
    EXPECT_DOM_ERROR(root->AppendChild(root), kAncestor);
    EXPECT_DOM_ERROR(b->AppendChild(b), kAncestor);
    EXPECT_DOM_ERROR(b->AppendChild(a), kAncestor);
    EXPECT_DOM_ERROR(b->AppendChild(root), kAncestor);
    EXPECT_EQ(support::TrueChildren(*root), "a");
    EXPECT_EQ(support::TrueChildren(*a), "b");
    EXPECT_FALSE(b->HasChildNodes());
}

// The element of an attribute is above it; else both would own each other.
TEST(AppendChild, RefusesTheElementOfAnAttributeAndThoseAboveIt) {
    Dom::Document document;
    Dom::Element* root = AddElement(document, "root");
    Dom::Element* a = AddElement(*root, "a");
    a->SetAttribute("x", "1");
    Dom::Attr* attribute = a->GetAttributeNode("x");
    EXPECT_DOM_ERROR(attribute->AppendChild(a), kAncestor);
    EXPECT_DOM_ERROR(attribute->AppendChild(root), kAncestor);
    Dom::Element* inside = AddElement(*attribute, "inside");
    EXPECT_DOM_ERROR(inside->AppendChild(a), kAncestor);
    Dom::Element* aside = AddElement(*root, "aside");
    EXPECT_EQ(attribute->AppendChild(aside), aside);
}

// Deliberate: appending a child does not make it the last one.
TEST(AppendChild, RefusesAChildOfTheNode) {
    Dom::Document document;
    Dom::Element* root = AddElement(document, "root");
    Dom::Element* a = AddElement(*root, "a");
    Dom::Element* b = AddElement(*root, "b");
    EXPECT_DOM_ERROR(root->AppendChild(a), kAlreadyChild);
    EXPECT_DOM_ERROR(root->AppendChild(b), kAlreadyChild);
    EXPECT_DOM_ERROR(document.AppendChild(root), kAlreadyChild);
    EXPECT_EQ(Links(*root, {a, b}), "first=a last=b a(-,b) b(a,-)");
}

TEST(AppendChild, RefusesWhenItselfOrTheOldParentIsReadOnly) {
    Dom::Document document;
    Dom::Element* root = AddElement(document, "root");
    auto* locked = Add<LockableElement>(*root, "locked");
    Dom::Element* a = AddElement(*locked, "a");
    locked->SetReadOnly(true);
    const NodePtr fresh(document.CreateElement("fresh"));
    EXPECT_DOM_ERROR(locked->AppendChild(fresh.get()), kReadOnly);
    EXPECT_DOM_ERROR(root->AppendChild(a), kParentReadOnly);
    EXPECT_EQ(support::TrueChildren(*root), "locked");
    EXPECT_EQ(support::TrueChildren(*locked), "a");
}

// A read-only node itself may be moved.
TEST(AppendChild, TakesAReadOnlyNode) {
    Dom::Document document;
    Dom::Element* root = AddElement(document, "root");
    auto* locked = new LockableElement("", "locked", &document);
    locked->SetReadOnly(true);
    EXPECT_EQ(root->AppendChild(locked), locked);
}

TEST(AppendChild, OfTwoReasonsTheFirstIsTold) {
    Dom::Document document;
    Dom::Document other;
    Dom::Element* root = AddElement(document, "root");
    auto* locked = Add<LockableElement>(*root, "locked");
    Dom::Element* inLocked = AddElement(*locked, "inLocked");
    Dom::Element* below = AddElement(*inLocked, "below");
    locked->SetReadOnly(true);
    auto* lockedToo = Add<LockableElement>(*root, "lockedToo");
    lockedToo->SetReadOnly(true);
    const NodePtr stranger(other.CreateElement("stranger"));
    auto* strangeParent = Add<LockableElement>(other, "strangeParent");
    Dom::Element* inStrangeParent = AddElement(*strangeParent, "inStrangeParent");
    strangeParent->SetReadOnly(true);

    EXPECT_DOM_ERROR(locked->AppendChild(nullptr), kNull) << "read-only too";
    EXPECT_DOM_ERROR(lockedToo->AppendChild(inLocked), kReadOnly) << "old parent read-only too";
    EXPECT_DOM_ERROR(locked->AppendChild(stranger.get()), kReadOnly) << "other document too";
    EXPECT_DOM_ERROR(locked->AppendChild(root), kReadOnly) << "ancestor too";
    EXPECT_DOM_ERROR(locked->AppendChild(locked), kReadOnly) << "itself too";
    EXPECT_DOM_ERROR(locked->AppendChild(inLocked), kReadOnly) << "already a child too";
    EXPECT_DOM_ERROR(root->AppendChild(inStrangeParent), kParentReadOnly) << "other document too";
    EXPECT_DOM_ERROR(below->AppendChild(inLocked), kParentReadOnly) << "ancestor too";
    EXPECT_DOM_ERROR(document.AppendChild(inLocked), kParentReadOnly) << "second root too";
    EXPECT_DOM_ERROR(document.AppendChild(stranger.get()), kOtherDocument) << "second root too";
    EXPECT_DOM_ERROR(document.AppendChild(root), kAlreadyChild) << "second root too";
}

TEST(AppendChild, ReadOnlyDocumentsRefuseBeforeTheirOwnRules) {
    Lockable<Dom::Document> document;
    AddElement(document, "root");
    document.SetReadOnly(true);
    const NodePtr second(document.CreateElement("second"));
    EXPECT_DOM_ERROR(document.AppendChild(second.get()), kReadOnly);
    document.SetReadOnly(false);
    EXPECT_DOM_ERROR(document.AppendChild(second.get()), kOneRoot);
}

// --- what documents take ---

TEST(AppendChildToADocument, TakesOneElement) {
    Dom::Document document;
    Dom::Element* root = AddElement(document, "root");
    const NodePtr second(document.CreateElement("second"));
    EXPECT_DOM_ERROR(document.AppendChild(second.get()), kOneRoot);
    EXPECT_EQ(support::TrueChildren(document), "root");
    Dom::Element* inside = AddElement(*root, "inside");
    EXPECT_DOM_ERROR(document.AppendChild(inside), kOneRoot);
    EXPECT_EQ(inside->ParentNode(), root);
}

TEST(AppendChildToADocument, TakesAnotherElementOnceTheFirstIsGone) {
    Dom::Document document;
    Dom::Element* root = AddElement(document, "root");
    const NodePtr removed(document.RemoveChild(root));
    Dom::Element* second = AddElement(document, "second");
    EXPECT_EQ(document.DocumentElement(), second);
    second->DestroyNode();
    EXPECT_EQ(document.DocumentElement(), nullptr);
    const Dom::Element* third = AddElement(document, "third");
    EXPECT_EQ(document.DocumentElement(), third);
}

TEST(AppendChildToADocument, TakesCommentsAndInstructionsAnywhere) {
    Dom::Document document;
    document.AppendChild(document.CreateComment("1"));
    document.AppendChild(document.CreateProcessingInstruction("pi", "1"));
    AddElement(document, "root");
    document.AppendChild(document.CreateComment("2"));
    document.AppendChild(document.CreateProcessingInstruction("pi2", "2"));
    EXPECT_EQ(support::TrueChildren(document), "#comment pi root #comment pi2");
}

// Deliberate: a text that begins with something other than white space passes.
TEST(AppendChildToADocument, TextsAreRefusedForWhatStandsBehindTheirLeadingWhiteSpace) {
    const struct {
        std::string_view text;
        bool taken;
    } kCases[] = {
        {"", true},
        {" ", true},
        {"  ", true},
        {" \t\n\r\f", true},
        {"x", true},
        {"x  ", true},
        {"xyz abc", true},
        {"  x", false},
        {" x", false},
        {"\tx", false},
        {"\nx", false},
        {"\rx", false},
        {"\fx", false},
        {" x ", false},
        {"\vx", true},
        {" \v", false},
        {"\xC2\xA0x", true},
        {" \xC2\xA0", false},
        {std::string_view("\0", 1), true},
        {std::string_view(" \0", 2), false},
        {"&", true},
        {" \t\r\n\f.", false},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(testing::PrintToString(std::string(c.text)));
        Dom::Document document;
        NodePtr text(document.CreateTextNode(c.text));
        if (c.taken) {
            EXPECT_EQ(document.AppendChild(text.get()), text.get());
            EXPECT_EQ(document.FirstChild(), text.get());
            (void)text.release();
        } else {
            EXPECT_DOM_ERROR(document.AppendChild(text.get()), kText);
            EXPECT_FALSE(document.HasChildNodes());
        }
    }
}

// Deliberate: an XML declaration is refused by a document, with the text that names the others.
TEST(AppendChildToADocument, NeverTakesAnXmlDeclaration) {
    Dom::Document document;
    AnyNode declaration(DOMNodeType::XML_DECLARATION_NODE, "xml", &document);
    EXPECT_DOM_ERROR(document.AppendChild(&declaration), kDeclaration);
    document.AppendChild(document.CreateComment(""));
    EXPECT_DOM_ERROR(document.AppendChild(&declaration), kDeclaration);
    AddElement(document, "root");
    EXPECT_DOM_ERROR(document.AppendChild(&declaration), kDeclaration);
}

TEST(AppendChildToADocument, TakesADocumentTypeBeforeTheRootElement) {
    Dom::Document document;
    auto* doctype = new Dom::DocumentType("d", "", "", &document);
    EXPECT_EQ(document.AppendChild(doctype), doctype);
    AddElement(document, "root");
    EXPECT_EQ(support::TrueChildren(document), "d root");
}

TEST(AppendChildToADocument, RefusesADocumentTypeBehindTheRootElement) {
    Dom::Document document;
    AddElement(document, "root");
    const NodePtr doctype(new Dom::DocumentType("d", "", "", &document));
    EXPECT_DOM_ERROR(document.AppendChild(doctype.get()), kPrologueOnly);
}

TEST(AppendChildToADocument, RefusesASecondDocumentType) {
    Dom::Document empty;
    empty.AppendChild(new Dom::DocumentType("first", "", "", &empty));
    const NodePtr second(new Dom::DocumentType("second", "", "", &empty));
    EXPECT_DOM_ERROR(empty.AppendChild(second.get()), kOneDoctype);
    AddElement(empty, "root");
    EXPECT_DOM_ERROR(empty.AppendChild(second.get()), kOneDoctype) << "root element too";

    Dom::DocumentType given("given", "", "", nullptr);
    Dom::Document document("", "root", &given, nullptr);
    const NodePtr doctype(new Dom::DocumentType("d", "", "", &document));
    EXPECT_DOM_ERROR(document.AppendChild(doctype.get()), kOneDoctype) << "root element too";
    const NodePtr root(document.RemoveChild(document.DocumentElement()));
    EXPECT_DOM_ERROR(document.AppendChild(doctype.get()), kOneDoctype);
}

TEST(AppendChildToADocument, RefusesAllOtherTypes) {
    for (const auto type :
         {DOMNodeType::UNDEFINED_NODE, DOMNodeType::ATTRIBUTE_NODE, DOMNodeType::CDATA_SECTION_NODE,
          DOMNodeType::ENTITY_REFERENCE_NODE, DOMNodeType::ENTITY_NODE,
          DOMNodeType::DOCUMENT_FRAGMENT_NODE, DOMNodeType::NOTATION_NODE}) {
        SCOPED_TRACE(DOMNodeType(type).ToString());
        Dom::Document document;
        AnyNode node(type, "n", &document);
        EXPECT_DOM_ERROR(document.AppendChild(&node), kNotInDocument);
        EXPECT_FALSE(document.HasChildNodes());
    }
    Dom::Document document;
    const NodePtr kNodes[] = {
        NodePtr(document.CreateAttribute("a")), NodePtr(document.CreateCDATASection(" ")),
        NodePtr(document.CreateEntityReference("r")), NodePtr(document.CreateDocumentFragment())};
    for (const NodePtr& node : kNodes)
        EXPECT_DOM_ERROR(document.AppendChild(node.get()), kNotInDocument);
}

}  // namespace
