// SPDX-License-Identifier: MIT
#include <espalier/dom/HTMLElement.h>

#include "dom/DomNodes.h"
#include "dom/ExpectDomError.h"
#include "dom/HtmlPage.h"
#include "support/PrintAstring.h"

#include <gtest/gtest.h>

#include <memory>
#include <string_view>

namespace {

using Dom::HTMLElement;
using support::kXhtml;
using support::LoadedRoot;

constexpr char kXmlUri[] = "http://www.w3.org/XML/1998/namespace";

// The attributes that every element has, with what gets and sets each.
const struct Attribute {
    const char* name;
    const astring& (HTMLElement::*get)() const;
    void (HTMLElement::*set)(std::string_view);
} kAttributes[] = {
    {"id", &HTMLElement::Id, &HTMLElement::SetId},
    {"title", &HTMLElement::Title, &HTMLElement::SetTitle},
    {"dir", &HTMLElement::Dir, &HTMLElement::SetDir},
    {"class", &HTMLElement::ClassName, &HTMLElement::SetClassName},
    {"lang", &HTMLElement::Lang, &HTMLElement::SetLang},
};

// Lets everybody ask for an attribute.
class Open final : public HTMLElement {
public:
    using HTMLElement::GetXHtmlAttribute;
    using HTMLElement::HTMLElement;
    using HTMLElement::SetReadOnly;
    using HTMLElement::SetXHtmlAttribute;
};

}  // namespace

TEST(HTMLElement, GetsAttributesWithoutANamespace) {
    for (const Attribute& attribute : kAttributes) {
        SCOPED_TRACE(attribute.name);
        for (const char* const uri : {"", kXhtml, "urn:other"}) {
            SCOPED_TRACE(uri);
            Dom::HTMLDocument page;
            const std::unique_ptr<Dom::Element> element(page.CreateElementNS(uri, "p"));
            HTMLElement& html = *support::AsHtml(element.get());
            EXPECT_EQ((html.*attribute.get)(), "");
            html.SetAttribute(attribute.name, "value");
            EXPECT_EQ((html.*attribute.get)(), "value");
        }
    }
}

TEST(HTMLElement, GetsAttributesInItsOwnNamespaceFirst) {
    for (const Attribute& attribute : kAttributes) {
        SCOPED_TRACE(attribute.name);
        Dom::HTMLDocument page;
        const std::unique_ptr<Dom::Element> element(page.CreateElementNS(kXhtml, "p"));
        HTMLElement& html = *support::AsHtml(element.get());
        html.SetAttribute(attribute.name, "plain");
        html.SetAttributeNS("urn:other", astring("o:") + attribute.name, "foreign");
        EXPECT_EQ((html.*attribute.get)(), "plain");
        html.SetAttributeNS(kXhtml, astring("h:") + attribute.name, "own");
        EXPECT_EQ((html.*attribute.get)(), "own");
        html.SetAttributeNS(kXhtml, astring("h:") + attribute.name, "");
        EXPECT_EQ((html.*attribute.get)(), "");
        html.RemoveAttributeNS(kXhtml, attribute.name);
        EXPECT_EQ((html.*attribute.get)(), "plain");
        html.RemoveAttribute(attribute.name);
        EXPECT_EQ((html.*attribute.get)(), "");
    }
}

TEST(HTMLElement, GetsAttributesThatWereLoaded) {
    for (const Attribute& attribute : kAttributes) {
        const std::string name = attribute.name;
        SCOPED_TRACE(name);
        const struct {
            std::string xml;
            const char* expected;
        } kCases[] = {
            {"<p " + name + "='v'/>", "v"},
            {"<p xmlns='http://www.w3.org/1999/xhtml' " + name + "='v'/>", "v"},
            {"<h:p xmlns:h='http://www.w3.org/1999/xhtml' h:" + name + "='v'/>", "v"},
            {"<h:p xmlns:h='http://www.w3.org/1999/xhtml' " + name + "='a' h:" + name + "='b'/>",
             "b"},
            {"<p xmlns:h='http://www.w3.org/1999/xhtml' h:" + name + "='v'/>", ""},
            {"<p/>", ""},
        };
        for (const auto& c : kCases) {
            SCOPED_TRACE(c.xml);
            LoadedRoot root(c.xml);
            EXPECT_EQ(((*root).*attribute.get)(), c.expected);
        }
    }
}

