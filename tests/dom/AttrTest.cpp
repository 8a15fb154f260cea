// SPDX-License-Identifier: MIT
#include "dom/DomNodes.h"
#include "dom/ExpectDomError.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <string_view>

namespace {

using Dom::DOMNodeType;
using Dom::NodePtr;
using support::AddText;
using support::Lockable;

using AttrPtr = std::unique_ptr<Dom::Attr>;

TEST(Attr, AFreshOneIsEmptyAndUnspecified) {
    Dom::Document document;
    const AttrPtr attribute(document.CreateAttribute("a"));
    EXPECT_EQ(attribute->Name(), "a");
    EXPECT_EQ(attribute->Value(), "");
    EXPECT_EQ(attribute->NodeValue(), "");
    EXPECT_FALSE(attribute->Specified());
    EXPECT_EQ(attribute->OwnerElement(), nullptr);
    EXPECT_FALSE(attribute->HasChildNodes());
    const AttrPtr specified(new Dom::Attr("", "a", &document, true));
    EXPECT_TRUE(specified->Specified());
}

TEST(Attr, SetValueLeavesASingleTextChild) {
    Dom::Document document;
    for (const std::string_view value :
         {std::string_view("value"), std::string_view(""), std::string_view("a\0b", 3),
          std::string_view("\xC3\xA4 & < \" longer than any small string that lies inside")}) {
        SCOPED_TRACE(value);
        const AttrPtr attribute(document.CreateAttribute("a"));
        attribute->SetValue(value);
        EXPECT_EQ(attribute->Value(), value);
        EXPECT_EQ(attribute->NodeValue(), value);
        EXPECT_FALSE(attribute->Specified());
        ASSERT_TRUE(attribute->HasChildNodes());
        EXPECT_EQ(attribute->ChildNodes().Length(), 1u);
        Dom::Node* child = attribute->FirstChild();
        EXPECT_EQ(attribute->LastChild(), child);
        EXPECT_EQ(attribute->FirstChild(), child);
        EXPECT_EQ(attribute->ChildNodes().Item(0), child);
        EXPECT_EQ(child->NodeType(), DOMNodeType::TEXT_NODE);
        EXPECT_EQ(child->NodeValue(), value);
        EXPECT_EQ(child->ParentNode(), attribute.get());
        EXPECT_EQ(child->OwnerDocument(), &document);
        EXPECT_EQ(child->NextSibling(), nullptr);
        EXPECT_EQ(child->PreviousSibling(), nullptr);
    }
}

// The single child is seen by whatever looks first.
TEST(Attr, TheChildIsThereWhicheverWayItIsFound) {
    Dom::Document document;
    const auto make = [&document] {
        AttrPtr attribute(document.CreateAttribute("a"));
        attribute->SetValue("v");
        return attribute;
    };
    EXPECT_EQ(support::TrueChildren(*make()), "'v'");
    EXPECT_EQ(support::Members(make()->ChildNodes()), "'v'");
    EXPECT_EQ(make()->ChildNodes().Length(), 1u);
    EXPECT_EQ(support::Label(make()->LastChild()), "'v'");
    EXPECT_EQ(support::Label(make()->ChildNodes().Item(0)), "'v'");
    EXPECT_TRUE(make()->HasChildNodes());
    EXPECT_EQ(make()->TextContent(), "v");
    const AttrPtr appended = make();
    AddText(*appended, "w");
    EXPECT_EQ(support::TrueChildren(*appended), "'v' 'w'");
    const AttrPtr removed = make();
    const NodePtr child(removed->RemoveChild(removed->FirstChild()));
    EXPECT_FALSE(removed->HasChildNodes());
    const AttrPtr inserted = make();
    inserted->InsertBefore(document.CreateTextNode("u"), inserted->LastChild());
    EXPECT_EQ(support::TrueChildren(*inserted), "'u' 'v'");
    EXPECT_EQ(inserted->Value(), "uv");
}

TEST(Attr, SetValueDestroysTheChildrenItHad) {
    Dom::Document document;
    const AttrPtr attribute(document.CreateAttribute("a"));
    AddText(*attribute, "one");
    attribute->AppendChild(document.CreateEntityReference("entity"));
    attribute->SetValue("new");
    EXPECT_EQ(support::TrueChildren(*attribute), "'new'");
    attribute->FirstChild();
    attribute->SetValue("newer");
    EXPECT_EQ(support::TrueChildren(*attribute), "'newer'");
    EXPECT_EQ(attribute->Value(), "newer");
}

TEST(Attr, SetValueEndsTheLinkToAReplacedChild) {
    Dom::Document document;
    const AttrPtr attribute(document.CreateAttribute("a"));
    Dom::Node* first = AddText(*attribute, "first");
    Dom::Node* old = AddText(*attribute, "old");
    const NodePtr replaced(attribute->ReplaceChild(document.CreateTextNode("new"), old));
    const NodePtr removed(attribute->RemoveChild(first));
    ASSERT_EQ(attribute->FirstChild(), old);
    attribute->SetValue("value");
    EXPECT_EQ(support::Forward(*attribute), "'value'");
    EXPECT_EQ(support::Backward(*attribute), "'value'");
}

TEST(Attr, SetValueTakesItsOwnValue) {
    Dom::Document document;
    const AttrPtr attribute(document.CreateAttribute("a"));
    const std::string longOne(1000, 'v');
    attribute->SetValue(longOne);
    attribute->SetValue(attribute->Value());
    EXPECT_EQ(attribute->Value(), longOne);
    attribute->SetValue(attribute->FirstChild()->NodeValue());
    EXPECT_EQ(attribute->Value(), longOne);
    attribute->SetValue(attribute->Value().view().substr(0, 10));
    EXPECT_EQ(attribute->Value(), std::string(10, 'v'));
}

TEST(Attr, TheValueIsThatOfItsChildren) {
    Dom::Document document;
    const AttrPtr attribute(document.CreateAttribute("a"));
    AddText(*attribute, "one");
    EXPECT_EQ(attribute->Value(), "one");
    EXPECT_EQ(attribute->NodeValue(), "");
    attribute->AppendChild(document.CreateEntityReference("entity"));
    AddText(*attribute, "two");
    EXPECT_EQ(attribute->Value(), "onetwo");
    EXPECT_EQ(attribute->NodeValue(), "");
    static_cast<Dom::Text*>(attribute->FirstChild())->SetData("1");
    EXPECT_EQ(attribute->Value(), "1two");
    attribute->LastChild()->DestroyNode();
    EXPECT_EQ(attribute->Value(), "1");
}

TEST(Attr, WithoutChildrenTheValueIsTheOneThatWasSet) {
    Dom::Document document;
    const AttrPtr attribute(document.CreateAttribute("a"));
    attribute->SetValue("set");
    static_cast<Dom::Text*>(attribute->FirstChild())->SetData("changed");
    EXPECT_EQ(attribute->Value(), "changed");
    EXPECT_EQ(attribute->NodeValue(), "set");
    attribute->FirstChild()->DestroyNode();
    EXPECT_FALSE(attribute->HasChildNodes());
    EXPECT_EQ(attribute->Value(), "set");
}

TEST(Attr, SetValueKeepsWhetherItIsSpecified) {
    Dom::Document document;
    const std::unique_ptr<Dom::Element> element(document.CreateElement("e"));
    element->SetAttribute("a", "1");
    Dom::Attr* attribute = element->GetAttributeNode("a");
    EXPECT_TRUE(attribute->Specified());
    attribute->SetValue("2");
    EXPECT_TRUE(attribute->Specified());
    EXPECT_EQ(element->GetAttribute("a"), "2");
}

TEST(Attr, AReadOnlyOneRefusesAValue) {
    Dom::Document document;
    Lockable<Dom::Attr> attribute("", "a", &document);
    attribute.SetValue("old");
    attribute.SetReadOnly(true);
    EXPECT_DOM_ERROR(attribute.SetValue("new"), "7 This node is read-only");
    EXPECT_EQ(attribute.Value(), "old");
    EXPECT_EQ(support::TrueChildren(attribute), "'old'");
}

TEST(Attr, IsNoChildOfItsElement) {
    Dom::Document document;
    const std::unique_ptr<Dom::Element> element(document.CreateElement("e"));
    element->SetAttribute("a", "1");
    Dom::Attr* attribute = element->GetAttributeNode("a");
    EXPECT_EQ(attribute->OwnerElement(), element.get());
    EXPECT_EQ(attribute->ParentNode(), nullptr);
    EXPECT_EQ(attribute->NextSibling(), nullptr);
    EXPECT_FALSE(element->HasChildNodes());
}

}  // namespace
