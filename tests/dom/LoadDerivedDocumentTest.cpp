// SPDX-License-Identifier: MIT
//
// Loading makes all nodes by the document's factory, so that a derived document decides on their
// classes; and a document that decides on nothing gets the tree that Document gets.
#include <espalier/dom.h>
#include <espalier/io/Exception.h>

#include "dom/LoadText.h"
#include "support/PrintAstring.h"
#include "support/RandomDocument.h"
#include "support/Sanitizers.h"
#include "support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace {

using support::Lines;
using support::LoadedTree;
using support::LoadText;

// Notes the calls of its factory with their arguments, and for elements and attributes how many
// elements are in the document already.
class RecordingDocument : public Dom::Document {
public:
    Lines calls;

    Dom::Element* CreateElement(std::string_view name) override {
        Note("CreateElement", name);
        return Document::CreateElement(name);
    }
    Dom::DocumentFragment* CreateDocumentFragment() override {
        calls.emplace_back("CreateDocumentFragment");
        return Document::CreateDocumentFragment();
    }
    Dom::Text* CreateTextNode(std::string_view data) override {
        Note("CreateTextNode", data);
        return Document::CreateTextNode(data);
    }
    Dom::Comment* CreateComment(std::string_view data) override {
        Note("CreateComment", data);
        return Document::CreateComment(data);
    }
    Dom::CDATASection* CreateCDATASection(std::string_view data) override {
        Note("CreateCDATASection", data);
        return Document::CreateCDATASection(data);
    }
    Dom::ProcessingInstruction* CreateProcessingInstruction(std::string_view target,
                                                            std::string_view data) override {
        Note("CreateProcessingInstruction", target, data);
        return Document::CreateProcessingInstruction(target, data);
    }
    Dom::Attr* CreateAttribute(std::string_view name) override {
        Note("CreateAttribute", name);
        return Document::CreateAttribute(name);
    }
    Dom::EntityReference* CreateEntityReference(std::string_view name) override {
        Note("CreateEntityReference", name);
        return Document::CreateEntityReference(name);
    }
    Dom::Element* CreateElementNS(std::string_view namespaceURI,
                                  std::string_view qualifiedName) override {
        Note("CreateElementNS", namespaceURI, qualifiedName);
        return Document::CreateElementNS(namespaceURI, qualifiedName);
    }
    Dom::Attr* CreateAttributeNS(std::string_view namespaceURI,
                                 std::string_view qualifiedName) override {
        Note("CreateAttributeNS", namespaceURI, qualifiedName);
        return Document::CreateAttributeNS(namespaceURI, qualifiedName);
    }

private:
    void Note(const char* function, std::string_view first) {
        calls.push_back(std::string(function) + "(" + std::string(first) + ")");
    }
    void Note(const char* function, std::string_view first, std::string_view second) {
        Note(function, std::string(first) + "," + std::string(second));
    }
};

constexpr char kEverything[] =
    "<?xml version='1.0'?><!--1--><!DOCTYPE p:a [<!ENTITY e 'E'>]><?p 2?>"
    "<p:a xmlns:p='urn:p' x='3' p:y='4&e;5'> t<p:b z=''/>&e;<![CDATA[6]]>"
    "<b><?q 7?> <!--8--></b></p:a><!--9--><?xml-stylesheet 10?>";

TEST(LoadDerivedDocument, WithNamespacesTheFactoryIsCalledInTheOrderOfTheDocument) {
    RecordingDocument document;
    LoadText(document, kEverything);
    EXPECT_EQ(document.calls, (Lines{"CreateComment(1)",
                                     "CreateProcessingInstruction(p,2)",
                                     "CreateElementNS(urn:p,p:a)",
                                     "CreateAttributeNS(,xmlns:p)",
                                     "CreateTextNode(urn:p)",
                                     "CreateAttributeNS(,x)",
                                     "CreateTextNode(3)",
                                     "CreateAttributeNS(urn:p,p:y)",
                                     "CreateTextNode(4)",
                                     "CreateEntityReference(e)",
                                     "CreateTextNode(5)",
                                     "CreateTextNode( t)",
                                     "CreateElementNS(urn:p,p:b)",
                                     "CreateAttributeNS(,z)",
                                     "CreateTextNode()",
                                     "CreateEntityReference(e)",
                                     "CreateCDATASection(6)",
                                     "CreateElementNS(,b)",
                                     "CreateProcessingInstruction(q,7)",
                                     "CreateTextNode( )",
                                     "CreateComment(8)",
                                     "CreateComment(9)",
                                     "CreateProcessingInstruction(xml-stylesheet,10)"}));
}

