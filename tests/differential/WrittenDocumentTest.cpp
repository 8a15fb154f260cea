// SPDX-License-Identifier: MIT
//
// Random documents that the writer has written: expat and libxml2 accept them and tell what was
// written, and so does the reader.
#include <espalier/encoding/Encoding.h>
#include <espalier/encoding/UnicodeEncodings.h>
#include <espalier/io/MemoryStream.h>
#include <espalier/xml/XmlTextWriter.h>

#include "Events.h"
#include "RandomWriting.h"
#include "SameEvents.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>

namespace {

using differential::Detail;
using differential::ExpectSameEvents;
using differential::Reading;

constexpr int kCount = 2000;  // documents in each encoding

// Writes documents in an encoding. The expected reading is what was written.
void ExpectAgreement(Xml::Encoding& encoding, bool isWide) {
    constexpr unsigned kSeed = 29;
    differential::RandomWriting writing(kSeed);
    std::size_t events = 0;
    for (int i = 0; i < kCount && !testing::Test::HasFailure(); ++i) {
        IO::MemoryStream stream;
        Xml::XmlTextWriter writer(&stream, &encoding);
        writing.Write(writer, isWide);
        const std::string document(reinterpret_cast<const char*>(stream.GetBuffer()),
                                   static_cast<std::size_t>(stream.Length()));
        SCOPED_TRACE("document " + std::to_string(i) + "\n" + document);
        const Reading plain = {writing.PlainLines(), ""};
        const Reading standard = {writing.StandardLines(), ""};
        ExpectSameEvents(plain, differential::ReadUnnormalized(document), "the reader");
        ExpectSameEvents(standard, differential::ReadWithExpat(document, Detail::Whole), "expat");
        // UTF-16 has no mark where a comment comes first, for which libxml2 asks, as XML 1.0
        // section 4.3.3 does.
        if (document.substr(0, 2).find('\0') == std::string::npos) {
            ExpectSameEvents(standard, differential::ReadWithLibxml(document, Detail::Whole),
                             "libxml2");
        }
        events += standard.lines.size();
    }
    if (!testing::Test::HasFailure()) {
        EXPECT_GT(events, 10U * kCount);
    }
}

TEST(WrittenDocuments, AreWellFormedAndSayWhatWasWrittenInUtf8) {
    Xml::UTF8Encoding plain(false, false);
    ExpectAgreement(plain, true);
    Xml::UTF8Encoding marked(true, false);
    ExpectAgreement(marked, true);
}

TEST(WrittenDocuments, AreWellFormedAndSayWhatWasWrittenInUtf16) {
    for (const bool bigEndian : {false, true}) {
        Xml::UnicodeEncoding encoding(bigEndian, true, false);
        ExpectAgreement(encoding, true);
    }
}

TEST(WrittenDocuments, AreWellFormedAndSayWhatWasWrittenInOneByteACharacter) {
    ExpectAgreement(*Xml::Encoding::Latin1(), false);
}

}  // namespace
