// SPDX-License-Identifier: MIT
#include <espalier/xml/XmlTextWriter.h>

#include "support/DocumentWriter.h"
#include "support/EscapedText.h"
#include "support/ExpectThrow.h"
#include "support/Sanitizers.h"
#include "support/Utf8Text.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace {

using support::AppendUtf8;
using support::DocumentWriter;
using support::Escape;
using support::kStride;
using Xml::NewLineHandling;
using Xml::WriteState;
using Xml::XmlTextWriter;

using namespace std::string_view_literals;

constexpr NewLineHandling kHandlings[] = {NewLineHandling::NoHandling, NewLineHandling::Entitize,
                                          NewLineHandling::Replace};

enum class Where { Content, Attribute };

struct Settings {
    Where where = Where::Content;
    NewLineHandling handling = NewLineHandling::Replace;
    char quote = '"';
    bool check = true;
    const char* newLine = "\r\n";
};

std::string NameOf(const Settings& settings) {
    const char* const kHandlingNames[] = {"NoHandling", "Entitize", "Replace"};
    return std::string(settings.where == Where::Content ? "content" : "attribute") + ", " +
           kHandlingNames[static_cast<int>(settings.handling)] + ", quote " + settings.quote +
           (settings.check ? ", checked" : ", unchecked");
}

// A writer within an element's content or an attribute's value.
class TextWriter {
public:
    explicit TextWriter(const Settings& settings) {
        writer_->SetNewLineHandling(settings.handling);
        writer_->SetQuoteChar(settings.quote);
        writer_->SetCheckCharacters(settings.check);
        writer_->SetNewLineChars(settings.newLine);
        writer_->WriteStartElement("r");
        if (settings.where == Where::Attribute) {
            writer_->WriteStartAttribute("x");
        } else {
            writer_->WriteRaw("-");
        }
        writer_.Take();
    }

    XmlTextWriter* operator->() { return &*writer_; }

    std::string Take() { return writer_.Take(); }

    // Returns what a text becomes.
    std::string Write(std::string_view text) {
        writer_->WriteString(text);
        return writer_.Take();
    }

private:
    DocumentWriter writer_;
};

std::string Written(const Settings& settings, std::string_view text) {
    return TextWriter(settings).Write(text);
}

template <typename Call>
void ForAllSettings(Call call) {
    for (const Where where : {Where::Content, Where::Attribute}) {
        for (const NewLineHandling handling : kHandlings) {
            for (const char quote : {'"', '\''}) {
                for (const bool check : {true, false}) {
                    const Settings settings{where, handling, quote, check, "\r\n"};
                    SCOPED_TRACE(NameOf(settings));
                    call(settings);
                }
            }
        }
    }
}

// Returns what a character alone becomes; the CR of an attribute takes the next one with it.
std::string OfBlank(char character, const Settings& settings) {
    const bool inContent = settings.where == Where::Content;
    const std::string itself(1, character);
    switch (settings.handling) {
    case NewLineHandling::NoHandling: return itself;
    case NewLineHandling::Entitize:
        if (character == '\r') return "&#xD;";
        if (inContent) return itself;
        return character == '\n' ? "&#xA;" : "&#x9;";
    case NewLineHandling::Replace:
        if (inContent) return character == '\t' ? itself : settings.newLine;
        return character == '\t' ? "&#x9;" : "&#xA;";
    }
    return "?";
}

std::string OfAscii(char character, const Settings& settings) {
    switch (character) {
    case '<': return "&lt;";
    case '>': return "&gt;";
    case '&': return "&amp;";
    case '"': return "&quot;";
    case '\'': return "&apos;";
    case '\t':
    case '\n':
    case '\r': return OfBlank(character, settings);
    default: return std::string(1, character);
    }
}

bool ConsumesTheNext(char character, const Settings& settings) {
    return character == '\r' && settings.where == Where::Attribute &&
           settings.handling == NewLineHandling::Replace;
}

// No control code but tab, LF and CR is a character, and no byte above 0x7F alone; DEL is.
bool IsCharacter(int byte) {
    return byte == '\t' || byte == '\n' || byte == '\r' || (byte >= 0x20 && byte < 0x80);
}

