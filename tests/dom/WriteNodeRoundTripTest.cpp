// SPDX-License-Identifier: MIT
//
// What a tree is written as gives the same tree when it is loaded.
#include <espalier/dom.h>
#include <espalier/encoding/UnicodeEncodings.h>

#include "dom/LoadText.h"
#include "support/MemoryWriter.h"
#include "support/PrintAstring.h"
#include "support/RandomDocument.h"
#include "support/Sanitizers.h"
#include "support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <random>
#include <string>
#include <string_view>

namespace {

using Dom::Document;
using Dom::Node;
using support::ContentBelow;
using support::Lines;
using support::LoadText;
using support::ReaderSettings;

std::string Written(const Node& node) {
    support::MemoryWriter writer;
    writer->SetNewLineHandling(Xml::NewLineHandling::Entitize);  // breaks stay what they are
    WriteNode(node, *writer);
    return writer.Text();
}

// Expects that what the document is written as is loaded as the same, and written as the same.
void ExpectSameWhenWritten(const Document& document, const ReaderSettings& settings) {
    const std::string text = Written(document);
    Document again;
    ASSERT_NO_THROW(LoadText(again, text, settings)) << text;
    EXPECT_EQ(ContentBelow(again), ContentBelow(document)) << text;
    EXPECT_EQ(Written(again), text);
}

// The prefix of an element or attribute that no element declares has no namespace, though in a tree
// that was loaded the default namespace of its element has one.
bool HasUndeclaredPrefix(const Document& document) {
    for (const std::string& line : support::TreeBelow(document)) {
        const std::size_t start = line.find("Element ");
        if (start == std::string::npos || line.find_first_not_of(' ') != start) continue;
        const std::string name = line.substr(start + 8, line.find(' ', start + 8) - start - 8);
        if (name.find(':') == std::string::npos) continue;
        if (line.compare(start + 8 + name.size(), 2, " {") != 0) return true;
    }
    return false;
}

// As those that were read without namespaces are, which cannot be written.
bool HasReferenceWithoutName(const Document& document) {
    for (const std::string& line : support::TreeBelow(document)) {
        if (line.ends_with("EntityReference ")) return true;
    }
    return false;
}

TEST(WriteNodeRoundTrip, SamplesStayWhatTheyAre) {
    int count = 0;
    for (const char* const folder : {ESPALIER_SAMPLES, ESPALIER_SAMPLES "/encodings"}) {
        for (const auto& entry : std::filesystem::directory_iterator(folder)) {
            const std::string extension = entry.path().extension().string();
            if (extension != ".xml" && extension != ".svg" && extension != ".xhtml") continue;
            SCOPED_TRACE(entry.path().string());
            const std::string text = support::TemporaryDirectory::Content(entry.path().string());
            for (const ReaderSettings& settings :
                 {support::WithNamespaces(), support::WithoutNamespaces()}) {
                Document document;
                LoadText(document, text, settings);
                if (HasReferenceWithoutName(document)) continue;
                ExpectSameWhenWritten(document, settings);
                ++count;
            }
        }
    }
    EXPECT_GE(count, 26);
}

// With namespaces: without, white space before a reference is dropped, and the writer makes
// references of quotation marks.
TEST(WriteNodeRoundTrip, RandomDocumentsStayWhatTheyAre) {
    constexpr int kCount = support::kAddressSanitizer ? 300 : 1500;
    support::RandomDocument random(41);
    int written = 0;
    for (int i = 0; i < kCount && !HasFailure(); ++i) {
        const std::string text = random.Write();
        ReaderSettings settings;
        settings.normalization = i % 2 == 0;
        Document document;
        try {
            LoadText(document, text, settings);
        } catch (const Xml::Exception&) {
            continue;  // two attributes of one name
        }
        if (HasUndeclaredPrefix(document)) continue;
        SCOPED_TRACE(text);
        ExpectSameWhenWritten(document, settings);
        ++written;
    }
    if (!HasFailure()) {
        EXPECT_GT(written, kCount / 4);
    }
}

// Trees that are put together at random.
class RandomTree {
public:
    explicit RandomTree(unsigned seed) : random_(seed) {}

