// SPDX-License-Identifier: MIT
//
// Lets every single allocation that a reader makes fail, one run for each.
#include <espalier/io/Exception.h>
#include <espalier/io/MemoryStream.h>
#include <espalier/xml/XmlTextReader.h>

#include "support/FailingAllocation.h"

#include <gtest/gtest.h>

#include <cstring>
#include <new>
#include <string>

namespace {

using Xml::XmlEntityHandling;
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
    "<!DOCTYPE root-element SYSTEM 'x' [<!ELEMENT a ANY><!ENTITY entity 'text of an entity'>]>\n"
    "<root-element xmlns='urn:default-namespace-of-this' xmlns:p='urn:p' xml:lang='en-GB-oed'>"
    "<p:child x='1' p:x='&lt;&#65;\r\n' xml:space='preserve'>  text of some length &amp; more \r\n"
    "&entity;<!-- a comment that is long enough --><?target with some data in it?>"
    "<![CDATA[a section that is long enough]]></p:child></root-element>\n",
    "<a" + Attributes(40) + "><b/></a>",
    "<a>" + std::string(5000, 't') + "<!--" + std::string(5000, 'c') + "--></a>",
    "<a><b><c><d><e><f><g><h><i/></h></g></f></e></d></c></b></a>",
    "<!DOCTYPE root PUBLIC '-//A public identifier//' 'and-a-system-identifier' [\n"
    "<!NOTATION a-long-name-of-a-notation SYSTEM 'a-long-system-identifier'>\n"
    "<!ENTITY unparsed-entity-with-a-name SYSTEM 'somewhere' NDATA a-long-name-of-a-notation>\n"
    "<!ENTITY inner-entity-with-a-name 'the text of the inner &#65;&#38;#66; of an entity'>\n"
    "<!ENTITY outer-entity-with-a-name '<b>&inner-entity-with-a-name;</b> and more text'>]>\n"
    "<root xmlns:p='urn:&inner-entity-with-a-name;' a='before &inner-entity-with-a-name; behind'>"
    "before &outer-entity-with-a-name; behind &unparsed-entity-with-a-name;</root>",
};

