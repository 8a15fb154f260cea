// SPDX-License-Identifier: MIT

// A reader reads one document after the other, and what one was like says nothing about the next.

#include <espalier/xml/XmlTextReader.h>

#include "support/DocumentStream.h"
#include "support/NodeDump.h"
#include "support/PrintAstring.h"
#include "support/ReaderSettings.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

namespace {

using support::DocumentStream;
using support::ReaderSettings;
using Xml::XmlTextReader;

struct Document {
    std::string bytes;
    ReaderSettings settings;
};

std::vector<Document> AllDocuments() {
    ReaderSettings noNamespaces;
    noNamespaces.namespaces = false;
    ReaderSettings normalizing;
    normalizing.normalization = true;
    const ReaderSettings expanding = support::WithEntities(Xml::XmlEntityHandling::ExpandEntities);
    ReaderSettings resolving;
    resolving.resolve = true;
    resolving.parts = true;
    return {
        {"<a/>", {}},
        {"<a:b xmlns:a='urn:1' a:c=''><a:d xmlns:a='urn:2' a:c=''/></a:b>", {}},
        {"<a:b xmlns:a='urn:3' a:c=''><a:d/><e xmlns='urn:4'/></a:b>", {}},
        {"<a:b a:c='' c=''><xmlns:a/></a:b>", {}},
        {"<a:b xmlns:a='urn:1' a:c=''><:d :e='' x:y:z=''/></a:b>", noNamespaces},
        {"<a:b xmlns='urn:5' xml:lang='en'>x<a:b xml:space='preserve'> </a:b></a:b>", {}},
        {"<a:b xmlns:a='urn:1' a:c=' \r\n '>\r\n</a:b>", normalizing},
        // Letters of ISO-8859-1 that are none elsewhere.
        {"<?xml version='1.0' encoding='ISO-8859-1'?><a><b\xB5 c\xAA=''/><d\xBA/></a>", {}},
        {"<a><b\xC2\xB5 c\xC2\xAA=''/></a>", {}},
        {"<a><d\xC2\xBA/></a>", {}},
        {"<a><e c\xC2\xAA=''/></a>", {}},
        {std::string("<\0a\0>\0<\0/\0a\0>\0", 14), {}},
        // Errors at all depths, also between the names and the values of attributes.
        {"<a:b xmlns:a='urn:6'><c><d", {}},
        {"<a:b xmlns:a='urn:7' x='1' x='2'/>", {}},
        {"<a b='1' xml:lang='en'><a b=\"&x;\" c='", {}},
        {"<a>\x01</a>", {}},
        {"<?xml version='1.0' standalone='yes' ", {}},
        {"<!DOCTYPE a [<!ELEMENT a ANY>", {}},
        // Entities of one document are none of the next, and what was begun in one is not resumed.
        {"<!DOCTYPE a SYSTEM 's' [<!ENTITY x '<b>&y;</b>'><!ENTITY y 'z'>]><a c='&x;'>&x;</a>",
         expanding},
        {"<a c='&y;'>&x;</a>", expanding},
        {"<a c='&y;'>&x;</a>", {}},
        {"<!DOCTYPE a [<!NOTATION x PUBLIC 'p'><!ENTITY x '<b>&x;'>]><a>&x;</a>", expanding},
        {"<!DOCTYPE a [<!ENTITY x '<b c=\"&y;\"/>&y;<c>'><!ENTITY y '&x;'>]><a>1&x;</a>",
         resolving},
        {"<!DOCTYPE a [<!ENTITY x '<b c=\"&y;\"/>&y;<c/>'><!ENTITY y '1'>]><a>&x;</a>", resolving},
        {"<!DOCTYPE a [<!ENTITY x '<b'>]><a>&x;", expanding},
        {"", {}},
    };
}

std::string DumpWith(XmlTextReader& reader, const Document& document, int bytesPerRead) {
    DocumentStream stream(document.bytes, bytesPerRead);
    EXPECT_TRUE(reader.SetStream(stream.get(), false));
    document.settings.ApplyTo(reader);
    std::string dump = support::DumpNodes(reader, document.settings);
    reader.Close();
    return dump;
}

TEST(XmlTextReaderReuse, EveryDocumentAfterEveryOtherReadsAsWithANewReader) {
    const std::vector<Document> documents = AllDocuments();
    std::vector<std::string> expected;
    for (const Document& document : documents)
        expected.push_back(support::DumpDocument(document.bytes, document.settings));
    for (const int bytesPerRead : {0, 1}) {
        for (const Document& first : documents) {
            for (std::size_t i = 0; i < documents.size(); ++i) {
                XmlTextReader reader;
                DumpWith(reader, first, 0);
                EXPECT_EQ(DumpWith(reader, documents[i], bytesPerRead), expected[i])
                    << "after " << testing::PrintToString(first.bytes);
            }
        }
    }
}

TEST(XmlTextReaderReuse, ALongRowOfDocumentsReadsAsWithNewReaders) {
    const std::vector<Document> documents = AllDocuments();
    std::vector<std::string> expected;
    for (const Document& document : documents)
        expected.push_back(support::DumpDocument(document.bytes, document.settings));
    std::mt19937 random(20260104);
    XmlTextReader reader;
    for (int i = 0; i < 3000; ++i) {
        const std::size_t next = random() % documents.size();
        ASSERT_EQ(DumpWith(reader, documents[next], i % 4), expected[next]) << i;
    }
}

TEST(XmlTextReaderReuse, AnotherStreamMayComeAtAnyNode) {
    const std::vector<Document> documents = AllDocuments();
    const Document& last = documents[1];
    const std::string expected = support::DumpDocument(last.bytes, last.settings);
    for (const Document& document : documents) {
        for (int nodes = 0; nodes < 8; ++nodes) {
            XmlTextReader reader;
            DocumentStream stream(document.bytes);
            EXPECT_TRUE(reader.SetStream(stream.get(), false));
            document.settings.ApplyTo(reader);
            try {
                for (int i = 0; i < nodes && reader.Read(); ++i)
                    reader.MoveToFirstAttribute();
            } catch (const std::exception&) {
                EXPECT_EQ(reader.ReadState(), XmlTextReader::Error);
            }
            EXPECT_EQ(DumpWith(reader, last, 0), expected)
                << testing::PrintToString(document.bytes) << " after " << nodes;
        }
    }
}

}  // namespace
