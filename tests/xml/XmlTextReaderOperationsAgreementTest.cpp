// SPDX-License-Identifier: MIT
//
// Operations in any order, on documents good and bad, tell the same however the document comes.
#include <espalier/io/Exception.h>
#include <espalier/xml/XmlTextReader.h>

#include "support/DocumentReader.h"
#include "support/EntityDocument.h"
#include "support/RandomDocument.h"
#include "support/ReaderPosition.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <iterator>
#include <random>
#include <string>

namespace {

using support::DocumentReader;
using support::EntityDocument;
using support::Escape;
using support::NodeAndPlace;
using support::RandomDocument;
using support::ReaderSettings;
using Xml::XmlEntityHandling;
using Xml::XmlTextReader;

std::string Said(bool result) { return result ? "yes" : "no"; }
std::string Said(const astring& result) { return "'" + Escape(result) + "'"; }

std::string ReadSomeChars(XmlTextReader& reader, int count) {
    char buffer[16] = {};
    const int length = reader.ReadChars(buffer, 0, count);
    return std::to_string(length) + " " + Escape({buffer, static_cast<std::size_t>(length)});
}

std::string DescribeAttributes(const XmlTextReader& reader) {
    std::string out;
    for (const Xml::XmlAttributeRef attribute : reader.Attributes())
        out += attribute.Name().str() + "=" + Escape(attribute.Value()) + " ";
    return out;
}

struct Operation {
    const char* name;
    std::string (*call)(XmlTextReader& reader);
};

const Operation kOperations[] = {
    {"Read", [](XmlTextReader& r) { return Said(r.Read()); }},
    {"Read", [](XmlTextReader& r) { return Said(r.Read()); }},
    {"Read", [](XmlTextReader& r) { return Said(r.Read()); }},
    {"MoveToAttribute",
     [](XmlTextReader& r) {
         r.MoveToAttribute(1);
         return std::string();
     }},
    {"MoveToAttribute(x)", [](XmlTextReader& r) { return Said(r.MoveToAttribute("x")); }},
    {"MoveToAttribute(a, urn:1)",
     [](XmlTextReader& r) { return Said(r.MoveToAttribute("a", "urn:1")); }},
    {"MoveToElement", [](XmlTextReader& r) { return Said(r.MoveToElement()); }},
    {"MoveToFirstAttribute", [](XmlTextReader& r) { return Said(r.MoveToFirstAttribute()); }},
    {"MoveToFirstAttribute", [](XmlTextReader& r) { return Said(r.MoveToFirstAttribute()); }},
    {"MoveToNextAttribute", [](XmlTextReader& r) { return Said(r.MoveToNextAttribute()); }},
    {"ReadAttributeValue", [](XmlTextReader& r) { return Said(r.ReadAttributeValue()); }},
    {"ReadAttributeValue", [](XmlTextReader& r) { return Said(r.ReadAttributeValue()); }},
    {"ReadAttributeValue", [](XmlTextReader& r) { return Said(r.ReadAttributeValue()); }},
    {"ResolveEntity",
     [](XmlTextReader& r) {
         r.ResolveEntity();
         return std::string();
     }},
    {"ResolveEntity on a reference",
     [](XmlTextReader& r) {
         if (r.NodeType() == Xml::XmlNodeType::EntityReference) r.ResolveEntity();
         return std::string();
     }},
    {"MoveToContent", [](XmlTextReader& r) { return std::string(r.MoveToContent().ToString()); }},
    {"IsStartElement", [](XmlTextReader& r) { return Said(r.IsStartElement()); }},
    {"ReadStartElement",
     [](XmlTextReader& r) {
         r.ReadStartElement();
         return std::string();
     }},
    {"ReadEndElement",
     [](XmlTextReader& r) {
         r.ReadEndElement();
         return std::string();
     }},
    {"ReadString", [](XmlTextReader& r) { return Said(r.ReadString()); }},
    {"ReadElementString", [](XmlTextReader& r) { return Said(r.ReadElementString()); }},
    {"ReadChars(4)", [](XmlTextReader& r) { return ReadSomeChars(r, 4); }},
    {"ReadChars(16)", [](XmlTextReader& r) { return ReadSomeChars(r, 16); }},
    {"Skip",
     [](XmlTextReader& r) {
         r.Skip();
         return std::string();
     }},
    {"SkipElement", [](XmlTextReader& r) { return Said(r.SkipElement()); }},
    {"ReadInnerXml", [](XmlTextReader& r) { return Said(r.ReadInnerXml()); }},
    {"ReadOuterXml", [](XmlTextReader& r) { return Said(r.ReadOuterXml()); }},
    {"Attributes", [](XmlTextReader& r) { return DescribeAttributes(r); }},
    {"LookupNamespace", [](XmlTextReader& r) { return Said(r.LookupNamespace("p")); }},
};

std::string Outcome(XmlTextReader& reader, const Operation& operation) {
    try {
        return operation.call(reader);
    } catch (const Xml::Exception& error) {
        return std::string(error.What()) + " [" + Escape(error.Argument()) + "] " +
               std::to_string(error.LineNumber()) + ":" + std::to_string(error.LinePos());
    }
}

// Returns what so many operations tell, up to the end of the document or an error. Operations that
// follow an error are called, too, but what they find of a node half read is nobody's concern.
std::string Transcript(const std::string& document, const ReaderSettings& settings,
                       int bytesPerRead, unsigned seed) {
    std::mt19937 random(seed);
    DocumentReader reader(document, settings, bytesPerRead);
    std::string out;
    for (int i = 0; i < 150 && !reader->Eof(); ++i) {
        const bool hasFailed = reader->ReadState() == XmlTextReader::Error;
        const Operation& operation = kOperations[random() % std::size(kOperations)];
        const std::string outcome = Outcome(*reader, operation);
        if (hasFailed) {
            EXPECT_EQ(reader->ReadState(), XmlTextReader::Error) << operation.name;
            continue;
        }
        out += std::string(operation.name) + ": " + outcome;
        if (reader->ReadState() != XmlTextReader::Error) out += " | " + NodeAndPlace(*reader);
        out += "\n";
    }
    return out;
}

void ExpectAgreement(const std::string& document, const ReaderSettings& settings, unsigned seed,
                     int part) {
    const std::string quick = Transcript(document, settings, 0, seed);
    for (const int bytesPerRead : {1, part}) {
        ASSERT_EQ(Transcript(document, settings, bytesPerRead, seed), quick)
            << "bytes per read: " << bytesPerRead << ", seed " << seed << "\n"
            << testing::PrintToString(document);
    }
}

ReaderSettings SettingsOf(std::size_t number) {
    ReaderSettings settings;
    const Xml::XmlEntityHandling kHandling[] = {XmlEntityHandling::ExpandNothing,
                                                XmlEntityHandling::ExpandCharEntities,
                                                XmlEntityHandling::ExpandEntities};
    settings.entities = kHandling[number % 3];
    settings.namespaces = number % 5 != 0;
    settings.normalization = number % 2 == 0;
    settings.whitespace = number % 7 == 0 ? XmlTextReader::WsNone : XmlTextReader::WsAll;
    return settings;
}

TEST(XmlTextReaderOperationsAgreement, OnRandomDocuments) {
    RandomDocument random(20261122);
    for (unsigned i = 0; i < 1500; ++i) {
        std::string document = random.Write();
        if (i % 2 == 0) random.Mutate(document);
        ExpectAgreement(document, SettingsOf(i), i, static_cast<int>(2 + random.Below(1030)));
        if (HasFatalFailure()) return;
    }
}

TEST(XmlTextReaderOperationsAgreement, OnDocumentsWithEntities) {
    EntityDocument random(20261123);
    RandomDocument mutation(20261123);
    for (unsigned i = 0; i < 800; ++i) {
        random.Write();
        std::string document = random.subset + random.body;
        if (i % 3 == 0) mutation.Mutate(document);
        ExpectAgreement(document, SettingsOf(i), i, static_cast<int>(2 + random.Below(1030)));
        if (HasFatalFailure()) return;
    }
}

}  // namespace
