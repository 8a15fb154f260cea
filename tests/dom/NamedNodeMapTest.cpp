// SPDX-License-Identifier: MIT
#include "dom/DomNodes.h"
#include "dom/ExpectDomError.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <limits>
#include <memory>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace {

using Dom::NodePtr;
using support::Lockable;

using AttrPtr = std::unique_ptr<Dom::Attr>;
using ElementPtr = std::unique_ptr<Dom::Element>;

constexpr char kExpected[] = "8 Node expected";
constexpr char kReadOnly[] = "7 This node is read-only";
constexpr char kOtherDocument[] =
    "4 The attribute to set was created from a different document than the one that created this "
    "map";
constexpr char kInUse[] =
    "10 The attribute to set is already an attribute of another Element object";
constexpr char kAttrOnly[] = "3 Elements only accept Attr nodes as attributes";

// --- looking up ---

TEST(NamedNodeMap, AFreshOneIsEmpty) {
    Dom::Document document;
    const ElementPtr element(document.CreateElement("e"));
    Dom::NamedNodeMap& map = *element->Attributes();
    EXPECT_EQ(map.Length(), 0u);
    EXPECT_EQ(map.Item(0), nullptr);
    EXPECT_EQ(map.GetNamedItem("a"), nullptr);
    EXPECT_EQ(map.GetNamedItemNS("urn:x", "a"), nullptr);
    EXPECT_TRUE(map.begin() == map.end());
    EXPECT_EQ(element->Attributes(), &map);
}

TEST(NamedNodeMap, GivesItsItemsInTheOrderOfInsertion) {
    Dom::Document document;
    const ElementPtr element(document.CreateElement("e"));
    for (const char* name : {"c", "a", "b"})
        element->SetAttribute(name, name);
    const Dom::NamedNodeMap& map = *element->Attributes();
    EXPECT_EQ(map.Length(), 3u);
    EXPECT_EQ(support::Members(map), "c a b");
    EXPECT_EQ(map.Item(0)->NodeName(), "c");
    EXPECT_EQ(map.Item(2)->NodeName(), "b");
    for (const std::size_t index : {std::size_t{3}, std::numeric_limits<std::size_t>::max()})
        EXPECT_EQ(map.Item(index), nullptr);
    if constexpr (sizeof(std::size_t) > 4) {
        EXPECT_EQ(map.Item(std::size_t{1} << 32), nullptr);
    }
    EXPECT_EQ(map.Item(1), map.Item(1));
    EXPECT_EQ(map.GetNamedItem("a"), map.Item(1));
}

TEST(NamedNodeMap, WithoutANamespaceItLooksTheNameUp) {
    Dom::Document document;
    const ElementPtr element(document.CreateElement("e"));
    element->SetAttribute("x", "1");
    const Dom::NamedNodeMap& map = *element->Attributes();
    EXPECT_EQ(map.GetNamedItemNS("", "x"), map.GetNamedItem("x"));
    EXPECT_NE(map.GetNamedItem("x"), nullptr);
    EXPECT_EQ(map.GetNamedItemNS("", "y"), nullptr);
}

// --- setting ---

TEST(NamedNodeMap, ReplacingKeepsThePlaceAndReturnsTheOldNode) {
    Dom::Document document;
    const ElementPtr element(document.CreateElement("e"));
    for (const char* name : {"a", "b", "c"})
        element->SetAttribute(name, name);
    Dom::NamedNodeMap& map = *element->Attributes();
    Dom::Node* old = map.GetNamedItem("b");
    Dom::Attr* fresh = document.CreateAttribute("b");
    const NodePtr replaced(map.SetNamedItem(fresh));
    EXPECT_EQ(replaced.get(), old);
    EXPECT_EQ(map.Item(1), fresh);
    EXPECT_EQ(map.Length(), 3u);
    EXPECT_EQ(fresh->OwnerElement(), element.get());
}