    void Fill(Document& document) {
        document.AppendChild(document.CreateComment(Text()));
        Node* const root = document.AppendChild(Element(document));
        for (std::size_t i = Below(40); i > 0; --i)
            Insert(document, *root);
        document.AppendChild(document.CreateProcessingInstruction("p", "d" + Text()));
    }

private:
    std::size_t Below(std::size_t limit) {
        return std::uniform_int_distribution<std::size_t>(0, limit - 1)(random_);
    }
    std::string Text() {
        constexpr const char* kTexts[] = {"",   "text",     "<&>\"'", "]]>", "--", "-",
                                          "?>", "\xC3\xA4", "a\nb",   "\t",  "x\r"};
        return kTexts[Below(std::size(kTexts))];
    }
    Dom::Element* Element(Document& document) {
        constexpr const char* kNames[] = {"a", "b", "p:a", "q:b"};
        constexpr const char* kUris[] = {"", "urn:1", "urn:2"};
        const std::string name = kNames[Below(4)];
        const bool isPrefixed = name.find(':') != std::string::npos;
        Dom::Element* const element =
            document.CreateElementNS(kUris[isPrefixed ? 1 + Below(2) : Below(3)], name);
        for (std::size_t i = Below(4); i > 0; --i) {
            switch (Below(5)) {
            case 0: element->SetAttributeNS("urn:1", "p:x", Text()); break;
            case 1: element->SetAttributeNS("urn:2", "p:y", Text()); break;
            case 2: element->SetAttributeNS("urn:3", "z", Text()); break;
            case 3: element->SetAttributeNS("urn:2", "q:x", Text()); break;
            default: element->SetAttribute("x", Text()); break;
            }
        }
        return element;
    }
    Node* Made(Document& document) {
        switch (Below(8)) {
        case 0: return document.CreateTextNode(Text());
        case 1: return document.CreateCDATASection(Text());
        case 2: return document.CreateEntityReference("e");
        default: return Element(document);
        }
    }
    // Puts a node somewhere below an element.
    void Insert(Document& document, Node& root) {
        Node* parent = &root;
        while (Below(3) != 0 && parent->LastChild() != nullptr &&
               parent->LastChild()->NodeType() == Dom::DOMNodeType::ELEMENT_NODE) {
            parent = parent->LastChild();
        }
        Node* const node = Made(document);
        switch (Below(3)) {
        case 0: parent->InsertBefore(node, parent->LastChild()); break;
        case 1: parent->InsertChild(node, parent->FirstChild()); break;
        default: parent->AppendChild(node); break;
        }
    }

    std::mt19937 random_;
};

// What a document tells without declarations, and without the prefixes, which may differ.
Lines MeaningOf(const Document& document) {
    Lines meaning;
    std::size_t depth = 0;
    const Node* node = &document;
    const auto tell = [&](const std::string& text) {
        meaning.push_back(std::to_string(depth) + " " + text);
    };
    for (const std::string& line : ContentBelow(document)) {
        if (line.find("Element ") == std::string::npos) meaning.push_back(line);
    }
    for (;;) {
        const bool hasChild = !node->Children().empty();
        if (hasChild) {
            node = &*node->Children().begin();
            ++depth;
        } else {
            for (;;) {
                if (node == &document) return meaning;
                Dom::ChildRange::Iterator next(const_cast<Node*>(node));
                ++next;
                if (next != Dom::ChildRange::Iterator()) {
                    node = &*next;
                    break;
                }
                node = node->ParentNode();
                --depth;
            }
        }
        if (node->NodeType() != Dom::DOMNodeType::ELEMENT_NODE) continue;
        const auto& element = static_cast<const Dom::Element&>(*node);
        tell("{" + element.NamespaceURI().str() + "}" + element.LocalName().str());
        Lines attributes;
        for (const Dom::AttributeView attribute : element.AttributeViews()) {
            if (attribute.Name() == "xmlns" || attribute.Prefix() == "xmlns") continue;
            attributes.push_back("{" + attribute.NamespaceURI().str() + "}" +
                                 std::string(attribute.LocalName()) + "=" +
                                 std::string(attribute.Value()));
        }
        std::sort(attributes.begin(), attributes.end());
        for (const std::string& attribute : attributes)
            tell(attribute);
    }
}

TEST(WriteNodeRoundTrip, TreesMadeByHandMeanTheSame) {
    constexpr int kCount = support::kAddressSanitizer ? 100 : 400;
    std::size_t lines = 0;
    for (unsigned seed = 0; seed < unsigned{kCount} && !HasFailure(); ++seed) {
        SCOPED_TRACE(seed);
        Document document;
        RandomTree(seed).Fill(document);
        const std::string text = Written(document);
        Document first;
        ASSERT_NO_THROW(LoadText(first, text)) << text;
        Document second;
        LoadText(second, Written(first));
        EXPECT_EQ(support::TreeBelow(first), support::TreeBelow(second)) << text;
        // Comments and instructions are taken apart, and a CR in a CDATA section is a CR.
        Lines expected = MeaningOf(document);
        Lines loaded = MeaningOf(first);
        for (Lines* const meaning : {&expected, &loaded}) {
            std::erase_if(*meaning, [](const std::string& line) {
                return line.starts_with("Comment") || line.starts_with("ProcessingInstruction");
            });
        }
        EXPECT_EQ(loaded, expected) << text;
        lines += loaded.size();
    }
    EXPECT_GT(lines, 10U * kCount);
}

}  // namespace
