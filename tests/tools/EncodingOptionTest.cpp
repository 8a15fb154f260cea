// SPDX-License-Identifier: MIT

// Documents that are read in another encoding than they say: --encoding, and code pages.

#include "tools/RunProgram.h"
#include "tools/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iconv.h>
#include <iterator>

namespace {

struct Named {
    const char* name;
    const char* iconvName;
    const char* text;  // in UTF-8, with what only this encoding has
};

constexpr Named kEncodings[] = {
    {"UTF-8", "UTF-8", "\xC3\xA9\xE2\x82\xAC\xF0\x9F\x8D\x90\xF4\x8F\xBF\xBD"},
    {"UTF-16LE", "UTF-16LE", "\xC3\xA9\xE2\x82\xAC\xF0\x9F\x8D\x90\xF4\x8F\xBF\xBD"},
    {"UTF-16BE", "UTF-16BE", "\xC3\xA9\xE2\x82\xAC\xF0\x9F\x8D\x90\xF4\x8F\xBF\xBD"},
    {"ISO-8859-1", "ISO-8859-1", "\xC3\xA9\xC3\xBF\xC2\xA0"},
    {"US-ASCII", "US-ASCII", "plain"},
    {"windows-1250", "CP1250", "\xC5\x91\xE2\x82\xAC\xE2\x80\x93"},
    {"windows-1251", "CP1251", "\xD0\x96\xE2\x82\xAC\xE2\x80\x93"},
    {"windows-1252", "CP1252", "\xC3\xA9\xE2\x82\xAC\xE2\x80\x93"},
    {"windows-1254", "CP1254", "\xC4\x9F\xE2\x82\xAC\xE2\x80\x93"},
    {"windows-1257", "CP1257", "\xC4\x97\xE2\x82\xAC\xE2\x80\x93"},
    {"GB2312", "GB2312", "\xE5\x95\x8A\xE4\xB8\xAD"},
    {"EUC-KR", "EUC-KR", "\xEA\xB0\x80\xED\x95\x9C"},
};

// The C library's converter is asked, not our own.
std::string Encoded(std::string utf8, const char* encoding) {
    const iconv_t converter = ::iconv_open(encoding, "UTF-8");
    std::string bytes(utf8.size() * 4, '\0');
    char* from = utf8.data();
    char* to = bytes.data();
    std::size_t left = utf8.size();
    std::size_t room = bytes.size();
    EXPECT_EQ(::iconv(converter, &from, &left, &to, &room), 0U) << encoding;
    ::iconv_close(converter);
    bytes.resize(bytes.size() - room);
    return bytes;
}

std::string Replaced(std::string text, const std::string& from, const std::string& to) {
    for (std::size_t at = text.find(from); at != std::string::npos; at = text.find(from, at))
        text.replace(at, from.size(), to);
    return text;
}

std::string Content(const std::string& name) {
    std::ifstream file(name, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

std::string Document(const char* declared, const std::string& text) {
    std::string start;
    if (declared != nullptr) {
        start = "<?xml version=\"1.0\" encoding=\"" + std::string(declared) + "\"?>";
    }
    return start + "<r>\n  <a t=\"" + text + "\" u=\"1\">" + text + "</a>\n  <b>" + text +
           "<i/></b>\n  <!-- " + text + " -->\n</r>\n";
}

const std::vector<std::string> kVerbs[] = {
    {"check", "-v", "--compatible"}, {"events", "--attributes"}, {"tree", "--counts"}, {"format"}};

std::vector<std::string> WithEncoding(std::vector<std::string> arguments, const char* encoding) {
    arguments.insert(arguments.end(), {"--encoding", encoding});
    return arguments;
}

void ExpectSame(const ProgramResult& result, const ProgramResult& expected) {
    EXPECT_EQ(result.exitCode, expected.exitCode);
    EXPECT_EQ(result.out, expected.out);
    EXPECT_EQ(result.errors, expected.errors);
}

}  // namespace

TEST(EncodingOption, EveryEncodingIsReadAsItsFormInUtf8) {
    for (const Named& encoding : kEncodings) {
        SCOPED_TRACE(encoding.name);
        const std::string utf8 = Document(nullptr, encoding.text);
        const std::string bytes = Encoded(utf8, encoding.iconvName);
        for (const auto& verb : kVerbs) {
            const ProgramResult expected = RunProgram(verb, utf8);
            EXPECT_EQ(expected.exitCode, 0);
            ExpectSame(RunProgram(WithEncoding(verb, encoding.name), bytes), expected);
        }
    }
}

TEST(EncodingOption, WhatTheDocumentDeclaresDoesNotMatter) {
    // To the reader it is unknown, and as long as the names below.
    constexpr char kUnknown[] = "nobody-knows";
    for (const Named& encoding : kEncodings) {
        for (const char* const declared : {"windows-1250", "KSC_5601-xyz"}) {
            SCOPED_TRACE(encoding.name);
            const std::string utf8 = Document(kUnknown, encoding.text);
            const std::string bytes =
                Encoded(Document(declared, encoding.text), encoding.iconvName);
            for (const auto& verb : kVerbs) {
                const bool isFormat = verb.front() == "format";
                ProgramResult expected = RunProgram(verb, utf8);
                EXPECT_EQ(expected.exitCode, 0);
                expected.out = Replaced(expected.out, kUnknown, isFormat ? "UTF-8" : declared);
                ExpectSame(RunProgram(WithEncoding(verb, encoding.name), bytes), expected);
            }
        }
    }
}

TEST(EncodingOption, PlacesAndLinesOfErrorsStayRight) {
    const TemporaryDirectory directory;
    for (const Named& encoding : kEncodings) {
        SCOPED_TRACE(encoding.name);
        const std::string utf8 = Replaced(Document("nobody-knows", encoding.text), "</b>", "</c>");
        const std::string bytes =
            Encoded(Replaced(utf8, "nobody-knows", "windows-1254"), encoding.iconvName);
        const ProgramResult expected = RunProgram({"check", "--compatible"}, utf8);
        EXPECT_EQ(expected.exitCode, 3);
        EXPECT_NE(expected.errors.find(encoding.text), std::string::npos) << expected.errors;
        ExpectSame(RunProgram({"check", "--compatible", "--encoding", encoding.name}, bytes),
                   expected);
        const std::string name = directory.Write("a.xml", bytes);
        EXPECT_EQ(RunProgram({"check", "--encoding", encoding.name, name}).errors,
                  Replaced(expected.errors, "<stdin>", name));
    }
}

TEST(EncodingOption, LinesShowTheDeclarationAsItIs) {
    const std::string document = "<?xml version=\"1.0\" encoding=\"latin1\"?><a></b>\n";
    const std::string line = "    1 | " + document;
    EXPECT_NE(RunProgram({"check", "--encoding", "utf-8"}, document).errors.find(line),
              std::string::npos);
}

TEST(EncodingOption, BytesThatAreNoCharacterAreErrorsAtTheirPlace) {
    using std::string_view_literals::operator""sv;
    const struct {
        const char* encoding;
        std::string_view input;
        const char* place;
    } kCases[] = {
        {"UTF-8", "<a>\n \xE9</a>", "2:2"},
        {"EUC-KR", "<a>\n \xB0\xA1\xFF\xFF</a>", "2:3"},
        {"GB2312", "<a>\n\xAA\xA1</a>", "2:1"},
        {"UTF-16LE", "<\0a\0>\0\x50\xDF<\0/\0a\0>\0"sv, "1:4"},
        {"UTF-16BE", "\0<\0a\0>\xD8\x3C\0<\0/\0a\0>"sv, "1:4"},
        {"windows-1252", "<a>\0</a>"sv, "1:4"},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.encoding);
        const ProgramResult result =
            RunProgram({"check", "--encoding", c.encoding}, std::string(c.input));
        EXPECT_EQ(result.exitCode, 3);
        EXPECT_TRUE(result.errors.starts_with(std::string("<stdin>:") + c.place +
                                              ": error: Invalid character\n"))
            << result.errors;
    }
}

TEST(EncodingOption, WhatWouldBeDetectedDoesNotMatter) {
    using std::string_view_literals::operator""sv;
    const std::string utf16("\xFF\xFE<\0a\0/\0>\0"sv);
    EXPECT_EQ(RunProgram({"check"}, utf16).exitCode, 0);
    EXPECT_EQ(RunProgram({"check", "--encoding", "utf-16le"}, utf16).exitCode, 0);
    for (const char* const encoding : {"UTF-8", "ISO-8859-1", "windows-1251", "EUC-KR", "UTF-16BE"})
        EXPECT_EQ(RunProgram({"check", "--encoding", encoding}, utf16).exitCode, 3) << encoding;
    // This is no EBCDIC, however it begins.
    const ProgramResult result = RunProgram({"check", "--encoding", "US-ASCII"}, "Lorem<a/>");
    EXPECT_EQ(result.errors.find("EBCDIC"), std::string::npos) << result.errors;
    EXPECT_EQ(result.exitCode, 3);
}

TEST(EncodingOption, FormatWritesUtf8UnlessToldOtherwise) {
    const std::string bytes = Encoded(Document("UTF-16", "\xC3\xA9"), "CP1252");
    const struct {
        std::vector<std::string> arguments;
        std::string expected;
    } kCases[] = {
        {{"format", "--encoding", "windows-1252"},
         "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n" + Document(nullptr, "\xC3\xA9")},
        {{"format", "--encoding", "windows-1252", "--to", "utf-8"},
         "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n" + Document(nullptr, "\xC3\xA9")},
        {{"format", "--encoding", "windows-1252", "--to", "iso-8859-1"},
         "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>\n" + Document(nullptr, "\xE9")},
    };
    for (const auto& c : kCases) {
        const ProgramResult result = RunProgram(c.arguments, bytes);
        EXPECT_EQ(result.errors, "");
        EXPECT_EQ(result.out, c.expected);
    }
}

TEST(EncodingOption, FilesAreReplacedInPlace) {
    const TemporaryDirectory directory;
    const std::string name = directory.Write("a.xml", "<a>\xE9</a>\n");
    EXPECT_EQ(RunProgram({"format", "--check", "--encoding", "windows-1252", name}).exitCode, 1);
    EXPECT_EQ(RunProgram({"format", "--in-place", "--encoding", "windows-1252", name}).exitCode, 0);
    EXPECT_EQ(Content(name), "<a>\xC3\xA9</a>\n");
    EXPECT_EQ(RunProgram({"format", "--check", "--encoding", "UTF-8", name}).exitCode, 0);
}

TEST(CodePage, ADocumentThatDeclaresItIsReadInFull) {
    for (const Named& encoding : kEncodings) {
        if (encoding.iconvName == std::string("US-ASCII")) continue;
        if (std::string(encoding.name).starts_with("UTF")) continue;
        SCOPED_TRACE(encoding.name);
        const std::string declared = encoding.name;
        const std::string unknown(declared.size(), 'q');
        const std::string utf8 = Document(unknown.c_str(), encoding.text);
        const std::string bytes =
            Encoded(Document(encoding.name, encoding.text), encoding.iconvName);
        for (const auto& verb : kVerbs) {
            if (verb.front() == "format") continue;
            ProgramResult expected = RunProgram(verb, utf8);
            expected.out = Replaced(expected.out, unknown, declared);
            ExpectSame(RunProgram(verb, bytes), expected);
        }
    }
}

TEST(CodePage, IsFormattedToUtf8) {
    const std::string bytes = "<?xml version=\"1.0\" encoding=\"cp1252\"?>\n<a>\x80\x96</a>\n";
    EXPECT_EQ(RunProgram({"format"}, bytes).out,
              "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<a>\xE2\x82\xAC\xE2\x80\x93</a>\n");
    EXPECT_EQ(RunProgram({"format", "--to", "us-ascii"}, bytes).out,
              "<?xml version=\"1.0\" encoding=\"US-ASCII\"?>\n<a>&#x20AC;&#x2013;</a>\n");
}
