// SPDX-License-Identifier: MIT
#include <espalier/dom/Document.h>
#include <espalier/dom/StyleProcessingInstruction.h>

#include "dom/css/CountedSheet.h"
#include "support/PrintAstring.h"

#include <gtest/gtest.h>

#include <memory>

namespace {

using Dom::StyleProcessingInstruction;
using Dom::StyleSheets::LinkStyle;

// Keeps a sheet, as one does that makes it.
class WithSheet final : public StyleProcessingInstruction {
public:
    WithSheet(Dom::Document* document, Dom::StyleSheets::StyleSheet* sheet)
        : StyleProcessingInstruction("", document) {
        SetSheet(sheet);
    }
};

}  // namespace

TEST(StyleProcessingInstruction, HasATargetAndData) {
    Dom::Document document;
    const StyleProcessingInstruction instruction("href='a.css'", &document);
    EXPECT_TRUE(instruction.NodeType() == Dom::DOMNodeType::PROCESSING_INSTRUCTION_NODE);
    EXPECT_EQ(instruction.Target(), "xml-stylesheet");
    EXPECT_EQ(instruction.Data(), "href='a.css'");
    EXPECT_EQ(instruction.OwnerDocument(), &document);
    EXPECT_EQ(instruction.Sheet(), nullptr);
    EXPECT_EQ(instruction.ParentNode(), nullptr);
}

TEST(StyleProcessingInstruction, AnswersToTheNamesOfItsClasses) {
    Dom::Document document;
    StyleProcessingInstruction instruction("", &document);
    Dom::Node* const node = &instruction;
    LinkStyle* const link = &instruction;
    for (const char* const name :
         {"Dom::StyleProcessingInstruction", "Dom::ProcessingInstruction", "Dom::Node"}) {
        SCOPED_TRACE(name);
        EXPECT_EQ(node->QueryInterface(name), node);
        EXPECT_EQ(link->QueryInterface(name), node);
    }
    EXPECT_EQ(node->QueryInterface("Dom::StyleSheets::LinkStyle"), link);
    EXPECT_EQ(link->QueryInterface("Dom::StyleSheets::LinkStyle"), link);
    EXPECT_EQ(node->QueryInterface("Dom::Element"), nullptr);
    EXPECT_EQ(node->QueryInterface("LinkStyle"), nullptr);
}

TEST(StyleProcessingInstruction, ACloneHasTheDataAndNoSheet) {
    int count = 0;
    Dom::Document document;
    auto* const original = new WithSheet(&document, new CountedSheet(count));
    original->SetData("href='b.css'");
    document.AppendChild(original);
    const std::unique_ptr<Dom::Node> clone(original->CloneNode(true));
    auto* const instruction = static_cast<StyleProcessingInstruction*>(
        clone->QueryInterface("Dom::StyleProcessingInstruction"));
    ASSERT_NE(instruction, nullptr);
    EXPECT_EQ(instruction->Target(), "xml-stylesheet");
    EXPECT_EQ(instruction->Data(), "href='b.css'");
    EXPECT_EQ(instruction->OwnerDocument(), &document);
    EXPECT_EQ(instruction->ParentNode(), nullptr);
    EXPECT_EQ(instruction->Sheet(), nullptr);
    EXPECT_EQ(count, 1);
}

TEST(StyleProcessingInstruction, DeletesItsSheet) {
    int count = 0;
    {
        Dom::Document document;
        const WithSheet instruction(&document, new CountedSheet(count));
        EXPECT_EQ(count, 1);
    }
    EXPECT_EQ(count, 0);
    {
        Dom::Document document;
        document.AppendChild(new WithSheet(&document, new CountedSheet(count)));
        EXPECT_EQ(count, 1);
    }
    EXPECT_EQ(count, 0);
}

// The document's list goes before its nodes do.
TEST(StyleProcessingInstruction, ASheetInTheListOfTheDocumentIsDeletedOnce) {
    int count = 0;
    {
        Dom::Document document;
        auto* const sheet = new CountedSheet(count);
        document.AppendChild(new WithSheet(&document, sheet));
        document.StyleSheets().AddItem(sheet);
    }
    EXPECT_EQ(count, 0);
    Dom::Document document;
    auto* const sheet = new CountedSheet(count);
    Dom::Node* const node = document.AppendChild(new WithSheet(&document, sheet));
    document.StyleSheets().AddItem(sheet);
    delete document.RemoveChild(node);
    EXPECT_EQ(count, 0);
    EXPECT_EQ(document.StyleSheets().Length(), 0U);
}

TEST(StyleProcessingInstruction, IsMadeForItsTargetAlone) {
    const struct {
        const char* target;
        bool isStyle;
    } kCases[] = {
        {"xml-stylesheet", true},
        {"XML-STYLESHEET", false},
        {"xml-stylesheet2", false},
        {"xml", false},
        {"", false},
    };
    Dom::Document document;
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.target);
        const std::unique_ptr<Dom::Node> node(document.CreateProcessingInstruction(c.target, "d"));
        EXPECT_EQ(node->QueryInterface("Dom::StyleProcessingInstruction") != nullptr, c.isStyle);
        EXPECT_EQ(node->NodeName(), c.target);
        EXPECT_EQ(node->NodeValue(), "d");
    }
}

TEST(StyleProcessingInstruction, IsMadeByLoading) {
    Dom::Document document;
    document.LoadXml("<?xml-stylesheet href='a.css'?><a><?xml-stylesheet b?></a>");
    Dom::Node* const first = document.FirstChild();
    ASSERT_NE(first, nullptr);
    EXPECT_NE(first->QueryInterface("Dom::StyleSheets::LinkStyle"), nullptr);
    EXPECT_EQ(first->NodeValue(), "href='a.css'");
    Dom::Node* const second = first->NextSibling()->FirstChild();
    ASSERT_NE(second, nullptr);
    EXPECT_NE(second->QueryInterface("Dom::StyleProcessingInstruction"), nullptr);
}

TEST(StyleProcessingInstruction, MayOutliveItsDocument) {
    int count = 0;
    auto document = std::make_unique<Dom::Document>();
    auto* const sheet = new CountedSheet(count);
    auto instruction = std::make_unique<WithSheet>(document.get(), sheet);
    document->StyleSheets().AddItem(sheet);
    document.reset();
    EXPECT_EQ(count, 0);
    EXPECT_EQ(instruction->Sheet(), nullptr);
    EXPECT_EQ(instruction->OwnerDocument(), nullptr);
    EXPECT_EQ(instruction->Target(), "xml-stylesheet");
}
