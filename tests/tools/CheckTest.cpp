// SPDX-License-Identifier: MIT
#include "tools/ManyRecords.h"
#include "tools/RunProgram.h"
#include "tools/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <fstream>

namespace {

namespace fs = std::filesystem;

const std::string kSamples = ESPALIER_SAMPLES;

std::string Utf16(std::string_view ascii) {
    std::string text = "\xFF\xFE";
    for (const char byte : ascii)
        text.append({byte, '\0'});
    return text;
}

}  // namespace

TEST(Check, IsQuietWhenAllIsWell) {
    const ProgramResult result =
        RunProgram({"check", kSamples + "/catalogue.xml", kSamples + "/feed.xml",
                    kSamples + "/drawing.svg", kSamples + "/page.xhtml", kSamples + "/settings.xml",
                    kSamples + "/utf16.xml", kSamples + "/latin1.xml"});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.errors, "");
}

TEST(Check, NamesWhatIsWellWhenAsked) {
    const ProgramResult result = RunProgram({"check", "-v"}, "<a><!-- b -->c</a>");
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.out, "<stdin>: ok, 4 nodes\n");
    EXPECT_EQ(RunProgram({"check", "--verbose", "-"}, "<a/>").out, "<stdin>: ok, 1 node\n");
}

TEST(Check, ShowsEachMistake) {
    const struct {
        const char* input;
        const char* expected;
    } kCases[] = {
        {"<a>\n  <b></c>\n</a>",
         "<stdin>:2:9: error: End tag 'c' doesn't match start tag 'b'\n"
         "    2 |   <b></c>\n"
         "      |         ^\n"
         "<stdin>:2:3: note: <b> was opened here\n"
         "    2 |   <b></c>\n"
         "      |   ^\n"},
        {"<a>\n  <b>\n",
         "<stdin>:3:1: error: Missing end element 'b'\n"
         "<stdin>:2:3: note: <b> was opened here\n"
         "    2 |   <b>\n"
         "      |   ^\n"},
        {"<p:a xmlns:p='u'><p:b></p:c></p:a>",  // the caret stands at the ">" that is read next
         "<stdin>:1:28: error: End tag 'p:c' doesn't match start tag 'p:b'\n"
         "    1 | <p:a xmlns:p='u'><p:b></p:c></p:a>\n"
         "      |                            ^\n"
         "<stdin>:1:18: note: <p:b> was opened here\n"
         "    1 | <p:a xmlns:p='u'><p:b></p:c></p:a>\n"
         "      |                  ^\n"},
        {"<a/>\n <b/>",
         "<stdin>:2:3: error: Only one document element is allowed\n"
         "    2 |  <b/>\n"
         "      |   ^\n"
         "<stdin>:1:1: note: the first root element is here\n"
         "    1 | <a/>\n"
         "      | ^\n"},
        {"<a>\n <!-- b\n</a>",
         "<stdin>:3:5: error: Unexpected end of file while scanning for '-->'\n"
         "    3 | </a>\n"
         "      |     ^\n"
         "<stdin>:2:2: note: the comment begins here\n"
         "    2 |  <!-- b\n"
         "      |  ^\n"},
        {"<!DOCTYPE a [\n<!ELEMENT b (x",
         "<stdin>:2:15: error: Unexpected end of file in the element declaration\n"
         "    2 | <!ELEMENT b (x\n"
         "      |               ^\n"
         "<stdin>:2:1: note: the element declaration begins here\n"
         "    2 | <!ELEMENT b (x\n"
         "      | ^\n"},
        {"<a x='1'y='2'/>",
         "<stdin>:1:9: error: Whitespace expected before the attribute\n"
         "    1 | <a x='1'y='2'/>\n"
         "      |         ^\n"},
        {"<a><p:b/></a>",
         "<stdin>:1:4: error: Undeclared prefix 'p:b'\n"
         "    1 | <a><p:b/></a>\n"
         "      |    ^\n"},
        {"", "<stdin>:1:1: error: Missing root element\n"},
        {"</a>",
         "<stdin>:1:4: error: Unexpected end tag '</a>'\n"
         "    1 | </a>\n"
         "      |    ^\n"},
        {"<a x='1' x='2'/>",
         "<stdin>:1:10: error: Duplicate attribute 'x'\n"
         "    1 | <a x='1' x='2'/>\n"
         "      |          ^\n"},
        {"<a>\xC3\xA9\x93</a>",  // the byte after the e acute is no UTF-8
         "<stdin>:1:5: error: Invalid character\n"
         "    1 | <a>\xC3\xA9\xEF\xBF\xBD</a>\n"
         "      |     ^\n"},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.input);
        const ProgramResult result = RunProgram({"check"}, c.input);
        EXPECT_EQ(result.errors, c.expected);
        EXPECT_EQ(result.out, "");
        EXPECT_EQ(result.exitCode, 3);
    }
}