// Reads the document and looks at everything, so that what is made late is made too. Returns the
// length of all that it saw.
std::size_t ReadAndLook(XmlTextReader& reader) {
    std::size_t length = 0;
    while (reader.Read()) {
        length += reader.Name().size() + reader.LocalName().size() + reader.Prefix().size() +
                  reader.NamespaceURI().size() + reader.Value().size() + reader.XmlLang().size() +
                  reader.Encoding().size() + reader.LookupNamespace("p").size();
        for (bool more = reader.MoveToFirstAttribute(); more; more = reader.MoveToNextAttribute()) {
            length += reader.Name().size() + reader.Value().size();
            length += reader.GetAttribute(reader.Name().view()).size();
            length +=
                reader.GetAttribute(reader.LocalName().view(), reader.NamespaceURI().view()).size();
            while (reader.ReadAttributeValue()) {
                length += reader.Value().size();
                if (reader.NodeType() == Xml::XmlNodeType::EntityReference) reader.ResolveEntity();
            }
        }
        if (reader.NodeType() == Xml::XmlNodeType::EntityReference) reader.ResolveEntity();
    }
    return length;
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

// Makes a reader, reads, closes and destroys it. With normalization all entities are expanded,
// without it they are resolved.
Ending ReadOnce(const std::string& document, bool normalization, std::size_t* length) {
    return EndingOf([&] {
        IO::MemoryStream stream(StreamOver(document));
        XmlTextReader reader;
        reader.SetStream(&stream, false);
        reader.SetNormalization(normalization);
        reader.SetEntityHandling(normalization ? XmlEntityHandling::ExpandEntities
                                               : XmlEntityHandling::ExpandCharEntities);
        *length = ReadAndLook(reader);
    });
}

bool IsFailureOfMemory(Ending ending) {
    return ending == Ending::BadAlloc || ending == Ending::OutOfMemory;
}

// An allocation that the reader can do without, such as a larger table, may fail and do no harm;
// then all is read as usual. Any other failure reaches the caller.
TEST(ReaderAllocation, EveryAllocationMayFailAndNothingLeaks) {
    for (const std::string& document : kDocuments) {
        for (const bool normalization : {false, true}) {
            // Once in full, so that what the library keeps for good has been made.
            std::size_t expectedLength = 0;
            ASSERT_EQ(ReadOnce(document, normalization, &expectedLength), Ending::Complete);

            long reported = 0;
            FailingAllocation::ForEachFailure([&](FailingAllocation& failure) {
                std::size_t length = 0;
                const Ending ending = ReadOnce(document, normalization, &length);
                const bool isReported = IsFailureOfMemory(ending);
                FailingAllocation::Exempt([&] {
                    EXPECT_EQ(failure.LiveCount(), 0);
                    EXPECT_TRUE(isReported || ending == Ending::Complete);
                    if (!isReported) {
                        EXPECT_EQ(length, expectedLength);
                    }
                });
                if (isReported) ++reported;
            });
            EXPECT_GT(reported, 5);
        }
    }
}

// The failure strikes while a document is read; the same reader then reads another one.
TEST(ReaderAllocation, AReaderIsUsableAfterAFailure) {
    const std::string good = "<p:a xmlns:p='urn:some-namespace' x='a value of some length'>t</p:a>";
    for (const std::string& document : kDocuments) {
        bool isDone = false;
        for (long number = 1; !isDone; ++number) {
            SCOPED_TRACE(number);
            IO::MemoryStream stream(StreamOver(document));
            XmlTextReader reader;
            reader.SetStream(&stream, false);
            {
                const FailingAllocation failure(number);
                const Ending ending = EndingOf([&] { ReadAndLook(reader); });
                isDone = !failure.HasFailed();
                FailingAllocation::Exempt(
                    [&] { ASSERT_TRUE(IsFailureOfMemory(ending) || ending == Ending::Complete); });
            }
            if (number % 2 == 0) reader.Close();

            IO::MemoryStream next(StreamOver(good));
            ASSERT_TRUE(reader.SetStream(&next, false));
            ASSERT_TRUE(reader.Read());
            EXPECT_EQ(reader.NamespaceURI(), "urn:some-namespace");
            EXPECT_EQ(reader.GetAttribute("x"), "a value of some length");
            EXPECT_EQ(reader.LookupNamespace(""), "");
            ASSERT_TRUE(reader.Read());
            EXPECT_EQ(reader.Value(), "t");
            ASSERT_TRUE(reader.Read());
            EXPECT_FALSE(reader.Read());
            EXPECT_TRUE(reader.Eof());
        }
    }
}

// A failure in Read() leaves the reader in the state of an error.
TEST(ReaderAllocation, AFailureInReadIsAnErrorOfTheReader) {
    for (const std::string& document : kDocuments) {
        bool isDone = false;
        for (long number = 1; !isDone; ++number) {
            SCOPED_TRACE(number);
            IO::MemoryStream stream(StreamOver(document));
            XmlTextReader reader;
            reader.SetStream(&stream, false);
            Ending ending = Ending::Complete;
            {
                const FailingAllocation failure(number);
                ending = EndingOf([&] {
                    while (reader.Read())
                        continue;
                });
                isDone = !failure.HasFailed();
            }
            const bool isComplete = ending == Ending::Complete;
            ASSERT_TRUE(isComplete || (IsFailureOfMemory(ending) && !isDone));
            EXPECT_EQ(reader.ReadState(),
                      isComplete ? XmlTextReader::EndOfFile : XmlTextReader::Error);
            EXPECT_FALSE(reader.Read());
        }
    }
}

// The same where a value begins to be read part by part, and where an entity is put into the input.
TEST(ReaderAllocation, AFailureInAValueIsAnErrorOfTheReader) {
    const std::string document = "<!DOCTYPE a [<!ENTITY e '" + std::string(100, 'y') +
                                 "'>]><a b='&e;" + std::string(100, 'x') + "'/>";
    long failures = 0;
    bool isDone = false;
    for (long number = 1; !isDone; ++number) {
        SCOPED_TRACE(number);
        IO::MemoryStream stream(StreamOver(document));
        XmlTextReader reader;
        reader.SetStream(&stream, false);
        ASSERT_TRUE(reader.Read() && reader.Read() && reader.MoveToFirstAttribute());
        Ending ending = Ending::Complete;
        {
            const FailingAllocation failure(number);
            ending = EndingOf([&] {
                while (reader.ReadAttributeValue()) {
                    if (reader.NodeType() == Xml::XmlNodeType::EntityReference) {
                        reader.ResolveEntity();
                    }
                }
            });
            isDone = !failure.HasFailed();
        }
        if (ending == Ending::Complete) {
            EXPECT_TRUE(reader.NodeType() == Xml::XmlNodeType::Attribute);
            EXPECT_FALSE(reader.Read());
            EXPECT_TRUE(reader.Eof());
            continue;
        }
        ++failures;
        ASSERT_TRUE(IsFailureOfMemory(ending));
        EXPECT_EQ(reader.ReadState(), XmlTextReader::Error);
        EXPECT_TRUE(reader.NodeType() == Xml::XmlNodeType::None);
        EXPECT_FALSE(reader.Read());
    }
    EXPECT_GT(failures, 1);
}

// What was being collected in the text of an entity is not collected any more.
TEST(ReaderAllocation, SetStreamNeedsNoMemoryBehindAnError) {
    const std::string longText(100000, 'y');  // whose markup leaves no memory to the reader
    const std::string document = "<!DOCTYPE a [<!ENTITY e '<b>" + std::string(500, 'x') +
                                 "&undeclared;</b>'>]><a><c>" + longText + "</c>&e;</a>";
    IO::MemoryStream stream(StreamOver(document));
    IO::MemoryStream next(StreamOver("<a/>"));
    XmlTextReader reader;
    reader.SetStream(&stream, false);
    reader.SetEntityHandling(Xml::XmlEntityHandling::ExpandEntities);
    ASSERT_TRUE(reader.Read() && reader.Read() && reader.Read());
    ASSERT_TRUE(reader.ReadInnerXml() == longText && reader.Name() == "b");
    ASSERT_EQ(EndingOf([&] { reader.ReadInnerXml(); }), Ending::OtherError);
    const FailingAllocation failure(1);
    EXPECT_TRUE(reader.SetStream(&next, false));
    EXPECT_FALSE(failure.HasFailed());
}

TEST(ReaderAllocation, CloseNeedsNoMemory) {
    for (const std::string& document : kDocuments) {
        IO::MemoryStream stream(StreamOver(document));
        XmlTextReader reader;
        reader.SetStream(&stream, false);
        for (int i = 0; i < 3; ++i)
            reader.Read();
        {
            const FailingAllocation failure(1);
            reader.Close();
            EXPECT_FALSE(failure.HasFailed());
        }
        EXPECT_EQ(reader.ReadState(), XmlTextReader::Closed);
    }
}

}  // namespace
