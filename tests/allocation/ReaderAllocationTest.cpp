// SPDX-License-Identifier: MIT
//
// Lets every single allocation that a reader makes fail, one run for each.
#include <espalier/io/Exception.h>
#include <espalier/io/MemoryStream.h>
#include <espalier/xml/XmlTextReader.h>

#include "FailingNew.h"

#include <gtest/gtest.h>

#include <cstring>
#include <new>
#include <optional>
#include <string>

namespace {

using allocation::FailAt;
using Xml::XmlTextReader;

// How a run ended.
enum class Ending { Complete, BadAlloc, OutOfMemory, OtherError };

std::string Attributes(int count) {
    std::string text;
    for (int i = 0; i < count; ++i) {
        text += " attribute-" + std::to_string(i) + "='a value that no string keeps inside'";
    }
    return text;
}

// Documents that together need every kind of memory a reader asks for.
const std::string kDocuments[] = {
    "<?xml version='1.0' encoding='ISO-8859-1' standalone='yes'?>\n"
    "<!DOCTYPE root-element SYSTEM 'x' [<!ELEMENT a ANY>]>\n"
    "<root-element xmlns='urn:default-namespace-of-this' xmlns:p='urn:p' xml:lang='en-GB-oed'>"
    "<p:child x='1' p:x='&lt;&#65;\r\n' xml:space='preserve'>  text of some length &amp; more \r\n"
    "&entity;<!-- a comment that is long enough --><?target with some data in it?>"
    "<![CDATA[a section that is long enough]]></p:child></root-element>\n",
    "<a" + Attributes(40) + "><b/></a>",
    "<a>" + std::string(5000, 't') + "<!--" + std::string(5000, 'c') + "--></a>",
    "<a><b><c><d><e><f><g><h><i/></h></g></f></e></d></c></b></a>",
};

// Reads the document and looks at everything, so that what is made late is made too.
void ReadAndLook(XmlTextReader& reader) {
    while (reader.Read()) {
        std::size_t length = reader.Name().size() + reader.LocalName().size() +
                             reader.Prefix().size() + reader.NamespaceURI().size() +
                             reader.Value().size() + reader.XmlLang().size() +
                             reader.Encoding().size();
        for (bool more = reader.MoveToFirstAttribute(); more; more = reader.MoveToNextAttribute()) {
            length += reader.Name().size() + reader.Value().size();
            length += reader.GetAttribute(reader.Name().view()).size();
            length +=
                reader.GetAttribute(reader.LocalName().view(), reader.NamespaceURI().view()).size();
        }
        length += reader.LookupNamespace("p").size();
        ASSERT_LT(length, 100'000U);
    }
}

template <typename Run>
Ending EndingOf(const Run& run) {
    try {
        run();
        return Ending::Complete;
    } catch (const std::bad_alloc&) {
        return Ending::BadAlloc;
    } catch (const Xml::Exception& error) {
        return std::strcmp(error.What(), "Out of memory") == 0 ? Ending::OutOfMemory
                                                               : Ending::OtherError;
    }
}

IO::MemoryStream StreamOver(const std::string& document) {
    return IO::MemoryStream(reinterpret_cast<const unsigned char*>(document.data()),
                            static_cast<long>(document.size()));
}

// Makes a reader, reads, closes and destroys it, with the n-th allocation failing.
Ending ReadFailingAt(const std::string& document, bool normalization, long n, bool* hasFailed) {
    const FailAt failure(n);
    const Ending ending = EndingOf([&] {
        IO::MemoryStream stream(reinterpret_cast<const unsigned char*>(document.data()),
                                static_cast<long>(document.size()));
        XmlTextReader reader;
        reader.SetStream(&stream, false);
        reader.SetNormalization(normalization);
        ReadAndLook(reader);
    });
    *hasFailed = failure.HasFailed();
    return ending;
}

TEST(ReaderAllocation, EveryAllocationMayFailAndNothingLeaks) {
    for (const std::string& document : kDocuments) {
        for (const bool normalization : {false, true}) {
            // Once in full, so that what the library keeps for good has been made.
            bool hasFailed = false;
            ASSERT_EQ(ReadFailingAt(document, normalization, 0, &hasFailed), Ending::Complete);

            const long liveBefore = allocation::LiveBlocks();
            long failures = 0;
            for (long n = 1;; ++n) {
                const Ending ending = ReadFailingAt(document, normalization, n, &hasFailed);
                ASSERT_EQ(allocation::LiveBlocks(), liveBefore) << n;
                if (!hasFailed) {
                    ASSERT_EQ(ending, Ending::Complete);
                    break;
                }
                ASSERT_TRUE(ending == Ending::BadAlloc || ending == Ending::OutOfMemory) << n;
                ++failures;
            }
            EXPECT_GT(failures, 5);
        }
    }
}

// The failure strikes while a document is read; the same reader then reads another one.
TEST(ReaderAllocation, AReaderIsUsableAfterAFailure) {
    const std::string good = "<p:a xmlns:p='urn:some-namespace' x='a value of some length'>t</p:a>";
    for (const std::string& document : kDocuments) {
        bool isDone = false;
        for (long n = 1; !isDone; ++n) {
            SCOPED_TRACE(n);
            IO::MemoryStream stream(StreamOver(document));
            std::optional<XmlTextReader> reader(std::in_place);
            reader->SetStream(&stream, false);
            {
                const FailAt failure(n);
                const Ending ending = EndingOf([&] { ReadAndLook(*reader); });
                isDone = !failure.HasFailed();
                ASSERT_EQ(ending == Ending::Complete, isDone);
            }
            if (!isDone) {
                ASSERT_NE(reader->ReadState(), XmlTextReader::EndOfFile);
            }
            if (n % 2 == 0) reader->Close();

            IO::MemoryStream next(StreamOver(good));
            ASSERT_TRUE(reader->SetStream(&next, false));
            ASSERT_TRUE(reader->Read());
            EXPECT_EQ(reader->NamespaceURI(), "urn:some-namespace");
            EXPECT_EQ(reader->GetAttribute("x"), "a value of some length");
            EXPECT_EQ(reader->LookupNamespace(""), "");
            ASSERT_TRUE(reader->Read());
            EXPECT_EQ(reader->Value(), "t");
            ASSERT_TRUE(reader->Read());
            EXPECT_FALSE(reader->Read());
            EXPECT_TRUE(reader->Eof());
        }
    }
}

// A failure in Read() leaves the reader in the state of an error.
TEST(ReaderAllocation, AFailureInReadIsAnErrorOfTheReader) {
    for (const std::string& document : kDocuments) {
        bool isDone = false;
        for (long n = 1; !isDone; ++n) {
            IO::MemoryStream stream(StreamOver(document));
            XmlTextReader reader;
            reader.SetStream(&stream, false);
            const FailAt failure(n);
            const Ending ending = EndingOf([&] {
                while (reader.Read())
                    continue;
            });
            isDone = !failure.HasFailed();
            if (isDone) break;
            ASSERT_NE(ending, Ending::Complete) << n;
            EXPECT_EQ(reader.ReadState(), XmlTextReader::Error);
            EXPECT_FALSE(reader.Read());
        }
    }
}

TEST(ReaderAllocation, CloseNeedsNoMemory) {
    for (const std::string& document : kDocuments) {
        IO::MemoryStream stream(StreamOver(document));
        XmlTextReader reader;
        reader.SetStream(&stream, false);
        for (int i = 0; i < 3; ++i)
            reader.Read();
        const FailAt failure(1);
        EXPECT_NO_THROW(reader.Close());
        EXPECT_EQ(reader.ReadState(), XmlTextReader::Closed);
    }
}

}  // namespace
