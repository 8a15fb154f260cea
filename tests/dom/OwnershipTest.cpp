// SPDX-License-Identifier: MIT

// Who owns what, and in which orders it may be destroyed. AddressSanitizer sees what is used after
// it was destroyed, destroyed twice or never.

#include "dom/DomNodes.h"
#include "dom/ExpectDomError.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <random>
#include <stdexcept>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

namespace {

using Dom::NodePtr;
using support::Add;
using support::AddElement;
using support::AddText;

using AttrPtr = std::unique_ptr<Dom::Attr>;
using ElementPtr = std::unique_ptr<Dom::Element>;

TEST(Ownership, NodesAreNotCopied) {
    EXPECT_FALSE(std::is_copy_constructible_v<Dom::Element>);
    EXPECT_FALSE(std::is_copy_assignable_v<Dom::Element>);
    EXPECT_FALSE(std::is_copy_constructible_v<Dom::Document>);
    EXPECT_FALSE(std::is_copy_constructible_v<Dom::NamedNodeMap>);
    EXPECT_TRUE(std::is_copy_constructible_v<Dom::NodeList>);
    EXPECT_TRUE(std::has_virtual_destructor_v<Dom::Node>);
}

TEST(Ownership, DestroyNodeIgnoresNull) {
    Dom::Node::DestroyNode(nullptr);
    Dom::Document document;
    AddElement(document, "root");
    Dom::Node::DestroyNode(document.DocumentElement());
    EXPECT_FALSE(document.HasChildNodes());
}

TEST(Ownership, ANodePtrOwnsAFreeNode) {
    Dom::Document document;
    NodePtr item(document.CreateElement("item"));
    AddElement(*item, "below");
    EXPECT_EQ(document.AppendChild(item.get()), item.get());
    EXPECT_EQ(item.release(), document.DocumentElement());
}

// --- nodes that outlive their document ---

TEST(Ownership, FreeNodesOutliveTheirDocument) {
    auto document = std::make_unique<Dom::Document>();
    const NodePtr element(document->CreateElementNS("urn:x", "p:e"));
    const NodePtr text(document->CreateTextNode("a text that is longer than a small string is"));
    const AttrPtr attribute(document->CreateAttribute("a"));
    attribute->SetValue("value");
    document.reset();
    EXPECT_EQ(element->NodeName(), "p:e");
    EXPECT_EQ(element->NamespaceURI(), "urn:x");
    EXPECT_EQ(element->Prefix(), "p");
    EXPECT_EQ(text->NodeValue(), "a text that is longer than a small string is");
    EXPECT_EQ(attribute->Value(), "value");
    for (const Dom::Node* node :
         {element.get(), text.get(), static_cast<Dom::Node*>(attribute.get())})
        EXPECT_EQ(node->OwnerDocument(), nullptr);
    EXPECT_EQ(element->BaseURI(), "");
}

TEST(Ownership, FreeTreesOutliveTheirDocument) {
    auto document = std::make_unique<Dom::Document>();
    Dom::Element* root = AddElement(*document, "root");
    Dom::Element* kept = AddElement(*root, "kept");
    kept->SetAttribute("a", "1");
    kept->SetAttributeNS("urn:x", "p:b", "2");
    AddText(*AddElement(*kept, "below"), "text");
    const NodePtr removed(root->RemoveChild(kept));
    document.reset();
    EXPECT_EQ(support::TrueChildren(*removed), "below");
    EXPECT_EQ(support::TrueChildren(*removed->FirstChild()), "'text'");
    EXPECT_EQ(kept->GetAttribute("a"), "1");
    EXPECT_EQ(kept->GetAttributeNS("urn:x", "b"), "2");
    EXPECT_EQ(removed->TextContent(), "text");
    kept->FirstChild()->DestroyNode();
    EXPECT_FALSE(kept->HasChildNodes());
}

TEST(Ownership, FreeNodesMayBeDestroyedInAnyOrderAroundTheirDocument) {
    for (unsigned seed = 0; seed < 50; ++seed) {
        std::mt19937 random(seed);
        auto document = std::make_unique<Dom::Document>();
        std::vector<NodePtr> nodes;
        for (int i = 0; i < 20; ++i) {
            nodes.emplace_back(document->CreateElement("e" + std::to_string(i)));
            static_cast<Dom::Element&>(*nodes.back()).SetAttribute("a", "1");
            nodes.emplace_back(new Dom::Text("on the heap", document.get()));
            nodes.emplace_back(document->CreateAttribute("a"));
        }
        const std::size_t end = random() % nodes.size();
        while (nodes.size() > end)
            nodes.erase(nodes.begin() + static_cast<std::ptrdiff_t>(random() % nodes.size()));
        document.reset();
        while (!nodes.empty()) {
            EXPECT_EQ(nodes[0]->OwnerDocument(), nullptr);
            nodes.erase(nodes.begin() + static_cast<std::ptrdiff_t>(random() % nodes.size()));
        }
    }
}

TEST(Ownership, ASourceOfAStaleLinkMayOutliveItsDocument) {
    auto document = std::make_unique<Dom::Document>();
    const ElementPtr root(document->CreateElement("root"));
    Dom::Element* a = AddElement(*root, "a");
    Dom::Element* b = AddElement(*root, "b");
    Dom::Node* n = document->CreateElement("n");
    NodePtr old(root->ReplaceChild(n, b));
    document.reset();
    EXPECT_EQ(a->NextSibling(), b);
    old.reset();
    EXPECT_EQ(a->NextSibling(), n);
}

// --- attributes ---

TEST(Ownership, AnAttributeThatIsDestroyedLeavesItsMap) {
    Dom::Document document;
    const ElementPtr element(document.CreateElement("e"));
    element->SetAttribute("a", "1");
    element->SetAttributeNS("urn:x", "p:a", "2");
    element->SetAttribute("c", "3");
    element->GetAttributeNode("a")->DestroyNode();
    EXPECT_EQ(support::Members(*element->Attributes()), "p:a c");
    delete element->GetAttributeNodeNS("urn:x", "a");
    EXPECT_EQ(support::Members(*element->Attributes()), "c");
    EXPECT_EQ(element->GetAttribute("c"), "3");
    delete static_cast<Dom::Node*>(element->GetAttributeNode("c"));
    EXPECT_FALSE(element->HasAttributes());
}

TEST(Ownership, ARenamedAttributeThatIsDestroyedLeavesItsMap) {
    Dom::Document document;
    const ElementPtr element(document.CreateElement("e"));
    Dom::Attr* renamed = document.CreateAttributeNS("urn:x", "p:a");
    element->SetAttributeNode(renamed);
    element->SetAttribute("q:a", "another");
    renamed->SetPrefix("q");
    renamed->DestroyNode();
    EXPECT_EQ(element->GetAttribute("q:a"), "another");
    EXPECT_EQ(element->Attributes()->Length(), 1u);
}

TEST(Ownership, AnAttributeThatWasReplacedTakesNothingOutWhenDestroyed) {
    Dom::Document document;
    const ElementPtr element(document.CreateElement("e"));
    element->SetAttribute("a", "old");
    Dom::Attr* fresh = document.CreateAttribute("a");
    AttrPtr replaced(element->SetAttributeNode(fresh));
    replaced.reset();
    EXPECT_EQ(element->GetAttributeNode("a"), fresh);
    const AttrPtr removed(element->RemoveAttributeNode(fresh));
    EXPECT_EQ(removed.get(), fresh);
}

TEST(Ownership, AReplacedAttributeAndItsElementDieInEitherOrder) {
    for (const bool elementFirst : {false, true}) {
        SCOPED_TRACE(elementFirst);
        Dom::Document document;
        ElementPtr element(document.CreateElement("e"));
        std::vector<AttrPtr> replaced;
        for (int i = 0; i < 4; ++i) {
            Dom::Attr* old = element->SetAttributeNode(document.CreateAttribute("a"));
            if (old != nullptr) replaced.emplace_back(old);
        }
        ASSERT_EQ(replaced.size(), 3u);
        if (elementFirst) {
            element.reset();
            for (const AttrPtr& attribute : replaced)
                EXPECT_EQ(attribute->OwnerElement(), nullptr);
        } else {
            replaced.erase(replaced.begin() + 1);
            for (const AttrPtr& attribute : replaced)
                EXPECT_EQ(attribute->OwnerElement(), element.get());
        }
    }
}

// An attribute may be a child like any other node. It leaves its parent, not an attribute of its
// name.
TEST(Ownership, AnAttributeThatIsAChildLeavesItsParentWhenDestroyed) {
    Dom::Document document;
    const ElementPtr element(document.CreateElement("e"));
    element->SetAttribute("a", "in the map");
    Dom::Attr* child = document.CreateAttribute("a");
    element->AppendChild(child);
    Dom::Attr* another = document.CreateAttribute("not in the map");
    element->AppendChild(another);
    child->DestroyNode();
    another->DestroyNode();
    EXPECT_FALSE(element->HasChildNodes());
    EXPECT_EQ(element->GetAttribute("a"), "in the map");
}

// An attribute of an element may be a child, too, of any node. Whichever goes first takes it along.
TEST(Ownership, AnAttributeWithTwoPlacesIsDestroyedOnce) {
    for (const bool elementFirst : {true, false}) {
        for (const bool below : {true, false}) {
            SCOPED_TRACE(std::string(elementFirst ? "element first" : "attribute first") +
                         (below ? ", deeper" : ""));
            Dom::Document document;
            Dom::Element* root = AddElement(document, "root");
            Dom::Element* parent = below ? AddElement(*root, "parent") : root;
            Dom::Element* holder = document.CreateElement("holder");
            holder->SetAttribute("a", "1");
            Dom::Attr* attribute = holder->GetAttributeNode("a");
            AddElement(*attribute, "inside");
            parent->AppendChild(elementFirst ? static_cast<Dom::Node*>(holder) : attribute);
            AddElement(*parent, "between");
            parent->AppendChild(elementFirst ? static_cast<Dom::Node*>(attribute) : holder);
            EXPECT_EQ(attribute->ParentNode(), parent);
            EXPECT_EQ(attribute->OwnerElement(), holder);
            root->DestroyNode();
            EXPECT_FALSE(document.HasChildNodes());
        }
    }
}

// Loading frees the memory of the nodes before; elements that get it have nothing to do with
// attributes that named others in their place.
TEST(Ownership, AReplacedAttributeThatIsAChildIsForgottenByLoading) {
    Dom::Document document;
    for (int i = 0; i < 3; ++i) {
        document.LoadXml("<root><e a='1'/><x/></root>");
        auto* element = static_cast<Dom::Element*>(document.DocumentElement()->FirstChild());
        Dom::Attr* replaced = element->SetAttributeNode(document.CreateAttribute("a"));
        element->NextSibling()->AppendChild(replaced);
        document.LoadXml("<root><e a='1'/><x y='2'>some text</x></root>");
        element = static_cast<Dom::Element*>(document.DocumentElement()->FirstChild());
        const AttrPtr another(element->SetAttributeNode(document.CreateAttribute("a")));
        element->DestroyNode();
        EXPECT_EQ(another->OwnerElement(), nullptr);
        auto* x = static_cast<Dom::Element*>(document.DocumentElement()->FirstChild());
        EXPECT_EQ(x->GetAttribute("y"), "2");
        EXPECT_EQ(x->TextContent(), "some text");
    }
}

TEST(Ownership, AnAttributeTakesWhatIsBelowItAlong) {
    Dom::Document document;
    const ElementPtr element(document.CreateElement("e"));
    element->SetAttribute("a", "1");
    Dom::Attr* attribute = element->GetAttributeNode("a");
    Dom::Element* inside = AddElement(*attribute, "inside");
    inside->SetAttribute("b", "2");
    AddElement(*inside->GetAttributeNode("b"), "deeper");
    element->RemoveAttribute("a");
    EXPECT_FALSE(element->HasAttributes());
}

// --- classes of one's own ---

// Counts its objects.
class Counted : public Dom::Element {
public:
    Counted(std::string_view uri, std::string_view name, Dom::Document* owner)
        : Element(uri, name, owner) {
        ++count;
    }
    ~Counted() override { --count; }

