// SPDX-License-Identifier: MIT
#include "tools/ManyRecords.h"
#include "tools/RunProgram.h"

#include <gtest/gtest.h>

namespace {

std::string Format(const std::string& document, std::vector<std::string> options = {}) {
    options.insert(options.begin(), "format");
    const ProgramResult result = RunProgram(options, document);
    EXPECT_EQ(result.errors, "");
    EXPECT_EQ(result.exitCode, 0);
    return result.out;
}

// In UTF-16, with a byte-order mark, of a text in ASCII.
std::string Utf16(std::string_view ascii, bool bigEndian) {
    std::string text = bigEndian ? "\xFE\xFF" : "\xFF\xFE";
    for (const char byte : ascii) {
        if (bigEndian) text.push_back('\0');
        text.push_back(byte);
        if (!bigEndian) text.push_back('\0');
    }
    return text;
}

}  // namespace

TEST(Format, LaysOutWhatIsBetweenElements) {
    const struct {
        const char* input;
        const char* expected;
    } kCases[] = {
        {"<a/>", "<a/>\n"},
        {"<a><b/></a>", "<a>\n  <b/>\n</a>\n"},
        {"<a>\n\n\n      <b/>\t<c/></a>\n\n", "<a>\n  <b/>\n  <c/>\n</a>\n"},
        {"<a><b><c/></b><d/></a>", "<a>\n  <b>\n    <c/>\n  </b>\n  <d/>\n</a>\n"},
        {"<a><b>x</b></a>", "<a>\n  <b>x</b>\n</a>\n"},
        // Elements that hold nothing stay what they are.
        {"<a><b></b><c/></a>", "<a>\n  <b></b>\n  <c/>\n</a>\n"},
        {"<a><b> </b></a>", "<a>\n  <b> </b>\n</a>\n"},
        {"<a >\n</a >", "<a>\n</a>\n"},
        // Comments and instructions have lines of their own.
        {"<a><!-- x --><b/><?p q?></a>", "<a>\n  <!-- x -->\n  <b/>\n  <?p q?>\n</a>\n"},
        {"<a><!-- x\n   y --></a>", "<a>\n  <!-- x\n   y -->\n</a>\n"},
        {"<?p?><!-- x --><a/><?q?><!-- y -->", "<?p ?>\n<!-- x -->\n<a/>\n<?q ?>\n<!-- y -->\n"},
        {"<a></a><!-- x -->", "<a></a>\n<!-- x -->\n"},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.input);
        EXPECT_EQ(Format(c.input), c.expected);
        EXPECT_EQ(Format(c.expected), c.expected);
    }
}

TEST(Format, LeavesMixedContentAlone) {
    const struct {
        const char* input;
        const char* expected;
    } kCases[] = {
        {"<a>x<b/> <c/></a>", "<a>x<b/> <c/></a>\n"},
        {"<a> <b/> <c/>x</a>", "<a> <b/> <c/>x</a>\n"},
        {"<a><b/><![CDATA[]]></a>", "<a><b/><![CDATA[]]></a>\n"},
        {"<a> <b/>&#32;</a>", "<a> <b/>&#32;</a>\n"},
        {"<a> <b/>&amp;</a>", "<a> <b/>&amp;</a>\n"},
        {"<!DOCTYPE a SYSTEM 'a'><a> <b/>&x; </a>",
         "<!DOCTYPE a SYSTEM \"a\">\n<a> <b/>&x; </a>\n"},
        {"<a>x<!-- y --> <?p q?></a>", "<a>x<!-- y --> <?p q?></a>\n"},
        // All that is in it, too.
        {"<a>x<b> <c/> </b></a>", "<a>x<b> <c/> </b></a>\n"},
        {"<a> <b>x</b> </a>", "<a>\n  <b>x</b>\n</a>\n"},
        {"<a xml:space='preserve'> <b> <c/></b> </a>",
         "<a xml:space=\"preserve\"> <b> <c/></b> </a>\n"},
        {"<a xml:space='preserve'> <b xml:space='default'> <c/></b> </a>",
         "<a xml:space=\"preserve\"> <b xml:space=\"default\">\n    <c/>\n  </b> </a>\n"},
        {"<a xml:space='default'> <b/> </a>", "<a xml:space=\"default\">\n  <b/>\n</a>\n"},
        {"<a>x<b xml:space='default'> <c/></b></a>",
         "<a>x<b xml:space=\"default\"> <c/></b></a>\n"},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.input);
        EXPECT_EQ(Format(c.input), c.expected);
        EXPECT_EQ(Format(c.expected), c.expected);
    }
}

