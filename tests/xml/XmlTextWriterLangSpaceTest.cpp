// SPDX-License-Identifier: MIT
#include <espalier/xml/XmlTextWriter.h>

#include "support/DocumentWriter.h"
#include "support/ExpectThrow.h"

#include <gtest/gtest.h>

namespace {

using support::DocumentWriter;
using support::WriterCalls;
using Xml::WriteState;
using Xml::XmlSpace;
using Xml::XmlTextWriter;

constexpr char kXmlUri[] = "http://www.w3.org/XML/1998/namespace";

TEST(XmlTextWriterLangSpace, LangAndSpaceOfTheInnermostElement) {
    DocumentWriter writer;
    EXPECT_EQ(writer->GetXmlLang(), "");
    EXPECT_EQ(writer->GetXmlSpace(), XmlSpace::SpaceNone);
    writer->WriteStartElement("e");
    EXPECT_EQ(writer->GetXmlLang(), "");
    EXPECT_EQ(writer->GetXmlSpace(), XmlSpace::SpaceNone);

    writer->WriteStartAttribute("xml", "lang", nullptr);
    writer->WriteString("e");
    writer->WriteString("n<");
    EXPECT_EQ(writer->GetXmlLang(), "");
    writer->WriteEndAttribute();
    EXPECT_EQ(writer->GetXmlLang(), "en<");
    writer->WriteAttributeString("xml", "space", kXmlUri, "preserve");
    EXPECT_EQ(writer->GetXmlSpace(), XmlSpace::SpacePreserve);

    writer->WriteStartElement("f");
    writer->WriteAttributeString("xml", "lang", nullptr, "de");
    writer->WriteAttributeString("space", kXmlUri, "default");
    EXPECT_EQ(writer->GetXmlLang(), "de");
    EXPECT_EQ(writer->GetXmlSpace(), XmlSpace::SpaceDefault);
    writer->WriteEndElement();
    EXPECT_EQ(writer->GetXmlLang(), "en<");
    EXPECT_EQ(writer->GetXmlSpace(), XmlSpace::SpacePreserve);
    writer->WriteEndDocument();
    EXPECT_EQ(writer->GetXmlLang(), "");
    EXPECT_EQ(writer->GetXmlSpace(), XmlSpace::SpaceNone);
}

TEST(XmlTextWriterLangSpace, WithoutNamespacesTheFullNamesAreTracked) {
    DocumentWriter writer;
    writer->SetNamespaces(false);
    writer->WriteStartElement("e");
    writer->WriteAttributeString("xml:lang", "en");
    writer->WriteAttributeString("xml:space", "default");
    EXPECT_EQ(writer->GetXmlLang(), "en");
    EXPECT_EQ(writer->GetXmlSpace(), XmlSpace::SpaceDefault);
    EXPECT_THROW_FULL(writer->WriteAttributeString("xml:space", "no"),
                      "Bad attribute: Invalid xml:space value", "", -1, -1);
    writer->WriteAttributeString("lang", "fr");
    writer->WriteAttributeString("space", "no");
    EXPECT_EQ(writer->GetXmlLang(), "en");
    EXPECT_EQ(writer.Text(), "<e xml:lang=\"en\" xml:space=\"default\" lang=\"fr\" space=\"no\"");
}

TEST(XmlTextWriterLangSpace, OtherValuesOfSpaceAreRefused) {
    const char kMessage[] = "Bad attribute: Invalid xml:space value";
    for (const char* value : {"", "Preserve", "default ", "none", "preserved"}) {
        SCOPED_TRACE(value);
        DocumentWriter writer;
        writer->WriteStartElement("e");
        EXPECT_THROW_FULL(writer->WriteAttributeString("xml", "space", nullptr, value), kMessage,
                          "", -1, -1);
        EXPECT_EQ(writer->GetWriteState(), WriteState::Element);
        EXPECT_EQ(writer.Take(), "<e");

        writer->WriteStartAttribute("xml", "space", nullptr);
        writer->WriteString(value);
        writer.Take();
        EXPECT_THROW_FULL(writer->WriteEndAttribute(), kMessage, "", -1, -1);
        EXPECT_EQ(writer->GetWriteState(), WriteState::Attribute);
        EXPECT_EQ(writer->GetXmlSpace(), XmlSpace::SpaceNone);
        EXPECT_EQ(writer.Take(), "");
    }
}

TEST(XmlTextWriterLangSpace, WhateverEndsTheAttributeRefusesABadSpace) {
    const WriterCalls kCalls[] = {
        [](XmlTextWriter& w) { w.WriteStartElement("f"); },
        [](XmlTextWriter& w) { w.WriteElementString("f", "t"); },
        [](XmlTextWriter& w) { w.WriteStartAttribute("y"); },
        [](XmlTextWriter& w) { w.WriteAttributeString("y", "1"); },
        [](XmlTextWriter& w) { w.WriteComment("c"); },
        [](XmlTextWriter& w) { w.WriteEndElement(); },
        [](XmlTextWriter& w) { w.WriteFullEndElement(); },
        [](XmlTextWriter& w) { w.WriteEndDocument(); },
        [](XmlTextWriter& w) { w.Close(); },
    };
    for (const WriterCalls call : kCalls) {
        DocumentWriter writer;
        writer->WriteStartElement("e");
        writer->WriteStartAttribute("xml", "space", nullptr);
        writer->WriteString("pre");
        EXPECT_THROW_FULL(call(*writer), "Bad attribute: Invalid xml:space value", "", -1, -1);
        EXPECT_EQ(writer->GetWriteState(), WriteState::Attribute);
        writer->WriteString("serve");
        call(*writer);
        EXPECT_EQ(writer.Text().substr(0, 23), "<e xml:space=\"preserve\"");
    }
}

}  // namespace
