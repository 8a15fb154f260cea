// SPDX-License-Identifier: MIT
//
// The markup of every element of many documents, as it stands in the input.
#include <espalier/xml/XmlTextReader.h>

#include "support/CaseFile.h"
#include "support/DocumentForms.h"
#include "support/ElementFinder.h"
#include "support/MarkupOracle.h"
#include "support/RandomDocument.h"
#include "support/Utf8Text.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace {

using support::DocumentForm;
using support::DocumentReader;
using support::FindElements;
using support::MarkupOracle;
using support::RandomDocument;
using support::ReaderSettings;
using Part = MarkupOracle::Part;
using Xml::XmlEntityHandling;

constexpr auto kEveryHandling = {XmlEntityHandling::ExpandNothing,
                                 XmlEntityHandling::ExpandCharEntities,
                                 XmlEntityHandling::ExpandEntities};

// The finder that these tests rest on.

TEST(ElementFinder, FindsWhatIsATagAndNothingElse) {
    constexpr std::string_view kDocument =
        "<?xml version='1.0'?><!DOCTYPE a [<!ENTITY e \"<x>'\"><!-- <y> ' --><?p <z> '?>]>"
        "<!-- <b> --><a x='>' y=\"'/>\" ><b/><c z='/'></c\n><?q <b>?><![CDATA[</a>]]>"
        "<d></d><!----></a>";
    const auto found = FindElements(kDocument);
    ASSERT_EQ(found.size(), 4U);
    EXPECT_EQ(found[0].name, "a");
    EXPECT_EQ(found[0].outer, kDocument.substr(kDocument.find("<a ")));
    EXPECT_EQ(found[0].inner, "<b/><c z='/'></c\n><?q <b>?><![CDATA[</a>]]><d></d><!---->");
    EXPECT_EQ(found[1].outer, "<b/>");
    EXPECT_EQ(found[1].inner, "");
    EXPECT_TRUE(found[1].isEmptyTag);
    EXPECT_EQ(found[2].outer, "<c z='/'></c\n>");
    EXPECT_EQ(found[2].inner, "");
    EXPECT_FALSE(found[2].isEmptyTag);
    EXPECT_EQ(found[3].outer, "<d></d>");
    for (const char* wrong : {"<a>", "</a>", "<a></b>", "<a><b></a></b>", "<a", "<!--"})
        EXPECT_THROW(FindElements(wrong), std::invalid_argument) << wrong;
}

std::string Latin1ToUtf8(std::string_view bytes) {
    std::string text;
    for (const char byte : bytes)
        support::AppendUtf8(text, static_cast<unsigned char>(byte));
    return text;
}

std::string Utf16LEToUtf8(std::string_view bytes) {
    std::string text;
    const auto unit = [&](std::size_t i) {
        const auto low = static_cast<unsigned char>(bytes[i]);
        const auto high = static_cast<unsigned char>(bytes[i + 1]);
        return static_cast<char32_t>(low + 256 * high);
    };
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
        char32_t code = unit(i);
        if (code >= 0xD800 && code < 0xDC00) {
            i += 2;
            code = 0x10000 + ((code - 0xD800) << 10) + (unit(i) - 0xDC00);
        }
        support::AppendUtf8(text, code);
    }
    return text;
}

// Returns the document in UTF-8 without a mark, by what is known of the samples.
std::string TextOfSample(const std::string& bytes) {
    if (bytes.substr(0, 2) == "\xFF\xFE") return Utf16LEToUtf8(std::string_view(bytes).substr(2));
    if (bytes.find("ISO-8859-1") != std::string::npos) return Latin1ToUtf8(bytes);
    return bytes;
}