TEST(XmlTextWriterEscape, AllBytes) {
    ForAllSettings([](const Settings& settings) {
        for (int byte = 0; byte < 256; ++byte) {
            const char character = static_cast<char>(byte);
            const std::string text = std::string("x") + character + "yz";
            SCOPED_TRACE(Escape(text));
            if (settings.check && !IsCharacter(byte)) {
                TextWriter writer(settings);
                EXPECT_THROW_FULL(writer->WriteString(text), "Invalid XML character", "", -1, -1);
                EXPECT_EQ(writer.Take(), "");
            } else {
                const bool consumes = ConsumesTheNext(character, settings);
                EXPECT_EQ(Written(settings, text),
                          "x" + OfAscii(character, settings) + (consumes ? "z" : "yz"));
            }
        }
    });
}

TEST(XmlTextWriterEscape, AllPairsOfAsciiCharactersUnderEverySetting) {
    ForAllSettings([](const Settings& settings) {
        TextWriter writer(settings);
        for (char first = '\t'; first != 0x7F; ++first) {
            for (const char second : "\t\n\r a&<>\"'"sv) {
                if (!IsCharacter(first)) continue;
                std::string expected = OfAscii(first, settings);
                const bool pair = first == '\r' && second == '\n';
                const bool joined = pair && settings.where == Where::Content &&
                                    settings.handling == NewLineHandling::Replace;
                if (!joined && !ConsumesTheNext(first, settings)) {
                    expected += OfAscii(second, settings);
                }
                const std::string text{first, second};
                EXPECT_EQ(writer.Write(text), expected) << Escape(text);
            }
        }
    });
}

// Each plane in pieces of 256 characters, all of which are written as they are, C1 controls too.
TEST(XmlTextWriterEscape, AllPlanes) {
    for (const bool check : {true, false}) {
        for (const Where where : {Where::Content, Where::Attribute}) {
            TextWriter writer({.where = where, .check = check});
            for (char32_t first = 0; first < 0x110000; first += 0x100 * kStride) {
                if (first >= 0xD800 && first < 0xE000) continue;
                std::string text;
                for (char32_t code = first == 0 ? 0x7F : first; code < first + 0x100; ++code)
                    AppendUtf8(text, code);
                ASSERT_EQ(writer.Write(text), text) << std::hex << static_cast<unsigned>(first);
            }
        }
    }
}

TEST(XmlTextWriterEscape, AllCharactersBesideOneThatIsEscaped) {
    TextWriter writer({});
    std::string text;
    std::string expected;
    for (char32_t code = 0x80; code < 0x110000; code += code < 0x3000 ? 1 : 97) {
        if (code >= 0xD800 && code < 0xE000) continue;
        for (std::string* each : {&text, &expected}) {
            *each += '<';
            AppendUtf8(*each, code);
        }
        expected.replace(expected.rfind('<'), 1, "&lt;");
    }
    EXPECT_TRUE(writer.Write(text) == expected);
}

const std::string_view kInvalid[] = {
    "\x00"sv,                    // NUL
    "\x1F",                      //
    "\x80",                      // a continuation byte alone
    "\xC0\x80",                  // overlong
    "\xC1\xBF",                  //
    "\xE0\x9F\xBF",              //
    "\xF0\x8F\xBF\xBF",          //
    "\xED\xA0\x80",              // a surrogate
    "\xED\xBF\xBF",              //
    "\xF4\x90\x80\x80",          // above U+10FFFF
    "\xF5\x80\x80\x80",          //
    "\xF8\x88\x80\x80\x80",      // forms of five and six bytes
    "\xFC\x84\x80\x80\x80\x80",  //
    "\xFE",                      // bytes that never occur
    "\xFF",                      //
    "\xC3",                      // cut off
    "\xE2\x82",                  //
    "\xF0\x9F\x98",              //
    "\xC3(",                     // the second byte is none
    "\xE2(\x82",                 //
    "\xE2\x82(",                 //
    "\xF0\x9F\x98(",             //
};

