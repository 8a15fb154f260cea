// SPDX-License-Identifier: MIT
//
// References to entities in texts and in attributes, read in both ways and by readers that expand
// them.
#include <espalier/dom.h>

#include "dom/ExpectDomError.h"
#include "dom/LoadText.h"
#include "support/PrintAstring.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using support::Lines;
using support::LoadedTree;
using support::LoadText;
using support::PartsOf;
using support::ReaderSettings;
using Xml::XmlEntityHandling;

constexpr char kTypes[] =
    "<!DOCTYPE a [<!ENTITY t 'T'><!ENTITY m 'x<b/>y'><!ENTITY n '1&t;2'>"
    "<!ENTITY o '<c>&m;</c>'>]>";

std::string WithTypes(const std::string& document) { return kTypes + document; }

ReaderSettings Settings(bool namespaces, XmlEntityHandling entities) {
    ReaderSettings settings;
    settings.namespaces = namespaces;
    settings.entities = entities;
    return settings;
}

// In content.

TEST(LoadEntities, WithNamespacesAReferenceIsNamedAsItsEntity) {
    EXPECT_EQ(LoadedTree(WithTypes("<a>1&t;2&m;&lt;</a>")),
              (Lines{"Element a", "  Text \"1\"", "  EntityReference t", "  Text \"2\"",
                     "  EntityReference m", "  Text \"<\""}));
}

TEST(LoadEntities, DeliberateWithoutNamespacesAReferenceIsNamedAsItsValueWhichIsEmpty) {
    EXPECT_EQ(LoadedTree(WithTypes("<a>1&t;2&m;</a>"), support::WithoutNamespaces()),
              (Lines{"Element a", "  Text \"1\"", "  EntityReference ", "  Text \"2\"",
                     "  EntityReference "}));
}

TEST(LoadEntities, AReferenceToWhatIsDeclaredNowhereIsAReferenceToo) {
    EXPECT_EQ(LoadedTree("<a>&nbsp;</a>"), (Lines{"Element a", "  EntityReference nbsp"}));
}

TEST(LoadEntities, AReferenceHasNoChildrenAndNoValue) {
    Dom::Document document;
    LoadText(document, WithTypes("<a>&t;</a>"));
    const Dom::Node& reference = *document.DocumentElement()->FirstChild();
    EXPECT_EQ(reference.NodeType(), Dom::DOMNodeType::ENTITY_REFERENCE_NODE);
    EXPECT_FALSE(reference.HasChildNodes());
    EXPECT_EQ(reference.NodeValue(), "");
}

// What the text of an entity becomes when a reader expands it.

TEST(LoadEntities, ExpandedTextIsText) {
    for (const bool namespaces : {true, false}) {
        EXPECT_EQ(LoadedTree(WithTypes("<a>1&t;2&n;</a>"),
                             Settings(namespaces, XmlEntityHandling::ExpandEntities)),
                  (Lines{"Element a", "  Text \"1T21T2\""}));
    }
}

TEST(LoadEntities, DeliberateWithNamespacesTheEndOfAnExpandedEntityIsRefused) {
    for (const char* const content : {"1&m;2", "1&m;<d/>"}) {
        Dom::Document document;
        EXPECT_DOM_ERROR(LoadText(document, WithTypes("<a>" + std::string(content) + "</a>"),
                                  Settings(true, XmlEntityHandling::ExpandEntities)),
                         "3 Document not well-formed");
        EXPECT_EQ(support::ContentBelow(document),
                  (Lines{"Element a", "  Text \"1x\"", "  Element b", "  Text \"y\""}));
        EXPECT_EQ(support::WrongLink(document), "");
    }
}

TEST(LoadEntities, WithoutNamespacesTheEndOfAnExpandedEntityIsPassedOver) {
    Dom::Document document;
    LoadText(document, WithTypes("<a>1&m;2&o;</a>"),
             Settings(false, XmlEntityHandling::ExpandEntities));
    EXPECT_EQ(support::ContentBelow(document),
              (Lines{"Element a", "  Text \"1x\"", "  Element b", "  Text \"y2\"", "  Element c",
                     "    Text \"x\"", "    Element b", "    Text \"y\""}));
}

// In attributes.

