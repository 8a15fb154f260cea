// SPDX-License-Identifier: MIT
//
// Loading from files.
#include <espalier/dom/Document.h>
#include <espalier/dom/Element.h>
#include <espalier/io/FileStream.h>

#include "dom/LoadText.h"
#include "support/ExpectThrow.h"
#include "support/FileTest.h"
#include "support/PrintAstring.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

namespace {

using support::Lines;
using support::TreeBelow;

class LoadFile : public support::FileTest {};

TEST_F(LoadFile, LoadsAsTheTextOfTheFileDoes) {
    const std::string text =
        "<?xml version='1.0' encoding='UTF-8' standalone='yes'?>\r\n<!--c-->\r\n"
        "<a xmlns='urn:d'>\r\n <b x='1\n2'> t\r\n </b>\r\n <?p d?>&amp;</a>";
    const std::string path = Make("a.xml", text);
    Dom::Document document;
    document.Load(path);
    Dom::Document same;
    same.LoadXml(text, path);
    EXPECT_EQ(TreeBelow(document), TreeBelow(same));
    EXPECT_EQ(TreeBelow(document), (Lines{"Comment \"c\"", R"(Element a {urn:d} xmlns="urn:d")",
                                          R"(  Element b {urn:d} x="1 2")", R"(    Text " t\n ")",
                                          "  ProcessingInstruction p \"d\"", "  Text \"&\""}));
    EXPECT_EQ(support::WrongLink(document), "");
    EXPECT_EQ(document.DocumentURI(), path);
    EXPECT_EQ(document.BaseURI(), path.substr(0, path.size() - 5));
    EXPECT_EQ(document.XmlEncoding(), "UTF-8");
    EXPECT_TRUE(document.XmlStandalone());
    EXPECT_EQ(document.InputEncoding(), "UTF-8");
}

TEST_F(LoadFile, AFileThatIsNotThereLeavesTheDocumentAsItWas) {
    Dom::Document document;
    document.LoadXml("<old/>", "old");
    EXPECT_THROW_TEXT(document.Load(Path("missing.xml")), "File not found", -1, -1);
    EXPECT_THROW_TEXT(document.Load(""), "File not found", -1, -1);
    EXPECT_EQ(TreeBelow(document), Lines{"Element old"});
    EXPECT_EQ(document.DocumentURI(), "old");
}

TEST_F(LoadFile, AFileThatSomebodyWritesIsRefused) {
    const std::string path = Make("a.xml", "<a/>");
    Dom::Document document;
    {
        IO::FileStream writer(path.c_str(), IO::FileMode::Open, support::kReadWrite,
                              support::kDenyWriting);
        EXPECT_THROW_TEXT(document.Load(path), "Access denied/sharing violation", -1, -1);
    }
    document.Load(path);
    EXPECT_EQ(TreeBelow(document), Lines{"Element a"});
}

TEST_F(LoadFile, OthersMayReadTheFileMeanwhile) {
    const std::string path = Make("a.xml", "<a/>");
    IO::FileStream reader(path.c_str(), IO::FileMode::Open, support::kRead, support::kDenyWriting);
    Dom::Document document;
    document.Load(path);
    EXPECT_EQ(TreeBelow(document), Lines{"Element a"});
}

TEST_F(LoadFile, TheFileIsClosedInTheEndWhateverHappens) {
    for (const char* const text : {"<a/>", "<a>", "<a/><b/>"}) {
        SCOPED_TRACE(text);
        const std::string path = Make("a.xml", text);
        Dom::Document document;
        try {
            document.Load(path);
        } catch (const Xml::Exception&) {
            EXPECT_STRNE(text, "<a/>");
        }
        EXPECT_NO_THROW(IO::FileStream(path.c_str(), IO::FileMode::Open, support::kReadWrite,
                                       support::kDenyAll));
    }
}

TEST_F(LoadFile, ABrokenFileLeavesWhatWasReadOfIt) {
    const std::string path = Make("a.xml", "<a><b/>t</c>");
    Dom::Document document;
    document.LoadXml("<old/>");
    EXPECT_THROW_TEXT(document.Load(path), "End tag 'c' doesn't match start tag 'a'", 1, 12);
    EXPECT_EQ(document.DocumentElement()->NodeName(), "a");
    EXPECT_EQ(document.DocumentURI(), path);
}

TEST_F(LoadFile, SamplesInEveryEncodingAreAlikeFromFileAndReader) {
    int count = 0;
    for (const char* const folder : {ESPALIER_SAMPLES, ESPALIER_SAMPLES "/encodings"}) {
        for (const auto& entry : std::filesystem::directory_iterator(folder)) {
            const std::string extension = entry.path().extension().string();
            if (extension != ".xml" && extension != ".svg" && extension != ".xhtml") continue;
            SCOPED_TRACE(entry.path().string());
            Dom::Document document;
            document.Load(entry.path().string());
            EXPECT_EQ(support::WrongLink(document), "");
            support::ReaderSettings settings;
            settings.whitespace = Xml::XmlTextReader::WsSignificant;
            settings.normalization = true;
            Dom::Document same;
            support::LoadText(same, Content(entry.path().string()), settings, 7);
            EXPECT_EQ(TreeBelow(document), TreeBelow(same));
            EXPECT_EQ(document.InputEncoding(), same.InputEncoding());
            EXPECT_EQ(document.XmlEncoding(), same.XmlEncoding());
            EXPECT_GT(TreeBelow(document).size(), 5U);
            ++count;
        }
    }
    EXPECT_GE(count, 14);
}

}  // namespace