// Deliberate: the node that was replaced keeps naming its element, and so cannot be used elsewhere.
TEST(NamedNodeMap, TheReplacedNodeKeepsItsElementWhileThatLives) {
    Dom::Document document;
    const ElementPtr other(document.CreateElement("other"));
    AttrPtr replaced;
    {
        const ElementPtr element(document.CreateElement("e"));
        element->SetAttribute("a", "1");
        replaced.reset(static_cast<Dom::Attr*>(
            element->Attributes()->SetNamedItem(document.CreateAttribute("a"))));
        EXPECT_EQ(replaced->OwnerElement(), element.get());
        EXPECT_DOM_ERROR(other->SetAttributeNode(replaced.get()), kInUse);
        EXPECT_DOM_ERROR(element->SetAttributeNode(replaced.get()), kInUse);
    }
    EXPECT_EQ(replaced->OwnerElement(), nullptr);
    EXPECT_EQ(other->SetAttributeNode(replaced.get()), nullptr);
    EXPECT_EQ(replaced.release()->OwnerElement(), other.get());
}

TEST(NamedNodeMap, FilesANodeOfANamespaceUnderItWhenAsked) {
    Dom::Document document;
    const ElementPtr element(document.CreateElement("e"));
    Dom::NamedNodeMap& map = *element->Attributes();
    Dom::Attr* attribute = document.CreateAttributeNS("urn:x", "p:a");
    EXPECT_EQ(map.SetNamedItemNS(attribute), nullptr);
    EXPECT_EQ(map.GetNamedItemNS("urn:x", "a"), attribute);
    EXPECT_EQ(map.GetNamedItem("p:a"), nullptr);
    Dom::Attr* plain = document.CreateAttribute("p:a");
    EXPECT_EQ(map.SetNamedItemNS(plain), nullptr);
    EXPECT_EQ(map.GetNamedItem("p:a"), plain);
    const NodePtr replaced(map.SetNamedItemNS(document.CreateAttributeNS("urn:x", "q:a")));
    EXPECT_EQ(replaced.get(), attribute);
    EXPECT_EQ(support::Members(map), "q:a p:a");
}

// --- checks, and their order ---

TEST(NamedNodeMap, BothWaysToSetMakeTheSameChecks) {
    Dom::Document document;
    Dom::Document other;
    const ElementPtr element(document.CreateElement("e"));
    const ElementPtr second(document.CreateElement("second"));
    second->SetAttribute("used", "1");
    element->SetAttribute("own", "1");
    const AttrPtr stranger(other.CreateAttribute("stranger"));
    const NodePtr text(document.CreateTextNode("t"));
    const NodePtr inner(document.CreateElement("inner"));
    Dom::NamedNodeMap& map = *element->Attributes();
    for (const bool ns : {false, true}) {
        SCOPED_TRACE(ns);
        const auto set = [&map, ns](Dom::Node* node) {
            return ns ? map.SetNamedItemNS(node) : map.SetNamedItem(node);
        };
        EXPECT_DOM_ERROR(set(nullptr), kExpected);
        EXPECT_DOM_ERROR(set(stranger.get()), kOtherDocument);
        EXPECT_DOM_ERROR(set(&document), kOtherDocument);
        EXPECT_DOM_ERROR(set(second->GetAttributeNode("used")), kInUse);
        EXPECT_DOM_ERROR(set(element->GetAttributeNode("own")), kInUse);
        EXPECT_DOM_ERROR(set(text.get()), kAttrOnly);
        EXPECT_DOM_ERROR(set(inner.get()), kAttrOnly);
        EXPECT_EQ(support::Members(map), "own");
    }
}

TEST(NamedNodeMap, OfTwoReasonsTheFirstIsTold) {
    Dom::Document document;
    Dom::Document other;
    Lockable<Dom::Element> locked("", "locked", &document);
    const ElementPtr element(document.CreateElement("e"));
    const ElementPtr strange(other.CreateElement("strange"));
    strange->SetAttribute("used", "1");
    element->SetAttribute("used", "1");
    const NodePtr strangeText(other.CreateTextNode("t"));
    const NodePtr text(document.CreateTextNode("t"));
    Dom::NamedNodeMap& lockedMap = *locked.Attributes();
    locked.SetReadOnly(true);
    EXPECT_DOM_ERROR(lockedMap.SetNamedItem(strangeText.get()), kReadOnly) << "document too";
    EXPECT_DOM_ERROR(lockedMap.SetNamedItem(element->GetAttributeNode("used")), kReadOnly)
        << "used";
    EXPECT_DOM_ERROR(lockedMap.SetNamedItem(text.get()), kReadOnly) << "no attribute too";
    EXPECT_DOM_ERROR(lockedMap.SetNamedItemNS(text.get()), kReadOnly) << "no attribute too";
    EXPECT_DOM_ERROR(lockedMap.RemoveNamedItem("absent"), kReadOnly) << "absent too";
    Dom::NamedNodeMap& map = *element->Attributes();
    EXPECT_DOM_ERROR(map.SetNamedItem(strange->GetAttributeNode("used")), kOtherDocument) << "used";
    EXPECT_DOM_ERROR(map.SetNamedItem(strangeText.get()), kOtherDocument) << "no attribute too";
}