TEST(Check, JudgesAsOtherVerbsDoWhenItIsToldTo) {
    for (const char* const input :
         {"<a x='1'y='2'/>", "<p:a/>", "<!DOCTYPE a [<!ELEMENT a>]><a/>", "<a>\xEF\xBF\xBF</a>"}) {
        EXPECT_EQ(RunProgram({"check"}, input).exitCode, 3) << input;
        EXPECT_EQ(RunProgram({"check", "--compatible"}, input).exitCode, 0) << input;
        EXPECT_EQ(RunProgram({"events"}, input).exitCode, 0) << input;
        EXPECT_EQ(RunProgram({"events", "--standard"}, input).exitCode, 3) << input;
    }
    const ProgramResult roots = RunProgram({"check", "--compatible"}, "<a/>\n <b/>");
    EXPECT_EQ(roots.errors,
              "<stdin>:2:2: error: Second root element 'b'\n"
              "    2 |  <b/>\n"
              "      |  ^\n"
              "<stdin>:1:1: note: the first root element is here\n"
              "    1 | <a/>\n"
              "      | ^\n");
    EXPECT_EQ(roots.exitCode, 3);
}

TEST(Check, TakesWhatTheStandardAllows) {
    for (const char* const input :
         {"<\xE4\xB8\xAD/>", "<?xml version='1.1'?><a/>", "<a xml:lang='pt_BR'/>",
          "<!DOCTYPE a SYSTEM 'a.dtd'><a>&e;</a>",
          "<?xml version='1.0' encoding='Iso-8859-1'?><a>\xE9</a>"}) {
        EXPECT_EQ(RunProgram({"check"}, input).errors, "") << input;
        EXPECT_EQ(RunProgram({"check"}, input).exitCode, 0) << input;
    }
}

TEST(Check, TooManySuppliedAttributesAreALimit) {
    std::string input = "<!DOCTYPE a [<!ATTLIST a ";
    for (int i = 0; i < 5000; ++i)
        input += "x" + std::to_string(i) + " CDATA 'v' ";
    input += ">]><a>";
    for (int i = 0; i < 50000; ++i)
        input += "<a/>";
    const ProgramResult result = RunProgram({"check"}, input + "</a>");
    EXPECT_NE(result.errors.find("error: Limit on supplied attributes exceeded"), std::string::npos)
        << result.errors;
    EXPECT_EQ(result.exitCode, 5);
}

// A document that is in another encoding than it says is judged as if it said so.
TEST(Check, AnotherEncodingIsNoErrorOfTheDeclaration) {
    for (const char* const declared : {"l1", "GBK", "EUC-KR", "nobody", "windows-1252"}) {
        const std::string input = std::string("<?xml version='1.0' encoding='") + declared +
                                  "' standalone='yes'?><a>\xE9</a>";
        EXPECT_EQ(RunProgram({"check", "--encoding", "windows-1252"}, input).errors, "") << input;
        const ProgramResult events =
            RunProgram({"events", "--standard", "--encoding", "windows-1252"}, input);
        EXPECT_NE(events.out.find(std::string("encoding='") + declared + "' stand"),
                  std::string::npos)
            << events.out;
    }
    for (const char* const declaration :
         {"version='1.0'encoding='windows-1250'", "version='1.0' encoding='8 bits'",
          "encoding='l1' version='1.0'", "version='1.0' encoding='EUC-KR'standalone='no'"}) {
        const std::string input = std::string("<?xml ") + declaration + "?><a/>";
        EXPECT_EQ(RunProgram({"check", "--encoding", "windows-1252"}, input).exitCode, 3) << input;
    }
}