TEST(LoadEntities, WithNamespacesAnAttributeHasTheReferenceInItsText) {
    Dom::Document document;
    LoadText(document, WithTypes("<a x='1&t;2' y='&t;' z='&t;&m;' p='&lt;&t;&amp;'/>"));
    const Dom::Element& root = *document.DocumentElement();
    const struct {
        const char* name;
        const char* parts;
    } kCases[] = {
        {"x", R"(value "1&t;2" node "1&t;2" Text "1&t;2")"},
        {"y", R"(value "&t;" node "&t;" Text "&t;")"},
        {"z", R"(value "&t;&m;" node "&t;&m;" Text "&t;&m;")"},
        {"p", R"(value "<&t;&" node "<&t;&" Text "<&t;&")"},
    };
    for (const auto& c : kCases)
        EXPECT_EQ(PartsOf(*root.GetAttributeNode(c.name)), c.parts) << c.name;
}

TEST(LoadEntities, WithoutNamespacesAnAttributeHasTheReferenceAsAChildThatAddsNothing) {
    Dom::Document document;
    LoadText(document, WithTypes("<a x='1&t;2' y='&t;' z='&t;&m;' p='&lt;&t;&amp;'/>"),
             support::WithoutNamespaces());
    const Dom::Element& root = *document.DocumentElement();
    const struct {
        const char* name;
        const char* parts;
    } kCases[] = {
        {"x", R"(value "12" node "" Text "1" EntityReference t Text "2")"},
        {"y", R"(value "" node "" EntityReference t)"},
        {"z", R"(value "" node "" EntityReference t EntityReference m)"},
        {"p", R"(value "<&" node "" Text "<" EntityReference t Text "&")"},
    };
    for (const auto& c : kCases) {
        EXPECT_EQ(PartsOf(*root.GetAttributeNode(c.name)), c.parts) << c.name;
    }
    EXPECT_EQ(root.GetAttribute("x"), "12");
}

TEST(LoadEntities, AReaderThatExpandsGivesAttributesTheirText) {
    for (const bool namespaces : {true, false}) {
        Dom::Document document;
        LoadText(document, WithTypes("<a x='1&n;2' y='&t;'/>"),
                 Settings(namespaces, XmlEntityHandling::ExpandEntities));
        const Dom::Element& root = *document.DocumentElement();
        EXPECT_EQ(root.GetAttribute("x"), "11T22");
        EXPECT_EQ(root.GetAttribute("y"), "T");
        EXPECT_EQ(PartsOf(*root.GetAttributeNode("y")),
                  namespaces ? R"(value "T" node "T" Text "T")" : R"(value "T" node "" Text "T")");
    }
}

TEST(LoadEntities, AReaderThatExpandsNothingLeavesReferencesInTexts) {
    EXPECT_EQ(
        LoadedTree(WithTypes("<a>1&t;2</a>"), Settings(true, XmlEntityHandling::ExpandNothing)),
        (Lines{"Element a", "  Text \"1&t;2\""}));
}

// An attribute with a reference is searched for while the others are read.
TEST(LoadEntities, AttributesBehindAReferenceAreFoundHoweverManyThereAre) {
    for (const bool namespaces : {true, false}) {
        for (int count = 1; count <= 40; ++count) {
            SCOPED_TRACE(std::to_string(count) + (namespaces ? " with" : " without"));
            std::string text = "<a";
            for (int i = 0; i < count; ++i) {
                text += " x" + std::to_string(i) + "='" + std::to_string(i) +
                        (i % 7 == 3 || i == 9 ? "&t;'" : "'");
            }
            Dom::Document document;
            LoadText(document, WithTypes(text + "/>"),
                     Settings(namespaces, XmlEntityHandling::ExpandCharEntities));
            const Dom::Element& root = *document.DocumentElement();
            for (int i = 0; i < count; ++i)
                EXPECT_TRUE(root.HasAttribute("x" + std::to_string(i))) << i;
            EXPECT_EQ(root.AttributeViews().size(), static_cast<std::size_t>(count));
        }
    }
}

TEST(LoadEntities, AReferenceInTheNameOfANamespace) {
    Dom::Document document;
    LoadText(document, WithTypes("<p:a xmlns:p='urn:&t;'/>"));
    const Dom::Element& root = *document.DocumentElement();
    EXPECT_EQ(root.GetAttribute("xmlns:p"), "urn:&t;");
}

// A document that refers to entities, from a text.
TEST(LoadEntities, TextsKeepTheirReferences) {
    Dom::Document document;
    document.LoadXml(WithTypes("<a x='&t;'>1&t;2</a>"));
    EXPECT_EQ(support::TreeBelow(document), (Lines{R"(Element a x="&t;")", "  Text \"1\"",
                                                   "  EntityReference t", "  Text \"2\""}));
}

}  // namespace
