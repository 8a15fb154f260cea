// SPDX-License-Identifier: MIT
#include "dom/DomNodes.h"
#include "dom/ExpectDomError.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <functional>
#include <limits>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>

namespace {

using Dom::DOMNodeType;
using Dom::NodePtr;
using support::AddElement;
using support::AddText;
using support::Lockable;

using TextPtr = std::unique_ptr<Dom::Text>;

constexpr std::size_t kAll = std::numeric_limits<std::size_t>::max();
constexpr char kReadOnly[] = "7 This node is read-only";

TEST(CharacterData, LengthCountsBytes) {
    Dom::Document document;
    const struct {
        std::string_view data;
        std::size_t length;
    } kCases[] = {{"", 0}, {"abc", 3}, {"\xC3\xA4", 2}, {std::string_view("a\0b", 3), 3}};
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.data);
        const TextPtr text(document.CreateTextNode(c.data));
        EXPECT_EQ(text->Data(), c.data);
        EXPECT_EQ(text->NodeValue(), c.data);
        EXPECT_EQ(text->Length(), c.length);
    }
}

TEST(CharacterData, AllItsClassesCanBeChanged) {
    Dom::Document document;
    const std::unique_ptr<Dom::CharacterData> kNodes[] = {
        std::unique_ptr<Dom::CharacterData>(document.CreateTextNode("old")),
        std::unique_ptr<Dom::CharacterData>(document.CreateCDATASection("old")),
        std::unique_ptr<Dom::CharacterData>(document.CreateComment("old"))};
    for (const auto& node : kNodes) {
        SCOPED_TRACE(node->NodeName());
        node->AppendData("er");
        EXPECT_EQ(node->Data(), "older");
        node->SetData("");
        EXPECT_EQ(node->Data(), "");
        node->SetData("new");
        EXPECT_EQ(node->NodeValue(), "new");
    }
}

TEST(CharacterData, SubstringDataClipsTheCount) {
    Dom::Document document;
    const TextPtr text(document.CreateTextNode("abcdef"));
    const struct {
        std::size_t offset;
        std::size_t count;
        const char* expected;
    } kCases[] = {{0, 0, ""},          {0, 3, "abc"},  {2, 2, "cd"}, {4, 9, "ef"},
                  {0, kAll, "abcdef"}, {5, kAll, "f"}, {6, 0, ""},   {6, 1, ""}};
    for (const auto& c : kCases)
        EXPECT_EQ(text->SubstringData(c.offset, c.count), c.expected) << c.offset << ' ' << c.count;
}

TEST(CharacterData, ChangesPartsByByte) {
    Dom::Document document;
    const struct {
        const char* what;
        std::function<void(Dom::CharacterData&)> change;
        const char* expected;
    } kCases[] = {
        {"append", [](auto& t) { t.AppendData("xy"); }, "abcdefxy"},
        {"append nothing", [](auto& t) { t.AppendData(""); }, "abcdef"},
        {"insert at the start", [](auto& t) { t.InsertData(0, "xy"); }, "xyabcdef"},
        {"insert inside", [](auto& t) { t.InsertData(3, "xy"); }, "abcxydef"},
        {"insert at the end", [](auto& t) { t.InsertData(6, "xy"); }, "abcdefxy"},
        {"delete at the start", [](auto& t) { t.DeleteData(0, 2); }, "cdef"},
        {"delete inside", [](auto& t) { t.DeleteData(1, 4); }, "af"},
        {"delete past the end", [](auto& t) { t.DeleteData(4, 100); }, "abcd"},
        {"delete to the end", [](auto& t) { t.DeleteData(2, kAll); }, "ab"},
        {"delete at the end", [](auto& t) { t.DeleteData(6, 1); }, "abcdef"},
        {"delete nothing", [](auto& t) { t.DeleteData(3, 0); }, "abcdef"},
        {"replace at the start", [](auto& t) { t.ReplaceData(0, 1, "xy"); }, "xybcdef"},
        {"replace inside", [](auto& t) { t.ReplaceData(2, 2, "x"); }, "abxef"},
        {"replace past the end", [](auto& t) { t.ReplaceData(5, 9, "xy"); }, "abcdexy"},
        {"replace all", [](auto& t) { t.ReplaceData(0, kAll, "x"); }, "x"},
        {"replace at the end", [](auto& t) { t.ReplaceData(6, 1, "x"); }, "abcdefx"},
        {"replace nothing", [](auto& t) { t.ReplaceData(1, 0, "x"); }, "axbcdef"},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.what);
        const TextPtr text(document.CreateTextNode("abcdef"));
        c.change(*text);
        EXPECT_EQ(text->Data(), c.expected);
    }
}