TEST(Format, KeepsWhatIsWritten) {
    const struct {
        const char* input;
        const char* expected;
    } kCases[] = {
        {"<a>don't \"&quot;&#xE9;&amp;&apos;&gt;>&#13;</a>",
         "<a>don't \"&quot;&#xE9;&amp;&apos;&gt;>&#13;</a>\n"},
        {"<a>]]&gt;&amp;amp;&#38;amp;</a>", "<a>]]&gt;&amp;amp;&#38;amp;</a>\n"},
        {"<a b='x'  c = \"y's\" d='\"'/>", "<a b=\"x\" c=\"y's\" d='\"'/>\n"},
        {"<a b='&lt;&#9;\t&#xA;\n&quot;&apos;>'/>", "<a b=\"&lt;&#9;\t&#xA;\n&quot;&apos;>\"/>\n"},
        {"<a xmlns:p='u' p:b='' xmlns='v'><p:c/></a>",
         "<a xmlns:p=\"u\" p:b=\"\" xmlns=\"v\">\n  <p:c/>\n</a>\n"},
        {"<a><![CDATA[x & y <z>]]></a>", "<a><![CDATA[x & y <z>]]></a>\n"},
        {"<a><!-- &amp; & --><?p &amp; & ?></a>",
         "<a>\n  <!-- &amp; & -->\n  <?p &amp; & ?>\n</a>\n"},
        {"<?xml version='1.0' encoding='Utf-8' standalone='no'?><a/>",
         "<?xml version=\"1.0\" encoding=\"Utf-8\" standalone=\"no\"?>\n<a/>\n"},
        {"<?xml version='1.0'?><a/>", "<?xml version=\"1.0\"?>\n<a/>\n"},
        {"<!DOCTYPE b><a/>", "<!DOCTYPE b>\n<a/>\n"},  // the root element has another name
        {"<!-- x --><!DOCTYPE a PUBLIC \"it's\" 'a&b\"'><a/>",
         "<!-- x -->\n<!DOCTYPE a PUBLIC \"it's\" 'a&b\"'>\n<a/>\n"},
        {"<!DOCTYPE a SYSTEM ''  [ <!ENTITY e \"&#38;x\">\n<!-- & --> ] ><!-- y --><a>&e;</a>",
         "<!DOCTYPE a SYSTEM \"\" [ <!ENTITY e \"&#38;x\">\n<!-- & --> ]>\n<!-- y "
         "-->\n<a>&e;</a>\n"},
        {"\xEF\xBB\xBF<a/>", "\xEF\xBB\xBF<a/>\n"},
        {"<a>\xC3\xA9</a>", "<a>\xC3\xA9</a>\n"},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.input);
        EXPECT_EQ(Format(c.input), c.expected);
        EXPECT_EQ(Format(c.expected), c.expected);
    }
}

TEST(Format, TakesOptions) {
    const struct {
        std::vector<std::string> options;
        const char* input;
        const char* expected;
    } kCases[] = {
        {{"--indent", "0"}, "<a><b><c/></b></a>", "<a>\n<b>\n<c/>\n</b>\n</a>\n"},
        {{"--indent", "3"}, "<a><b><c/></b></a>", "<a>\n   <b>\n      <c/>\n   </b>\n</a>\n"},
        {{"--tabs"}, "<a><b><c/></b></a>", "<a>\n\t<b>\n\t\t<c/>\n\t</b>\n</a>\n"},
        {{"--compact"},
         "<a>\n <b> </b> <!-- x -->\n<c>x\n<d/> </c></a>\n<!-- y\n -->\n",
         "<a><b> </b><!-- x --><c>x\n<d/> </c></a><!-- y\n -->\n"},
        {{"--compact"},
         "<?xml version='1.0'?>\n<!DOCTYPE a>\n<?p q?>\n<a> <b/></a>",
         "<?xml version=\"1.0\"?><!DOCTYPE a><?p q?><a><b/></a>\n"},
        {{"--new-lines", "crlf"},
         "<!DOCTYPE a [\n]><a>\n<!--\n--><?p q\n?><b c='\n'>\r\r\n\n</b></a>",
         "<!DOCTYPE a [\r\n]>\r\n<a>\r\n  <!--\r\n-->\r\n  <?p q\r\n?>\r\n"
         "  <b c=\"\r\n\">\r\n\r\n\r\n</b>\r\n</a>\r\n"},
        {{"--new-lines", "lf"},
         "<a b='\r'><![CDATA[\r\n]]>\r&#13;\n</a>",
         "<a b=\"\n\"><![CDATA[\n]]>\n&#13;\n</a>\n"},
        {{"--no-namespaces"}, "<a:b:c/>", "<a:b:c/>\n"},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.input);
        EXPECT_EQ(Format(c.input, c.options), c.expected);
        EXPECT_EQ(Format(c.expected, c.options), c.expected);
    }
}