TEST(XmlTextWriterEscape, InvalidCharactersAreRefusedAnywhere) {
    for (const Where where : {Where::Content, Where::Attribute}) {
        for (const std::string_view invalid : kInvalid) {
            for (const std::size_t before : {0u, 1u, 7u, 15u, 16u, 17u, 31u, 64u, 1000u, 5000u}) {
                for (const std::size_t after : {0u, 1u, 15u, 64u}) {
                    std::string text(before, 'a');
                    text += invalid;
                    text.append(after, 'b');
                    SCOPED_TRACE(Escape(invalid) + " after " + std::to_string(before));
                    TextWriter writer({.where = where});
                    EXPECT_THROW_FULL(writer->WriteString(text), "Invalid XML character", "", -1,
                                      -1);
                    ASSERT_EQ(writer.Take(), "");
                }
            }
        }
    }
}

TEST(XmlTextWriterEscape, UncheckedBytesAreCopied) {
    for (const Where where : {Where::Content, Where::Attribute}) {
        for (const std::string_view invalid : kInvalid) {
            for (const std::string_view after : {"", "b", "bbbbbbbbbbbbbbbbbbbb"}) {
                const std::string text = "a" + std::string(invalid) + std::string(after);
                EXPECT_EQ(Written({.where = where, .check = false}, text), text) << Escape(text);
            }
        }
    }
}

// A broken sequence does not hide markup: its bytes are taken one at a time, also behind a CR.
TEST(XmlTextWriterEscape, MarkupBehindBrokenBytesIsEscaped) {
    for (const std::string broken : {"\xC3", "\xE2", "\xE2\x82", "\xF0\x9F\x98", "\xF8"}) {
        SCOPED_TRACE(Escape(broken));
        EXPECT_EQ(Written({.check = false}, broken + "<b&c"), broken + "&lt;b&amp;c");
        EXPECT_EQ(Written({.check = false}, broken + "<"), broken + "&lt;");
        EXPECT_EQ(Written({.where = Where::Attribute, .check = false}, "\r" + broken + "<b"),
                  "&#xA;" + broken.substr(1) + "&lt;b");
    }
}

TEST(XmlTextWriterEscape, LineBreaksInContent) {
    const struct {
        const char* text;
        const char* entitized;
        const char* replaced;
    } kCases[] = {
        {"a\nb", "a\nb", "a|b"},
        {"a\rb", "a&#xD;b", "a|b"},
        {"a\r\nb", "a&#xD;\nb", "a|b"},
        {"a\n\rb", "a\n&#xD;b", "a||b"},
        {"a\r\r\nb", "a&#xD;&#xD;\nb", "a||b"},
        {"a\r\n\nb", "a&#xD;\n\nb", "a||b"},
        {"\r", "&#xD;", "|"},
        {"\n", "\n", "|"},
        {"\r\n", "&#xD;\n", "|"},
        {"a\tb", "a\tb", "a\tb"},
        {"\r<", "&#xD;&lt;", "|&lt;"},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(Escape(c.text));
        for (const char* newLine : {"\n", "\r\n", "\r", " \t\r\n", ""}) {
            Settings settings{.newLine = newLine};
            std::string replaced;
            for (const char character : std::string_view(c.replaced))
                replaced += character == '|' ? std::string(newLine) : std::string(1, character);
            EXPECT_EQ(Written(settings, c.text), replaced);
            settings.handling = NewLineHandling::Entitize;
            EXPECT_EQ(Written(settings, c.text), c.entitized);
        }
    }
}

