// SPDX-License-Identifier: MIT
#include "dom/DomNodes.h"
#include "dom/ExpectDomError.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <string_view>

namespace {

using Dom::NodePtr;
using support::Lockable;

using AttrPtr = std::unique_ptr<Dom::Attr>;
using ElementPtr = std::unique_ptr<Dom::Element>;

constexpr char kReadOnly[] = "7 This node is read-only";

// --- values ---

TEST(Element, WithoutAttributesItHasEmptyValues) {
    Dom::Document document;
    const ElementPtr element(document.CreateElement("e"));
    EXPECT_EQ(element->TagName(), "e");
    EXPECT_EQ(element->GetAttribute("a"), "");
    EXPECT_EQ(element->GetAttributeNS("urn:x", "a"), "");
    EXPECT_EQ(element->GetAttributeNode("a"), nullptr);
    EXPECT_EQ(element->GetAttributeNodeNS("urn:x", "a"), nullptr);
    EXPECT_FALSE(element->HasAttribute("a"));
    EXPECT_FALSE(element->HasAttributeNS("urn:x", "a"));
    EXPECT_TRUE(element->AttributeViews().empty());
}

TEST(Element, SetAttributeMakesASpecifiedAttributeOfTheDocument) {
    Dom::Document document;
    const ElementPtr element(document.CreateElement("e"));
    element->SetAttribute("p:a", "value");
    EXPECT_EQ(element->GetAttribute("p:a"), "value");
    EXPECT_TRUE(element->HasAttribute("p:a"));
    const Dom::Attr* attribute = element->GetAttributeNode("p:a");
    ASSERT_NE(attribute, nullptr);
    EXPECT_EQ(attribute->Name(), "p:a");
    EXPECT_EQ(attribute->NamespaceURI(), "");
    EXPECT_EQ(attribute->OwnerDocument(), &document);
    EXPECT_EQ(attribute->OwnerElement(), element.get());
    EXPECT_TRUE(attribute->Specified());
    EXPECT_EQ(support::TrueChildren(*attribute), "'value'");
}

TEST(Element, SetAttributeDoesNotUseTheDocumentsFactory) {
    class Counting : public Dom::Document {
    public:
        Dom::Attr* CreateAttribute(std::string_view name) override {
            ++made;
            return Document::CreateAttribute(name);
        }
        Dom::Attr* CreateAttributeNS(std::string_view uri, std::string_view name) override {
            ++made;
            return Document::CreateAttributeNS(uri, name);
        }
        int made = 0;
    };
    Counting document;
    const ElementPtr element(document.CreateElement("e"));
    element->SetAttribute("a", "1");
    element->SetAttributeNS("urn:x", "b", "2");
    EXPECT_EQ(document.made, 0);
}

TEST(Element, SetAttributeReplacesTheAttributeInItsPlace) {
    Dom::Document document;
    const ElementPtr element(document.CreateElement("e"));
    element->SetAttribute("a", "1");
    element->SetAttribute("b", "2");
    element->SetAttribute("c", "3");
    element->SetAttribute("b", "new");
    EXPECT_EQ(support::Members(*element->Attributes()), "a b c");
    EXPECT_EQ(element->GetAttribute("b"), "new");
    element->SetAttribute("a", element->GetAttribute("b"));
    element->SetAttribute("a", element->GetAttribute("a"));
    EXPECT_EQ(element->GetAttribute("a"), "new");
}

TEST(Element, ValuesAndNamesMayBeAnything) {
    Dom::Document document;
    const ElementPtr element(document.CreateElement("e"));
    const std::string_view value("v\0w", 3);
    element->SetAttribute("", "nameless");
    element->SetAttribute("a", value);
    element->SetAttribute("b", "");
    EXPECT_EQ(element->GetAttribute(""), "nameless");
    EXPECT_EQ(element->GetAttribute("a"), value);
    EXPECT_EQ(element->GetAttribute("b"), "");
    EXPECT_TRUE(element->HasAttribute("b"));
    EXPECT_FALSE(element->HasAttribute("A"));
}

// --- namespaces ---

TEST(ElementNS, AnAttributeOfANamespaceIsFoundByItAndItsLocalName) {
    Dom::Document document;
    const ElementPtr element(document.CreateElement("e"));
    element->SetAttributeNS("urn:x", "p:a", "value");
    EXPECT_EQ(element->GetAttributeNS("urn:x", "a"), "value");
    EXPECT_TRUE(element->HasAttributeNS("urn:x", "a"));
    const Dom::Attr* attribute = element->GetAttributeNodeNS("urn:x", "a");
    ASSERT_NE(attribute, nullptr);
    EXPECT_EQ(attribute->Name(), "p:a");
    EXPECT_EQ(attribute->NamespaceURI(), "urn:x");
    EXPECT_TRUE(attribute->Specified());
    EXPECT_EQ(element->GetAttributeNS("urn:y", "a"), "");
    EXPECT_EQ(element->GetAttributeNS("urn:x", "p:a"), "");
    EXPECT_EQ(element->GetAttributeNS("", "a"), "");
    EXPECT_EQ(element->GetAttribute("p:a"), "");
    EXPECT_EQ(element->GetAttribute("a"), "");
    EXPECT_EQ(element->GetAttributeNode("p:a"), nullptr);
}

TEST(ElementNS, WithoutANamespaceTheNameIsTheKey) {
    Dom::Document document;
    const ElementPtr element(document.CreateElement("e"));
    element->SetAttributeNS("", "p:a", "1");
    EXPECT_EQ(element->GetAttribute("p:a"), "1");
    EXPECT_EQ(element->GetAttributeNS("", "p:a"), "1");
    EXPECT_EQ(element->GetAttributeNS("", "a"), "");
    element->SetAttribute("b", "2");
    EXPECT_EQ(element->GetAttributeNS("", "b"), "2");
    EXPECT_TRUE(element->HasAttributeNS("", "b"));
    element->SetAttributeNS("", "b", "3");
    EXPECT_EQ(element->Attributes()->Length(), 2u);
    EXPECT_EQ(element->GetAttribute("b"), "3");
}

TEST(ElementNS, TheSameNameWithAndWithoutANamespaceAreTwo) {
    Dom::Document document;
    const ElementPtr element(document.CreateElement("e"));
    element->SetAttribute("a", "plain");
    element->SetAttributeNS("urn:x", "a", "x");
    element->SetAttributeNS("urn:y", "a", "y");
    EXPECT_EQ(element->Attributes()->Length(), 3u);
    EXPECT_EQ(element->GetAttribute("a"), "plain");
    EXPECT_EQ(element->GetAttributeNS("urn:x", "a"), "x");
    EXPECT_EQ(element->GetAttributeNS("urn:y", "a"), "y");
}

TEST(ElementNS, AnotherPrefixReplacesTheAttribute) {
    Dom::Document document;
    const ElementPtr element(document.CreateElement("e"));
    element->SetAttributeNS("urn:x", "p:a", "1");
    element->SetAttributeNS("urn:x", "q:a", "2");
    EXPECT_EQ(support::Members(*element->Attributes()), "q:a");
    EXPECT_EQ(element->GetAttributeNS("urn:x", "a"), "2");
}

// The key of an attribute of a namespace is its local name, the byte 1 and the namespace.
TEST(ElementNS, APlainNameOfThatFormFindsTheAttribute) {
    Dom::Document document;
    const ElementPtr element(document.CreateElement("e"));
    element->SetAttributeNS("urn:x", "p:a", "value");
    EXPECT_EQ(element->GetAttribute("a\x01urn:x"), "value");
    EXPECT_TRUE(element->HasAttribute("a\x01urn:x"));
    EXPECT_EQ(element->GetAttribute("a\x01urn:y"), "");
    element->SetAttribute("b\x01urn:x", "plain");
    EXPECT_EQ(element->GetAttributeNS("urn:x", "b"), "plain");
    element->RemoveAttribute("a\x01urn:x");
    EXPECT_FALSE(element->HasAttributeNS("urn:x", "a"));
}

TEST(ElementNS, HasAttributeTriesTheNamespaceOfTheElement) {
    Dom::Document document;
    const ElementPtr inside(document.CreateElementNS("urn:x", "p:e"));
    inside->SetAttributeNS("urn:x", "p:a", "1");
    inside->SetAttributeNS("urn:y", "q:b", "2");
    inside->SetAttribute("c", "3");
    EXPECT_TRUE(inside->HasAttribute("a"));
    EXPECT_FALSE(inside->HasAttribute("p:a"));
    EXPECT_FALSE(inside->HasAttribute("b"));
    EXPECT_TRUE(inside->HasAttribute("c"));
    EXPECT_EQ(inside->GetAttribute("a"), "");
    const ElementPtr outside(document.CreateElement("e"));
    outside->SetAttributeNS("urn:x", "p:a", "1");
    EXPECT_FALSE(outside->HasAttribute("a"));
}

// --- removing ---

TEST(Element, RemoveAttributeDestroysIt) {
    Dom::Document document;
    const ElementPtr element(document.CreateElement("e"));
    element->SetAttribute("a", "1");
    element->SetAttribute("b", "2");
    element->SetAttributeNS("urn:x", "p:a", "3");
    element->RemoveAttribute("a");
    EXPECT_EQ(support::Members(*element->Attributes()), "b p:a");
    element->RemoveAttributeNS("urn:x", "a");
    EXPECT_EQ(support::Members(*element->Attributes()), "b");
    element->RemoveAttributeNS("", "b");
    EXPECT_FALSE(element->HasAttributes());
}

// Deliberate: removing what is not there is an error.
TEST(Element, RemoveAttributeRefusesNamesThatAreNotThere) {
    Dom::Document document;
    const ElementPtr element(document.CreateElement("e"));
    EXPECT_DOM_ERROR(element->RemoveAttribute("x"), "8 No node named x in this map");
    EXPECT_DOM_ERROR(element->RemoveAttribute(""), "8 No node named  in this map");
    EXPECT_DOM_ERROR(element->RemoveAttributeNS("", "x"), "8 No node named x in this map");
    EXPECT_DOM_ERROR(element->RemoveAttributeNS("urn:x", "a"),
                     "8 No node named a\x01urn:x in this map");
    element->SetAttributeNS("urn:x", "p:a", "1");
    EXPECT_DOM_ERROR(element->RemoveAttribute("p:a"), "8 No node named p:a in this map");
    EXPECT_DOM_ERROR(element->RemoveAttribute("a"), "8 No node named a in this map");
    EXPECT_TRUE(element->HasAttributes());
}

TEST(Element, RemoveAttributeNodeFreesTheAttribute) {
    Dom::Document document;
    const ElementPtr element(document.CreateElement("e"));
    element->SetAttribute("a", "1");
    Dom::Attr* attribute = element->GetAttributeNode("a");
    const AttrPtr removed(element->RemoveAttributeNode(attribute));
    EXPECT_EQ(removed.get(), attribute);
    EXPECT_EQ(removed->OwnerElement(), nullptr);
    EXPECT_EQ(removed->Value(), "1");
    EXPECT_FALSE(element->HasAttributes());
}

// Deliberate: one with a prefix is filed under its namespace, and the name is all that is asked
// for.
TEST(Element, RemoveAttributeNodeDoesNotFindAttributesOfNamespaces) {
    Dom::Document document;
    const ElementPtr element(document.CreateElement("e"));
    element->SetAttributeNS("urn:x", "p:a", "1");
    Dom::Attr* attribute = element->GetAttributeNodeNS("urn:x", "a");
    EXPECT_DOM_ERROR(element->RemoveAttributeNode(attribute), "8 No node named p:a in this map");
    element->SetAttribute("p:a", "plain");
    const AttrPtr removed(element->RemoveAttributeNode(attribute));
    EXPECT_NE(removed.get(), attribute);
    EXPECT_EQ(removed->Value(), "plain");
    EXPECT_EQ(element->GetAttributeNS("urn:x", "a"), "1");
    EXPECT_EQ(element->Attributes()->Length(), 1u);
    // The map lets one out as it is.
    const AttrPtr taken(
        static_cast<Dom::Attr*>(element->Attributes()->RemoveNamedItemNS("urn:x", "a")));
    EXPECT_EQ(taken.get(), attribute);
}

TEST(Element, RemoveAttributeNodeRefusesNamesThatAreNotThere) {
    Dom::Document document;
    const ElementPtr element(document.CreateElement("e"));
    const AttrPtr freeOne(document.CreateAttribute("a"));
    EXPECT_DOM_ERROR(element->RemoveAttributeNode(nullptr), "8 Node expected");
    EXPECT_DOM_ERROR(element->RemoveAttributeNode(freeOne.get()), "8 No node named a in this map");
    const AttrPtr prefixed(document.CreateAttributeNS("urn:x", "p:a"));
    EXPECT_DOM_ERROR(element->RemoveAttributeNode(prefixed.get()),
                     "8 No node named p:a in this map");
}

// Deliberate: the name decides, so an attribute that only has the name takes the other one out.
TEST(Element, RemoveAttributeNodeRemovesByName) {
    Dom::Document document;
    const ElementPtr element(document.CreateElement("e"));
    const AttrPtr freeOne(document.CreateAttribute("a"));
    element->SetAttribute("a", "1");
    const AttrPtr removed(element->RemoveAttributeNode(freeOne.get()));
    ASSERT_NE(removed, nullptr);
    EXPECT_NE(removed, freeOne);
    EXPECT_EQ(removed->Value(), "1");
    EXPECT_EQ(removed->OwnerElement(), nullptr);
    EXPECT_FALSE(element->HasAttributes());
}

// --- attributes as nodes ---

TEST(Element, SetAttributeNodeReturnsTheOneInWhosePlaceItIs) {
    Dom::Document document;
    const ElementPtr element(document.CreateElement("e"));
    Dom::Attr* first = document.CreateAttribute("a");
    first->SetValue("1");
    EXPECT_EQ(element->SetAttributeNode(first), nullptr);
    EXPECT_EQ(first->OwnerElement(), element.get());
    EXPECT_FALSE(first->Specified());
    Dom::Attr* second = document.CreateAttribute("a");
    const AttrPtr replaced(element->SetAttributeNode(second));
    EXPECT_EQ(replaced.get(), first);
    EXPECT_EQ(element->GetAttributeNode("a"), second);
    EXPECT_EQ(element->Attributes()->Length(), 1u);
}

TEST(Element, SetAttributeNodeFilesUnderTheNameAndTheOtherUnderTheNamespace) {
    Dom::Document document;
    const ElementPtr element(document.CreateElement("e"));
    Dom::Attr* plain = document.CreateAttributeNS("urn:x", "p:a");
    Dom::Attr* other = document.CreateAttributeNS("urn:x", "p:a");
    EXPECT_EQ(element->SetAttributeNode(plain), nullptr);
    EXPECT_EQ(element->SetAttributeNodeNS(other), nullptr);
    EXPECT_EQ(element->GetAttributeNode("p:a"), plain);
    EXPECT_EQ(element->GetAttributeNodeNS("urn:x", "a"), other);
    EXPECT_EQ(element->Attributes()->Length(), 2u);
}

// The key stays when the attribute is renamed.
TEST(Element, SetPrefixOfAnAttributeKeepsItsKey) {
    Dom::Document document;
    const ElementPtr element(document.CreateElement("e"));
    Dom::Attr* plain = document.CreateAttributeNS("urn:x", "p:a");
    element->SetAttributeNode(plain);
    plain->SetPrefix("q");
    EXPECT_EQ(plain->Name(), "q:a");
    EXPECT_EQ(element->GetAttributeNode("p:a"), plain);
    EXPECT_EQ(element->GetAttributeNode("q:a"), nullptr);
    EXPECT_DOM_ERROR(element->RemoveAttributeNode(plain), "8 No node named q:a in this map");
    element->SetAttributeNS("urn:x", "p:b", "1");
    element->GetAttributeNodeNS("urn:x", "b")->SetPrefix("q");
    EXPECT_EQ(element->GetAttributeNS("urn:x", "b"), "1");
    const AttrPtr removed(
        static_cast<Dom::Attr*>(element->Attributes()->RemoveNamedItemNS("urn:x", "b")));
    EXPECT_EQ(removed->Name(), "q:b");
    element->RemoveAttribute("p:a");
    EXPECT_FALSE(element->HasAttributes());
}

TEST(Element, AnAttributeMovesOnceItIsTakenOut) {
    Dom::Document document;
    const ElementPtr one(document.CreateElement("one"));
    const ElementPtr other(document.CreateElement("other"));
    one->SetAttribute("a", "1");
    Dom::Attr* attribute = one->GetAttributeNode("a");
    EXPECT_DOM_ERROR(other->SetAttributeNode(attribute),
                     "10 The attribute to set is already an attribute of another Element object");
    EXPECT_EQ(other->SetAttributeNode(one->RemoveAttributeNode(attribute)), nullptr);
    EXPECT_EQ(attribute->OwnerElement(), other.get());
    EXPECT_EQ(other->GetAttribute("a"), "1");
}

// --- read-only elements ---

TEST(Element, AReadOnlyOneRefusesEveryChangeOfItsAttributes) {
    Dom::Document document;
    Lockable<Dom::Element> element("", "e", &document);
    element.SetAttribute("a", "1");
    element.SetAttributeNS("urn:x", "p:b", "2");
    element.SetReadOnly(true);
    const AttrPtr attribute(document.CreateAttribute("a"));
    EXPECT_DOM_ERROR(element.SetAttribute("a", "3"), kReadOnly);
    EXPECT_DOM_ERROR(element.SetAttribute("new", "3"), kReadOnly);
    EXPECT_DOM_ERROR(element.SetAttributeNS("urn:x", "p:b", "3"), kReadOnly);
    EXPECT_DOM_ERROR(element.SetAttributeNode(attribute.get()), kReadOnly);
    EXPECT_DOM_ERROR(element.SetAttributeNodeNS(attribute.get()), kReadOnly);
    EXPECT_DOM_ERROR(element.RemoveAttribute("a"), kReadOnly);
    EXPECT_DOM_ERROR(element.RemoveAttribute("absent"), kReadOnly);
    EXPECT_DOM_ERROR(element.RemoveAttributeNS("urn:x", "b"), kReadOnly);
    EXPECT_DOM_ERROR(element.RemoveAttributeNode(element.GetAttributeNode("a")), kReadOnly);
    EXPECT_EQ(attribute->OwnerElement(), nullptr);
    EXPECT_EQ(element.GetAttribute("a"), "1");
    EXPECT_EQ(element.GetAttributeNS("urn:x", "b"), "2");
    EXPECT_EQ(element.Attributes()->Length(), 2u);
}

}  // namespace