// The reader leaves some colons out of its columns; the program knows which.
TEST(Check, ColumnsCountEveryCharacterBeforeTheError) {
    const std::string kBefore[] = {
        "",
        "<!DOCTYPE p:a>",
        "<!DOCTYPE a SYSTEM 'a:b'>",
        "<!DOCTYPE a [<!ELEMENT p:b ANY>]>",
        "<!DOCTYPE a [<!ENTITY p:b 'x:y'>]>",
        "<!DOCTYPE a [<!ENTITY b 'x:y&p:c;:'>]>",
        "<!DOCTYPE a [<!ENTITY p:b SYSTEM '&p:c;'><!ENTITY % p:b 'c'>]>",
        "<!DOCTYPE a [<!NOTATION n SYSTEM 'x:y'><!ENTITY p:b SYSTEM 'x:y' NDATA n>]>",
        "<!DOCTYPE a [<!ATTLIST p:b x:y CDATA #IMPLIED>]>",
        "<!DOCTYPE a [<?p:i x:y?><!-- x:y -->]>",
        "<?i x:y?>",
        "<!-- x:y -->",
        "<p:a><p:b/></p:a>",
        "<p:a p:b='x:y' xmlns:p = 'u:v' p:c=\"x:y\"></p:a >",
        "<a>x:y<![CDATA[x:y]]>&#58;:</a>",
        "<a b='&p:c;'/>",
        "<a>&p:b;</a>",
    };
    for (const std::string& before : kBefore) {
        SCOPED_TRACE(before);
        ProgramSetup setup;
        setup.arguments = {"events"};  // which takes a second root element
        setup.input = before + "<q:r></q:s>";
        const std::string column = std::to_string(before.size() + 11);
        EXPECT_TRUE(
            RunProgram(setup).errors.starts_with("<stdin>:1:" + column + ": error: End tag"))
            << RunProgram(setup).errors;
    }
    const ProgramResult reference =
        RunProgram({"check", "--compatible"}, "<!DOCTYPE a SYSTEM 'x'><a>&p:e;x:y</b>");
    EXPECT_TRUE(reference.errors.starts_with("<stdin>:1:38: error: End tag")) << reference.errors;
}

TEST(Check, ColumnsCountTheColonThatIsTheError) {
    EXPECT_EQ(RunProgram({"check"}, "<!DOCTYPE a [<!NOTATION p:n SYSTEM 'x'>]><a/>").errors,
              "<stdin>:1:28: error: Colon not allowed in NOTATION name 'p:n'\n"
              "    1 | <!DOCTYPE a [<!NOTATION p:n SYSTEM 'x'>]><a/>\n"
              "      |                            ^\n");
}

TEST(Check, SaysTheSameOfFilesAndOfStandardInput) {
    std::size_t count = 0;
    for (const auto& entry : fs::directory_iterator(kSamples + "/broken")) {
        SCOPED_TRACE(entry.path().string());
        std::ifstream file(entry.path(), std::ios::binary);
        const std::string content((std::istreambuf_iterator<char>(file)), {});
        const ProgramResult fromFile = RunProgram({"check", entry.path().string()});
        std::string fromPipe = RunProgram({"check"}, content).errors;
        for (std::size_t at = 0; (at = fromPipe.find("<stdin>", at)) != std::string::npos;) {
            fromPipe.replace(at, 7, entry.path().string());
        }
        EXPECT_EQ(fromFile.exitCode, 3);
        EXPECT_NE(fromFile.errors, "");
        EXPECT_EQ(fromFile.errors, fromPipe);
        ++count;
    }
    EXPECT_EQ(count, 8U);
}

