// SPDX-License-Identifier: MIT
//
// Loads the documents of the corpus as trees, with namespaces, and compares the trees with those of
// libxml2; then writes them, and what is written is the same tree.
#include <espalier/dom/Document.h>
#include <espalier/dom/WriteNode.h>
#include <espalier/encoding/UnicodeEncodings.h>
#include <espalier/io/Exception.h>
#include <espalier/io/MemoryStream.h>
#include <espalier/xml/XmlTextReader.h>
#include <espalier/xml/XmlTextWriter.h>

#include "Corpus.h"
#include "SameEvents.h"
#include "Trees.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

namespace {

using differential::ExpectSameEvents;
using differential::Reading;
using differential::Source;

struct Counts {
    int same = 0;
    int refused = 0;        // by both, or by the reader where it deliberately is stricter
    int refusedByPeer = 0;  // by libxml2 alone, for its entities or prefixes
};

IO::MemoryStream StreamOver(const std::string& bytes) {
    return {reinterpret_cast<const unsigned char*>(bytes.data()), static_cast<long>(bytes.size())};
}

// Returns what the reader says against the document.
std::string ErrorOfReader(const std::string& document) {
    IO::MemoryStream stream = StreamOver(document);
    Xml::XmlTextReader reader;
    reader.SetStream(&stream, false);
    reader.SetNormalization(true);
    try {
        while (reader.Read())
            continue;
    } catch (const Xml::Exception& error) {
        return error.What();
    }
    return "";
}

std::string Rewritten(const std::string& document) {
    IO::MemoryStream stream = StreamOver(document);
    Xml::XmlTextReader reader;
    reader.SetStream(&stream, false);
    reader.SetNormalization(true);
    Dom::Document tree;
    tree.Load(reader, "");
    IO::MemoryStream written;
    Xml::UTF8Encoding utf8(false, false);
    Xml::XmlTextWriter writer(&written, &utf8);
    writer.SetNewLineHandling(Xml::NewLineHandling::Entitize);
    Dom::WriteNode(tree, writer);
    writer.Close();
    return {reinterpret_cast<const char*>(written.GetBuffer()),
            static_cast<std::size_t>(written.Length())};
}

void CompareDocument(const std::string& document, Counts& counts) {
    const Reading ours = differential::ReadAsTree(document);
    const std::string error = ErrorOfReader(document);
    EXPECT_EQ(ours.error, error);
    if (!error.empty()) {
        ++counts.refused;
        return;
    }
    const Reading theirs = differential::ReadAsLibxmlTree(document);
    if (theirs.error.empty()) {
        ExpectSameEvents(ours, theirs, "libxml2's tree");
        ++counts.same;
    } else {
        ++counts.refusedByPeer;
    }
    const Reading again = differential::ReadAsTree(Rewritten(document));
    ExpectSameEvents(again, ours, "the tree before it was written");
}

class DomTree : public testing::TestWithParam<Source> {};

TEST_P(DomTree, IsTheTreeThatLibxml2Makes) {
    const std::vector<std::filesystem::path> documents = differential::DocumentsOf(GetParam());
    if (documents.empty()) GTEST_SKIP() << GetParam().name << " is not installed";
    Counts counts;
    for (const std::filesystem::path& path : documents) {
        SCOPED_TRACE(path.string());
        CompareDocument(differential::ContentOf(path), counts);
    }
    std::printf("%s: %d trees compared; left out: %d not well-formed, %d that libxml2 refuses\n",
                GetParam().name, counts.same, counts.refused, counts.refusedByPeer);
    EXPECT_GT(counts.same, 0);
    EXPECT_LE(counts.refused + counts.refusedByPeer, counts.same);
}

INSTANTIATE_TEST_SUITE_P(Sources, DomTree, testing::ValuesIn(differential::Sources()),
                         [](const auto& source) { return differential::NameOf(source.param); });

}  // namespace
