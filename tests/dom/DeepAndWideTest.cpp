// SPDX-License-Identifier: MIT
//
// Trees of a million levels, a million siblings, a hundred thousand attributes: everything takes
// linear time, and a stack of a quarter of a mebibyte. A time limit of ctest stands behind each
// test; none measures time itself.
#include <espalier/dom.h>
#include <espalier/encoding/UnicodeEncodings.h>
#include <espalier/io/Stream.h>
#include <espalier/xml/XmlTextReader.h>
#include <espalier/xml/XmlTextWriter.h>

#include "support/GeneratedStream.h"
#include "support/PrintAstring.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <pthread.h>
#include <string>
#include <string_view>
#include <vector>

namespace {

using Dom::Document;
using Dom::Element;
using Dom::Node;
using Dom::NodePtr;
using support::GeneratedStream;

constexpr long kMillion = 1'000'000;
constexpr std::size_t kStackSize = 256 * 1024;

// Runs a test in a thread with a small stack.
void InSmallStack(const std::function<void()>& work) {
    pthread_attr_t attributes;
    ASSERT_EQ(pthread_attr_init(&attributes), 0);
    ASSERT_EQ(pthread_attr_setstacksize(&attributes, kStackSize), 0);
    pthread_t thread{};
    const auto run = [](void* argument) -> void* {
        (*static_cast<const std::function<void()>*>(argument))();
        return nullptr;
    };
    const int result =
        pthread_create(&thread, &attributes, run, const_cast<std::function<void()>*>(&work));
    pthread_attr_destroy(&attributes);
    ASSERT_EQ(result, 0);
    ASSERT_EQ(pthread_join(thread, nullptr), 0);
}

void Load(Document& document, IO::Stream& stream, bool namespaces = true) {
    Xml::XmlTextReader reader;
    reader.SetStream(&stream, false);
    reader.SetNamespaces(namespaces);
    document.Load(reader, "generated");
}

// Counts the nodes below, along the visible links.
long CountBelow(const Node& root) {
    long count = 0;
    const Node* node = root.FirstChild();
    while (node != nullptr) {
        ++count;
        const Node* next = node->FirstChild();
        while (next == nullptr) {
            next = node->NextSibling();
            if (next != nullptr) break;
            node = node->ParentNode();
            if (node == nullptr || node == &root) return count;
        }
        node = next;
    }
    return count;
}

// Counts what is written.
class CountingStream : public IO::Stream {
public:
    long written = 0;

