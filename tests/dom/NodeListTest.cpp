// SPDX-License-Identifier: MIT
#include "dom/DomNodes.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

namespace {

using Dom::NodeList;
using support::AddElement;
using support::AddText;
using support::Items;
using support::Members;

// A document whose list of form controls can be asked for.
class FormDocument : public Dom::Document {
public:
    using Document::GetElementsByName;
};

// r(p(a(x1 y) b(x2)) q(x3)), where the names of the x are "x".
struct Walk {
    Dom::Document document;
    Dom::Element* r = AddElement(document, "r");
    Dom::Element* p = AddElement(*r, "p");
    Dom::Element* a = AddElement(*p, "a");
    Dom::Element* x1 = AddElement(*a, "x");
    Dom::Element* y = AddElement(*a, "y");
    Dom::Element* b = AddElement(*p, "b");
    Dom::Element* x2 = AddElement(*b, "x");
    Dom::Element* q = AddElement(*r, "q");
    Dom::Element* x3 = AddElement(*q, "x");
};

std::vector<Dom::Node*> NodesOf(const NodeList& list) {
    std::vector<Dom::Node*> nodes;
    for (std::size_t i = 0; i < list.Length(); ++i)
        nodes.push_back(list.Item(i));
    return nodes;
}

using Nodes = std::vector<Dom::Node*>;

// --- children ---

TEST(NodeList, AFreshOneIsEmpty) {
    const NodeList list;
    EXPECT_EQ(list.Length(), 0u);
    EXPECT_EQ(list.Item(0), nullptr);
    EXPECT_TRUE(list.begin() == list.end());
}

TEST(NodeList, OfChildrenGivesThemInOrder) {
    Walk tree;
    const NodeList& children = tree.a->ChildNodes();
    EXPECT_EQ(children.Length(), 2u);
    EXPECT_EQ(children.Item(0), tree.x1);
    EXPECT_EQ(children.Item(1), tree.y);
    EXPECT_EQ(Members(children), "x y");
    EXPECT_EQ(Members(tree.x1->ChildNodes()), "");
    EXPECT_EQ(Members(tree.document.ChildNodes()), "r");
}

TEST(NodeList, PastItsEndIsNull) {
    Walk tree;
    const NodeList named = tree.r->GetElementsByTagName("x");
    for (const NodeList* list : {&tree.a->ChildNodes(), &named}) {
        EXPECT_EQ(list->Item(list->Length()), nullptr);
        EXPECT_EQ(list->Item(std::numeric_limits<std::size_t>::max()), nullptr);
        if constexpr (sizeof(std::size_t) > 4) {
            EXPECT_EQ(list->Item(std::size_t{1} << 32), nullptr);
            EXPECT_EQ(list->Item((std::size_t{1} << 32) + 1), nullptr);
        }
    }
}

TEST(NodeList, OfChildrenIsLive) {
    Walk tree;
    const NodeList& children = tree.a->ChildNodes();
    const NodeList copy(children);
    EXPECT_EQ(Items(children), "x y");
    AddElement(*tree.a, "z");
    EXPECT_EQ(Items(children), "x y z");
    EXPECT_EQ(Items(copy), "x y z");
    tree.x1->DestroyNode();
    EXPECT_EQ(Items(children), "y z");
    EXPECT_EQ(Items(copy), "y z");
    EXPECT_EQ(&tree.a->ChildNodes(), &children);
}

TEST(NodeList, OfChildrenCanBeMadeForAnyNode) {
    Walk tree;
    EXPECT_EQ(Items(NodeList(tree.a)), "x y");
    EXPECT_EQ(Items(NodeList(tree.a, NodeList::Children, "ignored", "too")), "x y");
}

TEST(NodeList, OfChildrenAnswersInAnyOrder) {
    Walk tree;
    const NodeList& children = tree.p->ChildNodes();
    EXPECT_EQ(children.Item(1), tree.b);
    EXPECT_EQ(children.Item(0), tree.a);
    EXPECT_EQ(children.Item(1), tree.b);
    EXPECT_EQ(children.Item(2), nullptr);
    EXPECT_EQ(children.Item(0), tree.a);
}

// Lists follow the links that NextSibling() gives.
TEST(NodeList, FollowsTheLinksAsTheyAreSeen) {
    Walk tree;
    tree.p->InsertBefore(tree.document.CreateElement("unseen"), tree.b);
    EXPECT_EQ(Items(tree.p->ChildNodes()), "a b");
    EXPECT_EQ(tree.r->GetElementsByTagName("unseen").Length(), 0u);
    Dom::Node* first = tree.p->InsertBefore(tree.document.CreateElement("first"), tree.a);
    EXPECT_EQ(Items(tree.p->ChildNodes()), "first a b");
    EXPECT_EQ(NodesOf(tree.r->GetElementsByTagName("first")), Nodes{first});
    const Dom::NodePtr old(tree.r->ReplaceChild(tree.document.CreateElement("n"), tree.q));
    EXPECT_EQ(Items(tree.r->ChildNodes()), "p q");
    EXPECT_EQ(tree.document.GetElementsByTagName("q").Length(), 1u);
    EXPECT_EQ(tree.document.GetElementsByTagName("n").Length(), 0u);
}

// --- by name ---

TEST(NodeListByName, GivesDescendantsInDocumentOrder) {
    Walk tree;
    EXPECT_EQ(NodesOf(tree.document.GetElementsByTagName("x")), (Nodes{tree.x1, tree.x2, tree.x3}));
    EXPECT_EQ(NodesOf(tree.r->GetElementsByTagName("x")), (Nodes{tree.x1, tree.x2, tree.x3}));
    EXPECT_EQ(NodesOf(tree.q->GetElementsByTagName("x")), Nodes{tree.x3});
    EXPECT_EQ(NodesOf(tree.document.GetElementsByTagName("r")), Nodes{tree.r});
    EXPECT_EQ(tree.r->GetElementsByTagName("r").Length(), 0u);
    EXPECT_EQ(Members(tree.r->GetElementsByTagName("b")), "b");
}

TEST(NodeListByName, ComparesTheWholeNameAndKnowsNoWildcard) {
    Dom::Document document;
    Dom::Element* root = AddElement(document, "root");
    for (const char* name : {"p:a", "a", "A", "aa", "*"})
        AddElement(*root, name);
    const struct {
        const char* name;
        std::size_t count;
    } kCases[] = {{"a", 1},   {"A", 1}, {"aa", 1},  {"p:a", 1}, {"*", 1},
                  {"p:*", 0}, {"", 0},  {"*:a", 0}, {"b", 0}};
    for (const auto& c : kCases)
        EXPECT_EQ(root->GetElementsByTagName(c.name).Length(), c.count) << c.name;
}

// Not only elements have names.
TEST(NodeListByName, GivesNodesOfAnyType) {
    Dom::Document document;
    Dom::Element* root = AddElement(document, "root");
    AddText(*root, "one");
    Dom::Element* a = AddElement(*root, "a");
    AddText(*a, "two");
    a->AppendChild(document.CreateComment("c"));
    root->AppendChild(document.CreateProcessingInstruction("a", "pi"));
    root->AppendChild(document.CreateEntityReference("a"));
    EXPECT_EQ(Items(document.GetElementsByTagName("#text")), "'one' 'two'");
    EXPECT_EQ(document.GetElementsByTagName("#comment").Length(), 1u);
    EXPECT_EQ(document.GetElementsByTagName("a").Length(), 3u);
}

// Deliberate: the walk of a list goes on behind its root when a sibling follows.
TEST(NodeListByName, OfARootWithAFollowingSiblingGoesOnToTheEnd) {
    Walk tree;
    const NodeList list = tree.a->GetElementsByTagName("x");
    EXPECT_EQ(list.Length(), 3u);
    EXPECT_EQ(NodesOf(list), (Nodes{tree.x1, tree.x2, tree.x3}));
    EXPECT_EQ(NodesOf(tree.a->GetElementsByTagName("b")), Nodes{tree.b});
    EXPECT_EQ(NodesOf(tree.a->GetElementsByTagName("q")), Nodes{tree.q});
    EXPECT_EQ(tree.a->GetElementsByTagName("a").Length(), 0u);
    EXPECT_EQ(tree.a->GetElementsByTagName("p").Length(), 0u);
    EXPECT_EQ(NodesOf(tree.p->GetElementsByTagName("x")), (Nodes{tree.x1, tree.x2, tree.x3}));
}

TEST(NodeListByName, OfARootThatIsTheLastChildIsItsSubtree) {
    Walk tree;
    EXPECT_EQ(NodesOf(tree.b->GetElementsByTagName("x")), Nodes{tree.x2});
    EXPECT_EQ(tree.b->GetElementsByTagName("q").Length(), 0u);
    EXPECT_EQ(NodesOf(tree.q->GetElementsByTagName("x")), Nodes{tree.x3});
}

TEST(NodeListByName, OfARootWithoutChildrenIsEmpty) {
    Walk tree;
    EXPECT_EQ(tree.x1->GetElementsByTagName("y").Length(), 0u);
    EXPECT_EQ(tree.x1->GetElementsByTagName("x").Length(), 0u);
    EXPECT_EQ(tree.x1->GetElementsByTagName("x").Item(0), nullptr);
}

TEST(NodeListByName, OfAFreeRootIsItsSubtree) {
    Walk tree;
    const Dom::NodePtr removed(tree.p->RemoveChild(tree.a));
    EXPECT_EQ(NodesOf(tree.a->GetElementsByTagName("x")), Nodes{tree.x1});
    EXPECT_EQ(NodesOf(tree.document.GetElementsByTagName("x")), (Nodes{tree.x2, tree.x3}));
}

TEST(NodeListByName, IsLive) {
    Walk tree;
    const NodeList list = tree.document.GetElementsByTagName("x");
    const NodeList copy = list;
    NodeList assigned;
    assigned = list;
    EXPECT_EQ(list.Length(), 3u);
    EXPECT_EQ(list.Item(2), tree.x3);
    tree.x1->DestroyNode();
    for (const NodeList* one : {&list, &copy, static_cast<const NodeList*>(&assigned)}) {
        EXPECT_EQ(one->Length(), 2u);
        EXPECT_EQ(one->Item(0), tree.x2);
        EXPECT_EQ(one->Item(1), tree.x3);
        EXPECT_EQ(one->Item(2), nullptr);
    }
    Dom::Element* x4 = AddElement(*tree.y, "x");
    EXPECT_EQ(NodesOf(list), (Nodes{x4, tree.x2, tree.x3}));
    tree.q->AppendChild(x4);
    EXPECT_EQ(NodesOf(list), (Nodes{tree.x2, tree.x3, x4}));
}

TEST(NodeListByName, SeesNamesThatChange) {
    Dom::Document document;
    Dom::Element* root = AddElement(document, "root");
    auto* a = document.CreateElementNS("urn:x", "p:a");
    root->AppendChild(a);
    const NodeList list = root->GetElementsByTagName("q:a");
    EXPECT_EQ(list.Length(), 0u);
    a->SetPrefix("q");
    EXPECT_EQ(list.Length(), 1u);
    EXPECT_EQ(list.Item(0), a);
    a->SetPrefix("p");
    EXPECT_EQ(list.Item(0), nullptr);
    EXPECT_EQ(list.Length(), 0u);
}

// Deliberate: the namespace is compared with whole node names, the local name is not looked at.
TEST(NodeListByName, GetElementsByTagNameNSLooksForNodesNamedAsTheNamespace) {
    Dom::Document document;
    Dom::Element* root = AddElement(document, "root");
    auto* inNamespace = document.CreateElementNS("urn:x", "a");
    root->AppendChild(inNamespace);
    Dom::Element* named = AddElement(*root, "urn:x");
    EXPECT_EQ(NodesOf(root->GetElementsByTagNameNS("urn:x", "a")), Nodes{named});
    EXPECT_EQ(NodesOf(document.GetElementsByTagNameNS("urn:x", "")), Nodes{named});
    EXPECT_EQ(document.GetElementsByTagNameNS("", "a").Length(), 0u);
    EXPECT_EQ(NodesOf(document.GetElementsByTagNameNS("a", "other")), Nodes{inNamespace});
}

// --- by namespace, by form name ---

TEST(NodeListByNamespace, ComparesNamespaceAndLocalName) {
    Dom::Document document;
    Dom::Element* root = AddElement(document, "root");
    std::vector<Dom::Element*> made;
    const char* const kElements[][2] = {
        {"urn:x", "p:a"}, {"urn:x", "a"}, {"urn:y", "a"}, {"urn:x", "b"}, {"", "a"}};
    for (const auto& [uri, name] : kElements) {
        made.push_back(document.CreateElementNS(uri, name));
        root->AppendChild(made.back());
    }
    EXPECT_EQ(NodesOf(NodeList(&document, NodeList::ByNamespace, "urn:x", "a")),
              (Nodes{made[0], made[1]}));
    EXPECT_EQ(NodesOf(NodeList(&document, NodeList::ByNamespace, "", "a")), Nodes{made[4]});
    EXPECT_EQ(NodeList(&document, NodeList::ByNamespace, "urn:x", "p:a").Length(), 0u);
    EXPECT_EQ(NodeList(&document, NodeList::ByNamespace, "*", "*").Length(), 0u);
}

TEST(NodeListByFormName, GivesTheFormControlsOfThatName) {
    FormDocument document;
    Dom::Element* root = AddElement(document, "root");
    std::vector<Dom::Node*> controls;
    for (const char* name : {"input", "button", "select", "textarea"}) {
        Dom::Element* control = AddElement(*root, name);
        control->SetAttribute("name", "n");
        controls.push_back(control);
    }
    for (const char* name : {"form", "Input", "h:input", "inputs"})
        AddElement(*root, name)->SetAttribute("name", "n");
    AddElement(*root, "input")->SetAttribute("name", "N");
    AddElement(*root, "input");
    root->AppendChild(document.CreateProcessingInstruction("input", "name='n'"));
    EXPECT_EQ(NodesOf(document.GetElementsByName("n")), controls);
    EXPECT_EQ(document.GetElementsByName("N").Length(), 1u);
    EXPECT_EQ(document.GetElementsByName("other").Length(), 0u);
}

TEST(NodeListByFormName, SeesAttributesThatChange) {
    FormDocument document;
    Dom::Element* root = AddElement(document, "root");
    Dom::Element* input = AddElement(*root, "input");
    const NodeList list = document.GetElementsByName("n");
    EXPECT_EQ(list.Length(), 0u);
    input->SetAttribute("name", "n");
    EXPECT_EQ(list.Length(), 1u);
    EXPECT_EQ(list.Item(0), input);
    input->GetAttributeNode("name")->SetValue("m");
    EXPECT_EQ(list.Length(), 0u);
    input->GetAttributeNode("name")->SetValue("n");
    EXPECT_EQ(list.Item(0), input);
    auto* text = static_cast<Dom::Text*>(input->GetAttributeNode("name")->FirstChild());
    EXPECT_EQ(list.Item(0), input);
    text->SetData("m");
    EXPECT_EQ(list.Item(0), nullptr);
    text->SetData("");
    text->AppendData("n");
    EXPECT_EQ(list.Item(0), input);
    input->RemoveAttribute("name");
    EXPECT_EQ(list.Item(0), nullptr);
}

// --- loops ---

// A loop by index takes linear time; a quadratic one would not end in time.
TEST(NodeList, ALoopByIndexIsQuick) {
    constexpr std::size_t kCount = 200000;
    Dom::Document document;
    Dom::Element* root = AddElement(document, "root");
    for (std::size_t i = 0; i < kCount; ++i)
        root->AppendChild(document.CreateElement(i % 2 == 0 ? "even" : "odd"));
    const NodeList named = document.GetElementsByTagName("odd");
    std::size_t count = 0;
    for (std::size_t i = 0; i < root->ChildNodes().Length(); ++i)
        if (root->ChildNodes().Item(i) != nullptr) ++count;
    EXPECT_EQ(count, kCount);
    count = 0;
    for (std::size_t i = 0; i < named.Length(); ++i)
        if (named.Item(i)->NodeName() == "odd") ++count;
    EXPECT_EQ(count, kCount / 2);
}

TEST(NodeList, ALoopMayChangeWhatItHasPassed) {
    Dom::Document document;
    Dom::Element* root = AddElement(document, "root");
    for (int i = 0; i < 10; ++i)
        AddElement(*root, "n" + std::to_string(i));
    std::string removed;
    while (Dom::Node* first = root->ChildNodes().Item(0)) {
        removed += first->NodeName().str();
        first->DestroyNode();
    }
    EXPECT_EQ(removed, "n0n1n2n3n4n5n6n7n8n9");
}

// What a list remembers of its last answer ends with any change of the tree.
TEST(NodeList, RemembersNothingOverAChange) {
    Walk tree;
    const NodeList list = tree.document.GetElementsByTagName("x");
    const NodeList& children = tree.p->ChildNodes();
    EXPECT_EQ(list.Item(1), tree.x2);
    EXPECT_EQ(children.Item(1), tree.b);
    Dom::Node* n = tree.p->InsertChild(tree.document.CreateElement("x"), tree.b);
    EXPECT_EQ(list.Item(1), n);
    EXPECT_EQ(children.Item(1), n);
    EXPECT_EQ(children.Length(), 3u);
    tree.p->ExchangeChild(tree.document.CreateElement("z"), n)->DestroyNode();
    EXPECT_EQ(list.Item(1), tree.x2);
    EXPECT_EQ(support::Label(children.Item(1)), "z");
    Dom::Text* text = AddText(*tree.y, "headtail");
    const NodeList texts = tree.document.GetElementsByTagName("#text");
    EXPECT_EQ(texts.Length(), 1u);
    text->SplitText(4);
    EXPECT_EQ(texts.Length(), 2u);
    tree.y->Normalize();
    EXPECT_EQ(texts.Length(), 1u);
}

}  // namespace
