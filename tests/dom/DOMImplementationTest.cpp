// SPDX-License-Identifier: MIT
#include <espalier/dom/DOMImplementation.h>
#include <espalier/dom/Document.h>
#include <espalier/dom/DocumentType.h>
#include <espalier/dom/Element.h>
#include <espalier/dom/HTMLDocument.h>

#include "dom/ExpectDomError.h"
#include "support/PrintAstring.h"
#include "support/VirtualSlot.h"

#include <gtest/gtest.h>

#include <memory>
#include <set>
#include <string>
#include <utility>

namespace {

using Dom::DOMImplementation;

TEST(DOMImplementation, HasTheFeaturesOfTheTableAndNoOthers) {
    const std::set<std::pair<std::string, std::string>> kKnown = {
        {"Core", ""}, {"Core", "2.0"},  {"Views", ""},         {"Views", "2.0"},
        {"XML", ""},  {"XML", "1.0"},   {"XHTML", ""},         {"XHTML", "1.0"},
        {"HTML", ""}, {"HTML", "4.01"}, {"XMLVersion", "1.0"}, {"HTML", "4.0"},
        {"CSS", ""},  {"CSS", "2.0"},
    };
    const char* const kFeatures[] = {"Core",   "Views", "XML",   "XMLVersion", "XHTML", "HTML",
                                     "CSS",    "",      "core",  "CORE",       "Xml",   "html",
                                     "Events", "CSS2",  "Core ", "XMLversion"};
    const char* const kVersions[] = {"",    "1.0", "2.0", "4.0", "4.01", "1.1",
                                     "3.0", "1",   "2",   " ",   "2.0 ", "1.00"};
    DOMImplementation implementation;
    int known = 0;
    for (const char* const feature : kFeatures) {
        for (const char* const version : kVersions) {
            SCOPED_TRACE(std::string(feature) + " " + version);
            const bool isKnown = kKnown.count({feature, version}) != 0;
            EXPECT_EQ(implementation.HasFeature(feature, version), isKnown);
            known += isKnown ? 1 : 0;
        }
    }
    EXPECT_EQ(known, 14);
}

TEST(DOMImplementation, DeliberateXmlVersionWithoutAVersionIsNoFeature) {
    EXPECT_FALSE(DOMImplementation().HasFeature("XMLVersion", ""));
    EXPECT_TRUE(DOMImplementation().HasFeature("XMLVersion", "1.0"));
}

TEST(DOMImplementation, MakesNoDocumentTypes) {
    DOMImplementation implementation;
    EXPECT_DOM_ERROR(implementation.CreateDocumentType("html", "", ""),
                     "9 Feature not implemented!");
    EXPECT_DOM_ERROR(implementation.CreateDocumentType("", "", ""), "9 Feature not implemented!");
}

TEST(DOMImplementation, MakesADocumentWithARootElement) {
    DOMImplementation implementation;
    Dom::DocumentType type("p:a", "public", "system", nullptr);
    const std::unique_ptr<Dom::Document> document(
        implementation.CreateDocument("urn:p", "p:a", &type));
    EXPECT_EQ(document->Implementation(), &implementation);
    EXPECT_EQ(document->Doctype(), &type);
    const Dom::Element* const root = document->DocumentElement();
    ASSERT_NE(root, nullptr);
    EXPECT_EQ(root->NodeName(), "p:a");
    EXPECT_EQ(root->NamespaceURI(), "urn:p");
    EXPECT_EQ(root->ParentNode(), document.get());
    EXPECT_EQ(document->FirstChild(), root);
    EXPECT_EQ(document->LastChild(), root);
}

TEST(DOMImplementation, MakesAnHtmlDocumentForExactlyTheNameHtml) {
    constexpr struct {
        const char* name;
        bool isHtml;
    } kCases[] = {{"html", true},   {"HTML", false}, {"Html", false}, {"h:html", false},
                  {"html ", false}, {"htm", false},  {"", false}};
    DOMImplementation implementation;
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.name);
        const std::unique_ptr<Dom::Document> document(
            implementation.CreateDocument("http://www.w3.org/1999/xhtml", c.name, nullptr));
        EXPECT_EQ(dynamic_cast<Dom::HTMLDocument*>(document.get()) != nullptr, c.isHtml);
        EXPECT_EQ(document->Implementation(), &implementation);
        EXPECT_EQ(document->Doctype(), nullptr);
        ASSERT_NE(document->DocumentElement(), nullptr);
        EXPECT_EQ(document->DocumentElement()->NodeName(), c.name);
        EXPECT_EQ(document->DocumentElement()->NamespaceURI(), "http://www.w3.org/1999/xhtml");
    }
}

TEST(DOMImplementation, AnswersItsOwnNameAndThatOfItsBase) {
    DOMImplementation implementation;
    EXPECT_EQ(implementation.QueryInterface("Dom::DOMImplementation"), &implementation);
    EXPECT_EQ(implementation.QueryInterface("Dom::DOMObject"),
              static_cast<Dom::DOMObject*>(&implementation));
    for (const char* const other : {"", "DOMImplementation", "Dom::Node", "dom::domobject"})
        EXPECT_EQ(implementation.QueryInterface(other), nullptr) << other;
}

TEST(DOMImplementation, KeepsTheOrderOfItsVirtualFunctions) {
    if (!support::kKnowsVirtualSlots) GTEST_SKIP() << "another ABI";
    using support::VirtualSlot;
    EXPECT_EQ(VirtualSlot(&DOMImplementation::QueryInterface), 0);  // 1 and 2: the destructor
    EXPECT_EQ(VirtualSlot(&DOMImplementation::HasFeature), 3);
    EXPECT_EQ(VirtualSlot(&DOMImplementation::CreateDocumentType), 4);
    EXPECT_EQ(VirtualSlot(&DOMImplementation::CreateDocument), 5);
}

}  // namespace
