// SPDX-License-Identifier: MIT
//
// Objects in different threads do not meet: what they share is constant or made once. Most of what
// could go wrong shows under ThreadSanitizer only, and in a process that has used nothing before:
// CTest gives each test one of its own.
#include <espalier/css.h>
#include <espalier/dom.h>
#include <espalier/encoding.h>
#include <espalier/io/Stream.h>
#include <espalier/xml/HashMap.h>
#include <espalier/xml/XmlNsSupport.h>

#include "support/DocumentForms.h"
#include "support/NodeDump.h"
#include "threads/RunAtOnce.h"

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

namespace {

using threads::kThreads;
using threads::RunAtOnce;

// A document that needs most of what readers might share, and ends in an error.
constexpr std::string_view kDocument =
    "<?xml version='1.0'?><p:a xmlns:p='urn:x' p:b=\"1&amp;2\"><!--c-->&e;\n"
    "<![CDATA[<]]>\xF0\x9F\x98\x80&#233;</b>";

// The colon of a qualified name adds nothing to the column.
constexpr char kNodes[] = R"(XmlDeclaration xml "version='1.0'" depth=1 @1:3
  Pseudo version="1.0"
Element p:a prefix=p local=a ns=urn:x depth=1 @1:22
  Attribute xmlns:p='urn:x' prefix=xmlns local=p depth=2 @1:26
  Attribute p:b="1&2" prefix=p local=b ns=urn:x depth=2 @1:41
Comment "c" depth=2 @1:54
EntityReference e depth=2 @1:62
Whitespace "\n" depth=2 @1:65
CDATA "<" depth=2 @2:1
Text "\u{1F600}\u{E9}" depth=2 @2:14
error 2:24 End tag 'b' doesn't match start tag 'p:a' [</b>]
)";

TEST(XmlTextReaderThreads, ReadTheSameBytesInAllEncodingsAtOnce) {
    std::vector<std::string> documents;
    for (const support::DocumentForm& form : support::AllDocumentForms()) {
        if (const auto bytes = support::WriteInForm(kDocument, form)) documents.push_back(*bytes);
    }
    ASSERT_EQ(documents.size(), 10U);

    std::array<std::vector<std::string>, kThreads> dumps;
    RunAtOnce([&](std::size_t number) {
        for (std::size_t i = 0; i < documents.size(); ++i) {
            // Each thread begins with another encoding.
            const std::string& document = documents[(number + i) % documents.size()];
            for (const int bytesPerRead : {0, 1, 7}) {
                dumps[number].push_back(support::DumpDocument(document, {}, bytesPerRead));
            }
        }
    });

    for (const auto& ofOneThread : dumps) {
        EXPECT_EQ(ofOneThread.size(), 3 * documents.size());
        for (const std::string& dump : ofOneThread)
            EXPECT_EQ(dump, kNodes);
    }
}

TEST(EncodingThreads, MakeAndUseTheSharedEncodingsAtOnce) {
    const astring text("a\xE2\x82\xAC");
    const struct {
        Xml::Encoding* (*shared)();
        std::string_view bytes;  // of the text; Convert() writes UTF-16 in one order only
    } kRows[] = {{Xml::Encoding::UTF8, "a\xE2\x82\xAC"},
                 {Xml::Encoding::Unicode, {"a\0\xAC\x20", 4}},
                 {Xml::Encoding::NativeWide, {"a\0\xAC\x20", 4}},
                 {Xml::Encoding::BigEndianUnicode, {"a\0\xAC\x20", 4}},
                 {Xml::Encoding::ASCII, "a?"},
                 {Xml::Encoding::Latin1, "a?"}};
    constexpr std::size_t kRowCount = std::size(kRows);

    std::array<std::array<Xml::Encoding*, kRowCount>, kThreads> seen{};
    std::array<std::array<std::string, kRowCount>, kThreads> written;
    RunAtOnce([&](std::size_t number) {
        const astring copy = text;
        for (std::size_t i = 0; i < kRowCount; ++i) {
            const std::size_t row = (number + i) % kRowCount;
            seen[number][row] = kRows[row].shared();
            unsigned char bytes[16];
            const unsigned count =
                Xml::Encoding::Convert(Xml::Encoding::UTF8(), seen[number][row],
                                       reinterpret_cast<const unsigned char*>(copy.c_str()),
                                       static_cast<unsigned>(copy.length()), bytes, sizeof bytes);
            written[number][row].assign(bytes, bytes + count);
        }
    });

    for (std::size_t number = 0; number < kThreads; ++number) {
        EXPECT_EQ(seen[number], seen[0]);
        for (std::size_t row = 0; row < kRowCount; ++row) {
            EXPECT_EQ(written[number][row], kRows[row].bytes) << "row " << row;
        }
    }
}

