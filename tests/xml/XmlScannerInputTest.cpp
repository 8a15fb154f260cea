// SPDX-License-Identifier: MIT

// The input side of the scanner: what it asks of its stream, places, encodings and the capture.

#include <espalier/base/astring.h>
#include <espalier/io/MemoryStream.h>

#include "encoding/Codecs.h"
#include "support/DocumentForms.h"
#include "support/PrintAstring.h"
#include "support/RecordingStream.h"
#include "support/ScannerInput.h"
#include "support/TrickleStream.h"
#include "xml/XmlScanner.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

namespace {

using support::kBytesPerRead;
using support::RecordingStream;
using support::ScannerInput;
using Xml::detail::Place;
using Xml::detail::XmlScanner;
using Xml::detail::XmlToken;

std::string InUtf16(std::string_view ascii, bool bigEndian) {
    std::string bytes;
    for (const char c : ascii) {
        if (bigEndian) bytes += '\0';
        bytes += c;
        if (!bigEndian) bytes += '\0';
    }
    return bytes;
}

std::string InUcs4Be(std::string_view ascii) {
    std::string bytes;
    for (const char c : ascii) {
        bytes.append(3, '\0');
        bytes += c;
    }
    return bytes;
}

// The room that each read had.
std::vector<int> Requests(RecordingStream& stream) {
    std::vector<int> requests;
    for (const std::string& call : stream.TakeCalls()) {
        EXPECT_EQ(call.rfind("Read ", 0), 0u) << call;
        requests.push_back(std::stoi(call.substr(5)));
    }
    return requests;
}

TEST(XmlScannerInput, NothingIsReadBeforeTheStreamIsAttached) {
    RecordingStream stream("<a/>");
    XmlScanner scanner;
    scanner.SetStream(&stream);
    EXPECT_EQ(Requests(stream), std::vector<int>{});
    EXPECT_EQ(scanner.Codec(), nullptr);
    scanner.AttachStream();
    EXPECT_EQ(Requests(stream), std::vector<int>{1024});
}

TEST(XmlScannerInput, AsksForWhatIsMissingFrom1024) {
    RecordingStream stream(std::string(3000, 'a'));
    XmlScanner scanner;
    scanner.SetStream(&stream);
    scanner.AttachStream();
    scanner.Consume(scanner.Position() + 100);
    EXPECT_EQ(scanner.Refill(), XmlScanner::Fill::More);
    EXPECT_EQ(Requests(stream), (std::vector<int>{1024, 100}));
    EXPECT_EQ(scanner.DataEnd() - scanner.Position(), 1024);
    EXPECT_TRUE(scanner.IsFilled());
    // A full buffer asks for nothing.
    EXPECT_EQ(scanner.Refill(), XmlScanner::Fill::Full);
    EXPECT_EQ(Requests(stream), std::vector<int>{});
    scanner.Consume(scanner.DataEnd());
    EXPECT_EQ(scanner.Refill(), XmlScanner::Fill::More);
    EXPECT_EQ(Requests(stream), std::vector<int>{1024});
}

TEST(XmlScannerInput, AStreamThatHasEndedIsNotAskedAgain) {
    RecordingStream stream("abcdef");
    XmlScanner scanner;
    scanner.SetStream(&stream);
    scanner.AttachStream();
    EXPECT_EQ(scanner.Refill(), XmlScanner::Fill::End);
    EXPECT_EQ(Requests(stream), (std::vector<int>{1024, 1018}));
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(scanner.Refill(), XmlScanner::Fill::End);
    EXPECT_EQ(Requests(stream), std::vector<int>{});
}

// A stream whose Read() gives a number of its own.
class LyingStream : public IO::MemoryStream {
public:
    explicit LyingStream(int result) : result_(result) {}
    int Read(unsigned char* buffer, int offset, int count) override {
        std::fill_n(buffer + offset, count, static_cast<unsigned char>('a'));
        return result_;
    }

private:
    int result_;
};

TEST(XmlScannerInput, ResultsOfReadsAreHeldWithinTheRequest) {
    for (const int result : {-1, -1024, 0}) {
        LyingStream stream(result);
        XmlScanner scanner;
        scanner.SetStream(&stream);
        scanner.AttachStream();
        EXPECT_TRUE(scanner.AtEnd()) << result;
    }
    LyingStream stream(100000);
    XmlScanner scanner;
    scanner.SetStream(&stream);
    scanner.AttachStream();
    EXPECT_EQ(scanner.DataEnd() - scanner.Position(), 1024);
}

// Reads a document with tokens of all kinds in the way of the reader's careful one.
void ScanAll(XmlScanner& scanner) {
    astring text;
    for (;;) {
        text.clear();
        const XmlToken token = scanner.ScanText(text);
        if (token == XmlToken::ENDOFFILE) return;
        if (token == XmlToken::ENTITYREF) {
            scanner.ScanName();
        } else if (token == XmlToken::CHARREF) {
            scanner.ScanCharRef(text);
        } else if (token == XmlToken::NONE) {
            switch (scanner.ScanMarkup()) {
            case XmlToken::COMMENT: scanner.ScanComment(text); break;
            case XmlToken::CDATA: scanner.ScanCData(text); break;
            case XmlToken::PI: scanner.ScanPI(text); break;
            default:
                while (scanner.NextMarkupToken() != XmlToken::TAGEND) {
                    if (scanner.QuoteChar() == '"') continue;
                }
            }
        }
    }
}

TEST(XmlScannerInput, RequestsFitIntoTheBufferWhateverIsScanned) {
    std::string document;
    for (int i = 0; i < 100; ++i) {
        document += "<a b = c>" + std::string(static_cast<std::size_t>(i * 7 % 1500), 't') +
                    "&x;&#65; ]] <!-- " + std::string(static_cast<std::size_t>(i % 90), 'c') +
                    " --><![CDATA[]]]]><?p ?\?></a>\n";
    }
    for (const support::DocumentForm& form : support::AllDocumentForms()) {
        const std::optional<std::string> bytes = support::WriteInForm(document, form);
        ASSERT_TRUE(bytes);
        for (const int bytesPerRead : {1024, 1, 3, 7, 600}) {
            RecordingStream recording(*bytes);
            support::TrickleStream stream(recording, bytesPerRead);
            XmlScanner scanner;
            scanner.SetStream(&stream);
            scanner.AttachStream();
            ScanAll(scanner);
            const std::vector<int> requests = Requests(recording);
            ASSERT_GT(requests.size(), 20u);
            EXPECT_LE(*std::max_element(requests.begin(), requests.end()),
                      std::min(bytesPerRead, 1024));
            EXPECT_GE(*std::min_element(requests.begin(), requests.end()), 1);
        }
    }
}

TEST(XmlScannerInput, FindsTheEncodingAndStepsOverTheMark) {
    const struct {
        std::string bytes;
        const char* name;
    } kCases[] = {
        {"<ab>", "UTF-8"},
        {"\xEF\xBB\xBF<ab>", "UTF-8"},
        {"<a>", "UTF-8"},
        {InUtf16("<ab>", false), "UTF-16LE"},
        {InUtf16("<ab>", true), "UTF-16BE"},
        {"\xFF\xFE" + InUtf16("<ab>", false), "UTF-16LE"},
        {"\xFE\xFF" + InUtf16("<ab>", true), "UTF-16BE"},
        {InUcs4Be("<ab>"), "IS0-10646-UCS-4"},
    };
    for (const auto& c : kCases) {
        for (const int bytesPerRead : kBytesPerRead) {
            ScannerInput scanner(c.bytes, bytesPerRead);
            EXPECT_STREQ(scanner->Codec()->Name(), c.name);
            EXPECT_EQ(scanner->CurrentPlace().line, 1);
            EXPECT_EQ(scanner->CurrentPlace().column, 1);
            EXPECT_TRUE(scanner->Accept("<a"));
            EXPECT_EQ(scanner->CurrentPlace().column, 3);
        }
    }
}

TEST(XmlScannerInput, EbcdicIsRefused) {
    support::DocumentStream stream("\x4C\x6F\xA7\x94");
    XmlScanner scanner;
    scanner.SetStream(stream.get());
    EXPECT_THROW_TEXT(scanner.AttachStream(), "EBCDIC encoding not supported", 1, 1);
}

TEST(XmlScannerInput, AnInstalledCodecDecodesFromTheNextCharacterOn) {
    for (const int bytesPerRead : {0, 1, 2, 3, 7, 40}) {
        ScannerInput scanner("ab\n\xC3\xA4|\xC3\xA4 \xE4>" + std::string(2000, '\xFC') + "<",
                             bytesPerRead);
        EXPECT_TRUE(scanner->Accept("ab\n\xC3\xA4|"));
        scanner->InstallCodec(Xml::detail::Latin1Codec());
        EXPECT_STREQ(scanner->Codec()->Name(), "ISO-8859-1");
        EXPECT_EQ(scanner->CurrentPlace().line, 2);
        EXPECT_EQ(scanner->CurrentPlace().column, 3);
        astring text;
        EXPECT_EQ(scanner->ScanText(text), XmlToken::TEXT);
        std::string expected = "\xC3\x83\xC2\xA4 \xC3\xA4>";
        for (int i = 0; i < 2000; ++i)
            expected += "\xC3\xBC";
        EXPECT_EQ(text, expected);
        EXPECT_EQ(scanner->CurrentPlace().column, 3 + 5 + 2000);
    }
}

TEST(XmlScannerInput, ACodecMayBeInstalledAfterDecodedText) {
    for (const int bytesPerRead : {0, 1, 2, 3, 7, 40}) {
        const std::string document = InUtf16("<a\n'", false) + "b\xE4 c\xFC\xDC\xD8\xDC";
        // A stream that ends, and one that goes on over some buffers.
        for (const std::size_t length : {0u, 3000u}) {
            ScannerInput scanner(document + std::string(length, '\xDC') + "<", bytesPerRead);
            EXPECT_STREQ(scanner->Codec()->Name(), "UTF-16LE");
            EXPECT_TRUE(scanner->Accept("<a\n'"));
            scanner->InstallCodec(Xml::detail::Latin1Codec());
            EXPECT_EQ(scanner->CurrentPlace().line, 2);
            EXPECT_EQ(scanner->CurrentPlace().column, 2);
            astring text;
            EXPECT_EQ(scanner->ScanText(text), XmlToken::TEXT);
            std::string expected = "b\xC3\xA4 c\xC3\xBC\xC3\x9C\xC3\x98\xC3\x9C";
            for (std::size_t i = 0; i < length; ++i)
                expected += "\xC3\x9C";
            EXPECT_EQ(text, expected) << bytesPerRead << ' ' << length;
        }
    }
}

TEST(XmlScannerInput, BytesThatAreNoCharacterAreRefusedWhenTheyAreReached) {
    for (const int bytesPerRead : kBytesPerRead) {
        // A low surrogate alone.
        ScannerInput scanner(
            InUtf16("<abc", true) + std::string("\xDC\x00", 2) + InUtf16("d", true), bytesPerRead);
        EXPECT_TRUE(scanner->Accept("<ab"));
        EXPECT_EQ(scanner->CurrentPlace().column, 4);
        astring text;
        EXPECT_THROW_FULL(scanner->ScanText(text), "Invalid character", "", 1, 5);
    }
}

// Deliberate: what is pushed is not judged again; only the length of a sequence is bounded.
TEST(XmlScannerInput, BytesAboveAsciiInAPushedTextAreOrdinary) {
    std::string all;
    for (int byte = 0x80; byte <= 0xFF; ++byte)
        all += static_cast<char>(byte);
    std::string many;
    for (int i = 0; i < 700; ++i)
        many += i % 9 == 0 ? "\x80\x80\x80\x80" : "\xFD\xC0\x93";
    const std::string kTexts[] = {"\xC0\x93",
                                  "\xE2\x82",
                                  "\xFF",
                                  "a\xF0",
                                  "\x80"
                                  "b",
                                  "\xFC\x80 x",
                                  all,
                                  many,
                                  std::string(3000, '\x80'),
                                  std::string(3000, '\xFF')};
    for (const std::string& text : kTexts) {
        for (const char* encoded : {"<r>", "\xFE\xFF\0<"}) {
            ScannerInput scanner(std::string(encoded, 4));
            scanner->PushString(text);
            astring taken;
            EXPECT_EQ(scanner->ScanText(taken), XmlToken::TEXT);
            EXPECT_EQ(taken, text);
            EXPECT_EQ(scanner->ScanText(taken), XmlToken::ENDENTITY);
            scanner->PopState();

            scanner->PushString("<" + text + ">");
            EXPECT_TRUE(scanner->Accept("<"));
            scanner->ScanName();
            scanner->PopState();

            scanner->PushString(text);
            taken.clear();
            EXPECT_EQ(scanner->ScanValuePart(taken), XmlToken::TEXT);
            EXPECT_EQ(taken, text);
            scanner->PopState();
        }
    }
}

TEST(XmlScannerInput, PlacesDoNotDependOnReads) {
    std::string document;
    for (int i = 0; i < 300; ++i)
        document += i % 3 == 0 ? "ab\r\n" : i % 3 == 1 ? "\xC3\xA4 b\r" : "abcdefgh\n\n";
    for (const int bytesPerRead : kBytesPerRead) {
        ScannerInput scanner(document, bytesPerRead);
        int line = 1;
        for (int i = 0; i < 300; ++i) {
            const std::string_view part = i % 3 == 0   ? "ab\r\n"
                                          : i % 3 == 1 ? "\xC3\xA4 b\r"
                                                       : "abcdefgh\n\n";
            ASSERT_TRUE(scanner->Accept(part.substr(0, 2)));
            scanner->MarkNode();
            const Place place = i % 2 == 0 ? scanner->CurrentPlace() : scanner->SettledPlace();
            ASSERT_EQ(place.line, line) << i;
            ASSERT_EQ(place.column, i % 3 == 1 ? 2 : 3) << i;
            ASSERT_TRUE(scanner->Accept(part.substr(2)));
            if (i % 5 == 0) scanner->Refill();
            ASSERT_EQ(scanner->NodePlace().line, line) << i;
            ASSERT_EQ(scanner->NodePlace().column, i % 3 == 1 ? 2 : 3) << i;
            line += i % 3 == 2 ? 2 : 1;
        }
    }
}

TEST(XmlScannerInput, TheCaptureHoldsWhatWasPassed) {
    const std::string middle = std::string(3000, 'a') + "\xC3\xA4" + std::string(500, 'b');
    for (const int bytesPerRead : kBytesPerRead) {
        ScannerInput scanner("before" + middle + "<after", bytesPerRead);
        EXPECT_TRUE(scanner->Accept("before"));
        scanner->StartCapture();
        astring text;
        EXPECT_EQ(scanner->ScanText(text), XmlToken::TEXT);
        EXPECT_EQ(scanner->EndCapture(), middle);
        // The next one starts afresh.
        scanner->StartCapture();
        EXPECT_TRUE(scanner->Accept("<a"));
        EXPECT_EQ(scanner->EndCapture(), "<a");
        scanner->StartCapture();
        EXPECT_EQ(scanner->EndCapture(), "");
    }
}

TEST(XmlScannerInput, TheCaptureGoesOnOverAChangeOfEncoding) {
    for (const int bytesPerRead : {0, 1, 2, 3, 7, 40}) {
        ScannerInput scanner(
            "01\xC3\xA4"
            "2\xE4"
            "3<",
            bytesPerRead);
        EXPECT_TRUE(scanner->Accept("0"));
        scanner->StartCapture();
        EXPECT_TRUE(
            scanner->Accept("1\xC3\xA4"
                            "2"));
        scanner->InstallCodec(Xml::detail::Latin1Codec());
        EXPECT_TRUE(
            scanner->Accept("\xC3\xA4"
                            "3"));
        EXPECT_EQ(scanner->EndCapture(),
                  "1\xC3\xA4"
                  "2\xC3\xA4"
                  "3");
    }
}

TEST(XmlScannerInput, ANewStreamStartsFromTheBeginning) {
    XmlScanner scanner;
    for (int i = 0; i < 3; ++i) {
        const std::string bytes = InUtf16("<a\n", false) + "\x01";
        support::DocumentStream utf16(bytes, i);
        scanner.SetStream(utf16.get());
        scanner.AttachStream();
        scanner.StartCapture();
        EXPECT_TRUE(scanner.Accept("<a\n"));
        EXPECT_EQ(scanner.CurrentPlace().line, 2);

        support::DocumentStream utf8("\nab", i);
        scanner.SetStream(utf8.get());
        EXPECT_EQ(scanner.Codec(), nullptr);
        scanner.AttachStream();
        EXPECT_STREQ(scanner.Codec()->Name(), "UTF-8");
        EXPECT_TRUE(scanner.Accept("\na"));
        EXPECT_EQ(scanner.CurrentPlace().line, 2);
        EXPECT_EQ(scanner.CurrentPlace().column, 2);
        scanner.StartCapture();
        EXPECT_TRUE(scanner.Accept("b"));
        EXPECT_EQ(scanner.EndCapture(), "b");
    }
}

TEST(XmlScannerInput, WhitespaceAndDigitsAreLimitedInTheBytesOfTheEncoding) {
    const struct {
        std::string bytes;
        int most;
    } kCases[] = {{"<abc", 1024}, {InUtf16("<abc", false), 512}, {InUcs4Be("<abc"), 256}};
    for (const auto& c : kCases) {
        ScannerInput scanner(c.bytes);
        EXPECT_EQ(scanner->MostWhitespace(), c.most);
    }
}

}  // namespace