    bool CanWrite() const override { return true; }
    void Close() override {}
    void Write(const unsigned char*, int, int count) override { written += count; }
};

long LengthWritten(const Node& node) {
    CountingStream stream;
    Xml::UTF8Encoding utf8(false, false);
    Xml::XmlTextWriter writer(&stream, &utf8);
    WriteNode(node, writer);
    writer.Close();
    return stream.written;
}

// A document whose nodes are made by its factory, on the heap.
class HeapDocument : public Document {
public:
    Element* CreateElementNS(std::string_view uri, std::string_view name) override {
        return new Element(uri, name, this);
    }
};

// Depth.

void AddDeep(GeneratedStream& stream) { stream.Add("<a>", kMillion).Add("</a>", kMillion); }

TEST(DeepAndWideHostile, AMillionLevelsAreLoadedWalkedAndDestroyed) {
    InSmallStack([] {
        for (const bool namespaces : {true, false}) {
            GeneratedStream stream;
            AddDeep(stream);
            Document document;
            Load(document, stream, namespaces);
            EXPECT_EQ(CountBelow(document), kMillion);
        }
    });
}

TEST(DeepAndWideHostile, AMillionLevelsOfADerivedDocument) {
    InSmallStack([] {
        GeneratedStream stream;
        AddDeep(stream);
        HeapDocument document;
        Load(document, stream);
        EXPECT_EQ(CountBelow(document), kMillion);
    });
}

TEST(DeepAndWideHostile, AMillionLevelsAreQueried) {
    InSmallStack([] {
        GeneratedStream stream;
        stream.Add("<a>", kMillion - 1).Add("<b id='i'>t</b>").Add("</a>", kMillion - 1);
        Document document;
        Load(document, stream);
        EXPECT_EQ(document.GetElementsByTagName("a").Length(), 999'999U);
        Element* const deepest = document.GetElementById("i");
        ASSERT_NE(deepest, nullptr);
        EXPECT_EQ(document.FindById("i"), deepest);
        EXPECT_EQ(document.GetElementsByTagName("b").Item(0), deepest);
        EXPECT_TRUE(document.DocumentElement()->IsParentOf(deepest));
        EXPECT_EQ(document.DocumentElement()->TextContent(), "t");
        document.DocumentElement()->Normalize();
        EXPECT_EQ(deepest->ChildNodes().Length(), 1U);
    });
}

TEST(DeepAndWideHostile, AMillionLevelsAreCopied) {
    InSmallStack([] {
        GeneratedStream stream;
        AddDeep(stream);
        Document document;
        Load(document, stream);
        const NodePtr copy(document.DocumentElement()->CloneTree());
        EXPECT_EQ(CountBelow(*copy), kMillion - 1);
        const NodePtr shallow(document.DocumentElement()->CloneNode(true));
        EXPECT_FALSE(shallow->HasChildNodes());
        Document other;
        const NodePtr imported(other.ImportNode(*document.DocumentElement(), true));
        EXPECT_EQ(CountBelow(*imported), kMillion - 1);
    });
}

TEST(DeepAndWideHostile, AMillionLevelsAreWritten) {
    InSmallStack([] {
        GeneratedStream stream;
        AddDeep(stream);
        Document document;
        Load(document, stream);
        const std::string start = R"(<?xml version="1.0" encoding="UTF-8"?>)";
        EXPECT_EQ(LengthWritten(document),
                  static_cast<long>(start.size()) + (kMillion - 1) * 7 + 4);
    });
}

TEST(DeepAndWideHostile, AMillionLevelsAreBuiltAndOutliveTheirDocument) {
    InSmallStack([] {
        auto document = std::make_unique<Document>("", "a", nullptr, nullptr);
        Node* deepest = document->DocumentElement();
        for (long i = 1; i < kMillion; ++i)
            deepest = deepest->AppendChild(document->CreateElement("a"));
        const NodePtr root(document->RemoveChild(document->DocumentElement()));
        document.reset();
        EXPECT_EQ(CountBelow(*root), kMillion - 1);
    });
}

// Fragments one above the other: each is appended with all that it has.
TEST(DeepAndWideHostile, AMillionLevelsBuiltFromBelow) {
    InSmallStack([] {
        Document document;
        NodePtr top(document.CreateElement("a"));
        for (long i = 1; i < kMillion; ++i) {
            NodePtr next(document.CreateElement("a"));
            next->AppendChild(top.release());
            top = std::move(next);
        }
        EXPECT_EQ(CountBelow(*top), kMillion - 1);
    });
}

// Each element is in an attribute of the one above.
TEST(DeepAndWideHostile, ManyLevelsInAttributesAreCopied) {
    InSmallStack([] {
        constexpr long kCount = 100'000;
        Document document("", "a", nullptr, nullptr);
        Element* deepest = document.DocumentElement();
        for (long i = 1; i < kCount; ++i) {
            deepest->SetAttribute("b", "1");
            Node* const attribute = deepest->GetAttributeNode("b");
            deepest = static_cast<Element*>(attribute->AppendChild(document.CreateElement("a")));
        }
        Document other;
        const NodePtr clone(document.DocumentElement()->CloneTree());
        const NodePtr imported(other.ImportNode(*clone, true));
        const NodePtr whole(document.CloneTree());
        for (const Node* top : {clone.get(), imported.get(), whole->FirstChild()}) {
            long count = 1;
            for (const Node* at = top; at->HasAttributes(); ++count)
                at = const_cast<Node*>(at)->Attributes()->Item(0)->LastChild();
            EXPECT_EQ(count, kCount);
        }
    });
}

// Width.

TEST(DeepAndWideHostile, AMillionSiblingsAreLoadedWalkedAndQueried) {
    InSmallStack([] {
        for (const bool namespaces : {true, false}) {
            GeneratedStream stream;
            stream.Add("<r>").Add("<a/>", kMillion - 1).Add("<b id='i'/></r>");
            Document document;
            Load(document, stream, namespaces);
            EXPECT_EQ(CountBelow(document), kMillion + 1);
            const Element& root = *document.DocumentElement();
            EXPECT_EQ(root.ChildNodes().Length(), 1'000'000U);
            EXPECT_EQ(document.FindById("i"), root.LastChild());
            EXPECT_EQ(document.GetElementsByTagName("a").Length(), 999'999U);
        }
    });
}

TEST(DeepAndWideHostile, LoopsByIndexOverAMillionSiblings) {
    InSmallStack([] {
        GeneratedStream stream;
        stream.Add("<r>").Add("<a/>", kMillion).Add("</r>");
        Document document;
        Load(document, stream);
        const Dom::NodeList& children = document.DocumentElement()->ChildNodes();
        const Dom::NodeList named = document.GetElementsByTagName("a");
        const Node* expected = document.DocumentElement()->FirstChild();
        bool isSame = true;
        for (std::size_t i = 0; i < 1'000'000U; ++i) {
            isSame = isSame && children.Item(i) == expected && named.Item(i) == expected;
            expected = expected->NextSibling();
        }
        EXPECT_TRUE(isSame);
        EXPECT_EQ(children.Item(1'000'000U), nullptr);
        EXPECT_EQ(named.Item(1'000'000U), nullptr);
    });
}

// Counts the nodes below, with one loop by index in another.
std::size_t CountByIndex(const Node& node) {
    std::size_t count = 0;
    for (std::size_t i = 0; i < node.ChildNodes().Length(); ++i)
        count += 1 + CountByIndex(*node.ChildNodes().Item(i));
    return count;
}

TEST(DeepAndWideHostile, LoopsByIndexWithinLoops) {
    constexpr long kCount = 50'000;
    const std::string wide = "<b><c/><d><e/><e><f><g/></f></e></d></b>";
    GeneratedStream stream;
    stream.Add("<r><r>").Add(wide, kCount).Add("</r><r>").Add(wide, kCount).Add("</r><r>");
    stream.Add(wide, kCount).Add("</r><r>").Add(wide, kCount).Add("</r><r>").Add(wide, kCount);
    stream.Add("</r></r>");
    Document document;
    Load(document, stream);
    EXPECT_EQ(CountByIndex(document), 5 * 7 * static_cast<std::size_t>(kCount) + 6);
}

// What is below an attribute is made when it is asked for; the tree does not change by that.
TEST(DeepAndWideHostile, ALoopByIndexLooksIntoAttributes) {
    constexpr long kCount = 100'000;
    GeneratedStream stream;
    stream.Add("<r>").Add("<a b='1'/>", kCount).Add("</r>");
    Document document;
    Load(document, stream);
    const Dom::NodeList named = document.GetElementsByTagName("a");
    const Dom::NodeList& children = document.DocumentElement()->ChildNodes();
    long count = 0;
    for (std::size_t i = 0; i < named.Length(); ++i) {
        const Node& text = *named.Item(i)->Attributes()->Item(0)->FirstChild();
        count += text.NodeValue() == "1" && children.Item(i) == named.Item(i) ? 1 : 0;
    }
    EXPECT_EQ(count, kCount);
}

TEST(DeepAndWideHostile, AMillionSiblingsAreEditedAtBothEnds) {
    InSmallStack([] {
        Document document("", "r", nullptr, nullptr);
        Element& root = *document.DocumentElement();
        for (long i = 0; i < kMillion; ++i) {
            Element* const child = document.CreateElement("a");
            if (i % 2 == 0) {
                root.AppendChild(child);
            } else {
                root.InsertBefore(child, root.FirstChild());
            }
        }
        EXPECT_EQ(root.ChildNodes().Length(), 1'000'000U);
        for (long i = 0; i < kMillion; ++i)
            NodePtr(root.RemoveChild(i % 2 == 0 ? root.FirstChild() : root.LastChild()));
        EXPECT_FALSE(root.HasChildNodes());
    });
}

// Each of the nodes before an inserted one keeps its old link.
TEST(DeepAndWideHostile, ManyInsertionsInTheMiddle) {
    InSmallStack([] {
        constexpr long kCount = 200'000;
        Document document("", "r", nullptr, nullptr);
        Element& root = *document.DocumentElement();
        for (long i = 0; i < kCount; ++i)
            root.AppendChild(document.CreateElement("a"));
        Node* place = root.LastChild();
        for (long i = 1; i < kCount; ++i) {
            Node* const before = place->PreviousSibling();
            root.InsertBefore(document.CreateElement("b"), place);
            place = before;
        }
        EXPECT_EQ(root.ChildNodes().Length(), static_cast<std::size_t>(kCount));
        long count = 0;
        for (const Node& child : root.Children())
            count += child.NodeType() == Dom::DOMNodeType::ELEMENT_NODE ? 1 : 0;
        EXPECT_EQ(count, 2 * kCount - 1);
    });
}

// All of the nodes before the last one keep a link to it.
TEST(DeepAndWideHostile, ManyInsertionsBeforeOneChild) {
    InSmallStack([] {
        constexpr std::size_t kCount = 200'000;
        for (const bool joined : {false, true}) {
            Document document("", "r", nullptr, nullptr);
            Element& root = *document.DocumentElement();
            root.AppendChild(document.CreateTextNode("x"));
            Node* const last = root.AppendChild(document.CreateElement("a"));
            for (std::size_t i = 0; i < kCount; ++i)
                root.InsertBefore(document.CreateTextNode("x"), last);
            EXPECT_EQ(root.ChildNodes().Length(), 2U);
            EXPECT_EQ(root.TextContent().length(), kCount + 1);
            if (joined) root.Normalize();
            NodePtr(root.RemoveChild(last));
            EXPECT_EQ(root.TextContent().length(), kCount + 1);
        }
    });
}

// Their neighbours lead to the nodes that were replaced, which come back one after the other.
TEST(DeepAndWideHostile, ManyReplacedChildrenComeBack) {
    InSmallStack([] {
        constexpr std::size_t kCount = 100'000;
        Document document("", "r", nullptr, nullptr);
        Element& root = *document.DocumentElement();
        for (std::size_t i = 0; i < kCount; ++i)
            root.AppendChild(document.CreateElement("a"));
        std::vector<NodePtr> replaced;
        for (Node& child : root.Children())
            replaced.emplace_back(root.ReplaceChild(document.CreateElement("b"), &child));
        for (NodePtr& child : replaced)
            root.AppendChild(child.release());
        std::size_t count = 0;
        for (const Node& child : root.Children())
            if (child.NodeName() == "a") ++count;
        EXPECT_EQ(count, kCount);
    });
}

TEST(DeepAndWideHostile, ATextOfAMillionPiecesIsJoined) {
    InSmallStack([] {
        Document document("", "r", nullptr, nullptr);
        Element& root = *document.DocumentElement();
        for (long i = 0; i < kMillion; ++i)
            root.AppendChild(document.CreateTextNode("x"));
        EXPECT_EQ(root.TextContent().length(), 1'000'000U);
        root.Normalize();
        ASSERT_EQ(root.ChildNodes().Length(), 1U);
        EXPECT_EQ(root.FirstChild()->NodeValue().length(), 1'000'000U);
    });
}

TEST(DeepAndWideHostile, ATextGrowsByAMillionPieces) {
    Document document;
    const std::unique_ptr<Dom::Text> text(document.CreateTextNode(""));
    for (long i = 0; i < kMillion; ++i)
        text->AppendData("0123456789");
    EXPECT_EQ(text->Length(), 10'000'000U);
    text->AppendData(text->Data());
    EXPECT_EQ(text->SubstringData(9'999'995, 10), "5678901234");
}

TEST(DeepAndWideHostile, AMillionCommentsAroundTheRoot) {
    InSmallStack([] {
        GeneratedStream stream;
        stream.Add("<!---->", kMillion).Add("<a/>").Add("<?p?>", kMillion);
        Document document;
        Load(document, stream);
        EXPECT_EQ(document.ChildNodes().Length(), 2'000'001U);
        EXPECT_EQ(document.DocumentElement()->NodeName(), "a");
    });
}

// Attributes.

constexpr long kAttributes = 100'000;

std::string NameOf(long i) { return "n" + std::to_string(i); }

void AddAttributes(GeneratedStream& stream) {
    stream.Add("<r")
        .Add([](long i) { return " " + NameOf(i) + "='" + std::to_string(i) + "'"; }, kAttributes)
        .Add("/>");
}

TEST(DeepAndWideHostile, AHundredThousandAttributesAreLoadedAndFound) {
    InSmallStack([] {
        for (const bool namespaces : {true, false}) {
            GeneratedStream stream;
            AddAttributes(stream);
            Document document;
            Load(document, stream, namespaces);
            Element& root = *document.DocumentElement();
            EXPECT_EQ(root.AttributeViews().size(), 100'000U);
            bool isSame = true;
            for (long i = 0; i < kAttributes; ++i)
                isSame = isSame && root.GetAttribute(NameOf(i)).str() == std::to_string(i);
            EXPECT_TRUE(isSame);
            EXPECT_EQ(root.GetAttribute("n"), "");
            const Dom::NamedNodeMap& map = *root.Attributes();
            ASSERT_EQ(map.Length(), 100'000U);
            for (long i = 0; i < kAttributes; ++i) {
                const Node* const item = map.Item(static_cast<std::size_t>(i));
                isSame = isSame && item->NodeName().str() == NameOf(i) &&
                         root.GetAttributeNode(NameOf(i)) == item;
            }
            EXPECT_TRUE(isSame);
            EXPECT_EQ(map.Item(100'000U), nullptr);
        }
    });
}

TEST(DeepAndWideHostile, AHundredThousandAttributesAreCopiedAndWritten) {
    InSmallStack([] {
        GeneratedStream stream;
        AddAttributes(stream);
        Document document;
        Load(document, stream);
        const NodePtr clone(document.DocumentElement()->CloneNode(false));
        ASSERT_EQ(clone->Attributes()->Length(), 100'000U);
        EXPECT_EQ(static_cast<Element&>(*clone).GetAttribute(NameOf(99'999)), "99999");
        EXPECT_GT(LengthWritten(*clone), kAttributes * 10);
    });
}

TEST(DeepAndWideHostile, AHundredThousandAttributesAreSetAndReplaced) {
    InSmallStack([] {
        Document document("", "r", nullptr, nullptr);
        Element& root = *document.DocumentElement();
        for (const char* const value : {"1", "2"}) {
            for (long i = 0; i < kAttributes; ++i) {
                root.SetAttribute(NameOf(i), value);
                root.SetAttributeNS("urn:u", "p:" + NameOf(i), value);
            }
        }
        EXPECT_EQ(root.Attributes()->Length(), 200'000U);
        EXPECT_EQ(root.GetAttribute(NameOf(50'000)), "2");
        EXPECT_EQ(root.GetAttributeNS("urn:u", NameOf(50'000)), "2");
        for (long i = 0; i < 50; ++i) {
            root.RemoveAttributeNS("urn:u", NameOf(kAttributes - 1 - i));
            root.RemoveAttribute(NameOf(i));
        }
        EXPECT_EQ(root.Attributes()->Length(), 199'900U);
        EXPECT_EQ(root.GetAttribute(NameOf(50)), "2");
        EXPECT_FALSE(root.HasAttribute(NameOf(49)));
    });
}

// Names.

TEST(DeepAndWideHostile, ManyDifferentNames) {
    InSmallStack([] {
        constexpr long kCount = 300'000;
        GeneratedStream stream;
        stream.Add("<r>").Add([](long i) { return "<" + NameOf(i) + "/>"; }, kCount).Add("</r>");
        Document document;
        Load(document, stream);
        EXPECT_EQ(document.DocumentElement()->LastChild()->NodeName(), "n299999");
        EXPECT_EQ(document.GetElementsByTagName("n299999").Length(), 1U);
    });
}

TEST(DeepAndWideHostile, ANamespaceAtEveryOfManyDepthsIsLoadedAndWritten) {
    InSmallStack([] {
        constexpr long kDepth = 100'000;
        GeneratedStream stream;
        stream.Add([](long i) { return "<p:a xmlns:p='u" + std::to_string(i) + "'>"; }, kDepth)
            .Add("</p:a>", kDepth);
        Document document;
        Load(document, stream);
        EXPECT_EQ(CountBelow(document), kDepth);
        EXPECT_GT(LengthWritten(document), kDepth * 25);
    });
}

}  // namespace