// The first maps of a process decide upon what the hash of all of them begins with.
TEST(HashMapThreads, FirstMapsAreMadeAtOnce) {
    constexpr int kKeys = 500;
    std::array<int, kThreads> found{};
    RunAtOnce([&](std::size_t number) {
        Xml::HashMap map(8, true);
        for (int key = 0; key < kKeys; ++key) {
            map.Insert(std::to_string(key).c_str(), &found[number]);
        }
        for (int key = 0; key < kKeys; ++key) {
            if (map.Find(std::to_string(key).c_str()) == &found[number]) ++found[number];
        }
    });
    for (const int count : found)
        EXPECT_EQ(count, kKeys);
}

TEST(StreamThreads, ShareTheNullStream) {
    std::array<IO::Stream*, kThreads> seen{};
    std::array<int, kThreads> read{};
    RunAtOnce([&](std::size_t number) {
        seen[number] = IO::Stream::Null();
        for (int i = 0; i < 100; ++i) {
            seen[number]->WriteByte('a');
            read[number] += seen[number]->ReadByte();
        }
    });
    for (std::size_t number = 0; number < kThreads; ++number) {
        EXPECT_EQ(seen[number], seen[0]);
        EXPECT_EQ(read[number], -100);
    }
}

TEST(EncodingThreads, AskFirstForOneEncodingAtOnce) {
    std::array<Xml::Encoding*, kThreads> seen{};
    RunAtOnce([&seen](std::size_t number) { seen[number] = Xml::Encoding::NativeWide(); });
    for (const Xml::Encoding* encoding : seen)
        EXPECT_EQ(encoding, seen.front());
}

TEST(HashMapThreads, UseCopiesOfOneMapAtOnce) {
    char value[] = "value";
    Xml::HashMap original(8, true);
    for (int key = 0; key < 100; ++key)
        original.Insert(std::to_string(key).c_str(), value);
    std::array<unsigned, kThreads> counts{};
    {
        std::vector<Xml::HashMap> copies(kThreads, original);
        RunAtOnce([&](std::size_t number) {
            Xml::HashMap& copy = copies[number];
            for (int key = 0; key < 100; ++key) {
                if (copy.Find(std::to_string(key).c_str()) != nullptr) ++counts[number];
            }
            copy.Insert("more", value);
            counts[number] += copy.GetItemCount();
        });
    }
    for (const unsigned count : counts)
        EXPECT_EQ(count, 201U);
    EXPECT_EQ(original.GetItemCount(), 100U);
}

TEST(XmlNsSupportThreads, UseContextsOfTheirOwnAtOnce) {
    std::array<int, kThreads> found{};
    RunAtOnce([&found](std::size_t number) {
        sax::XmlNsSupport context;
        for (int round = 0; round < 200; ++round) {
            context.PushContext();
            context.DeclarePrefix("a", "1");
            found[number] += context.GetURI("a") == "1";
            context.PopContext();
            found[number] += context.GetURI("a").empty();
        }
    });
    for (const int count : found)
        EXPECT_EQ(count, 400);
}

TEST(CSSStyleSheetThreads, AskForPropertiesAndMatchAtOnce) {
    constexpr unsigned long kRules = 50;
    Dom::Document document;
    document.LoadXml("<r><p class='k0 k49'/></r>");
    Dom::Element* const element =
        static_cast<Dom::Element*>(document.DocumentElement()->FirstChild());
    Dom::CSS::CSSStyleSheet sheet(Dom::CSS::CSSRule::Author, nullptr, "", "");
    for (unsigned long i = 0; i < kRules; ++i) {
        const std::string number = std::to_string(i);
        sheet.InsertRule(("r > .k" + number + " { margin: " + number + "px }").c_str(), i);
    }
    RunAtOnce([&](std::size_t /*number*/) {
        std::size_t matches = 0;
        for (unsigned long i = 0; i < kRules; ++i) {
            const auto* const rule = static_cast<Dom::CSS::CSSStyleRule*>(sheet.CssRules().Item(i));
            if (rule->MatchesSelector(element, "")) ++matches;
            EXPECT_EQ(rule->Style().Length(), 4U);
            EXPECT_EQ(rule->Style().GetPropertyValue("margin-left"), std::to_string(i) + "px");
        }
        EXPECT_EQ(matches, 2U);
    });
}

}  // namespace