TEST(XmlTextReaderSlice, OfEveryElementOfEverySample) {
    std::size_t documents = 0;
    std::size_t elements = 0;
    for (const auto& entry : std::filesystem::directory_iterator(ESPALIER_SAMPLES)) {
        const std::string extension = entry.path().extension().string();
        if (extension != ".xml" && extension != ".svg" && extension != ".xhtml") continue;
        SCOPED_TRACE(entry.path().string());
        std::ifstream file(entry.path(), std::ios::binary);
        const std::string bytes((std::istreambuf_iterator<char>(file)), {});
        const std::string text = TextOfSample(bytes);
        for (const auto entities : kEveryHandling) {
            ReaderSettings settings;
            settings.entities = entities;
            for (const int bytesPerRead : {0, 1, 7, 1023, 1024}) {
                const MarkupOracle oracle(bytes, text, settings, bytesPerRead);
                oracle.ExpectEachElement();
                elements += oracle.ElementCount();
            }
        }
        ++documents;
    }
    EXPECT_GE(documents, 7U);
    EXPECT_GE(elements, 15 * 120U);
}

// Documents that the tests of nodes use, in several encodings.
TEST(XmlTextReaderSlice, OfEveryElementOfEveryCase) {
    std::size_t documents = 0;
    std::size_t elements = 0;
    for (const auto& entry :
         std::filesystem::directory_iterator(std::string(ESPALIER_TEST_CASES) + "/reader")) {
        for (const auto& c : support::CaseFile::Load(entry.path().string()).cases) {
            const bool hasError = ("\n" + c.expected).find("\nerror ") != std::string::npos;
            if (hasError || c.AllowedForms() != support::Forms::All) continue;
            SCOPED_TRACE(entry.path().filename().string() + ": " + c.name);
            const ReaderSettings settings = c.Settings();
            const std::string text = c.Document();
            for (const DocumentForm& form : support::AllDocumentForms()) {
                const std::optional<std::string> bytes = support::WriteInForm(text, form);
                if (!bytes) continue;
                SCOPED_TRACE(form.name);
                for (const int bytesPerRead : {0, 1}) {
                    const MarkupOracle oracle(*bytes, text, settings, bytesPerRead);
                    oracle.ExpectEachElement();
                    elements += oracle.ElementCount();
                }
            }
            ++documents;
        }
    }
    EXPECT_GE(documents, 100U);
    EXPECT_GE(elements, 2000U);
}

// Tags and content moved over the end of the reader's buffer byte by byte.
TEST(XmlTextReaderSlice, AtEveryPlaceOfTheBuffer) {
    const std::string target =
        "<p:b x='1' xmlns:p=\"u\"\n y='&lt;&e;\xC3\xA9'>t &amp; \xE2\x82\xAC&e;"
        "<c/><!-- <d> --><![CDATA[</p:b>]]><?q <e>?><d z=\">\" >\r\n</d ></p:b>";
    for (std::size_t before = 0; before < 1100; ++before) {
        const std::string text = "<r>" + std::string(before, 'x') + target + "<f/>\xC3\xA9</r>";
        for (const int bytesPerRead : {0, 1023})
            MarkupOracle(text, text, {}, bytesPerRead).ExpectEachElement();
        if (HasFailure()) FAIL() << before << " bytes before";
    }
}

TEST(XmlTextReaderSlice, AtEveryPlaceOfTheBufferInOtherEncodings) {
    const std::string target =
        "<b x='\xF0\x9F\x98\x80'>\xF0\x9F\x98\x80 t<c y='2'/>&e;\xE2\x82\xAC</b>";
    for (const DocumentForm& form : support::AllDocumentForms()) {
        SCOPED_TRACE(form.name);
        for (std::size_t before = 0; before < 520; before += 1) {
            const std::string text = "<r>" + std::string(before, 'x') + target + "</r>";
            const std::optional<std::string> bytes = support::WriteInForm(text, form);
            ASSERT_TRUE(bytes);
            MarkupOracle(*bytes, text, {}, before % 2 == 0 ? 0 : 1021).ExpectEachElement();
            if (HasFailure()) FAIL() << before << " characters before";
        }
    }
}