    static inline int count = 0;

private:
    std::string own_ = std::string(100, 'o');  // lies elsewhere, so that a lost destructor leaks
};

TEST(OwnershipOfDerived, AreDestroyedWithTheirParent) {
    Dom::Document document;
    Dom::Element* root = AddElement(document, "root");
    auto* parent = Add<Counted>(*root, "parent");
    for (int i = 0; i < 5; ++i)
        Add<Counted>(*parent, "child");
    AddElement(*parent, "plain");
    Add<Counted>(*parent->LastChild(), "below");
    EXPECT_EQ(Counted::count, 7);
    parent->FirstChild()->DestroyNode();
    EXPECT_EQ(Counted::count, 6);
    root->DestroyNode();
    EXPECT_EQ(Counted::count, 0);
}

TEST(OwnershipOfDerived, AreDestroyedWithTheirDocument) {
    {
        Dom::Document document;
        Dom::Element* root = Add<Counted>(document, "root");
        root->SetAttribute("a", "1");
        AddText(*Add<Counted>(*root, "child"), "text");
        EXPECT_EQ(Counted::count, 2);
    }
    EXPECT_EQ(Counted::count, 0);
}

TEST(OwnershipOfDerived, AttributesAreDestroyedWithTheirElement) {
    class CountedAttr : public Dom::Attr {
    public:
        explicit CountedAttr(Dom::Document* owner) : Attr("", "a", owner) { ++Counted::count; }
        ~CountedAttr() override { --Counted::count; }
    };
    Dom::Document document;
    Dom::Element* root = AddElement(document, "root");
    root->SetAttributeNode(new CountedAttr(&document));
    EXPECT_EQ(Counted::count, 1);
    root->SetAttribute("a", "another");
    EXPECT_EQ(Counted::count, 0);
    const AttrPtr replaced(root->SetAttributeNode(new CountedAttr(&document)));
    EXPECT_EQ(Counted::count, 1);
    root->DestroyNode();
    EXPECT_EQ(Counted::count, 0);
}

TEST(OwnershipOfDerived, MayLookAtThemselvesWhileTheyAreDestroyed) {
    class Looking : public Dom::Element {
    public:
        Looking(std::string_view name, Dom::Document* owner, std::string* seen)
            : Element("urn:x", name, owner), seen_(seen) {}
        ~Looking() override { *seen_ += NodeName().str() + "=" + GetAttribute("a").str() + " "; }

    private:
        std::string* seen_;
    };
    std::string seen;
    {
        Dom::Document document;
        Dom::Element* root = AddElement(document, "root");
        auto* p = new Looking("p", &document, &seen);
        root->AppendChild(p);
        p->SetAttribute("a", "1");
        auto* q = new Looking("q", &document, &seen);
        p->AppendChild(q);
        q->SetAttribute("a", "2");
    }
    EXPECT_EQ(seen, "p=1 q=2 ");
}

TEST(OwnershipOfDerived, OutliveTheirDocument) {
    auto document = std::make_unique<Dom::Document>();
    NodePtr node(new Counted("", "free", document.get()));
    AddElement(*node, "from the document");
    document.reset();
    EXPECT_EQ(node->NodeName(), "free");
    EXPECT_EQ(support::TrueChildren(*node), "from the document");
    node.reset();
    EXPECT_EQ(Counted::count, 0);
}

TEST(OwnershipOfDerived, LieOnTheStackToo) {
    Dom::Document document;
    Dom::Element* root = AddElement(document, "root");
    {
        Counted onStack("", "onStack", &document);
        root->AppendChild(&onStack);
        EXPECT_EQ(support::Forward(*root), "onStack");
    }
    EXPECT_FALSE(root->HasChildNodes());
    EXPECT_EQ(Counted::count, 0);
}

TEST(OwnershipOfDerived, MayHaveAnAlignmentOfTheirOwn) {
    class alignas(256) Aligned : public Counted {
    public:
        explicit Aligned(Dom::Document* owner, bool throws = false) : Counted("", "e", owner) {
            if (throws) throw std::runtime_error("constructor");
        }
    };
    Dom::Document document;
    Dom::Element* root = AddElement(document, "root");
    for (int i = 0; i < 10; ++i) {
        auto* made = new Aligned(&document);
        EXPECT_EQ(reinterpret_cast<std::uintptr_t>(made) % 256, 0u);
        root->AppendChild(made);
    }
    EXPECT_THROW(NodePtr(new Aligned(&document, true)), std::runtime_error);
    delete root->FirstChild();
    root->FirstChild()->DestroyNode();
    EXPECT_EQ(Counted::count, 8);
    root->DestroyNode();
    EXPECT_EQ(Counted::count, 0);
}

TEST(OwnershipOfDerived, AConstructorThatThrowsLeavesNothing) {
    class Throwing : public Counted {
    public:
        explicit Throwing(Dom::Document* owner) : Counted("urn:x", "p:throwing", owner) {
            SetAttribute("a", "1");
            AppendChild(owner->CreateElement("child"));
            throw std::runtime_error("constructor");
        }
    };
    Dom::Document document;
    EXPECT_THROW(NodePtr(new Throwing(&document)), std::runtime_error);
    EXPECT_EQ(Counted::count, 0);
}

struct OtherBase {
    OtherBase() = default;
    OtherBase(const OtherBase&) = delete;
    OtherBase& operator=(const OtherBase&) = delete;
    virtual ~OtherBase() { ++destroyed; }