TEST(Check, EntitiesOfADocumentWithoutADocumentTypeMustBeKnown) {
    const char* const kUndeclared[] = {"<a>&b;</a>", "<a x='&b;'/>", "<a>x<b/>y &c;</a>"};
    for (const char* const input : kUndeclared) {
        SCOPED_TRACE(input);
        const ProgramResult result = RunProgram({"check"}, input);
        EXPECT_EQ(result.exitCode, 3);
        EXPECT_NE(result.errors.find("error: Undeclared entity"), std::string::npos)
            << result.errors;
    }
    EXPECT_EQ(RunProgram({"check"}, "<a x='&lt;'>&amp;&#65;</a>").exitCode, 0);
    EXPECT_EQ(RunProgram({"check"}, "<!DOCTYPE a SYSTEM 'a.dtd'><a>&b;</a>").exitCode, 0);
}

TEST(Check, NamesMayHoldColonsWithoutNamespaces) {
    EXPECT_EQ(RunProgram({"check"}, "<a:b:c/>").exitCode, 3);
    EXPECT_EQ(RunProgram({"check", "--no-namespaces"}, "<a:b:c/>").exitCode, 0);
    // Columns are those of the reader then.
    EXPECT_EQ(RunProgram({"check", "--no-namespaces"}, "<a:b><c:d></a:b>").errors.substr(0, 30),
              "<stdin>:1:16: error: End tag '");
    EXPECT_EQ(RunProgram({"check", "--compatible"}, "<a:b><c:d></a:b>").errors.substr(0, 30),
              "<stdin>:1:16: error: End tag '");
}

TEST(Check, ShowsLinesOfOtherEncodings) {
    const TemporaryDirectory directory;
    const std::string expected =
        ":2:4: error: Missing end element 'a'\n"
        "    2 |  b\xC3\xA9\n"
        "      |    ^\n";
    const struct {
        const char* name;
        std::string content;
    } kCases[] = {
        {"utf8.xml", "<a>\n b\xC3\xA9"},
        {"utf8-mark.xml", "\xEF\xBB\xBF<a>\n b\xC3\xA9"},
        {"latin1.xml", "<?xml version='1.0' encoding='ISO-8859-1'?><a>\n b\xE9"},
        {"utf16.xml", Utf16("<a>\n b\xE9")},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.name);
        const std::string file = directory.Write(c.name, c.content);
        EXPECT_EQ(RunProgram({"check", file}).errors.substr(0, file.size() + expected.size()),
                  file + expected);
        EXPECT_EQ(RunProgram({"check"}, c.content).errors.substr(0, 7 + expected.size()),
                  "<stdin>" + expected);
    }
}

TEST(Check, TheWorstDocumentDecides) {
    const TemporaryDirectory directory;
    const std::string good = directory.Write("good.xml", "<a/>");
    const std::string bad = directory.Write("bad.xml", "<a>");
    const std::string longName = directory.Write("long.xml", "<" + std::string(70000, 'a') + "/>");
    const struct {
        std::vector<std::string> files;
        int exitCode;
    } kCases[] = {
        {{good}, 0},
        {{good, bad, good}, 3},
        {{bad, "/nonexistent/a.xml"}, 4},
        {{"/nonexistent/a.xml", bad}, 4},
        {{longName}, 5},
        {{longName, "/nonexistent/a.xml", bad}, 5},
    };
    for (const auto& c : kCases) {
        std::vector<std::string> arguments{"check", "-v"};
        arguments.insert(arguments.end(), c.files.begin(), c.files.end());
        const ProgramResult result = RunProgram(arguments);
        EXPECT_EQ(result.exitCode, c.exitCode) << result.errors;
    }
}