TEST(XmlTextReaderSlice, OfAStartTagOfAnyLength) {
    for (const std::size_t length : {500U, 1000U, 1018U, 1024U, 2048U, 5000U, 100000U}) {
        SCOPED_TRACE(length);
        std::string value = std::string(length, 'v');
        for (std::size_t i = 0; i + 20 < length; i += 50)
            value.replace(i, 13, "\xE2\x82\xAC\n&lt;&e;\xC3\xA9>");
        const std::string text =
            "<r><b x='" + value + "'\ny=\"" + value + "\">t</b>\n<c z='" + value + "'/></r>";
        for (const int bytesPerRead : {0, 1, 7, 1023})
            MarkupOracle(text, text, {}, bytesPerRead).ExpectEachElement();
    }
}

TEST(XmlTextReaderSlice, OfLongContent) {
    std::string text = "<r>";
    for (int i = 0; i < 40; ++i) {
        const std::string number = std::to_string(i);
        text += "<b n='" + number + "'>" + std::string(static_cast<std::size_t>(i) * 90, 't') +
                "<!--" + std::string(700, 'c') + "--><![CDATA[" + std::string(900, 'd') + "]]>" +
                "<?p " + std::string(800, 'i') + "?>" + std::string(300, ' ') + "</b>\n";
    }
    text += "</r>";
    for (const int bytesPerRead : {0, 7, 1023})
        MarkupOracle(text, text, {}, bytesPerRead).ExpectEachElement();
}

TEST(XmlTextReaderSlice, InADocumentInLatin1) {
    std::string bytes = "<?xml version='1.0' encoding='ISO-8859-1'?>\n<r>";
    for (int i = 0; i < 30; ++i) {
        bytes += "<b x='";
        for (int code = 0xA0; code <= 0xFF; ++code)
            bytes.push_back(static_cast<char>(code));
        bytes += "'>\xFC<c/>" + std::string(static_cast<std::size_t>(i), '\xE4') + "</b>\n";
    }
    bytes += "</r>";
    const std::string text = Latin1ToUtf8(bytes);
    for (const int bytesPerRead : {0, 1, 7, 1023}) {
        const MarkupOracle oracle(bytes, text, {}, bytesPerRead);
        EXPECT_EQ(oracle.ElementCount(), 61U);
        oracle.ExpectEachElement();
    }
}

// One reading, in which some elements are entered and some are taken as markup, several in a row.
TEST(XmlTextReaderSlice, OneAfterTheOtherInOneReading) {
    RandomDocument random(20261121);
    std::size_t documents = 0;
    std::size_t taken = 0;
    for (std::size_t i = 0; i < 3000; ++i) {
        const std::string text = random.Write();
        ReaderSettings settings;
        settings.normalization = i % 2 == 0;
        settings.entities = XmlEntityHandling::ExpandNothing;
        settings.whitespace = i % 3 == 0 ? Xml::XmlTextReader::WsNone : Xml::XmlTextReader::WsAll;
        const auto& forms = support::AllDocumentForms();
        const std::string bytes =
            support::WriteInForm(text, forms[i % forms.size()]).value_or(text);
        const int bytesPerRead = i % 4 == 0 ? 0 : static_cast<int>(1 + random.Below(1024));
        // Not well-formed is a duplicate attribute, or a name too long for the buffer.
        DocumentReader trial(bytes, settings);
        if (!support::MessageOf([&] { trial.ReadAll(); }).empty()) continue;
        ++documents;
        const MarkupOracle oracle(bytes, text, settings, bytesPerRead);
        for (const std::size_t often : {1U, 2U, 5U}) {
            oracle.ExpectOnOneWay([&]() -> std::optional<Part> {
                if (random.Below(often) > 0) return std::nullopt;
                ++taken;
                return random.Below(2) == 0 ? Part::Inner : Part::Outer;
            });
        }
        ASSERT_FALSE(HasFailure()) << i << ": " << testing::PrintToString(text);
    }
    EXPECT_GE(documents, 1000U);
    EXPECT_GE(taken, 3000U);
}

}  // namespace