    static inline int destroyed = 0;
    std::string text = std::string(100, 'b');
};

class NodeFirst : public Counted, public OtherBase {
public:
    explicit NodeFirst(Dom::Document* owner) : Counted("", "first", owner) {}
};

// g++ takes the part that a node is of a class with another base in front for no pointer to delete.
#if defined(__GNUC__) && !defined(__clang__)
#    pragma GCC diagnostic push
#    pragma GCC diagnostic ignored "-Wfree-nonheap-object"
#endif
class NodeSecond : public OtherBase, public Counted {
public:
    explicit NodeSecond(Dom::Document* owner) : Counted("", "second", owner) {}
};
#if defined(__GNUC__) && !defined(__clang__)
#    pragma GCC diagnostic pop
#endif

template <typename Mixed>
class OwnershipOfMixed : public testing::Test {};
using MixedClasses = testing::Types<NodeFirst, NodeSecond>;
TYPED_TEST_SUITE(OwnershipOfMixed, MixedClasses);

TYPED_TEST(OwnershipOfMixed, MayBeDestroyedThroughAnyBase) {
    Dom::Document document;
    OtherBase::destroyed = 0;
    delete new TypeParam(&document);
    delete static_cast<Dom::Node*>(new TypeParam(&document));
    delete static_cast<Dom::Element*>(new TypeParam(&document));
    delete static_cast<OtherBase*>(new TypeParam(&document));
    (new TypeParam(&document))->DestroyNode();
    EXPECT_EQ(OtherBase::destroyed, 5);
    EXPECT_EQ(Counted::count, 0);
}

TYPED_TEST(OwnershipOfMixed, LeavesTheTreeThroughAnyBase) {
    Dom::Document document;
    Dom::Element* root = AddElement(document, "root");
    OtherBase::destroyed = 0;
    auto* one = new TypeParam(&document);
    auto* other = new TypeParam(&document);
    root->AppendChild(one);
    root->AppendChild(other);
    AddText(*one, "text");
    one->SetAttribute("a", "1");
    delete static_cast<OtherBase*>(one);
    EXPECT_EQ(root->FirstChild(), other);
    EXPECT_EQ(OtherBase::destroyed, 1);
    root->DestroyNode();
    EXPECT_EQ(OtherBase::destroyed, 2);
    EXPECT_EQ(Counted::count, 0);
}

TEST(OwnershipOfMixedNodes, NodesOfTheLibraryWithTwoBases) {
    Dom::StyleSheets::DocumentStyle* style = new Dom::Document("", "root", nullptr, nullptr);
    delete style;
    Dom::Document document;
    auto* instruction = new Dom::StyleProcessingInstruction("href='a'", &document);
    delete static_cast<Dom::StyleSheets::LinkStyle*>(instruction);
    auto* made = document.CreateProcessingInstruction("xml-stylesheet", "href='a'");
    document.AppendChild(made);
    auto* link = dynamic_cast<Dom::StyleSheets::LinkStyle*>(made);
    ASSERT_NE(link, nullptr);
    delete link;
    EXPECT_FALSE(document.HasChildNodes());
}

// --- depth ---

constexpr int kDeep = 300000;

// Each level would cost stack if destruction recursed.
TEST(Ownership, DeepTreesAreDestroyedInAnyForm) {
    Dom::Document document;
    const struct {
        const char* what;
        bool derived;
        bool throughAttributes;
    } kCases[] = {{"elements", false, false},
                  {"derived elements", true, false},
                  {"attributes with elements", false, true}};
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.what);
        NodePtr root(document.CreateElement("root"));
        Dom::Node* deepest = root.get();
        for (int i = 0; i < kDeep; ++i) {
            if (c.throughAttributes) {
                auto* element = static_cast<Dom::Element*>(deepest);
                element->SetAttribute("a", "1");
                deepest = element->GetAttributeNode("a");
            }
            deepest = deepest->AppendChild(c.derived ? new Counted("", "e", &document)
                                                     : document.CreateElement("e"));
        }
        EXPECT_EQ(Counted::count, c.derived ? kDeep : 0);
        root.reset();
        EXPECT_EQ(Counted::count, 0);
    }
}

TEST(Ownership, WideTreesAreDestroyed) {
    Dom::Document document;
    Dom::Element* root = AddElement(document, "root");
    for (int i = 0; i < kDeep; ++i)
        root->AppendChild(document.CreateElement("e"));
    EXPECT_EQ(root->ChildNodes().Length(), static_cast<std::size_t>(kDeep));
    root->DestroyNode();
    EXPECT_FALSE(document.HasChildNodes());
}

}  // namespace