TEST(Format, WritesAnotherEncodingAndDeclaresIt) {
    const std::string kEuroAndE = "\xE2\x82\xAC\xC3\xA9";
    EXPECT_EQ(Format("<a b='" + kEuroAndE + "'>" + kEuroAndE + "</a>", {"--to", "ISO-8859-1"}),
              "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>\n"
              "<a b=\"&#x20AC;\xE9\">&#x20AC;\xE9</a>\n");
    EXPECT_EQ(Format("<?xml version='1.0' standalone='yes'?><a>" + kEuroAndE + "</a>",
                     {"--to", "us-ascii"}),
              "<?xml version=\"1.0\" encoding=\"US-ASCII\" standalone=\"yes\"?>\n"
              "<a>&#x20AC;&#xE9;</a>\n");
    EXPECT_EQ(Format("<?xml version='1.0' encoding='latin1'?><a>\xE9</a>", {"--to", "utf-8"}),
              "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<a>\xC3\xA9</a>\n");
    EXPECT_EQ(Format("<?xml version='1.0' encoding='latin1'?><a>\xE9</a>", {"--to", "iso-8859-1"}),
              "<?xml version=\"1.0\" encoding=\"latin1\"?>\n<a>\xE9</a>\n");
    EXPECT_EQ(Format("<a> <b/></a>", {"--to", "utf-16"}), Utf16("<a>\n  <b/>\n</a>\n", false));
    EXPECT_EQ(Format("<?xml version='1.0' encoding='utf-8'?><a/>", {"--to", "utf-16be"}),
              Utf16("<?xml version=\"1.0\" encoding=\"UTF-16\"?>\n<a/>\n", true));
    EXPECT_EQ(Format(Utf16("<a>&amp;&e;</a>", true)
                         .insert(2, Utf16("<!DOCTYPE a SYSTEM 'x'>", true).substr(2))),
              Utf16("<!DOCTYPE a SYSTEM \"x\">\n<a>&amp;&e;</a>\n", true));
    EXPECT_EQ(Format(Utf16("<a/>", false), {"--to", "utf-8"}), "<a/>\n");
}

TEST(Format, ShowsCharactersThatCannotBeWritten) {
    const struct {
        const char* input;
        const char* encoding;
        const char* expected;
    } kCases[] = {
        {"<a>\n <!-- & && \xE2\x82\xAC -->\n</a>", "iso-8859-1",
         "<stdin>:2:12: error: Character U+20AC is not in ISO-8859-1\n"
         "    2 |  <!-- & && \xE2\x82\xAC -->\n"
         "      |            ^\n"},
        {"<a>&amp;<!-- x\ny\xC3\xA9 -->\n</a>", "us-ascii",
         "<stdin>:2:2: error: Character U+00E9 is not in US-ASCII\n"
         "    2 | y\xC3\xA9 -->\n"
         "      |  ^\n"},
        {"<a>&amp;<b\xCE\xB1/></a>", "us-ascii",
         "<stdin>:1:11: error: Character U+03B1 cannot be in a name in US-ASCII\n"
         "    1 | <a>&amp;<b\xCE\xB1/></a>\n"
         "      |           ^\n"},
        {"<a x='&amp;' \xCE\xB1='y'/>", "iso-8859-1",
         "<stdin>:1:14: error: Character U+03B1 cannot be in a name in ISO-8859-1\n"
         "    1 | <a x='&amp;' \xCE\xB1='y'/>\n"
         "      |              ^\n"},
        {"<a><![CDATA[x\xE2\x82\xAC]]></a>", "iso-8859-1",
         "<stdin>:1:14: error: Character U+20AC is not in ISO-8859-1\n"
         "    1 | <a><![CDATA[x\xE2\x82\xAC]]></a>\n"
         "      |              ^\n"},
        {"<a><?p x\xE2\x82\xAC?></a>", "iso-8859-1",
         "<stdin>:1:9: error: Character U+20AC is not in ISO-8859-1\n"
         "    1 | <a><?p x\xE2\x82\xAC?></a>\n"
         "      |         ^\n"},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.input);
        const ProgramResult result = RunProgram({"format", "--to", c.encoding}, c.input);
        EXPECT_EQ(result.errors, c.expected);
        EXPECT_EQ(result.exitCode, 4);
    }
}

// Text that comes later than anybody looks ahead is kept as it is, with what follows it.
TEST(Format, LooksAheadForText) {
    const auto document = [](std::size_t comment) {
        return "<a> <b/><!--" + std::string(comment, 'x') + "--> <c/>x <d/></a>";
    };
    EXPECT_EQ(Format(document(60000)), document(60000) + "\n");
    const std::string expected =
        "<a>\n  <b/>\n  <!--" + std::string(70000, 'x') + "-->\n  <c/>x <d/></a>\n";
    EXPECT_EQ(Format(document(70000)), expected);
    EXPECT_EQ(Format(expected), expected);
}