TEST(XmlTextWriterEscape, LineBreaksInAttributes) {
    const struct {
        const char* text;
        const char* entitized;
        const char* replaced;
    } kCases[] = {
        {"a\nb", "a&#xA;b", "a&#xA;b"},
        {"a\tb", "a&#x9;b", "a&#x9;b"},
        {"a\r\nb", "a&#xD;&#xA;b", "a&#xA;b"},
        {"a\n\rbc", "a&#xA;&#xD;bc", "a&#xA;&#xA;c"},
        {"a\n\nb", "a&#xA;&#xA;b", "a&#xA;&#xA;b"},
        {"\r\n\r\n", "&#xD;&#xA;&#xD;&#xA;", "&#xA;&#xA;"},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(Escape(c.text));
        Settings settings{.where = Where::Attribute};
        EXPECT_EQ(Written(settings, c.text), c.replaced);
        settings.handling = NewLineHandling::Entitize;
        EXPECT_EQ(Written(settings, c.text), c.entitized);
        settings.handling = NewLineHandling::NoHandling;
        EXPECT_EQ(Written(settings, c.text), c.text);
    }
}

// Deliberate: whatever follows a CR in an attribute goes with it, a whole character of it.
TEST(XmlTextWriterEscape, DeliberateTheCharacterAfterACrInAnAttributeIsConsumed) {
    const struct {
        std::string_view text;
        std::string_view expected;
    } kCases[] = {
        {"a\rbc", "a&#xA;c"},
        {"\r<c", "&#xA;c"},
        {"\r\rc", "&#xA;c"},
        {"\r\r\rc", "&#xA;&#xA;"},
        {"\r\tc", "&#xA;c"},
        {"\r\xC3\xA9"
         "c",
         "&#xA;c"},
        {"\r\xE2\x82\xAC"
         "c",
         "&#xA;c"},
        {"\r\xF0\x9F\x98\x80"
         "c",
         "&#xA;c"},
        {"a\r", "a&#xA;"},
        {"\r\xC3\xA9", "&#xA;"},
    };
    for (const auto& c : kCases) {
        EXPECT_EQ(Written({.where = Where::Attribute}, c.text), c.expected) << Escape(c.text);
    }
}

TEST(XmlTextWriterEscape, CallsAreSeparate) {
    TextWriter content({});
    EXPECT_EQ(content.Write("a\r"), "a\r\n");
    EXPECT_EQ(content.Write("\nb"), "\r\nb");

    TextWriter attribute({.where = Where::Attribute});
    EXPECT_EQ(attribute.Write("a\r"), "a&#xA;");
    EXPECT_EQ(attribute.Write("\nb"), "&#xA;b");

    TextWriter cut({});
    EXPECT_THROW_TEXT(cut->WriteString("\xC3"), "Invalid XML character", -1, -1);
    EXPECT_THROW_TEXT(cut->WriteString("\xA9"), "Invalid XML character", -1, -1);
    EXPECT_EQ(cut.Write("\xC3\xA9"), "\xC3\xA9");
}

TEST(XmlTextWriterEscape, FiveCharactersAreEscapedEverywhere) {
    for (const Where where : {Where::Content, Where::Attribute}) {
        EXPECT_EQ(Written({.where = where}, "a<b&\"c'"), "a&lt;b&amp;&quot;c&apos;");
        EXPECT_EQ(Written({.where = where}, "]]>"), "]]&gt;");
        EXPECT_EQ(Written({.where = where}, "&lt;"), "&amp;lt;");
    }
}

TEST(XmlTextWriterEscape, OneCharacterAtEveryPlaceOfALongText) {
    const std::pair<std::string_view, std::string_view> kEscapes[] = {
        {"<", "&lt;"},
        {"\r", "\r\n"},
        {"\n", "\r\n"},
        {"\"", "&quot;"},
        {"\xE2\x82\xAC", "\xE2\x82\xAC"}};
    for (const auto& [character, escaped] : kEscapes) {
        TextWriter writer({});
        for (std::size_t before = 0; before < 70; ++before) {
            for (std::size_t after = 0; after < 40; ++after) {
                const std::string left(before, 'l');
                const std::string right(after, 'r');
                ASSERT_EQ(writer.Write(left + std::string(character) + right),
                          left + std::string(escaped) + right);
            }
        }
    }
}

