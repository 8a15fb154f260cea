// SPDX-License-Identifier: MIT

// The tokens of the scanner. Every input is scanned whole and in parts of few bytes.

#include <espalier/base/astring.h>

#include "support/PrintAstring.h"
#include "support/ScannerInput.h"
#include "xml/XmlScanner.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <string_view>

namespace {

using support::kBytesPerRead;
using support::ScannerInput;
using Xml::detail::XmlScanner;
using Xml::detail::XmlToken;
using Xml::detail::XmlTokenName;

std::string PlaceText(Xml::detail::Place place) {
    return "@" + std::to_string(place.line) + ":" + std::to_string(place.column);
}

// What is left of the input, as far as the scanner goes.
std::string Rest(XmlScanner& scanner) {
    while (scanner.Refill() == XmlScanner::Fill::More)
        continue;
    return {reinterpret_cast<const char*>(scanner.Position()),
            static_cast<std::size_t>(scanner.DataEnd() - scanner.Position())};
}

// Runs `scan`, which describes what it found, and appends the place and the rest, or the error.
using Scan = std::function<std::string(XmlScanner&)>;

std::string Describe(const Scan& scan, std::string_view input, int bytesPerRead, bool namespaces) {
    ScannerInput scanner{std::string(input), bytesPerRead};
    scanner->SetNamespaces(namespaces);
    try {
        const std::string found = scan(*scanner);
        const std::string place = PlaceText(scanner->CurrentPlace());
        return found + " " + place + " |" + Rest(*scanner);
    } catch (const Xml::Exception& error) {
        std::string text = "error @" + std::to_string(error.LineNumber()) + ":" +
                           std::to_string(error.LinePos()) + " " + error.What();
        if (*error.Argument() != '\0') text += std::string(" [") + error.Argument() + "]";
        return text;
    }
}

void ExpectScan(const Scan& scan, std::string_view input, std::string_view expected,
                bool namespaces = true) {
    for (const int bytesPerRead : kBytesPerRead) {
        EXPECT_EQ(Describe(scan, input, bytesPerRead, namespaces), expected)
            << testing::PrintToString(input) << ", bytes per read: " << bytesPerRead;
    }
}

struct Case {
    std::string_view input;
    std::string_view expected;
};

std::string MarkupToken(XmlScanner& scanner) {
    const XmlToken token = scanner.NextMarkupToken();
    std::string found = XmlTokenName(token);
    if (!scanner.TokenText().empty()) found += " " + std::string(scanner.TokenText());
    return found;
}

TEST(XmlScanner, MarkupTokens) {
    const Case kCases[] = {
        {">x", "TAGEND > @1:2 |x"},
        {"/>x", "EMPTYTAGEND /> @1:3 |x"},
        {"?>x", "PIEND ?> @1:3 |x"},
        {"=x", "EQUALS = @1:2 |x"},
        {"\"x", "QUOTE \" @1:2 |x"},
        {"'x", "QUOTE ' @1:2 |x"},
        {"name=", "NAME name @1:5 |="},
        {"a:b=", "NAME a:b @1:3 |="},
        {"\xC3\xA4\xE1\x82\xA0 ", "NAME \xC3\xA4\xE1\x82\xA0 @1:3 | "},
        {" \t\r\n\n\r >x", "TAGEND > @4:3 |x"},
        {" a ", "NAME a @1:3 | "},
        {"", "ENDOFFILE @1:1 |"},
        {"  \n", "ENDOFFILE @2:1 |"},
        // A name that the end cuts is no name.
        {"name", "ENDOFFILE name @1:5 |"},
        {"1a", "ERROR @1:1 |1a"},
        {"-a", "ERROR @1:1 |-a"},
        {"&a", "ERROR @1:1 |&a"},
        {"/x", "error @1:2 Unexpected token"},
        {"/", "error @1:2 Unexpected token"},
        {"/ >", "error @1:2 Unexpected token"},
        {"?x", "error @1:2 Unexpected token"},
        {"?", "error @1:2 Unexpected token"},
        {"\x01", "error @1:1 Invalid character"},
        {"  \xFF", "error @1:3 Invalid character"},
        {"  \xC0\x80", "error @1:3 Invalid character"},
        {"  \xED\xA0\x80", "error @1:3 Invalid character"},
        // A character that the end cuts counts as the end.
        {"  \xE2\x82", "ENDOFFILE @1:3 |\xE2\x82"},
        {"<b x", "TAG < @1:2 |b x"},
        {"  </b", "ENDTAG </ @1:5 |b"},
    };
    for (const Case& c : kCases)
        ExpectScan(MarkupToken, c.input, c.expected);
}

std::string Markup(XmlScanner& scanner) {
    const XmlToken token = scanner.ScanMarkup();
    return XmlTokenName(token) + (" " + std::string(scanner.TokenText()));
}

TEST(XmlScanner, Markup) {
    const Case kCases[] = {
        {"<a>", "TAG < @1:2 |a>"},
        {"<_>", "TAG < @1:2 |_>"},
        {"<\xC3\xA4>", "TAG < @1:2 |\xC3\xA4>"},
        {"</a>", "ENDTAG </ @1:3 |a>"},
        {"</ a>", "ENDTAG </ @1:3 | a>"},
        {"<?a?>", "PI <? @1:3 |a?>"},
        {"<!--a-->", "COMMENT <!-- @1:5 |a-->"},
        {"<![CDATA[a]]>", "CDATA <![CDATA[ @1:10 |a]]>"},
        {"<!DOCTYPE a>", "DECL <! @1:3 |DOCTYPE a>"},
        {"<!-a", "DECL <! @1:3 |-a"},
        {"<!-", "DECL <! @1:3 |-"},
        {"<![CDAT", "DECL <! @1:3 |[CDAT"},
        {"<!", "DECL <! @1:3 |"},
        {"<![CDATA ", "error @1:9 Syntax error"},
        {"<![CDATA", "error @1:9 Syntax error"},
        {"<", "error @1:2 Unexpected end of file"},
        {"<\xE2\x82", "error @1:2 Unexpected end of file"},
        {"<\x02", "error @1:2 Invalid character"},
        {"<\x80", "error @1:2 Invalid character"},
        {"<1>", "error @1:2 Syntax error: Expected element name"},
        {"< a>", "error @1:2 Syntax error: Expected element name"},
        {"<>", "error @1:2 Syntax error: Expected element name"},
        {"<:a>", "error @1:2 Syntax error: Expected element name"},
        {"<-a>", "error @1:2 Syntax error: Expected element name"},
        {"<\xE2\x82\xAC>", "error @1:2 Syntax error: Expected element name"},
    };
    for (const Case& c : kCases)
        ExpectScan(Markup, c.input, c.expected);
    // A colon starts no tag, whatever it is in names.
    ExpectScan(Markup, "<:a>", "error @1:2 Syntax error: Expected element name", false);
}

std::string NameParts(XmlScanner& scanner) {
    const Xml::detail::ScannedName& name = scanner.ScanName();
    EXPECT_EQ(&name, &scanner.Name());
    EXPECT_EQ(name.text, scanner.TokenText());
    std::string found = std::string(XmlTokenName(name.token)) + " " + std::string(name.text);
    if (name.colon >= 0) found += " " + std::to_string(name.colon);
    return found;
}

TEST(XmlScanner, Names) {
    const Case kCases[] = {
        {"a ", "NAME a @1:2 | "},
        {"a-b.c_1>", "NAME a-b.c_1 @1:8 |>"},
        {"a:b>", "NAME a:b 1 @1:3 |>"},
        {"a:>", "NAME a: 1 @1:2 |>"},
        {"a:1>", "NAME a:1 1 @1:3 |>"},
        {"\xC3\xA4:b>", "NAME \xC3\xA4:b 2 @1:3 |>"},
        {":a>", "ERROR  @1:1 |:a>"},
        {"", "ENDOFFILE  @1:1 |"},
        {"ab", "ENDOFFILE ab @1:3 |"},
        {"ab\xE2\x82", "ENDOFFILE ab @1:3 |\xE2\x82"},
        {"ab\xFF", "NAME ab @1:3 |\xFF"},
        {"ab\xE2\x82\xAC", "NAME ab @1:3 |\xE2\x82\xAC"},
        {"a:b:c>", "error @1:3 Illegal second colon in qualified name"},
        {"a::>", "error @1:2 Illegal second colon in qualified name"},
    };
    for (const Case& c : kCases)
        ExpectScan(NameParts, c.input, c.expected);
}

TEST(XmlScanner, ColonsAreLettersWithoutNamespaces) {
    const Case kCases[] = {
        {"a:b:c>", "NAME a:b:c @1:6 |>"},
        {":a>", "NAME :a @1:3 |>"},
        {":::>", "NAME ::: @1:4 |>"},
    };
    for (const Case& c : kCases)
        ExpectScan(NameParts, c.input, c.expected, false);
}

TEST(XmlScanner, NamesAreLimitedTo1024Bytes) {
    const auto expect = [](const std::string& name, std::string_view expected) {
        for (const std::size_t before : {0u, 1u, 500u, 1023u, 1024u, 1025u}) {
            const auto scan = [](XmlScanner& scanner) {
                scanner.SkipWhitespace();
                const Xml::detail::ScannedName& found = scanner.ScanName();
                return XmlTokenName(found.token) + (" " + std::to_string(found.text.size()));
            };
            for (const int bytesPerRead : kBytesPerRead) {
                std::string described =
                    Describe(scan, std::string(before, '\n') + name + ">", bytesPerRead, true);
                // The line is that of the name.
                const std::string line = "@" + std::to_string(before + 1) + ":";
                ASSERT_NE(described.find(line), std::string::npos) << described;
                described.replace(described.find(line), line.size(), "@");
                EXPECT_EQ(described, expected) << before << ' ' << bytesPerRead;
            }
        }
    };
    std::string umlauts;
    for (int i = 0; i < 512; ++i)
        umlauts += "\xC3\xA4";
    expect(std::string(1023, 'n'), "NAME 1023 @1024 |>");
    expect(std::string(1024, 'n'), "NAME 1024 @1025 |>");
    expect(std::string(1025, 'n'), "error @1025 Buffer overflow while reading markup token");
    expect(umlauts, "NAME 1024 @513 |>");
    expect(umlauts + "a", "error @513 Buffer overflow while reading markup token");
    expect("a" + umlauts, "error @513 Buffer overflow while reading markup token");
    expect(std::string(511, 'p') + ":" + std::string(512, 'n'), "NAME 1024 @1024 |>");
    expect(std::string(511, 'p') + ":" + std::string(513, 'n'),
           "error @1024 Buffer overflow while reading markup token");
    expect(std::string(1024, 'p') + ":n", "error @1025 Buffer overflow while reading markup token");
    expect(std::string(1023, 'p') + ":", "NAME 1024 @1024 |>");
    expect(std::string(600, 'p') + ":a:", "error @602 Illegal second colon in qualified name");
}

// All texts of an input up to the first token that is no text.
std::string Text(XmlScanner& scanner) {
    astring text;
    const XmlToken token = scanner.ScanText(text);
    return XmlTokenName(token) + (" '" + text.str() + "'");
}

TEST(XmlScanner, Texts) {
    const Case kCases[] = {
        {"<a", "NONE '' @1:1 |<a"},
        {" \r\n\t<a", "WHITESPACE ' \r\n\t' @2:2 |<a"},
        {" \n&a", "WHITESPACE ' \n' @2:1 |&a"},
        {" \n", "WHITESPACE ' \n' @2:1 |"},
        {"\r", "WHITESPACE '\r' @2:1 |"},
        {"", "ENDOFFILE '' @1:1 |"},
        {"\xE2\x82", "ENDOFFILE '' @1:1 |\xE2\x82"},
        {" \xE2\x82", "WHITESPACE ' ' @1:2 |\xE2\x82"},
        {"abc<a", "TEXT 'abc' @1:4 |<a"},
        {" a b\n c <", "TEXT ' a b\n c ' @2:4 |<"},
        {"a&b", "TEXT 'a' @1:2 |&b"},
        {"abc", "TEXT 'abc' @1:4 |"},
        {"abc\xE2\x82", "TEXT 'abc' @1:4 |\xE2\x82"},
        {"&#65;", "CHARREF '' @1:3 |65;"},
        {"&lt;", "ENTITYREF '' @1:2 |lt;"},
        {"&;", "ENTITYREF '' @1:2 |;"},
        {"a]b]]c]>]]<", "TEXT 'a]b]]c]>]]' @1:11 |<"},
        {"]]", "TEXT ']]' @1:3 |"},
        {"\xF0\x9F\x8D\x80\xC3\xA4<", "TEXT '\xF0\x9F\x8D\x80\xC3\xA4' @1:3 |<"},
        {"]]>", "error @1:4 Unexpected token []]>]"},
        {"a]]]>", "error @1:6 Unexpected token []]>]"},
        {" ]]>", "error @1:5 Unexpected token []]>]"},
        {"&", "error @1:2 Unexpected end of file"},
        {"&\xC3", "error @1:2 Unexpected end of file"},
        {"&\x01", "error @1:2 Invalid character"},
        {"ab\x01", "error @1:3 Invalid character"},
        {"ab\n\x80", "error @2:1 Invalid character"},
        {"ab\xC3(", "error @1:3 Invalid character"},
        {"ab\xF5\x80\x80\x80", "error @1:3 Invalid character"},
        {"ab\xF8\x88\x80\x80\x80", "error @1:3 Invalid character"},
        {" \x1F", "error @1:2 Invalid character"},
    };
    for (const Case& c : kCases)
        ExpectScan(Text, c.input, c.expected);
    ExpectScan(Text, std::string_view("ab\0c", 4), "error @1:3 Invalid character");
    ExpectScan(Text, std::string_view("  \0c", 4), "error @1:3 Invalid character");
}

TEST(XmlScanner, WhitespaceFillsABuffer) {
    for (const int bytesPerRead : kBytesPerRead) {
        ScannerInput scanner(std::string(2500, ' ') + "x", bytesPerRead);
        for (const std::size_t length : {1024u, 1024u}) {
            astring text;
            EXPECT_EQ(scanner->ScanText(text), XmlToken::WHITESPACE);
            EXPECT_EQ(text, std::string(length, ' '));
        }
        astring text;
        EXPECT_EQ(scanner->ScanText(text), XmlToken::TEXT);
        EXPECT_EQ(text, std::string(2500 - 2048, ' ') + "x");
    }
}

TEST(XmlScanner, TextsOutsideOfElementsAreLimited) {
    for (const int bytesPerRead : kBytesPerRead) {
        ScannerInput scanner("\xC3\xA4" + std::string(3000, 'a'), bytesPerRead);
        astring text;
        EXPECT_EQ(scanner->ScanText(text, 1024), XmlToken::TEXT);
        EXPECT_EQ(text, "\xC3\xA4" + std::string(1022, 'a'));
    }
    // White space before it counts, wherever the input is cut.
    for (const int bytesPerRead : {0, 1, 2, 3, 7, 900, 1001}) {
        ScannerInput scanner(std::string(1000, ' ') + std::string(3000, 'a'), bytesPerRead);
        astring text;
        EXPECT_EQ(scanner->ScanText(text, 1024), XmlToken::TEXT);
        EXPECT_EQ(text, std::string(1000, ' ') + std::string(24, 'a')) << bytesPerRead;
    }
}

std::string Value(XmlScanner& scanner) {
    EXPECT_EQ(scanner.NextMarkupToken(), XmlToken::QUOTE);
    astring text;
    const XmlToken token = scanner.ScanValue(text);
    return XmlTokenName(token) + (" '" + text.str() + "' ") + scanner.QuoteChar();
}

TEST(XmlScanner, Values) {
    const Case kCases[] = {
        {"\"\"x", "ENDQUOTE '' \" @1:3 |x"},
        {"''x", "ENDQUOTE '' ' @1:3 |x"},
        {"\"a'b\"x", "TEXT 'a'b' \" @1:5 |\"x"},
        {"'a\"b'x", "TEXT 'a\"b' ' @1:5 |'x"},
        {"'a\r\nb\n'x", "TEXT 'a\r\nb\n' ' @3:1 |'x"},
        {"'a&b;'", "TEXT 'a' ' @1:3 |&b;'"},
        {"'&b;'", "ENTITYREF '' ' @1:3 |b;'"},
        {"'&#b;'", "CHARREF '' ' @1:4 |b;'"},
        {"'a<'", "TEXT 'a' ' @1:3 |<'"},
        {"'<'", "NONE '' ' @1:2 |<'"},
        {"'a]]>b'", "TEXT 'a]]>b' ' @1:7 |'"},
        {"'abc", "TEXT 'abc' ' @1:5 |"},
        {"'", "ENDOFFILE '' ' @1:2 |"},
        {"'a\xC3", "TEXT 'a' ' @1:3 |\xC3"},
        {"'a\x01", "error @1:3 Invalid character"},
        {"'a\xFE", "error @1:3 Invalid character"},
        {"'&", "error @1:3 Unexpected end of file"},
        {"'&\x01", "error @1:3 Invalid character"},
    };
    for (const Case& c : kCases)
        ExpectScan(Value, c.input, c.expected);
}

std::string CharRef(XmlScanner& scanner) {
    astring digits = "old";
    const int code = scanner.ScanCharRef(digits);
    return std::to_string(code) + " " + digits.str();
}

TEST(XmlScanner, CharacterReferences) {
    const Case kCases[] = {
        {"65;a", "65 65 @1:4 |a"},
        {"x41;a", "65 x41 @1:5 |a"},
        {"xaF;", "175 xaF @1:5 |"},
        {"0000000065;", "65 0000000065 @1:12 |"},
        {"9;", "9 9 @1:3 |"},
        {"x10FFFF;", "1114111 x10FFFF @1:9 |"},
        {"xD7FF;", "55295 xD7FF @1:7 |"},
        {"xE000;", "57344 xE000 @1:7 |"},
        {"x110000;", "error @1:7 Character entity overflow"},
        {"1114112;", "error @1:7 Character entity overflow"},
        {"99999999999999;", "error @1:7 Character entity overflow"},
        {";", "error @1:2 Invalid character"},
        {"x;", "error @1:3 Invalid character"},
        {"0;", "error @1:3 Invalid character"},
        {"8;", "error @1:3 Invalid character"},
        {"xD800;", "error @1:7 Invalid character"},
        {"xDFFF;", "error @1:7 Invalid character"},
        {"xFFFE;", "error @1:7 Invalid character"},
        {"xFFFF;", "error @1:7 Invalid character"},
        {"4A;", "error @1:2 Invalid character"},
        {"X41;", "error @1:1 Invalid character"},
        {"xx;", "error @1:2 Invalid character"},
        {"4x;", "error @1:2 Invalid character"},
        {"4 ;", "error @1:2 Invalid character"},
        {"4\xC3\xA4;", "error @1:2 Invalid character"},
        {"4\xFF;", "error @1:2 Invalid character"},
        {"", "error @1:1 Unexpected end of file"},
        {"65", "error @1:3 Unexpected end of file"},
        {"65\xC3", "error @1:3 Unexpected end of file"},
    };
    for (const Case& c : kCases)
        ExpectScan(CharRef, c.input, c.expected);
    const std::string most(1022, '0');
    ExpectScan(CharRef, most + "65;", "65 " + most + "65 @1:1026 |");
    ExpectScan(CharRef, "0" + most + "65;", "error @1:1025 Input buffer overflow");
    ExpectScan(CharRef, "x" + most + "41;", "error @1:1025 Input buffer overflow");
}

template <void (XmlScanner::*Method)(astring&)>
std::string UpTo(XmlScanner& scanner) {
    astring text = "+";
    (scanner.*Method)(text);
    return text.str();
}

TEST(XmlScanner, Comments) {
    const Case kCases[] = {
        {"-->x", "+ @1:4 |x"},
        {"abc-->x", "+abc @1:7 |x"},
        {"a-b- -\n-c<&]]>-->x", "+a-b- -\n-c<&]]> @2:11 |x"},
        {"a--", "error @1:4 Unexpected end of file while scanning for '-->'"},
        {"a-", "error @1:3 Unexpected end of file while scanning for '-->'"},
        {"a", "error @1:2 Unexpected end of file while scanning for '-->'"},
        {"", "error @1:1 Unexpected end of file while scanning for '-->'"},
        {"a--\xC3", "error @1:4 Unexpected end of file while scanning for '-->'"},
        {"a\xC3", "error @1:2 Unexpected end of file while scanning for '-->'"},
        {"a--b-->", "error @1:4 XML comments may not contain '--'"},
        {"a--->", "error @1:4 XML comments may not contain '--'"},
        {"a\x01-->", "error @1:2 Invalid character"},
        {"a\xFF-->", "error @1:2 Invalid character"},
    };
    for (const Case& c : kCases)
        ExpectScan(UpTo<&XmlScanner::ScanComment>, c.input, c.expected);
}

TEST(XmlScanner, CDataSections) {
    const Case kCases[] = {
        {"]]>x", "+ @1:4 |x"},
        {"a<&>--]]>x", "+a<&>-- @1:10 |x"},
        {"]]]>x", "+] @1:5 |x"},
        {"]]]]]]>x", "+]]]] @1:8 |x"},
        {"]] >]>]]>x", "+]] >]> @1:10 |x"},
        {"a]]", "error @1:4 Unexpected end of file while scanning for ']]>'"},
        {"a]", "error @1:3 Unexpected end of file while scanning for ']]>'"},
        {"", "error @1:1 Unexpected end of file while scanning for ']]>'"},
        {"\r\na\x0B", "error @2:2 Invalid character"},
    };
    for (const Case& c : kCases)
        ExpectScan(UpTo<&XmlScanner::ScanCData>, c.input, c.expected);
}

TEST(XmlScanner, ProcessingInstructions) {
    const Case kCases[] = {
        {"?>x", "+ @1:3 |x"},
        {"a?b>?\?>x", "+a?b>? @1:8 |x"},
        {"a?", "error @1:3 Unexpected end of file while looking for '?>'"},
        {"", "error @1:1 Unexpected end of file while looking for '?>'"},
        {"\xC3\xA4\xC3", "error @1:2 Unexpected end of file while looking for '?>'"},
        {"a\x80?>", "error @1:2 Invalid character"},
    };
    for (const Case& c : kCases)
        ExpectScan(UpTo<&XmlScanner::ScanPI>, c.input, c.expected);
}

std::string Literal(XmlScanner& scanner) { return scanner.SkipLiteral('\'') ? "done" : "end"; }

TEST(XmlScanner, LiteralsAreSkipped) {
    const Case kCases[] = {
        {"'x", "done @1:2 |x"},
        {"a\"<>[]\n&b'x", "done @2:4 |x"},
        {"", "end @1:1 |"},
        {"a\"b", "end @1:4 |"},
        {"a\xE2\x82", "end @1:2 |\xE2\x82"},
        {"a\x01'", "error @1:2 Invalid character"},
        {"a\xFF'", "error @1:2 Invalid character"},
    };
    for (const Case& c : kCases)
        ExpectScan(Literal, c.input, c.expected);
    ExpectScan(Literal, std::string(5000, 'a') + "'x", "done @1:5002 |x");
}

std::string Delimiter(XmlScanner& scanner) {
    const char delimiter = scanner.NextDtdDelimiter();
    return delimiter == 0 ? "end" : std::string(1, delimiter);
}

TEST(XmlScanner, DelimitersOfTheDocumentType) {
    const Case kCases[] = {
        {"<x", "< @1:2 |x"},
        {"ab >x", "> @1:5 |x"},
        {"\xC3\xA4\n[x", "[ @2:2 |x"},
        {"%a; (b|c)* &]x", "] @1:14 |x"},
        {"a'x", "' @1:3 |x"},
        {"a\"x", "\" @1:3 |x"},
        {"abc", "end @1:4 |"},
        {"", "end @1:1 |"},
        {"a\xF0\x9F\x8D", "end @1:2 |\xF0\x9F\x8D"},
        {"a\x02>", "error @1:2 Invalid character"},
        {"a\x80>", "error @1:2 Invalid character"},
        {"a\xC0\xAF>", "error @1:2 Invalid character"},
    };
    for (const Case& c : kCases)
        ExpectScan(Delimiter, c.input, c.expected);
    ExpectScan(Delimiter, std::string_view("a\0>", 3), "error @1:2 Invalid character");
    ExpectScan(Delimiter, std::string(3000, ';') + ">x", "> @1:3002 |x");
}

TEST(XmlScanner, AcceptsALiteralOrStays) {
    const auto accept = [](XmlScanner& scanner) {
        return std::string(scanner.Accept("lt;") ? "yes" : "no");
    };
    const Case kCases[] = {
        {"lt;x", "yes @1:4 |x"}, {"lt", "no @1:1 |lt"}, {"ltx", "no @1:1 |ltx"},
        {"", "no @1:1 |"},       {"x", "no @1:1 |x"},   {"l\xC3", "no @1:1 |l\xC3"},
    };
    for (const Case& c : kCases)
        ExpectScan(accept, c.input, c.expected);
}

TEST(XmlScanner, SkipsWhitespaceAndSaysSo) {
    const auto skip = [](XmlScanner& scanner) {
        const std::string found = scanner.SkipWhitespace() ? "any" : "none";
        return found + (scanner.AtEnd() ? " end" : "");
    };
    const Case kCases[] = {
        {"x", "none @1:1 |x"},    {" \r\n\t\nx", "any @3:1 |x"},   {"", "none end @1:1 |"},
        {"  ", "any end @1:3 |"}, {" \xC3", "any end @1:2 |\xC3"}, {"\xFF", "none @1:1 |\xFF"},
    };
    for (const Case& c : kCases)
        ExpectScan(skip, c.input, c.expected);
    ExpectScan(skip, std::string(3000, ' ') + "x", "any @1:3001 |x");
}

}  // namespace