TEST(CharacterData, OffsetsMayCutACharacter) {
    Dom::Document document;
    const TextPtr text(document.CreateTextNode("\xC3\xA4"));
    EXPECT_EQ(text->SubstringData(1, 1), "\xA4");
    text->DeleteData(0, 1);
    EXPECT_EQ(text->Data(), "\xA4");
}

TEST(CharacterData, AnOffsetPastTheEndChangesNothing) {
    Dom::Document document;
    for (const std::size_t offset : {std::size_t{4}, std::size_t{100}, kAll}) {
        SCOPED_TRACE(offset);
        const TextPtr text(document.CreateTextNode("abc"));
        EXPECT_THROW(text->SubstringData(offset, 1), std::out_of_range);
        EXPECT_THROW(text->InsertData(offset, "x"), std::out_of_range);
        EXPECT_THROW(text->DeleteData(offset, 1), std::out_of_range);
        EXPECT_THROW(text->ReplaceData(offset, 1, "x"), std::out_of_range);
        EXPECT_THROW(text->SplitText(offset), std::out_of_range);
        EXPECT_EQ(text->Data(), "abc");
    }
}

TEST(CharacterData, TakesPartsOfItself) {
    Dom::Document document;
    const std::string original(100, 'a');
    const TextPtr text(document.CreateTextNode(original));
    text->AppendData(text->Data());
    EXPECT_EQ(text->Data(), std::string(200, 'a'));
    text->InsertData(1, text->Data());
    EXPECT_EQ(text->Data(), std::string(400, 'a'));
    text->SetData(text->Data().view().substr(0, 50));
    EXPECT_EQ(text->Data(), std::string(50, 'a'));
    text->ReplaceData(0, 50, text->Data());
    EXPECT_EQ(text->Data(), std::string(50, 'a'));
}

TEST(CharacterData, AReadOnlyOneRefusesEveryChange) {
    Dom::Document document;
    Lockable<Dom::Text> text("abc", &document);
    text.SetReadOnly(true);
    EXPECT_DOM_ERROR(text.SetData("x"), kReadOnly);
    EXPECT_DOM_ERROR(text.AppendData("x"), kReadOnly);
    EXPECT_DOM_ERROR(text.AppendData(""), kReadOnly);
    EXPECT_DOM_ERROR(text.InsertData(0, "x"), kReadOnly);
    EXPECT_DOM_ERROR(text.DeleteData(0, 1), kReadOnly);
    EXPECT_DOM_ERROR(text.ReplaceData(0, 1, "x"), kReadOnly);
    EXPECT_DOM_ERROR(text.SplitText(1), kReadOnly);
    EXPECT_EQ(text.Data(), "abc");
    EXPECT_EQ(text.SubstringData(0, 2), "ab");
}

TEST(CharacterData, AReadOnlyOneIsSeenBeforeABadOffset) {
    Dom::Document document;
    Lockable<Dom::Comment> comment("abc", &document);
    comment.SetReadOnly(true);
    EXPECT_DOM_ERROR(comment.InsertData(9, "x"), kReadOnly);
    EXPECT_DOM_ERROR(comment.DeleteData(9, 1), kReadOnly);
    EXPECT_DOM_ERROR(comment.ReplaceData(9, 1, "x"), kReadOnly);
}

// --- SplitText() ---

TEST(SplitText, PutsTheTailBehindTheText) {
    Dom::Document document;
    Dom::Element* root = AddElement(document, "root");
    Dom::Text* text = AddText(*root, "headtail");
    Dom::Text* tail = text->SplitText(4);
    EXPECT_EQ(text->Data(), "head");
    EXPECT_EQ(tail->Data(), "tail");
    EXPECT_EQ(tail->OwnerDocument(), &document);
    EXPECT_EQ(support::Links(*root, {text, tail}),
              "first='head' last='tail' 'head'(-,'tail') 'tail'('head',-)");
}

TEST(SplitText, AtTheEndsOneTextIsEmpty) {
    Dom::Document document;
    Dom::Element* root = AddElement(document, "root");
    Dom::Text* text = AddText(*root, "abc");
    EXPECT_EQ(text->SplitText(3)->Data(), "");
    EXPECT_EQ(text->Data(), "abc");
    EXPECT_EQ(text->SplitText(0)->Data(), "abc");
    EXPECT_EQ(text->Data(), "");
    EXPECT_EQ(support::TrueChildren(*root), "'' 'abc' ''");
}