TEST(HTMLElement, SetsTheAttributeThatIsThere) {
    for (const Attribute& attribute : kAttributes) {
        SCOPED_TRACE(attribute.name);
        if (std::string_view(attribute.name) == "lang") continue;  // see below
        Dom::HTMLDocument page;
        const std::unique_ptr<Dom::Element> element(page.CreateElementNS(kXhtml, "p"));
        HTMLElement& html = *support::AsHtml(element.get());
        (html.*attribute.set)("1");
        EXPECT_EQ(html.GetAttribute(attribute.name), "1");
        EXPECT_EQ(html.GetAttributeNode(attribute.name)->NamespaceURI(), "");
        (html.*attribute.set)("2");
        EXPECT_EQ(html.GetAttribute(attribute.name), "2");
        html.SetAttributeNS(kXhtml, astring("h:") + attribute.name, "3");
        (html.*attribute.set)("4");
        EXPECT_EQ(html.GetAttribute(attribute.name), "2");
        EXPECT_EQ(html.GetAttributeNS(kXhtml, attribute.name), "4");
        EXPECT_EQ(html.GetAttributeNodeNS(kXhtml, attribute.name)->NodeName(),
                  astring("h:") + attribute.name);
        EXPECT_EQ(html.Attributes()->Length(), 2U);
        EXPECT_EQ((html.*attribute.get)(), "4");
    }
}

TEST(HTMLElement, SetsAnAttributeToItsOwnValue) {
    LoadedRoot root("<p id='an id that is longer than what a string keeps inside'/>");
    root->SetId(root->Id());
    EXPECT_EQ(root->Id(), "an id that is longer than what a string keeps inside");
    root->SetLang("a language that is longer than what a string keeps inside");
    root->SetLang(root->Lang());
    EXPECT_EQ(root->Lang(), "a language that is longer than what a string keeps inside");
}

TEST(HTMLElement, TheLanguageOfXmlComesFirst) {
    const struct {
        const char* xml;
        const char* lang;
    } kCases[] = {
        {"<p/>", ""},
        {"<p lang='de'/>", "de"},
        {"<p xml:lang='en'/>", "en"},
        {"<p xml:lang='en' lang='de'/>", "en"},
        {"<p lang='de' xml:lang='en'/>", "en"},
        {"<p xml:lang='' lang='de'/>", "de"},
        {"<p xml:lang='en' lang=''/>", "en"},
        {"<p xml:lang='' lang=''/>", ""},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.xml);
        LoadedRoot root(c.xml);
        EXPECT_EQ(root->Lang(), c.lang);
    }
}

TEST(HTMLElement, TheLanguageOfXmlMayBeSetByItsWholeName) {
    LoadedRoot root("<p lang='de'/>");
    root->SetAttribute("xml:lang", "en");
    EXPECT_EQ(root->Lang(), "en");
    root->SetAttributeNS(kXmlUri, "xml:lang", "fr");
    EXPECT_EQ(root->Lang(), "fr");
}

TEST(HTMLElement, SetsTheLanguagesThatAreThere) {
    const struct {
        const char* xml;
        const char* loaded;  // "xml:lang" with its namespace
        const char* prefixed;
        const char* plain;
    } kCases[] = {
        {"<p/>", "", "fr", ""},
        {"<p lang='de'/>", "", "", "fr"},
        {"<p xml:lang='en'/>", "fr", "", ""},
        {"<p xml:lang='en' lang='de'/>", "fr", "", "fr"},
        {"<p xml:lang='' lang='de'/>", "fr", "", "fr"},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.xml);
        LoadedRoot root(c.xml);
        root->SetLang("fr");
        EXPECT_EQ(root->Lang(), "fr");
        EXPECT_EQ(root->GetAttributeNS(kXmlUri, "lang"), c.loaded);
        EXPECT_EQ(root->GetAttribute("xml:lang"), c.prefixed);
        EXPECT_EQ(root->GetAttribute("lang"), c.plain);
        root->SetLang("");
        EXPECT_EQ(root->Lang(), "");
    }
}

