// SPDX-License-Identifier: MIT
#include "support/DocumentWriter.h"

#include <gtest/gtest.h>

#include <iterator>
#include <string>

// Texts of the writer itself as arguments of its operations.

namespace {

using support::DocumentWriter;
using support::WriterCalls;
using Xml::XmlTextWriter;

// Long ones lie in memory of their own, short ones in the string.
const std::string kLongLanguage = "de-AT-x-" + std::string(100, 'l');

// Opens elements until the writer has used up the room that it has for them.
void OpenMany(XmlTextWriter& w) {
    for (int i = 0; i < 40; ++i)
        w.WriteStartElement("e", w.GetXmlLang());
}

TEST(XmlTextWriterOwnText, TheLanguageIsAnArgumentLikeAnyOther) {
    const struct {
        WriterCalls calls;
        const char* expected;  // after the start of the root element; L is the language
    } kCases[] = {
        {[](XmlTextWriter& w) { w.WriteString(w.GetXmlLang()); }, ">L</r>"},
        {[](XmlTextWriter& w) { w.WriteAttributeString("a", w.GetXmlLang()); }, " a=\"L\"/>"},
        {[](XmlTextWriter& w) { w.WriteStartElement(w.GetXmlLang()); }, "><L/></r>"},
        {[](XmlTextWriter& w) { w.WriteStartElement("e", w.GetXmlLang()); },
         "><e xmlns=\"L\"/></r>"},
        {[](XmlTextWriter& w) { w.WriteStartElement("p", "e", w.GetXmlLang()); },
         "><p:e xmlns:p=\"L\"/></r>"},
        {[](XmlTextWriter& w) { w.WriteElementString("e", w.GetXmlLang()); }, "><e>L</e></r>"},
        {[](XmlTextWriter& w) {
             w.WriteElementString("p", w.GetXmlLang(), w.GetXmlLang(), w.GetXmlLang());
         },
         "><p:L xmlns:p=\"L\">L</p:L></r>"},
        {[](XmlTextWriter& w) {
             w.WriteStartElement("e");
             w.WriteAttributeString("xml", "lang", nullptr, w.GetXmlLang());
             w.WriteString(w.GetXmlLang());
         },
         "><e xml:lang=\"L\">L</e></r>"},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.expected);
        for (const std::string& language : {std::string("de"), kLongLanguage}) {
            DocumentWriter writer;
            writer->WriteStartElement("r");
            writer->WriteAttributeString("xml", "lang", nullptr, language);
            c.calls(*writer);
            writer->Close();
            std::string expected = c.expected;
            for (std::size_t at = expected.find('L'); at != std::string::npos;
                 at = expected.find('L', at + language.size())) {
                expected.replace(at, 1, language);
            }
            EXPECT_EQ(writer.Text(), "<r xml:lang=\"" + language + "\"" + expected);
        }
    }
}

TEST(XmlTextWriterOwnText, TheLanguageStaysWhileElementsAreOpened) {
    for (const std::string& language : {std::string("de"), kLongLanguage}) {
        DocumentWriter writer;
        writer->WriteStartElement("r");
        writer->WriteAttributeString("xml", "lang", nullptr, language);
        OpenMany(*writer);
        EXPECT_EQ(writer->GetXmlLang(), language);
        writer->Close();
        EXPECT_EQ(writer.Text().find("<e xmlns=\"" + language + "\"><e><e>"),
                  language.size() + std::string("<r xml:lang=\"\">").size());
    }
}

// The call ends an attribute that changes the language, which the argument still means as it was.
TEST(XmlTextWriterOwnText, TheLanguageThatEndsWithTheCall) {
    const WriterCalls kCalls[] = {
        [](XmlTextWriter& w) { w.WriteComment(w.GetXmlLang()); },
        [](XmlTextWriter& w) { w.WriteStartElement(w.GetXmlLang()); },
        [](XmlTextWriter& w) { w.WriteElementString("e", w.GetXmlLang()); },
        [](XmlTextWriter& w) { w.WriteAttributeString("a", w.GetXmlLang()); },
    };
    const char* const kExpected[] = {
        "><!--de--></r>",
        "><de/></r>",
        "><e>de</e></r>",
        " a=\"de\"/>",
    };
    for (std::size_t i = 0; i < std::size(kCalls); ++i) {
        SCOPED_TRACE(kExpected[i]);
        DocumentWriter writer;
        writer->WriteStartElement("o");
        writer->WriteAttributeString("xml", "lang", nullptr, "de");
        writer->WriteStartElement("r");
        writer->WriteStartAttribute("xml", "lang", nullptr);
        writer->WriteString(kLongLanguage);
        kCalls[i](*writer);
        writer->WriteEndDocument();
        EXPECT_EQ(writer.Text(), "<o xml:lang=\"de\"><r xml:lang=\"" + kLongLanguage + "\"" +
                                     kExpected[i] + "</o>");
    }
}

TEST(XmlTextWriterOwnText, APrefixThatWasLookedUp) {
    DocumentWriter writer;
    const std::string uri = "urn:" + std::string(100, 'u');
    writer->WriteStartElement("p", "r", uri);
    writer->WriteStartElement(writer->LookupPrefix(uri), "e", uri);
    writer->WriteAttributeString(writer->LookupPrefix(uri), "a", uri, writer->LookupPrefix(uri));
    writer->WriteElementString(writer->LookupPrefix(uri), writer->LookupPrefix(uri), "urn:2",
                               writer->LookupPrefix(uri));
    writer->Close();
    EXPECT_EQ(writer.Text(), "<p:r xmlns:p=\"" + uri + "\"><p:e p:a=\"p\" xmlns:p=\"" + uri +
                                 "\"><p:p xmlns:p=\"urn:2\">p</p:p></p:e></p:r>");
}

TEST(XmlTextWriterOwnText, NewLineCharacters) {
    DocumentWriter writer;
    writer->SetNewLineChars(" \r\n");
    writer->SetNewLineChars(writer->GetNewLineChars());
    EXPECT_EQ(writer->GetNewLineChars(), " \r\n");
    writer->SetNewLineChars(writer->GetNewLineChars().view().substr(1));
    EXPECT_EQ(writer->GetNewLineChars(), "\r\n");
    writer->WriteStartElement("r");
    writer->WriteWhitespace(writer->GetNewLineChars());
    writer->Close();
    EXPECT_EQ(writer.Text(), "<r>\r\n</r>");
}

}  // namespace