// --- removing ---

TEST(NamedNodeMap, RemovingMovesTheLaterOnesDown) {
    Dom::Document document;
    const ElementPtr element(document.CreateElement("e"));
    for (const char* name : {"a", "b", "c", "d"})
        element->SetAttribute(name, name);
    Dom::NamedNodeMap& map = *element->Attributes();
    const AttrPtr removed(static_cast<Dom::Attr*>(map.RemoveNamedItem("b")));
    EXPECT_EQ(removed->Name(), "b");
    EXPECT_EQ(removed->OwnerElement(), nullptr);
    EXPECT_EQ(support::Members(map), "a c d");
    for (const char* name : {"a", "c", "d"})
        EXPECT_EQ(map.GetNamedItem(name)->NodeName(), name);
    EXPECT_EQ(map.GetNamedItem("b"), nullptr);
    element->SetAttribute("b", "again");
    EXPECT_EQ(support::Members(map), "a c d b");
}

TEST(NamedNodeMap, RemovingByNamespace) {
    Dom::Document document;
    const ElementPtr element(document.CreateElement("e"));
    element->SetAttributeNS("urn:x", "p:a", "1");
    element->SetAttribute("a", "2");
    Dom::NamedNodeMap& map = *element->Attributes();
    const NodePtr removed(map.RemoveNamedItemNS("urn:x", "a"));
    EXPECT_EQ(removed->NodeName(), "p:a");
    const NodePtr plain(map.RemoveNamedItemNS("", "a"));
    EXPECT_EQ(plain->NodeName(), "a");
    EXPECT_EQ(map.Length(), 0u);
}

TEST(NamedNodeMap, RefusesToRemoveWhatIsNotThere) {
    Dom::Document document;
    const ElementPtr element(document.CreateElement("e"));
    Dom::NamedNodeMap& map = *element->Attributes();
    EXPECT_DOM_ERROR(map.RemoveNamedItem("x"), "8 No node named x in this map");
    EXPECT_DOM_ERROR(map.RemoveNamedItemNS("", "x"), "8 No node named x in this map");
    EXPECT_DOM_ERROR(map.RemoveNamedItemNS("urn:x", "a"), "8 No node named a\x01urn:x in this map");
}

// --- cloning ---

TEST(NamedNodeMap, CloneAttributesKeepsWhatIsThereAndToItsDocument) {
    Dom::Document document;
    const ElementPtr source(document.CreateElement("source"));
    for (int i = 0; i < 20; ++i)
        source->SetAttribute("a" + std::to_string(i), "source");
    source->SetAttributeNS("urn:x", "p:n", "source");
    const ElementPtr target(document.CreateElement("target"));
    target->SetAttribute("a3", "target");
    target->SetAttributeNS("urn:x", "q:n", "target");
    EXPECT_EQ(source->Attributes()->CloneAttributes(target.get()), target->Attributes());
    EXPECT_EQ(target->Attributes()->Length(), 21u);
    EXPECT_EQ(target->GetAttribute("a3"), "target");
    EXPECT_EQ(target->GetAttributeNS("urn:x", "n"), "target");
    EXPECT_EQ(target->GetAttribute("a19"), "source");
    EXPECT_EQ(source->Attributes()->CloneAttributes(source.get())->Length(), 21u);
    Dom::Document other;
    const ElementPtr stranger(other.CreateElement("stranger"));
    EXPECT_DOM_ERROR(source->Attributes()->CloneAttributes(stranger.get()),
                     "4 The attribute to set was created from a different document than the one "
                     "that created this map");
    EXPECT_DOM_ERROR(source->Attributes()->CloneAttributes(nullptr), "8 Node expected");
}

