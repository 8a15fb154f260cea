// SPDX-License-Identifier: MIT
//
// The reader and the writer over compressed streams.
#include <espalier/encoding/Encoding.h>
#include <espalier/io/FileStream.h>
#include <espalier/io/GZipStream.h>
#include <espalier/io/ZipFileStream.h>
#include <espalier/xml/XmlTextReader.h>
#include <espalier/xml/XmlTextWriter.h>

#include "support/Archives.h"
#include "support/FileTest.h"
#include "support/NodeDump.h"
#include "support/RecordingStream.h"
#include "support/StreamOutcome.h"
#include "support/TrickleStream.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;
using IO::CompressionMode;
using support::DumpDocument;
using support::DumpNodes;
using support::StreamOver;
using support::TemporaryDirectory;

const std::string kSamples = ESPALIER_SAMPLES;

// Returns the nodes that a reader finds in a stream.
std::string NodesOf(IO::Stream& stream) {
    Xml::XmlTextReader reader;
    EXPECT_TRUE(reader.SetStream(&stream, false));
    return DumpNodes(reader);
}

std::vector<fs::path> Documents() {
    std::vector<fs::path> documents;
    for (const auto& entry : fs::directory_iterator(kSamples)) {
        const std::string extension = entry.path().extension().string();
        if (extension == ".xml" || extension == ".svg" || extension == ".xhtml") {
            documents.push_back(entry.path());
        }
    }
    documents.emplace_back(std::string(ESPALIER_TEST_DATA) + "/archives/beds.xml");
    return documents;
}

class CompressedDocumentTest : public support::FileTest {};

TEST_F(CompressedDocumentTest, EverySampleReadsEqualFromGzipAndZip) {
    const std::vector<fs::path> documents = Documents();
    EXPECT_GE(documents.size(), 9U);
    for (const fs::path& path : documents) {
        const std::string document = Content(path.string());
        const std::string expected = DumpDocument(document);
        const std::string gzip = support::MakeGzip(document);
        const std::string archive = Make(
            "test.zip", support::MakeZip({{.name = "deflated", .content = document},
                                          {.name = "stored", .content = document, .method = 0}}));
        for (const int most : {1, 2, 3, 7, 1000000}) {
            SCOPED_TRACE(testing::Message() << path << ' ' << most);
            // Trickles on both sides: what is read from the file, and what is given to the reader.
            IO::MemoryStream source = StreamOver(gzip);
            support::TrickleStream slowSource(source, most);
            IO::GZipStream stream(&slowSource, CompressionMode::Decompress);
            support::TrickleStream slowStream(stream, most);
            EXPECT_EQ(NodesOf(slowStream), expected);

            for (const char* name : {"deflated", "stored"}) {
                IO::ZipFileStream member(archive.c_str(), name);
                support::TrickleStream slowMember(member, most);
                EXPECT_EQ(NodesOf(slowMember), expected);
            }
        }
    }
}

TEST_F(CompressedDocumentTest, TheCompressedSampleIsThatFeed) {
    IO::FileStream file((kSamples + "/feed.xml.gz").c_str(), IO::FileMode::Open, 1, 1);
    IO::GZipStream stream(&file, CompressionMode::Decompress);
    EXPECT_EQ(NodesOf(stream), DumpDocument(Content(kSamples + "/feed.xml")));
}

TEST_F(CompressedDocumentTest, ThePartsOfTheBookAreWellFormed) {
    const std::string book = kSamples + "/herbal.epub";
    IO::ZipFileStream type(book, std::string("mimetype"));
    EXPECT_EQ(support::ReadAll(type), "application/epub+zip");
    for (const char* name : {"META-INF/container.xml", "OEBPS/content.opf", "OEBPS/toc.ncx",
                             "OEBPS/thyme.xhtml", "OEBPS/sage.xhtml"}) {
        SCOPED_TRACE(name);
        IO::ZipFileStream part(book.c_str(), name);
        Xml::XmlTextReader reader;
        ASSERT_TRUE(reader.SetStream(&part, false));
        int elements = 0;
        while (reader.Read())
            elements += reader.NodeType() == Xml::XmlNodeType::Element ? 1 : 0;
        EXPECT_TRUE(reader.Eof());
        EXPECT_GT(elements, 2);
    }
    // The type of the book stands at its fixed place, uncompressed.
    EXPECT_EQ(Content(book).substr(30, 28), "mimetypeapplication/epub+zip");
}

TEST_F(CompressedDocumentTest, GzipInAZip) {
    const std::string document = Content(kSamples + "/catalogue.xml");
    const std::string archive = Make(
        "test.zip", support::MakeZip({{.name = "a.gz", .content = support::MakeGzip(document)}}));
    IO::ZipFileStream member(archive, std::string("a.gz"));
    IO::GZipStream stream(&member, CompressionMode::Decompress);
    EXPECT_EQ(NodesOf(stream), DumpDocument(document));
    EXPECT_EQ(stream.Seek(0, IO::SeekOrigin::Begin), 0);
    EXPECT_EQ(NodesOf(stream), DumpDocument(document));
}

TEST_F(CompressedDocumentTest, AWrittenDocumentReadsBack) {
    support::RecordingStream target;
    {
        IO::GZipStream stream(&target, CompressionMode::Compress);
        Xml::XmlTextWriter writer(&stream, Xml::Encoding::UTF8());
        writer.WriteStartDocument();
        writer.WriteStartElement("beds");
        for (int i = 0; i < 1000; ++i)
            writer.WriteElementString("bed", "thyme & sage");
        writer.WriteEndElement();
        writer.Close();
        stream.Close();
    }
    EXPECT_LT(target.Length(), 1000);
    const std::string gzip = target.Content();
    IO::MemoryStream source = StreamOver(gzip);
    IO::GZipStream stream(&source, CompressionMode::Decompress);
    Xml::XmlTextReader reader;
    ASSERT_TRUE(reader.SetStream(&stream, false));
    reader.ReadStartElement("beds");
    int beds = 0;
    while (reader.IsStartElement("bed")) {
        EXPECT_EQ(reader.ReadElementString(), "thyme & sage");
        ++beds;
    }
    EXPECT_EQ(beds, 1000);
}

TEST_F(CompressedDocumentTest, DamageIsAnErrorOfTheReader) {
    const std::string document = Content(kSamples + "/catalogue.xml");
    std::string gzip = support::MakeGzip(document);
    gzip[gzip.size() - 6] ^= 1;
    IO::MemoryStream source = StreamOver(gzip);
    IO::GZipStream stream(&source, CompressionMode::Decompress);
    EXPECT_TRUE(
        NodesOf(stream).ends_with("error -1:-1 GZipStream read error: incorrect data check"
                                  "\n"))
        << NodesOf(stream);

    const std::string archive =
        Make("test.zip", support::MakeZip({{.name = "a", .content = document, .checksum = 12345}}));
    IO::ZipFileStream member(archive.c_str(), "a");
    EXPECT_TRUE(NodesOf(member).ends_with("error -1:-1 Read error\n"));
}

}  // namespace