TEST(HTMLElement, ReadOnlyOnesRefuseEverySetter) {
    Dom::HTMLDocument page;
    Open element("", "p", &page);
    element.SetReadOnly(true);
    for (const Attribute& attribute : kAttributes) {
        SCOPED_TRACE(attribute.name);
        EXPECT_DOM_ERROR((element.*attribute.set)("x"), "7 This node is read-only");
        EXPECT_EQ((element.*attribute.get)(), "");
    }
    element.Style().SetProperty("a", "b", "");
    EXPECT_DOM_ERROR(element.SyncStyle(), "7 This node is read-only");
}

TEST(HTMLElement, DerivedClassesReadAndSetAttributes) {
    Dom::HTMLDocument page;
    Open element(kXhtml, "p", &page);
    EXPECT_EQ(element.GetXHtmlAttribute("any"), "");
    element.SetXHtmlAttribute("any", "1");
    EXPECT_EQ(element.GetXHtmlAttribute("any"), "1");
    EXPECT_EQ(element.GetAttribute("any"), "1");
    element.SetAttributeNS(kXhtml, "x:any", "2");
    EXPECT_EQ(element.GetXHtmlAttribute("any"), "2");
}

TEST(HTMLElement, AnswersToTheNamesOfItsClasses) {
    Dom::HTMLDocument page;
    HTMLElement element(kXhtml, "p", &page);
    Dom::Node* const node = &element;
    Dom::CSS::ElementCSSInlineStyle* const style = &element;
    for (const char* const name : {"Dom::HTMLElement", "Dom::Element", "Dom::Node"}) {
        SCOPED_TRACE(name);
        EXPECT_EQ(node->QueryInterface(name), node);
        EXPECT_EQ(style->QueryInterface(name), node);
    }
    EXPECT_EQ(node->QueryInterface("Dom::CSS::ElementCSSInlineStyle"), style);
    EXPECT_EQ(style->QueryInterface("Dom::CSS::ElementCSSInlineStyle"), style);
    for (const char* const name : {"Dom::HTMLLinkElement", "Dom::HTMLStyleElement",
                                   "Dom::HTMLMetaElement", "Dom::StyleSheets::LinkStyle", ""}) {
        SCOPED_TRACE(name);
        EXPECT_EQ(node->QueryInterface(name), nullptr);
    }
    EXPECT_EQ(node->QueryInterface(nullptr), nullptr);
}

TEST(HTMLElement, ACloneHasTheAttributesAndTheStyleInThem) {
    LoadedRoot root("<p xmlns='urn:p' id='i' style='color: red'><q/></p>");
    root->Style().SetProperty("margin-top", "0", "");
    for (const bool deep : {true, false}) {
        const std::unique_ptr<Dom::Node> clone(root->CloneNode(deep));
        HTMLElement* const copy = support::AsHtml(clone.get());
        ASSERT_NE(copy, nullptr);
        EXPECT_EQ(support::ClassOf(copy), "HTMLElement");
        EXPECT_EQ(copy->NodeName(), "p");
        EXPECT_EQ(copy->NamespaceURI(), "urn:p");
        EXPECT_EQ(copy->OwnerDocument(), &root.Page());
        EXPECT_EQ(copy->ParentNode(), nullptr);
        EXPECT_FALSE(copy->HasChildNodes());
        EXPECT_EQ(copy->Id(), "i");
        EXPECT_EQ(copy->Style().CssText(), "color: red");
    }
    EXPECT_EQ(root->Style().CssText(), "color: red; margin-top: 0");
}

// The style.

TEST(HTMLElement, ItsStyleIsWhatTheAttributeDeclares) {
    const struct {
        const char* xml;
        const char* style;
    } kCases[] = {
        {"<p/>", ""},
        {"<p style=''/>", ""},
        {"<p style='color: red'/>", "color: red"},
        {"<p style='color: red; margin-top: 1px !important'/>",
         "color: red; margin-top: 1px !important"},
        {"<h:p xmlns:h='http://www.w3.org/1999/xhtml' h:style='a: b' style='c: d'/>", "a: b"},
        {"<p xmlns:o='urn:o' o:style='a: b'/>", ""},
        // What stands before a fault counts.
        {"<p style='color: red; : blue; top: 0'/>", "color: red"},
        {"<p style='?'/>", ""},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.xml);
        LoadedRoot root(c.xml);
        EXPECT_EQ(root->Style().CssText(), c.style);
        Dom::CSS::ElementCSSInlineStyle* const base = &*root;
        EXPECT_EQ(base->Style().CssText(), c.style);
        EXPECT_EQ(&base->Style(), &root->Style());
        EXPECT_EQ(root->Style().ParentRule(), nullptr);
    }
}

