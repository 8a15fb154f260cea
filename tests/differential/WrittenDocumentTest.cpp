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
#include "support/Sanitizers.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>  // std::move

namespace {

using differential::Detail;
using differential::ExpectSameEvents;
using differential::Reading;

// Documents in each encoding. Under a sanitizer a fifth of them takes as long.
constexpr int kCount = support::kAddressSanitizer ? 400 : 2000;

enum class Layout { None, Indented };

// Leaves out texts of nothing but white space.
Reading WithoutBlanks(Reading reading) {
    std::erase_if(reading.lines, [](const std::string& line) {
        constexpr std::string_view kText = "text \"";
        return line.starts_with(kText) &&
               line.find_first_not_of(" \\nrt", kText.size()) == line.size() - 1;
    });
    return reading;
}

// Writes documents in an encoding. The expected reading is what was written.
void ExpectAgreement(Xml::Encoding& encoding, bool isWide, Layout layout = Layout::None) {
    constexpr unsigned kSeed = 29;
    differential::RandomWriting writing(kSeed);
    std::size_t events = 0;
    std::size_t blanks = 0;  // that the layout has added
    for (int i = 0; i < kCount && !testing::Test::HasFailure(); ++i) {
        IO::MemoryStream stream;
        Xml::XmlTextWriter writer(&stream, &encoding);
        if (layout == Layout::Indented) {
            writing.WriteIndented(writer, isWide);
        } else {
            writing.Write(writer, isWide);
        }
        const std::string document(reinterpret_cast<const char*>(stream.GetBuffer()),
                                   static_cast<std::size_t>(stream.Length()));
        SCOPED_TRACE("document " + std::to_string(i) + "\n" + document);
        const auto compared = [layout](Reading reading) {
            return layout == Layout::Indented ? WithoutBlanks(std::move(reading)) : reading;
        };
        const Reading plain = compared({writing.PlainLines(), ""});
        const Reading standard = compared({writing.StandardLines(), ""});
        const Reading read = differential::ReadUnnormalized(document);
        ExpectSameEvents(plain, compared(read), "the reader");
        blanks += read.lines.size() - plain.lines.size();
        ExpectSameEvents(standard, compared(differential::ReadWithExpat(document, Detail::Whole)),
                         "expat");
        // UTF-16 has no mark where a comment comes first, for which libxml2 asks, as XML 1.0
        // section 4.3.3 does.
        if (document.substr(0, 2).find('\0') == std::string::npos) {
            ExpectSameEvents(standard,
                             compared(differential::ReadWithLibxml(document, Detail::Whole)),
                             "libxml2");
        }
        events += standard.lines.size();
    }
    if (!testing::Test::HasFailure()) {
        EXPECT_GT(events, 10U * kCount);
        EXPECT_EQ(blanks > 2U * kCount, layout == Layout::Indented);
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

TEST(WrittenDocuments, DifferInWhiteSpaceAloneWhenIndented) {
    Xml::UTF8Encoding utf8(false, false);
    ExpectAgreement(utf8, true, Layout::Indented);
    ExpectAgreement(*Xml::Encoding::Latin1(), false, Layout::Indented);
}

}  // namespace