TEST(NamedNodeMap, CloneAttributesFillsTheMapOfAnotherElement) {
    Dom::Document document;
    const ElementPtr element(document.CreateElement("e"));
    element->SetAttribute("b", "1");
    element->SetAttributeNS("urn:x", "p:a", "2");
    const ElementPtr other(document.CreateElement("other"));
    EXPECT_EQ(element->Attributes()->CloneAttributes(other.get()), other->Attributes());
    EXPECT_EQ(support::Members(*other->Attributes()), "b p:a");
    EXPECT_EQ(other->GetAttribute("b"), "1");
    EXPECT_EQ(other->GetAttributeNS("urn:x", "a"), "2");
    EXPECT_EQ(other->GetAttributeNode("b")->OwnerElement(), other.get());
    EXPECT_NE(other->GetAttributeNode("b"), element->GetAttributeNode("b"));
    EXPECT_EQ(element->Attributes()->Length(), 2u);
}

// --- many ---

// Random changes beside a vector of names and values in order.
class MapAndModel {
public:
    explicit MapAndModel(Dom::Document& document) : element_(document.CreateElement("e")) {}

    void Set(const std::string& name, bool inNamespace, const std::string& value) {
        const std::string key = inNamespace ? name + "\x01urn:x" : name;
        const auto found = Find(key);
        if (found == model_.end()) {
            model_.emplace_back(key, value);
        } else {
            found->second = value;
        }
        if (inNamespace) {
            element_->SetAttributeNS("urn:x", "p:" + name, value);
        } else {
            element_->SetAttribute(name, value);
        }
    }

    void Remove(const std::string& name, bool inNamespace) {
        const auto found = Find(inNamespace ? name + "\x01urn:x" : name);
        if (found == model_.end()) return;
        model_.erase(found);
        if (inNamespace) {
            element_->RemoveAttributeNS("urn:x", name);
        } else {
            element_->RemoveAttribute(name);
        }
    }

    void Compare() const {
        const Dom::NamedNodeMap& map = *element_->Attributes();
        ASSERT_EQ(map.Length(), model_.size());
        for (std::size_t i = 0; i < model_.size(); ++i) {
            ASSERT_EQ(map.GetNamedItem(model_[i].first), map.Item(i)) << model_[i].first;
            ASSERT_EQ(element_->GetAttribute(model_[i].first), model_[i].second);
        }
    }

private:
    using Entries = std::vector<std::pair<std::string, std::string>>;

    Entries::iterator Find(const std::string& key) {
        return std::find_if(model_.begin(), model_.end(),
                            [&key](const auto& entry) { return entry.first == key; });
    }

    ElementPtr element_;
    Entries model_;
};

TEST(NamedNodeMap, AgreesWithAModelOfAFewAndOfManyNames) {
    for (const unsigned names : {3u, 9u, 40u}) {
        SCOPED_TRACE(names);
        Dom::Document document;
        MapAndModel map(document);
        std::mt19937 random(names);
        for (int step = 0; step < 1000; ++step) {
            const std::string name = "n" + std::to_string(random() % names);
            const bool inNamespace = random() % 3 == 0;
            if (random() % 3 == 0) {
                map.Remove(name, inNamespace);
            } else {
                map.Set(name, inNamespace, std::to_string(step));
            }
            ASSERT_NO_FATAL_FAILURE(map.Compare()) << "step " << step;
        }
    }
}

TEST(NamedNodeMap, FindsEachOfManyNames) {
    constexpr int kCount = 20000;
    Dom::Document document;
    const ElementPtr element(document.CreateElement("e"));
    for (int i = 0; i < kCount; ++i)
        element->SetAttribute("a" + std::to_string(i), std::to_string(i));
    for (int i = 0; i < kCount; ++i)
        ASSERT_EQ(element->GetAttribute("a" + std::to_string(i)), std::to_string(i));
    EXPECT_EQ(element->Attributes()->Length(), static_cast<std::size_t>(kCount));
    EXPECT_FALSE(element->HasAttribute("a" + std::to_string(kCount)));
}

}  // namespace