TEST(Check, FilesThatCannotBeReadAreErrorsOfInput) {
    const TemporaryDirectory directory;
    const std::string secret = directory.Write("secret.xml", "<a/>");
    fs::permissions(secret, fs::perms::none);
    const std::string missing = (directory.Path() / "missing.xml").string();
    const std::string path = directory.Path().string();

    EXPECT_EQ(RunProgram({"check", missing}).errors, missing + ": error: File not found\n");
    EXPECT_EQ(RunProgram({"check", missing}).exitCode, 4);
    EXPECT_EQ(RunProgram({"check", path}).errors, path + ": error: Is a directory\n");
    EXPECT_EQ(RunProgram({"check", path}).exitCode, 4);

    ProgramSetup setup;
    setup.arguments = {"check", secret};
    setup.asNobody = true;
    const ProgramResult result = RunProgram(setup);
    EXPECT_EQ(result.errors, secret + ": error: Access denied/sharing violation\n");
    EXPECT_EQ(result.exitCode, 4);
}

TEST(Check, ErrorsFarIntoALargeFileAreShown) {
    const TemporaryDirectory directory;
    std::string content = "<all xmlns:r='urn:records'>\n";
    for (int i = 0; i < 10; ++i)
        content += Records();
    content +=
        std::string(70000, ' ') + "<r:x r:y='1'></r:z>" + std::string(70000, ' ') + "\n</all>";
    const std::string file = directory.Write("large.xml", content);
    const std::string shown = RunProgram({"check", file}).errors;
    EXPECT_NE(shown.find(":70019: error: End tag 'r:z' doesn't match start tag 'r:x'\n"),
              std::string::npos)
        << shown;
    EXPECT_NE(shown.find(":70001: note: <r:x> was opened here\n"), std::string::npos) << shown;
    EXPECT_NE(shown.find("| ..." + std::string(27, ' ') + "<r:x r:y='1'></r:z>"), std::string::npos)
        << shown;
    std::string fromPipe = RunProgram({"check"}, content).errors;
    for (std::size_t at = 0; (at = fromPipe.find("<stdin>", at)) != std::string::npos;) {
        fromPipe.replace(at, 7, file);
    }
    EXPECT_EQ(shown, fromPipe);
}

TEST(Check, WhatHasLeftTheWindowOfAPipeIsNamedByItsLine) {
    ProgramSetup setup;
    setup.arguments = {"check"};
    setup.nextInput = ManyRecords(1 << 20, "</r:al>");
    const ProgramResult result = RunProgram(setup);
    EXPECT_EQ(result.exitCode, 3);
    EXPECT_NE(result.errors.find("error: End tag 'r:al' doesn't match start tag 'r:all'\n"),
              std::string::npos);
    EXPECT_NE(result.errors.find(
                  " | </r:al>\n      |       ^\n<stdin>:1: note: <r:all> was opened here\n"),
              std::string::npos)
        << result.errors;
}

TEST(Check, TakesConstantMemoryFromAPipe) {
    if (!kMeasuresMemory) GTEST_SKIP() << "a sanitizer is at work";
    ProgramSetup setup;
    setup.arguments = {"check", "-v"};
    setup.nextInput = ManyRecords(64 << 20, "</r:all>");
    const ProgramResult result = RunProgram(setup);
    EXPECT_EQ(result.exitCode, 0) << result.errors;
    EXPECT_LT(result.peakKilobytes, kPeakKilobytes);
}

TEST(Check, TakesConstantMemoryFromAFileAlsoForErrors) {
    if (!kMeasuresMemory) GTEST_SKIP() << "a sanitizer is at work";
    const TemporaryDirectory directory;
    const std::string name = (directory.Path() / "large.xml").string();
    {
        std::ofstream file(name, std::ios::binary);
        auto next = ManyRecords(64 << 20, "</r:al>");
        for (std::string piece = next(); !piece.empty(); piece = next())
            file << piece;
    }
    const ProgramResult result = RunProgram({"check", name});
    EXPECT_EQ(result.exitCode, 3);
    EXPECT_NE(result.errors.find(name + ":1:1: note: <r:all> was opened here\n"), std::string::npos)
        << result.errors;
    EXPECT_LT(result.peakKilobytes, kPeakKilobytes);
}