TEST(Format, RefusesWhatCheckRefuses) {
    for (const char* const document :
         {"<a><b></a>", "<a>&b;</a>", "<a/><b/>", "<a>&#0;</a>", "", "<a x='1' x='2'/>",
          "<p:a xmlns:p='u'><p:b></p:c></p:a>", "<a>&lt</a>"}) {
        SCOPED_TRACE(document);
        const ProgramResult format = RunProgram({"format"}, document);
        const ProgramResult check = RunProgram({"check", "--compatible"}, document);
        EXPECT_EQ(format.errors, check.errors);
        EXPECT_EQ(RunProgram({"format", "--standard"}, document).errors,
                  RunProgram({"check"}, document).errors);
        EXPECT_EQ(format.exitCode, 3);
    }
}

TEST(Format, KeepsWhatWasWrittenBeforeAnError) {
    ProgramSetup setup;
    setup.arguments = {"format"};
    setup.nextInput = ManyRecords(1 << 20, "</r:al>");
    const ProgramResult result = RunProgram(setup);
    EXPECT_EQ(result.exitCode, 3);
    EXPECT_TRUE(
        result.out.starts_with("<r:all xmlns:r=\"urn:records\">\n  <r:record r:id=\"4711\""));
    EXPECT_GT(result.out.size(), std::size_t{1000000});
}

TEST(Format, RefusesOptionsThatMakeNoSense) {
    const struct {
        std::vector<std::string> arguments;
        const char* expected;
    } kCases[] = {
        {{"--indent", "1", "--tabs"}, "take one of --indent, --tabs and --compact"},
        {{"--indent", "1", "--compact"}, "take one of --indent, --tabs and --compact"},
        {{"--compact", "--tabs"}, "take one of --indent, --tabs and --compact"},
        {{"--check", "--in-place", "a.xml"}, "take one of --check and --in-place"},
        {{"--in-place"}, "--in-place: standard input cannot be replaced"},
        {{"--in-place", "a.xml", "-"}, "--in-place: standard input cannot be replaced"},
        {{"a.xml", "b.xml"}, "several documents need --in-place or --check"},
        {{"--indent", "-1"}, "--indent: Value -1 not in range 0 to 1000"},
        {{"--new-lines", "cr"}, "--new-lines: \"cr\" is none of lf, crlf"},
        {{"--to", "EBCDIC"},
         "--to: \"ebcdic\" is none of utf-8, utf-16, utf-16le, utf-16be, iso-8859-1, us-ascii"},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.expected);
        std::vector<std::string> arguments = c.arguments;
        arguments.insert(arguments.begin(), "format");
        const ProgramResult result = RunProgram(arguments);
        EXPECT_EQ(result.exitCode, 2);
        EXPECT_EQ(result.errors, std::string("espalier: format: ") + c.expected +
                                     "\nTry \"espalier format --help\".\n");
    }
}

TEST(Format, TakesConstantMemoryFromAPipe) {
    if (!kMeasuresMemory) GTEST_SKIP() << "a sanitizer is at work";
    ProgramSetup setup;
    setup.arguments = {"format", "--check"};
    setup.nextInput = ManyRecords(24 << 20, "</r:all>");
    const ProgramResult result = RunProgram(setup);
    EXPECT_EQ(result.exitCode, 1) << result.errors;
    EXPECT_EQ(result.out, "<stdin>: would change\n");
    EXPECT_LT(result.peakKilobytes, kPeakKilobytes);
}

TEST(Format, WritesNothingThatTheDocumentTypeSupplies) {
    const std::string document =
        "<!DOCTYPE a [<!ATTLIST a y CDATA 'd' z NMTOKENS #IMPLIED>]>\n<a z=\" 1  2 \">&amp;</a>\n";
    const ProgramResult result = RunProgram({"format", "--standard"}, document);
    EXPECT_EQ(result.out, document);
    EXPECT_EQ(result.errors, "");
    EXPECT_EQ(result.exitCode, 0);
}

TEST(Format, SaysWhatItCannotFormatByTheStandard) {
    const ProgramResult result = RunProgram({"format", "--standard"}, "<a>\n <\xE4\xB8\xAD/></a>");
    EXPECT_EQ(result.errors,
              "<stdin>:2:3: error: Cannot be formatted with --standard: "
              "Syntax error: Expected element name\n"
              "    2 |  <\xE4\xB8\xAD/></a>\n"
              "      |   ^\n");
    EXPECT_EQ(result.exitCode, 4);
}