// Deliberate: with a node behind the text, the tail is inserted as InsertBefore() does.
TEST(SplitText, WithASiblingTheNextLinkStays) {
    Dom::Document document;
    Dom::Element* root = AddElement(document, "root");
    Dom::Text* text = AddText(*root, "headtail");
    Dom::Element* b = AddElement(*root, "b");
    Dom::Text* tail = text->SplitText(4);
    EXPECT_EQ(text->NextSibling(), b);
    EXPECT_EQ(tail->PreviousSibling(), text);
    EXPECT_EQ(tail->NextSibling(), b);
    EXPECT_EQ(b->PreviousSibling(), tail);
    EXPECT_EQ(support::TrueChildren(*root), "'head' 'tail' b");
}

// Deliberate: the tail is put before what NextSibling() answers, also where that is not the next
// child, and cannot be where it is no child at all.
TEST(SplitText, TheTailIsPutBeforeTheNextSiblingThatIsSeen) {
    Dom::Document document;
    Dom::Element* root = AddElement(document, "root");
    Dom::Text* text = AddText(*root, "headtail");
    Dom::Element* b = AddElement(*root, "b");
    root->InsertBefore(document.CreateElement("n"), b);
    ASSERT_EQ(text->NextSibling(), b);
    text->SplitText(4);
    EXPECT_EQ(support::TrueChildren(*root), "'head' n 'tail' b");

    Dom::Element* other = AddElement(*root, "other");
    Dom::Text* before = AddText(*other, "headtail");
    Dom::Element* old = AddElement(*other, "old");
    const NodePtr removed(other->ReplaceChild(document.CreateElement("n"), old));
    ASSERT_EQ(before->NextSibling(), old);
    EXPECT_DOM_ERROR(before->SplitText(4), "8 Node expected");
    EXPECT_EQ(support::TrueChildren(*other), "'headtail' n");
}

TEST(SplitText, WithoutAParentTheTailIsFree) {
    Dom::Document document;
    const TextPtr text(document.CreateTextNode("headtail"));
    const TextPtr tail(text->SplitText(4));
    EXPECT_EQ(text->Data(), "head");
    EXPECT_EQ(tail->Data(), "tail");
    EXPECT_EQ(tail->ParentNode(), nullptr);
    EXPECT_EQ(tail->PreviousSibling(), nullptr);
    EXPECT_EQ(text->NextSibling(), nullptr);
}

TEST(SplitText, TheTailOfASectionIsAPlainText) {
    Dom::Document document;
    const std::unique_ptr<Dom::CDATASection> section(document.CreateCDATASection("headtail"));
    const NodePtr tail(section->SplitText(4));
    EXPECT_EQ(tail->NodeType(), DOMNodeType::TEXT_NODE);
    EXPECT_EQ(section->NodeType(), DOMNodeType::CDATA_SECTION_NODE);
    EXPECT_EQ(section->Data(), "head");
}

// The tail is taken first, so a bad offset is told before the node is found to be read-only.
TEST(SplitText, ABadOffsetIsSeenBeforeAReadOnlyText) {
    Dom::Document document;
    Lockable<Dom::Text> text("abc", &document);
    text.SetReadOnly(true);
    EXPECT_THROW(text.SplitText(4), std::out_of_range);
    EXPECT_DOM_ERROR(text.SplitText(3), kReadOnly);
}

TEST(SplitText, WhenTheParentRefusesTheTailNothingHasChanged) {
    Dom::Document document;
    auto* locked = support::Add<Lockable<Dom::Element>>(document, "root");
    Dom::Text* text = AddText(*locked, "headtail");
    locked->SetReadOnly(true);
    EXPECT_DOM_ERROR(text->SplitText(4), kReadOnly);
    EXPECT_EQ(support::TrueChildren(*locked), "'headtail'");

    Dom::Document bare;
    auto* inDocument = bare.CreateTextNode("x  y");
    bare.AppendChild(inDocument);
    EXPECT_DOM_ERROR(inDocument->SplitText(1),
                     "3 Non-whitespace text node not allowed as child of document");
    EXPECT_EQ(support::TrueChildren(bare), "'x  y'");
    Dom::Text* tail = inDocument->SplitText(3);
    EXPECT_EQ(tail->Data(), "y");
    EXPECT_EQ(support::TrueChildren(bare), "'x  ' 'y'");
}

}  // namespace
