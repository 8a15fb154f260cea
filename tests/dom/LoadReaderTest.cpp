// SPDX-License-Identifier: MIT
//
// Loading from readers in every state, from files and from texts, and what becomes of the document
// when that fails.
#include <espalier/dom.h>
#include <espalier/io/FileStream.h>
#include <espalier/io/MemoryStream.h>

#include "dom/ExpectDomError.h"
#include "dom/LoadText.h"
#include "support/DocumentForms.h"
#include "support/ExpectThrow.h"
#include "support/FailingStream.h"
#include "support/FileTest.h"
#include "support/PrintAstring.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <string_view>

namespace {

using support::DocumentReader;
using support::Lines;
using support::LoadText;
using support::TreeBelow;
using Xml::XmlNodeType;

// An element that counts those that live.
class Counted : public Dom::Element {
public:
    Counted(Dom::Document* document, int& living)
        : Element("", "counted", document), living_(living) {
        ++living_;
    }
    ~Counted() override { --living_; }

private:
    int& living_;
};

// A document that was loaded before.
void FillBefore(Dom::Document& document) {
    document.LoadXml("<?xml version='1.0' encoding='ISO-8859-1' standalone='yes'?><old/>", "old");
}

// Readers that have been read from.

TEST(LoadReader, ALoadDestroysTheOldChildren) {
    int living = 0;
    Dom::Document document("", "a", nullptr, nullptr);
    document.DocumentElement()->AppendChild(new Counted(&document, living));
    document.AppendChild(document.CreateComment("c"));
    document.InsertBefore(new Counted(&document, living), document.LastChild());
    EXPECT_EQ(living, 2);
    LoadText(document, "<b/>");
    EXPECT_EQ(living, 0);
    EXPECT_EQ(TreeBelow(document), Lines{"Element b"});
}

TEST(LoadReader, AReaderOnAnElementGivesThatElementOnly) {
    for (const support::ReaderSettings& settings :
         {support::WithNamespaces(), support::WithoutNamespaces()}) {
        DocumentReader reader(
            "<?xml version='1.0' encoding='utf-8'?><!--c--><r><a x='1'><b/>t</a><c/></r><!--d-->",
            settings);
        while (reader->Name() != "a")
            ASSERT_TRUE(reader->Read());
        Dom::Document document;
        FillBefore(document);
        const astring inputEncoding = document.InputEncoding();
        document.Load(*reader, "new");
        EXPECT_EQ(TreeBelow(document),
                  (Lines{R"(Element a x="1")", "  Element b", "  Text \"t\""}));
        EXPECT_EQ(support::WrongLink(document), "");
        EXPECT_EQ(document.DocumentURI(), "new");
        // What the declaration said has not been read again.
        EXPECT_EQ(document.XmlEncoding(), "ISO-8859-1");
        EXPECT_TRUE(document.XmlStandalone());
        EXPECT_EQ(document.XmlVersion(), "1.0");
        EXPECT_EQ(document.InputEncoding(), inputEncoding);
        // Nothing behind the element has been read.
        EXPECT_EQ(reader->NodeType(), XmlNodeType::EndElement);
        ASSERT_TRUE(reader->Read());
        EXPECT_EQ(reader->Name(), "c");
    }
}

TEST(LoadReader, AReaderOnAnEmptyElementStaysThere) {
    DocumentReader reader("<r><a x='1'/><b/></r>");
    reader.ReadNodes(2);
    Dom::Document document;
    document.Load(*reader, "u");
    EXPECT_EQ(TreeBelow(document), Lines{R"(Element a x="1")"});
    EXPECT_EQ(reader->NodeType(), XmlNodeType::Element);
    EXPECT_EQ(reader->Name(), "a");
    ASSERT_TRUE(reader->Read());
    document.Load(*reader, "u");
    EXPECT_EQ(TreeBelow(document), Lines{"Element b"});
}

TEST(LoadReader, ElementsOfARowAreLoadedOneByOne) {
    DocumentReader reader("<r><a>1</a><a>2</a><a>3</a></r>");
    reader.ReadNodes(1);
    Dom::Document document;
    std::string texts;
    while (reader->Read() && reader->NodeType() == XmlNodeType::Element) {
        document.Load(*reader, "u");
        texts += document.DocumentElement()->TextContent().str();
    }
    EXPECT_EQ(texts, "123");
    EXPECT_FALSE(reader->Read());
    EXPECT_TRUE(reader->Eof());
}

TEST(LoadReader, AReaderOnAnythingElseIsRefused) {
    constexpr char kDocument[] =
        "<?xml version='1.0'?><!DOCTYPE r><!--c--> <?p d?><r>t<![CDATA[d]]>&e;<b/><!--d--></r>";
    int refused = 0;
    for (int nodes = 1;; ++nodes) {
        SCOPED_TRACE(nodes);
        DocumentReader reader(kDocument);
        reader.ReadNodes(nodes - 1);
        const bool isEnd = !reader->Read();
        if (!isEnd && reader->NodeType() == XmlNodeType::Element) continue;
        Dom::Document document;
        FillBefore(document);
        EXPECT_DOM_ERROR(document.Load(*reader, "new"), "3 Document not well-formed");
        EXPECT_FALSE(document.HasChildNodes());
        EXPECT_EQ(document.DocumentURI(), "new");
        EXPECT_EQ(document.XmlEncoding(), "ISO-8859-1");
        ++refused;
        if (isEnd) break;
    }
    EXPECT_EQ(refused, 11);
}

TEST(LoadReader, AReaderOnAnAttributeIsRefused) {
    DocumentReader reader("<a x='1'/>");
    reader.ReadNodes(1);
    ASSERT_TRUE(reader->MoveToFirstAttribute());
    Dom::Document document;
    EXPECT_DOM_ERROR(document.Load(*reader, "u"), "3 Document not well-formed");
}

TEST(LoadReader, AReaderWithoutInputIsRefused) {
    Xml::XmlTextReader reader;
    Dom::Document document;
    FillBefore(document);
    EXPECT_DOM_ERROR(document.Load(reader, "u"), "3 Document not well-formed");
    EXPECT_FALSE(document.HasChildNodes());
}

// Failures.

struct Failure {
    const char* what;
    const char* document;
    const char* message;
    Lines left;  // with namespaces
};

const Failure kReaderErrors[] = {
    {"nothing at all", "", "Missing root element", {}},
    {"no root", "<!--c-->", "Missing root element", {"Comment \"c\""}},
    {"text before the root", "<!--c-->x<a/>", "Unexpected token", {"Comment \"c\""}},
    {"text behind the root", "<a/>x", "Unexpected token", {"Element a"}},
    {"an element that is not closed",
     "<a><b>t</b><c>u<d>",
     "Missing end element",
     {"Element a", "  Element b", "    Text \"t\"", "  Element c", "    Text \"u\"",
      "    Element d"}},
    {"an attribute given twice",
     "<a><b/><c x='1' x='2'/></a>",
     "Duplicate attribute",
     {"Element a", "  Element b"}},
};

TEST(LoadFailure, ErrorsOfTheReaderPassAndTheNodesReadSoFarStay) {
    for (const Failure& c : kReaderErrors) {
        SCOPED_TRACE(c.what);
        Dom::Document document;
        FillBefore(document);
        try {
            LoadText(document, c.document);
            FAIL() << "nothing is thrown";
        } catch (const Dom::DOMException& error) {
            FAIL() << error.What();
        } catch (const Xml::Exception& error) {
            EXPECT_STREQ(error.What(), c.message);
            EXPECT_GE(error.LineNumber(), 1);
        }
        EXPECT_EQ(TreeBelow(document), c.left);
        EXPECT_EQ(support::WrongLink(document), "");
        EXPECT_EQ(document.DocumentURI(), "uri/text.xml");
        document.LoadXml("<again/>");
        EXPECT_EQ(TreeBelow(document), Lines{"Element again"});
    }
}

TEST(LoadFailure, TheEncodingIsSetBeforeWhatStandsBeforeTheRootElement) {
    Dom::Document document;
    EXPECT_THROW(document.LoadXml("<!--ok--><!--a--b--><r/>"), Xml::Exception);
    EXPECT_EQ(document.InputEncoding(), "UTF-8");
}

TEST(LoadFailure, ASecondRootElementIsRefusedAndNotRead) {
    for (const char* const text : {"<a/><b/>", "<a/><!--c--> <b/>", "<a></a>\n<b>"}) {
        for (const support::ReaderSettings& settings :
             {support::WithNamespaces(), support::WithoutNamespaces()}) {
            SCOPED_TRACE(text);
            Dom::Document document;
            EXPECT_DOM_ERROR(LoadText(document, text, settings), "3 Document not well-formed");
            ASSERT_NE(document.DocumentElement(), nullptr);
            EXPECT_EQ(document.DocumentElement()->NodeName(), "a");
            EXPECT_EQ(document.GetElementsByTagName("b").Length(), 0U);
        }
    }
}

TEST(LoadFailure, AnotherVersionIsNotSupported) {
    Dom::Document document;
    FillBefore(document);
    EXPECT_DOM_ERROR(LoadText(document, "<?xml version='1.1'?><a/>"),
                     "9 XML version \"1.1\" not supported!");
    EXPECT_FALSE(document.HasChildNodes());
    EXPECT_DOM_ERROR(document.LoadXml("<?xml version='1.1'?><a/>", "u"),
                     "9 XML version \"1.1\" not supported!");
}

// Has no feature at all.
class Featureless : public Dom::DOMImplementation {
public:
    bool HasFeature(std::string_view, std::string_view) override { return false; }
};

TEST(LoadFailure, TheImplementationDecidesOnTheVersionThatADeclarationGives) {
    Featureless implementation;
    Dom::Document document("", "old", nullptr, &implementation);
    LoadText(document, "<a/>");
    EXPECT_EQ(TreeBelow(document), Lines{"Element a"});
    EXPECT_DOM_ERROR(LoadText(document, "<?xml version='1.0' standalone='yes'?><a/>"),
                     "9 XML version \"1.0\" not supported!");
    EXPECT_FALSE(document.HasChildNodes());
}

TEST(LoadFailure, WhatAStreamThrowsPasses) {
    const std::string text = "<a>" + std::string(3000, 'x') + "<b/></a>";
    int failures = 0;
    for (int call = 1;; ++call) {
        SCOPED_TRACE(call);
        IO::MemoryStream memory(reinterpret_cast<const unsigned char*>(text.data()),
                                static_cast<long>(text.size()));
        support::FailingStream stream(memory, call, support::Failure::Throw);
        Xml::XmlTextReader reader;
        reader.SetStream(&stream, false);
        Dom::Document document;
        try {
            document.Load(reader, "u");
        } catch (const Xml::Exception& error) {
            EXPECT_STREQ(error.What(), support::FailingStream::kMessage);
            ++failures;
        }
        EXPECT_EQ(support::WrongLink(document), "");
        if (stream.HasFailed()) continue;
        EXPECT_EQ(document.DocumentElement()->FirstChild()->NodeValue().length(), 3000U);
        break;
    }
    EXPECT_GT(failures, 2);
}

// Texts.

TEST(LoadXml, DropsWhiteSpaceBetweenMarkupAndNormalizes) {
    Dom::Document document;
    document.LoadXml(
        "<a>\r\n <b x='1\t2'> t\r\nu\r </b> <c xml:space='preserve'> </c><?p d?>\n</a>", "u");
    EXPECT_EQ(TreeBelow(document),
              (Lines{"Element a", R"(  Element b x="1 2")", R"(    Text " t\nu\n ")",
                     R"(  Element c xml:space{http://www.w3.org/XML/1998/namespace}="preserve")",
                     "    Text \" \"", "  ProcessingInstruction p \"d\""}));
    EXPECT_EQ(document.DocumentURI(), "u");
}

TEST(LoadXml, KnowsNamespaces) {
    Dom::Document document;
    document.LoadXml("<p:a xmlns:p='urn:p'/>");
    EXPECT_EQ(document.DocumentElement()->NamespaceURI(), "urn:p");
    EXPECT_EQ(document.DocumentURI(), "");
}

TEST(LoadXml, DecodesWhatTheDeclarationSays) {
    Dom::Document document;
    document.LoadXml("<?xml version='1.0' encoding='ISO-8859-1'?><a>\xE9</a>");
    EXPECT_EQ(document.DocumentElement()->TextContent(), "\xC3\xA9");
    EXPECT_EQ(document.XmlEncoding(), "ISO-8859-1");
    EXPECT_EQ(document.InputEncoding(), "ISO-8859-1");
}

TEST(LoadXml, LoadsItsOwnText) {
    Dom::Document document;
    document.LoadXml("<a>&lt;b>text&lt;/b></a>");
    document.LoadXml(document.DocumentElement()->FirstChild()->NodeValue(), document.DocumentURI());
    EXPECT_EQ(TreeBelow(document), (Lines{"Element b", "  Text \"text\""}));
}

// Encodings.

TEST(LoadEncodings, EveryFormOfUnicode) {
    const std::string text = "<a \xC3\xA9='\xE2\x82\xAC'>\xF0\x9F\x98\x80\n</a>";
    Dom::Document plain;
    LoadText(plain, text);
    int forms = 0;
    for (const support::DocumentForm& form : support::AllDocumentForms()) {
        SCOPED_TRACE(form.name);
        const auto bytes = support::WriteInForm(text, form);
        ASSERT_TRUE(bytes.has_value());
        DocumentReader first(*bytes);
        first.ReadNodes(1);
        Dom::Document document;
        LoadText(document, *bytes);
        EXPECT_EQ(TreeBelow(document), TreeBelow(plain));
        EXPECT_EQ(document.InputEncoding(), first->Encoding());
        EXPECT_EQ(document.XmlEncoding(), "");
        ++forms;
    }
    EXPECT_EQ(forms, 10);
}

TEST(LoadEncodings, EveryEncodingThatADeclarationNames) {
    constexpr struct {
        const char* name;
        const char* bytes;
        const char* utf8;
    } kCases[] = {
        {"UTF-8", "\xE2\x82\xAC", "\xE2\x82\xAC"}, {"US-ASCII", "x", "x"},
        {"ISO-8859-1", "\xE9", "\xC3\xA9"},        {"windows-1250", "\x8A", "\xC5\xA0"},
        {"windows-1251", "\xC0", "\xD0\x90"},      {"windows-1252", "\xE9", "\xC3\xA9"},
        {"windows-1254", "\xDD", "\xC4\xB0"},      {"windows-1257", "\xC0", "\xC4\x84"},
        {"EUC-KR", "\xB0\xA1", "\xEA\xB0\x80"},    {"gb2312", "\xB0\xA1", "\xE5\x95\x8A"},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.name);
        const std::string text = std::string("<?xml version='1.0' encoding='") + c.name +
                                 "'?><a x='" + c.bytes + "'>" + c.bytes + "</a>";
        for (const int bytesPerRead : {0, 1}) {
            Dom::Document document;
            LoadText(document, text, {}, bytesPerRead);
            EXPECT_EQ(document.XmlEncoding(), c.name);
            EXPECT_EQ(document.DocumentElement()->GetAttribute("x"), c.utf8);
            EXPECT_EQ(document.DocumentElement()->TextContent(), c.utf8);
            DocumentReader reader(text);
            reader.ReadNodes(1);
            EXPECT_EQ(document.InputEncoding(), reader->Encoding());
        }
    }
}

}  // namespace