TEST(XmlTextWriterEscape, LongTextsOfNothingButEscapes) {
    const struct {
        std::string_view unit;
        std::string_view expected;
    } kCases[] = {{"<", "&lt;"},  {"\"", "&quot;"}, {"a&", "a&amp;"},
                  {"\n", "\r\n"}, {"\r\n", "\r\n"}, {"\xF0\x9F\x98\x80", "\xF0\x9F\x98\x80"}};
    for (const auto& c : kCases) {
        std::string text;
        std::string expected;
        for (int i = 0; i < 5000; ++i) {
            text += c.unit;
            expected += c.expected;
        }
        EXPECT_TRUE(Written({}, text) == expected) << Escape(c.unit);
    }
}

TEST(XmlTextWriterEscape, ElementsAndAttributesInOneCall) {
    DocumentWriter writer;
    writer->WriteStartElement("r");
    writer->WriteAttributeString("x", "a<b\t\n\r\"'");
    writer->WriteElementString("e", "a<b\t\n\"'");
    writer->WriteEndElement();
    EXPECT_EQ(writer.Text(),
              "<r x=\"a&lt;b&#x9;&#xA;&#xA;&apos;\">"
              "<e>a&lt;b\t\r\n&quot;&apos;</e></r>");
}

TEST(XmlTextWriterEscape, WhitespaceIsHandledAsText) {
    ForAllSettings([](const Settings& settings) {
        for (const std::string_view text : {"", " ", "\t", "\n", "\r", "\r\n", " \n\t \r\n\n "}) {
            TextWriter writer(settings);
            writer->WriteWhitespace(text);
            EXPECT_EQ(writer.Take(), Written(settings, text)) << Escape(text);
        }
    });
}

TEST(XmlTextWriterEscape, AllOtherBytesAreNoWhitespace) {
    for (const bool check : {true, false}) {
        for (int byte = 0; byte < 256; ++byte) {
            if (byte == ' ' || byte == '\t' || byte == '\n' || byte == '\r') continue;
            TextWriter writer({.check = check});
            const std::string text = std::string("\n ") + static_cast<char>(byte) + " ";
            EXPECT_THROW_FULL(writer->WriteWhitespace(text), "Invalid whitespace character", "", -1,
                              -1);
            EXPECT_EQ(writer.Take(), "") << Escape(text);
        }
    }
}

// Comments, CDATA sections and instructions are written as they are, line breaks too.
TEST(XmlTextWriterEscape, AllBytesInMarkupThatIsNotEscaped) {
    const struct {
        const char* name;
        void (*call)(XmlTextWriter& writer, std::string_view text);
        std::string_view before;
        std::string_view after;
    } kKinds[] = {
        {"comment", [](XmlTextWriter& w, std::string_view text) { w.WriteComment(text); }, "<!--",
         "-->"},
        {"CDATA", [](XmlTextWriter& w, std::string_view text) { w.WriteCData(text); }, "<![CDATA[",
         "]]>"},
        {"instruction",
         [](XmlTextWriter& w, std::string_view text) { w.WriteProcessingInstruction("p", text); },
         "<?p ", "?>"},
    };
    for (const auto& kind : kKinds) {
        for (const bool check : {true, false}) {
            for (int byte = 0; byte < 256; ++byte) {
                const std::string text = std::string("x") + static_cast<char>(byte) + "yz";
                SCOPED_TRACE(kind.name + (": " + Escape(text)));
                TextWriter writer({.check = check});
                if (check && !IsCharacter(byte)) {
                    EXPECT_THROW_TEXT(kind.call(*writer.operator->(), text),
                                      "Invalid XML character", -1, -1);
                    EXPECT_EQ(writer.Take(), "");
                } else {
                    kind.call(*writer.operator->(), text);
                    EXPECT_EQ(writer.Take(),
                              std::string(kind.before) + text + std::string(kind.after));
                }
            }
        }
    }
}

TEST(XmlTextWriterEscape, RawTextIsWrittenByteByByte) {
    std::string text;
    for (int byte = 0; byte < 256; ++byte)
        text += static_cast<char>(byte);
    ForAllSettings([&text](const Settings& settings) {
        TextWriter writer(settings);
        writer->WriteRaw(text);
        EXPECT_EQ(writer.Take(), text);
    });
}

}  // namespace