TEST(HTMLElement, AnotherTextInTheAttributeIsReadAnew) {
    LoadedRoot root("<p style='color: red'/>");
    root->Style().SetProperty("top", "0", "");
    EXPECT_EQ(root->Style().CssText(), "color: red; top: 0");
    root->SetAttribute("style", "color: red");  // the same text
    EXPECT_EQ(root->Style().CssText(), "color: red; top: 0");
    root->SetAttribute("style", "left: 0");
    EXPECT_EQ(root->Style().CssText(), "left: 0");
    root->SetAttribute("style", "left: 1px; !");
    EXPECT_EQ(root->Style().CssText(), "left: 1px");
    root->RemoveAttribute("style");
    EXPECT_EQ(root->Style().CssText(), "");
    root->Style().SetProperty("top", "0", "");
    EXPECT_EQ(root->Style().CssText(), "top: 0");
}

TEST(HTMLElement, ChangesAreInTheAttributeOnceTheyAreWritten) {
    LoadedRoot root("<p style='color: red'/>");
    root->Style().SetProperty("top", "0", "important");
    EXPECT_EQ(root->GetAttribute("style"), "color: red");
    root->SyncStyle();
    EXPECT_EQ(root->GetAttribute("style"), "color: red; top: 0 !important");
    Dom::CSS::CSSValue* const value = root->Style().GetPropertyCSSValue("top");
    EXPECT_EQ(root->Style().GetPropertyCSSValue("top"), value);  // not read again
    root->Style().SetCssText("");
    root->SyncStyle();
    EXPECT_TRUE(root->HasAttribute("style"));
    EXPECT_EQ(root->GetAttribute("style"), "");
}

TEST(HTMLElement, WritingAStyleReadsANewTextFirst) {
    LoadedRoot root("<p style='color:red'/>");
    root->SyncStyle();  // though nobody has looked at it
    EXPECT_EQ(root->GetAttribute("style"), "color: red");
    root->Style().SetProperty("top", "0", "");
    root->SetAttribute("style", "left:0");
    root->SyncStyle();
    EXPECT_EQ(root->GetAttribute("style"), "left: 0");
}

TEST(HTMLElement, AnEmptyStyleMakesNoAttribute) {
    LoadedRoot root("<p/>");
    root->SyncStyle();
    EXPECT_FALSE(root->HasAttribute("style"));
    root->Style().SetProperty("top", "0", "");
    root->SyncStyle();
    EXPECT_EQ(root->GetAttribute("style"), "top: 0");
}

TEST(HTMLElement, TheStyleIsWrittenWhereItWasRead) {
    LoadedRoot root("<h:p xmlns:h='http://www.w3.org/1999/xhtml' h:style='a: b'/>");
    root->Style().SetProperty("c", "d", "");
    root->SyncStyle();
    EXPECT_EQ(root->GetAttributeNS(kXhtml, "style"), "a: b; c: d");
    EXPECT_EQ(root->GetAttributeNodeNS(kXhtml, "style")->NodeName(), "h:style");
    EXPECT_EQ(root->GetAttribute("style"), "");
}

// Elements lie in the memory of their document: what they own beside that is freed with them.
TEST(HTMLElement, OwnsItsStyle) {
    constexpr char kLong[] = "a-value-that-is-longer-than-what-a-string-keeps-inside";
    for (const bool inTree : {true, false}) {
        for (const bool reload : {true, false}) {
            auto page = std::make_unique<Dom::HTMLDocument>();
            page->LoadXml("<p><q/></p>");
            Dom::NodePtr free(page->CreateElement("r"));
            HTMLElement* const element =
                support::AsHtml(inTree ? page->DocumentElement()->FirstChild() : free.get());
            element->SetAttribute("style", astring("a: ") + kLong);
            element->Style().SetProperty("b", kLong, "");
            EXPECT_EQ(element->Style().Length(), 2U);
            if (reload) page->LoadXml("<s/>");
            page.reset();
            if (!inTree) {
                EXPECT_EQ(element->Style().GetPropertyValue("b"), kLong);
            }
        }
    }
}