TEST(LoadDerivedDocument, WithoutNamespacesTheFactoryIsCalledInTheOrderOfTheDocument) {
    RecordingDocument document;
    LoadText(document, kEverything, support::WithoutNamespaces());
    EXPECT_EQ(document.calls, (Lines{"CreateComment(1)",
                                     "CreateProcessingInstruction(p,2)",
                                     "CreateElement(p:a)",
                                     "CreateAttribute(xmlns:p)",
                                     "CreateTextNode(urn:p)",
                                     "CreateAttribute(x)",
                                     "CreateTextNode(3)",
                                     "CreateAttribute(p:y)",
                                     "CreateTextNode(4)",
                                     "CreateEntityReference(e)",
                                     "CreateTextNode(5)",
                                     "CreateTextNode( t)",
                                     "CreateElement(p:b)",
                                     "CreateAttribute(z)",
                                     "CreateTextNode()",
                                     "CreateEntityReference()",
                                     "CreateCDATASection(6)",
                                     "CreateElement(b)",
                                     "CreateComment(8)",
                                     "CreateComment(9)",
                                     "CreateProcessingInstruction(xml-stylesheet,10)"}));
}

TEST(LoadDerivedDocument, AReadyReaderIsReadByTheFactoryToo) {
    support::DocumentReader reader("<r><a x='1'>t</a></r>");
    reader.ReadNodes(2);
    RecordingDocument document;
    document.Load(*reader, "u");
    EXPECT_EQ(document.calls, (Lines{"CreateElementNS(,a)", "CreateAttributeNS(,x)",
                                     "CreateTextNode(1)", "CreateTextNode(t)"}));
}

// Elements are in the tree before their attributes are made, and these are in the element before
// its content is.
class WatchingDocument : public Dom::Document {
public:
    Lines seen;

    Dom::Element* CreateElementNS(std::string_view uri, std::string_view name) override {
        Look("element " + std::string(name));
        return Document::CreateElementNS(uri, name);
    }
    Dom::Attr* CreateAttributeNS(std::string_view uri, std::string_view name) override {
        Look("attribute " + std::string(name));
        return Document::CreateAttributeNS(uri, name);
    }
    Dom::Comment* CreateComment(std::string_view data) override {
        Look("comment");
        return Document::CreateComment(data);
    }

private:
    void Look(const std::string& made) {
        std::string line = made + ":";
        for (const std::string& node : support::TreeBelow(*this))
            line += "[" + node + "]";
        seen.push_back(line);
    }
};

TEST(LoadDerivedDocument, EachNodeIsInTheTreeBeforeTheNextOneIsMade) {
    WatchingDocument document;
    LoadText(document, "<a x='1' y='2'><b/><!--c--></a>");
    EXPECT_EQ(document.seen,
              (Lines{"element a:", "attribute x:[Element a]", R"(attribute y:[Element a x="1"])",
                     R"(element b:[Element a x="1" y="2"])",
                     R"(comment:[Element a x="1" y="2"][  Element b])"}));
}

// An element of a class of its own.
class OwnElement : public Dom::Element {
public:
    using Element::Element;
};

class OwnDocument : public Dom::Document {
public:
    Dom::Element* CreateElement(std::string_view name) override {
        return new OwnElement("", name, this);
    }
    Dom::Element* CreateElementNS(std::string_view uri, std::string_view name) override {
        return new OwnElement(uri, name, this);
    }
};

TEST(LoadDerivedDocument, ElementsMayBeOfAnotherClass) {
    for (const support::ReaderSettings& settings :
         {support::WithNamespaces(), support::WithoutNamespaces()}) {
        OwnDocument document;
        LoadText(document, "<a x='1'><b>t</b></a>", settings);
        EXPECT_NE(dynamic_cast<OwnElement*>(document.DocumentElement()), nullptr);
        EXPECT_NE(dynamic_cast<OwnElement*>(document.DocumentElement()->FirstChild()), nullptr);
        EXPECT_EQ(document.DocumentElement()->GetAttribute("x"), "1");
        EXPECT_EQ(support::WrongLink(document), "");
    }
}

// A factory that throws ends the load with what has been read.
class RefusingDocument : public Dom::Document {
public:
    Dom::Text* CreateTextNode(std::string_view data) override {
        if (data == "no") throw 7;
        return Document::CreateTextNode(data);
    }
};

