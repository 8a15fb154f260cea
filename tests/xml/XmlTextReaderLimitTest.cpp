// SPDX-License-Identifier: MIT
//
// The reader works on 1024 bytes of input at a time. A name must fit into them; everything else
// is taken piece by piece and may be of any length, wherever in a piece its parts fall.
#include <espalier/io/Exception.h>
#include <espalier/xml/XmlTextReader.h>

#include "support/CaseFile.h"
#include "support/DocumentForms.h"
#include "support/DocumentReader.h"
#include "support/NodeDump.h"
#include "support/Utf8Text.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

namespace {

using support::DocumentReader;
using Xml::XmlNodeType;

constexpr std::size_t kBuffer = 1024;
constexpr char kNameTooLong[] = "Buffer overflow while reading markup token";

std::string Repeat(const std::string& text, std::size_t count) {
    std::string out;
    for (std::size_t i = 0; i < count; ++i)
        out += text;
    return out;
}

// Returns the message of the error in the document, or "" when it is read to the end.
std::string ErrorOf(const std::string& document, int bytesPerRead = 0) {
    try {
        DocumentReader reader(document, {}, bytesPerRead);
        reader.ReadAll();
        return "";
    } catch (const Xml::Exception& error) {
        return error.What();
    }
}

// A place in a document where a name stands.
struct NamePlace {
    const char* what;
    const char* before;
    const char* after;
    const char* error;  // the message where the name is short enough, or ""
};

constexpr NamePlace kNamePlaces[] = {
    {"empty element", "<", "/>", ""},
    {"start tag", "<", " x='1'/>", ""},
    {"end tag", "<r></", ">", "End tag"},
    {"attribute", "<r ", "='1'/>", ""},
    {"second attribute", "<r x='1' ", " = '1'/>", ""},
    {"attribute after a declaration", "<r xmlns:p='u' ", "='1'/>", ""},
    {"target", "<?", " x?><r/>", ""},
    {"target without data", "<?", "?><r/>", ""},
    {"reference", "<r>x&", ";y</r>", ""},
    {"reference in a value", "<r x='&", ";'/>", ""},
    {"document type", "<!DOCTYPE ", "><r/>", ""},
};

// Runs every place with names of `count` times `unit`, written in the form.
void ExpectNames(const std::string& unit, std::size_t count, const support::DocumentForm& form,
                 bool isTooLong) {
    for (const NamePlace& place : kNamePlaces) {
        // Moved along by a comment, so that the name begins anywhere in the first buffer.
        for (const std::size_t pad : {0U, 1U, 500U, 1000U, 1011U, 1024U}) {
            const std::string utf8 = "<!--" + std::string(pad, 'c') + "-->" + place.before +
                                     Repeat(unit, count) + place.after;
            const auto document = support::WriteInForm(utf8, form);
            ASSERT_TRUE(document.has_value());
            for (const int bytesPerRead : {0, 1, 7}) {
                SCOPED_TRACE(std::string(place.what) + " in " + form.name + ", " +
                             std::to_string(count) + " characters after " + std::to_string(pad) +
                             ", bytes per read: " + std::to_string(bytesPerRead));
                const std::string error = ErrorOf(*document, bytesPerRead);
                if (isTooLong) {
                    EXPECT_EQ(error, kNameTooLong);
                } else {
                    EXPECT_EQ(error.substr(0, std::string(place.error).size()), place.error);
                    EXPECT_EQ(error.empty(), *place.error == '\0') << error;
                }
            }
        }
    }
}

TEST(XmlTextReaderLimit, NamesOf1024BytesPassAndLongerOnesFail) {
    for (const support::DocumentForm& form : support::AllDocumentForms()) {
        using Unit = support::DocumentForm::Unit;
        const bool isUtf8 = form.unit == Unit::Utf8;
        const bool isUtf16 = form.unit == Unit::Utf16LE || form.unit == Unit::Utf16BE;
        const std::size_t most = isUtf8 ? kBuffer : isUtf16 ? kBuffer / 2 : kBuffer / 4;
        ExpectNames("n", most - 1, form, false);
        ExpectNames("n", most, form, false);
        ExpectNames("n", most + 1, form, true);
        ExpectNames("n", most * 3, form, true);
    }
}

TEST(XmlTextReaderLimit, BytesAndNotCharactersOfANameCount) {
    const support::DocumentForm& utf8 = support::AllDocumentForms().front();
    ExpectNames("\xC3\xA9", kBuffer / 2, utf8, false);
    ExpectNames("\xC3\xA9", kBuffer / 2 + 1, utf8, true);
    ExpectNames("\xEA\xB0\x80", kBuffer / 3, utf8, false);
    ExpectNames("\xEA\xB0\x80", kBuffer / 3 + 1, utf8, true);
}

TEST(XmlTextReaderLimit, ANameOf1024BytesIsReportedWhole) {
    const std::string name(kBuffer, 'n');
    DocumentReader reader("<" + name + " " + name + "='1'></" + name + ">");
    reader.ReadNodes(1);
    EXPECT_EQ(reader->Name(), name);
    ASSERT_TRUE(reader->MoveToFirstAttribute());
    EXPECT_EQ(reader->Name(), name);
    EXPECT_EQ(reader->Value(), "1");
    reader.ReadNodes(1);
    EXPECT_EQ(reader->NodeType(), XmlNodeType::EndElement);
    EXPECT_EQ(reader->Name(), name);
}

TEST(XmlTextReaderLimit, PrefixAndLocalNameFitTogether) {
    const std::string local(kBuffer - 2, 'n');
    DocumentReader reader("<p:" + local + " xmlns:p='urn:p'/>");
    reader.ReadNodes(1);
    EXPECT_EQ(reader->Prefix(), "p");
    EXPECT_EQ(reader->LocalName(), local);
    EXPECT_EQ(reader->NamespaceURI(), "urn:p");
    EXPECT_EQ(ErrorOf("<p:" + local + "n xmlns:p='urn:p'/>"), kNameTooLong);
}

TEST(XmlTextReaderLimit, ACharacterReferenceIsLimitedLikeAName) {
    const std::string few(900, '0');
    const std::string many(2000, '0');
    EXPECT_EQ(ErrorOf("<a>&#" + few + "65;</a>"), "");
    EXPECT_EQ(ErrorOf("<a x='&#x" + few + "41;'/>"), "");
    for (const int bytesPerRead : {0, 1, 7}) {
        EXPECT_EQ(ErrorOf("<a>&#" + many + "65;</a>", bytesPerRead), "Input buffer overflow");
        EXPECT_EQ(ErrorOf("<a x='&#x" + many + "41;'/>", bytesPerRead), "Input buffer overflow");
    }
}

// White space in content comes in runs of at most one buffer.

std::vector<std::string> WhitespaceRuns(const std::string& document, int bytesPerRead) {
    DocumentReader reader(document, {}, bytesPerRead);
    std::vector<std::string> runs;
    while (reader->Read()) {
        if (reader->NodeType() == XmlNodeType::Whitespace) runs.push_back(reader->Value().str());
    }
    return runs;
}

TEST(XmlTextReaderLimit, WhitespaceIsReportedInRunsOf1024Bytes) {
    for (const std::size_t length : {1023U, 1024U, 1025U, 2048U, 2049U, 5000U}) {
        std::vector<std::string> expected;
        for (std::size_t left = length; left > 0;) {
            const std::size_t run = std::min(left, kBuffer);
            expected.emplace_back(run, ' ');
            left -= run;
        }
        for (const int bytesPerRead : {0, 1, 2, 3, 7}) {
            SCOPED_TRACE(std::to_string(length) + ", " + std::to_string(bytesPerRead));
            const std::string blanks(length, ' ');
            EXPECT_EQ(WhitespaceRuns("<a>" + blanks + "<b/></a>", bytesPerRead), expected);
            EXPECT_EQ(WhitespaceRuns("<a/>" + blanks, bytesPerRead), expected);
            EXPECT_EQ(WhitespaceRuns("<!---->" + blanks + "<a/>", bytesPerRead), expected);
        }
    }
}

TEST(XmlTextReaderLimit, ARunOf1024BytesIs512CharactersInUtf16) {
    const auto document =
        support::WriteInForm("<a>" + std::string(600, ' ') + "<b/></a>",
                             {"UTF-16LE", support::DocumentForm::Unit::Utf16LE, false});
    for (const int bytesPerRead : {0, 1, 3}) {
        const std::vector<std::string> runs = WhitespaceRuns(*document, bytesPerRead);
        ASSERT_EQ(runs.size(), 2U);
        EXPECT_EQ(runs[0].size(), 512U);
        EXPECT_EQ(runs[1].size(), 88U);
    }
}

TEST(XmlTextReaderLimit, RunsOfWhitespaceKeepCountOfLines) {
    DocumentReader reader("<a>" + std::string(3000, '\n') + " <b/></a>");
    const int kLines[] = {1, 1, 1025, 2049, 3001};
    for (const int line : kLines) {
        ASSERT_TRUE(reader->Read());
        EXPECT_EQ(reader->LineNumber(), line);
    }
    EXPECT_EQ(reader->Name(), "b");
    EXPECT_EQ(reader->LinePosition(), 2);
}

TEST(XmlTextReaderLimit, WhitespaceThatFillsABufferIsNoPartOfTheTextAfterIt) {
    for (const int bytesPerRead : {0, 1, 7}) {
        SCOPED_TRACE(bytesPerRead);
        DocumentReader shorter("<a>" + std::string(1023, ' ') + "x</a>", {}, bytesPerRead);
        shorter.ReadNodes(2);
        EXPECT_EQ(shorter->NodeType(), XmlNodeType::Text);
        EXPECT_EQ(shorter->Value(), std::string(1023, ' ') + "x");

        DocumentReader longer("<a>" + std::string(1025, ' ') + "x</a>", {}, bytesPerRead);
        longer.ReadNodes(2);
        EXPECT_EQ(longer->NodeType(), XmlNodeType::Whitespace);
        EXPECT_EQ(longer->Value().size(), 1024U);
        longer.ReadNodes(1);
        EXPECT_EQ(longer->NodeType(), XmlNodeType::Text);
        EXPECT_EQ(longer->Value(), " x");
    }
}

// The token that is not expected is as long as a buffer, however the stream gives its bytes.
TEST(XmlTextReaderLimit, TextOutsideTheRootElementIsNamedByOneBuffer) {
    const std::string texts[] = {
        std::string(1023, 'x') + "yz",
        " " + std::string(1022, 'x') + "yz",
        std::string(500, '\t') + std::string(523, 'x') + "y" + std::string(500, 'z'),
        std::string(1022, 'x') + "\xC3\xA9",
    };
    for (const std::string& text : texts) {
        for (const int bytesPerRead : {0, 1, 2, 3, 7}) {
            SCOPED_TRACE(text.substr(1020) + ", " + std::to_string(bytesPerRead));
            try {
                DocumentReader reader(text + "<a/>", {}, bytesPerRead);
                reader->Read();
                FAIL() << "is accepted";
            } catch (const Xml::Exception& error) {
                EXPECT_STREQ(error.What(), "Unexpected token");
                EXPECT_EQ(error.Argument(), text.substr(0, kBuffer));
                EXPECT_EQ(error.LineNumber(), 1);
                EXPECT_EQ(error.LinePos(), text.ends_with('z') ? 1025 : 1024);
            }
        }
    }
}

// What may be of any length.

struct LongConstruct {
    const char* what;
    const char* before;
    const char* unit;   // repeated in the document
    const char* value;  // what the unit gives in the value
    const char* after;
    int node;  // the number of the node that has the value, from 1 on
    bool isAttribute;
};

constexpr LongConstruct kLongConstructs[] = {
    {"text", "<a>", "x] ]]y\n-- ?", "x] ]]y\n-- ?", "</a>", 2, false},
    {"text with references", "<a>", "x&lt;&#65; &amp;y", "x<A &y", "</a>", 2, false},
    {"text of references", "<a>", "&amp;", "&", "</a>", 2, false},
    {"text beyond ASCII", "<a>", "\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80",
     "\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80", "</a>", 2, false},
    {"text with line ends", "<a>x", "\r\ny\r\n\r", "\r\ny\r\n\r", "</a>", 2, false},
    {"text of white space after a character", "<a>x", " \n\t ", " \n\t ", "</a>", 2, false},
    {"section", "<a><![CDATA[", "]]x]>\n", "]]x]>\n", "]]></a>", 2, false},
    {"section of brackets", "<a><![CDATA[", "]", "]", "]]></a>", 2, false},
    {"section beyond ASCII", "<a><![CDATA[", "\xF0\x9F\x98\x80]", "\xF0\x9F\x98\x80]", "]]></a>", 2,
     false},
    {"comment", "<!--", "-a\r\n", "-a\r\n", "--><a/>", 1, false},
    {"comment of one kind", "<!--", "<", "<", "--><a/>", 1, false},
    {"instruction", "<?pi ", "?? >\n", "?? >\n", "?><a/>", 1, false},
    {"instruction of question marks", "<?pi ", "?", "?", "?><a/>", 1, false},
    {"value", "<a x='", "1\" \r\n>]]>", "1\" \r\n>]]>", "'/>", 1, true},
    {"value with references", "<a x='", "&quot;&#x42; ", "\"B ", "'/>", 1, true},
    {"value beyond ASCII", "<a x=\"", "\xE2\x82\xAC", "\xE2\x82\xAC", "\"/>", 1, true},
    {"declaration of a namespace", "<a xmlns='", "urn:long:", "urn:long:", "'/>", 1, true},
};

void ExpectLongConstruct(const LongConstruct& construct, std::size_t count, int bytesPerRead) {
    DocumentReader reader(construct.before + Repeat(construct.unit, count) + construct.after, {},
                          bytesPerRead);
    reader.ReadNodes(construct.node);
    if (construct.isAttribute) {
        ASSERT_TRUE(reader->MoveToFirstAttribute());
    }
    std::string value = Repeat(construct.value, count);
    if (std::string(construct.before) == "<a>x") value.insert(0, 1, 'x');
    // Compared by hand: a difference of megabytes says nothing when printed.
    EXPECT_EQ(reader->Value().size(), value.size());
    EXPECT_TRUE(reader->Value() == value);
    reader.ReadAll();
    EXPECT_TRUE(reader->Eof());
}

TEST(XmlTextReaderLimit, AllElseMayBeOfAnyLength) {
    for (const LongConstruct& construct : kLongConstructs) {
        const std::size_t unit = std::string(construct.unit).size();
        for (const std::size_t bytes : {1000U, 1020U, 1024U, 1030U, 2048U, 5000U, 300000U}) {
            for (const int bytesPerRead : {0, 1, 7}) {
                SCOPED_TRACE(std::string(construct.what) + ", " + std::to_string(bytes) +
                             " bytes, " + std::to_string(bytesPerRead));
                ExpectLongConstruct(construct, bytes / unit, bytesPerRead);
            }
        }
    }
}

TEST(XmlTextReaderLimit, ATagMayBeLongerThanABuffer) {
    std::string document = "<a";
    for (int i = 0; i < 500; ++i) {
        document += " name" + std::to_string(i) + "='value " + std::to_string(i) + "'";
    }
    for (const int bytesPerRead : {0, 1, 7}) {
        DocumentReader reader(document + "/>", {}, bytesPerRead);
        reader.ReadNodes(1);
        ASSERT_EQ(reader->AttributeCount(), 500);
        for (int i = 0; i < 500; ++i) {
            EXPECT_EQ(reader->GetAttribute(i), "value " + std::to_string(i));
            EXPECT_EQ(reader->GetAttribute("name" + std::to_string(i)),
                      "value " + std::to_string(i));
        }
    }
}

TEST(XmlTextReaderLimit, WhiteSpaceInTagsMayBeOfAnyLength) {
    const std::string blanks(5000, ' ');
    EXPECT_EQ(ErrorOf("<a" + blanks + "x" + blanks + "=" + blanks + "'1'" + blanks + ">" + "</a" +
                      blanks + "><?pi" + blanks + "x?>"),
              "");
    EXPECT_EQ(
        ErrorOf("<?xml" + blanks + "version" + blanks + "=" + blanks + "'1.0'" + blanks + "?><a/>"),
        "");
}

TEST(XmlTextReaderLimit, ADocumentTypeMayBeOfAnyLength) {
    const std::string subset =
        Repeat("<!ELEMENT a (b|c)*>\n<!-- ]> ' -->\n<?pi ]>?>\n<!ATTLIST a x CDATA ']>'>\n", 200);
    for (const int bytesPerRead : {0, 1, 7}) {
        DocumentReader reader("<!DOCTYPE a [" + subset + "]><a/>", {}, bytesPerRead);
        reader.ReadNodes(2);
        EXPECT_EQ(reader->Name(), "a");
        EXPECT_EQ(reader->NodeType(), XmlNodeType::Element);
        EXPECT_EQ(reader->LineNumber(), 801);
    }
    const std::string longLiteral(5000, '>');
    EXPECT_EQ(ErrorOf("<!DOCTYPE a [<!ATTLIST a x CDATA '" + longLiteral + "'>]><a/>"), "");
    EXPECT_EQ(ErrorOf("<!DOCTYPE a [<!--" + longLiteral + "-->]><a/>"), "");
    EXPECT_EQ(ErrorOf("<!DOCTYPE a [<?pi " + longLiteral + "?>]><a/>"), "");
    EXPECT_EQ(ErrorOf("<!DOCTYPE a [<!ENTITY e '" + longLiteral + "'>]><a/>"), "");
}

// Every token at every place relative to the edge of the buffer.

// The nodes of the document after a first comment, which ends at the start of a line.
std::string NodesAfterComment(const std::string& document, std::size_t padding,
                              const support::ReaderSettings& settings, int bytesPerRead) {
    const std::string nodes = support::DumpDocument(
        "<!--" + std::string(padding, 'c') + "\n-->" + document, settings, bytesPerRead);
    return nodes.substr(nodes.find('\n') + 1);
}

constexpr const char* kSmallDocuments[] = {
    "<a x=\"1\" long-name='two \xC3\xA9 &amp; &#65;&#x1F600;'>t\xE2\x82\xACxt</a>",
    "<p:a xmlns:p=\"urn:p\" xmlns='u'><b p:x='1'/>\r\n<p:c></p:c  ></p:a  >",
    "<a><!-- c - c --><![CDATA[ ]] > ]]]]><?pi  d?d\?>\r\n\r\r\n</a>\r\n",
    "<!DOCTYPE a SYSTEM 'x>' [<!ELEMENT a (b)><!-- ' --><!ENTITY e \"]>\"><?p ]>?>]>\n<a/>",
    "<a>&amp;&lt;x&#10;]]&gt;&entity;&e2; y&quot;</a>",
    "<a xml:lang='en' xml:space=\"preserve\">  <b xml:space='default'> </b>\t</a>",
    "<a>one<b>two</b>\n\n\nthree<c/>four\r</a>",
    "<a\n\tx = '1\r\n2'\r\n\ty\r=\r\"3\"\n/>",
    "<a><b></c></a>",
    "<a>x]]>y</a>",
    "<a><!-- a--b --></a>",
    "<a x='1' y='2' x='3'/>",
    "<a>\xC3\xA9&#x110000;</a>",
    "<a><b x='1'>text",
    "<a><![CDATA[x]]",
};

TEST(XmlTextReaderLimit, DocumentsAreReadAlikeAtEveryPlace) {
    for (const char* document : kSmallDocuments) {
        SCOPED_TRACE(document);
        const std::string expected = NodesAfterComment(document, 0, {}, 0);
        for (std::size_t padding = 1; padding <= 1100; ++padding) {
            ASSERT_EQ(NodesAfterComment(document, padding, {}, 0), expected) << padding;
        }
    }
}

TEST(XmlTextReaderLimit, DocumentsAreReadAlikeBehindTextOfAnyLength) {
    // As the comment above, but the padding is text inside the element around the document, and
    // the stream gives odd numbers of bytes.
    const auto nodesAfterText = [](const std::string& document, std::size_t padding) {
        const std::string nodes = support::DumpDocument(
            "<r>\n" + std::string(padding, 't') + "\n" + document + "</r>", {}, 777);
        return nodes.substr(nodes.find('\n', nodes.find('\n') + 1) + 1);
    };
    for (const char* document : kSmallDocuments) {
        SCOPED_TRACE(document);
        const std::string expected = nodesAfterText(document, 1);
        for (std::size_t padding = 2; padding <= 1100; ++padding) {
            ASSERT_EQ(nodesAfterText(document, padding), expected) << padding;
        }
    }
}

TEST(XmlTextReaderLimit, EveryCaseIsReadAlikeAcrossTheEdge) {
    int documents = 0;
    const std::string folder = std::string(ESPALIER_TEST_CASES) + "/reader";
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        for (const support::ReaderCase& readerCase :
             support::CaseFile::Load(entry.path().string()).cases) {
            SCOPED_TRACE(readerCase.name);
            const std::string document = readerCase.Document();
            const support::ReaderSettings settings = readerCase.Settings();
            const std::string expected = NodesAfterComment(document, 0, settings, 0);
            // The comment takes 8 bytes beside the padding.
            const std::size_t first =
                document.size() > kBuffer - 8 ? 0 : kBuffer - 8 - document.size();
            for (std::size_t padding = first; padding <= kBuffer; ++padding) {
                ASSERT_EQ(NodesAfterComment(document, padding, settings, 0), expected) << padding;
            }
            ++documents;
        }
    }
    EXPECT_GT(documents, 200);
}

TEST(XmlTextReaderLimit, WideDocumentsAreReadAlikeAcrossTheEdge) {
    for (const support::DocumentForm& form : support::AllDocumentForms()) {
        const std::size_t width = support::WriteInForm("<aaa", form)->size() / 4;
        for (const char* document : kSmallDocuments) {
            SCOPED_TRACE(std::string(form.name) + ": " + document);
            const auto nodes = [&](std::size_t padding) {
                const auto bytes = support::WriteInForm(
                    "<!--" + std::string(padding, 'c') + "\n-->" + document, form);
                const std::string dump = support::DumpDocument(bytes.value());
                return dump.substr(dump.find('\n') + 1);
            };
            const std::string expected = nodes(0);
            const std::size_t last = kBuffer / width;
            const std::size_t span = std::min(last, std::string(document).size() + 10);
            for (std::size_t padding = last - span; padding <= last; ++padding) {
                ASSERT_EQ(nodes(padding), expected) << padding;
            }
        }
    }
}

}  // namespace