TEST(LoadDerivedDocument, WhatAFactoryThrowsPasses) {
    for (const char* const text : {"<a><b/>no<c/></a>", "<a><b/><c x='no'/></a>"}) {
        SCOPED_TRACE(text);
        RefusingDocument document;
        EXPECT_THROW(LoadText(document, text), int);
        ASSERT_NE(document.DocumentElement(), nullptr);
        EXPECT_EQ(document.DocumentElement()->FirstChild()->NodeName(), "b");
        EXPECT_EQ(support::WrongLink(document), "");
    }
}

// The same trees.

class PlainlyDerivedDocument : public Dom::Document {};

// Compares the trees, also where both fail.
void ExpectSameTree(std::string_view text) {
    for (const bool namespaces : {true, false}) {
        for (const auto entities :
             {Xml::XmlEntityHandling::ExpandNothing, Xml::XmlEntityHandling::ExpandCharEntities,
              Xml::XmlEntityHandling::ExpandEntities}) {
            support::ReaderSettings settings;
            settings.namespaces = namespaces;
            settings.entities = entities;
            ASSERT_EQ(LoadedTree<Dom::Document>(text, settings),
                      LoadedTree<PlainlyDerivedDocument>(text, settings))
                << text;
        }
    }
}

std::vector<std::string> PartsOfAllAttributes(Dom::Document& document) {
    std::vector<std::string> parts;
    for (Dom::Node* node = document.FirstChild(); node != nullptr;) {
        if (node->NodeType() == Dom::DOMNodeType::ELEMENT_NODE) {
            for (Dom::Node* const attribute : *node->Attributes())
                parts.push_back(support::PartsOf(*static_cast<Dom::Attr*>(attribute)));
        }
        Dom::Node* next = node->FirstChild();
        while (next == nullptr && node != nullptr) {
            next = node->NextSibling();
            if (next == nullptr) node = node->ParentNode();
        }
        node = next;
    }
    return parts;
}

TEST(LoadDerivedDocument, ThatOverridesNothingGetsTheSameTree) {
    const char* const kDocuments[] = {
        kEverything,
        "<a/>",
        "",
        "<a/><b/>",
        "<a><b></a>",
        "<a>\r\n<b x='\r\n\t'/> \r</a>",
        "<!DOCTYPE a [<!ENTITY e '<b>x</b>'>]><a>1&e;2</a>",
        "<!DOCTYPE a [<!ENTITY e '&f;'><!ENTITY f 'F'>]><a x='&e;'>1&e;2</a>",
        "<?xml version='1.0' encoding='windows-1252'?><a x='\x80'>\x80</a>",
        "<a xml:space='preserve'> <b xml:space='default'> </b> </a>",
        "<a x='1' y='2' x1='3' x2='4' x3='5' x4='6' x5='7' x6='8' x7='9' x8='10'/>",
    };
    for (const char* const text : kDocuments)
        ExpectSameTree(text);
}

TEST(LoadDerivedDocument, SamplesGiveTheSameTreeAndTheSameAttributes) {
    int count = 0;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(ESPALIER_SAMPLES)) {
        const std::string extension = entry.path().extension().string();
        if (extension != ".xml" && extension != ".svg" && extension != ".xhtml") continue;
        SCOPED_TRACE(entry.path().string());
        const std::string text = support::TemporaryDirectory::Content(entry.path().string());
        ExpectSameTree(text);
        ++count;
    }
    EXPECT_GT(count, 20);
    Dom::Document direct;
    PlainlyDerivedDocument derived;
    for (const support::ReaderSettings& settings :
         {support::WithNamespaces(), support::WithoutNamespaces()}) {
        LoadText(direct, kEverything, settings);
        LoadText(derived, kEverything, settings);
        EXPECT_EQ(PartsOfAllAttributes(direct), PartsOfAllAttributes(derived));
        EXPECT_EQ(PartsOfAllAttributes(direct).size(), 4U);
    }
}

TEST(LoadDerivedDocument, RandomDocumentsGiveTheSameTree) {
    constexpr int kCount = support::kAddressSanitizer ? 100 : 400;
    support::RandomDocument random(43);
    int whole = 0;
    for (int i = 0; i < kCount && !HasFailure(); ++i) {
        std::string text = random.Write();
        if (i % 4 == 3) random.Mutate(text);
        ExpectSameTree(text);
        const Lines tree = LoadedTree(text);
        if (!tree.empty() && !tree.back().starts_with("error ")) ++whole;
    }
    EXPECT_GT(whole, kCount / 3);
}

}  // namespace
