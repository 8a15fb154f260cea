// SPDX-License-Identifier: MIT
#include <espalier/dom/Document.h>
#include <espalier/dom/css/CollectStyleSheets.h>

#include "dom/css/SheetMap.h"
#include "support/PrintAstring.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <functional>  // std::ref
#include <optional>
#include <string>
#include <vector>

namespace {

using Dom::CSS::CollectStyleSheets;
using Dom::CSS::MissingSheet;
using Dom::CSS::SheetLimits;
using support::Collected;
using support::SheetMap;

// What a document with one link, to a.css, finds.
struct Found {
    std::string sheets;
    std::string missing;
    std::string asked;
};

Found Collect(SheetMap host, const SheetLimits& limits = {}, const std::string& address = "a.css") {
    Dom::Document document;
    document.LoadXml("<?xml-stylesheet href='" + address + "'?><r/>");
    std::vector<MissingSheet> missing;
    const auto sheets = CollectStyleSheets(document, std::ref(host), &missing, limits);
    return {Collected(sheets), support::Missing(missing), host.Asked()};
}

// The addresses of the sheets, without their rules.
std::string Order(SheetMap host, const SheetLimits& limits = {}) {
    Dom::Document document;
    document.LoadXml("<?xml-stylesheet href='a.css'?><r/>");
    std::string order;
    for (const auto& collected : CollectStyleSheets(document, std::ref(host), nullptr, limits))
        order += (order.empty() ? "" : " ") + collected.sheet->Href().str();
    return order;
}

// The address of sheet `number` of a chain.
std::string InChain(int number) { return "s" + std::to_string(number) + ".css"; }

// Sheets s0.css to that of the number; each but the last one imports the next one `times` times.
SheetMap Chain(int last, int times) {
    SheetMap host{};
    for (int i = 0; i <= last; ++i) {
        std::string text;
        for (int time = 0; i < last && time < times; ++time)
            text += "@import '" + InChain(i + 1) + "';";
        host.Add(InChain(i), text);
    }
    return host;
}

}  // namespace

TEST(CollectImports, ComeBeforeWhatImportsThem) {
    const struct {
        SheetMap sheets;
        const char* order;
    } kCases[] = {
        {{{"a.css", "@import 'b.css';"}, {"b.css", ""}}, "b.css a.css"},
        {{{"a.css", "@import 'b.css'; @import url(c.css);"}, {"b.css", ""}, {"c.css", ""}},
         "b.css c.css a.css"},
        {{{"a.css", "@import 'b.css';"}, {"b.css", "@import 'c.css';"}, {"c.css", ""}},
         "c.css b.css a.css"},
        {{{"a.css", "@import 'b.css';@import 'd.css'"},
          {"b.css", "@import 'c.css';"},
          {"c.css", ""},
          {"d.css", "@import 'c.css'"}},
         "c.css b.css c.css d.css a.css"},
        // Twice one after the other is not itself.
        {{{"a.css", "@import 'b.css';@import 'b.css';"}, {"b.css", ""}}, "b.css b.css a.css"},
        {{{"a.css", "@charset \"utf-8\"; @layer x; @import 'b.css';"}, {"b.css", ""}},
         "b.css a.css"},
        // Those that stand elsewhere are none.
        {{{"a.css", "p{} @import 'b.css';"}, {"b.css", ""}}, "a.css"},
        {{{"a.css", "@media all { @import 'b.css'; }"}, {"b.css", ""}}, "a.css"},
        // These lead nowhere.
        {{{"a.css", "@import ''; @import '#b.css'; @import url( ); @import ' ';"}}, "a.css"},
        {{{"a.css", "@import ' b.css ';"}, {"b.css", ""}}, "b.css a.css"},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.order);
        EXPECT_EQ(Order(c.sheets), c.order);
    }
}

TEST(CollectImports, AddressesAreRelativeToTheSheet) {
    const Found found = Collect({{"http://h/x/a.css", "@import 'y/b.css'; @import '/c.css';"},
                                 {"http://h/x/y/b.css", "@import '../d.css#e';"}},
                                {}, "http://h/x/a.css");
    EXPECT_EQ(found.asked, "http://h/x/a.css|http://h/x/y/b.css|http://h/x/d.css|http://h/c.css|");
    EXPECT_EQ(found.missing, "http://h/x/d.css Not found, http://h/c.css Not found");
}

TEST(CollectImports, AllMediaOnTheWayCount) {
    SheetMap host{{"a.css", "@import 'b.css' screen, print; @import 'c.css';"},
                  {"b.css", "@import 'c.css' (color); @import 'd.css';"},
                  {"c.css", ""},
                  {"d.css", ""}};
    Dom::Document document;
    document.LoadXml(
        "<html><link rel='stylesheet' href='a.css' media='tv'/>"
        "<style media='all'>@import 'c.css' (grid);</style></html>");
    EXPECT_EQ(Collected(CollectStyleSheets(document, std::ref(host))),
              "<tv><screen, print><(color)>c.css[] "
              "<tv><screen, print>d.css[] "
              "<tv><screen, print>b.css[@import \"c.css\" (color); | @import \"d.css\";] "
              "<tv>c.css[] "
              "a.css[@import \"b.css\" screen, print; | @import \"c.css\";] "
              "<all><(grid)>c.css[] "
              "[@import \"c.css\" (grid);]");
}

TEST(CollectImports, OneThatIsOpenIsMissing) {
    const struct {
        SheetMap sheets;
        const char* order;
        const char* missing;
    } kCases[] = {
        {{{"a.css", "@import 'a.css'; p{a:b}"}}, "a.css", "a.css Imported by itself"},
        {{{"a.css", "@import './x/../a.css#y';"}}, "a.css", "a.css Imported by itself"},
        {{{"a.css", "@import 'b.css';"}, {"b.css", "@import 'a.css';"}},
         "b.css a.css",
         "a.css Imported by itself"},
        {{{"a.css", "@import 'b.css'; @import 'c.css';"},
          {"b.css", "@import 'c.css';"},
          {"c.css", "@import 'b.css';"}},
         "c.css b.css b.css c.css a.css",
         "b.css Imported by itself, c.css Imported by itself"},
        {{{"a.css", "@import 'a.css?x';"}, {"a.css?x", ""}}, "a.css?x a.css", ""},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.order);
        EXPECT_EQ(Order(c.sheets), c.order);
        EXPECT_EQ(Collect(c.sheets).missing, c.missing);
    }
}

TEST(CollectImports, AStyleIsNotItsDocument) {
    // The text of a page is read as a sheet, which it is not, and has no import at its begin.
    SheetMap host{{"p.xml", "<html><style>@import 'p.xml';</style></html>"}};
    Dom::Document document;
    document.LoadXml("<html><style>@import 'p.xml';</style></html>", "p.xml");
    const auto sheets = CollectStyleSheets(document, std::ref(host));
    ASSERT_EQ(sheets.size(), 2U);
    EXPECT_EQ(sheets[0].sheet->Href(), "p.xml");
    EXPECT_EQ(sheets[0].sheet->ParentStyleSheet(), sheets[1].sheet.get());
    EXPECT_EQ(host.Asked(), "p.xml|");
}

TEST(CollectImports, GoAsDeepAsTheLimit) {
    const struct {
        int last;
        int depth;
        std::size_t sheets;
        const char* missing;
    } kCases[] = {
        {8, 8, 9, ""},
        {9, 8, 9, "s9.css Imported too deep"},
        {1000, 8, 9, "s9.css Imported too deep"},
        {1, 0, 1, "s1.css Imported too deep"},
        {1, -1, 1, "s1.css Imported too deep"},
        {1000, 1000, 1001, ""},
        {3, 2, 3, "s3.css Imported too deep"},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.last);
        SheetMap host = Chain(c.last, 1);
        Dom::Document document;
        document.LoadXml("<?xml-stylesheet href='s0.css'?><r/>");
        std::vector<MissingSheet> missing;
        SheetLimits limits;
        limits.importDepth = c.depth;
        EXPECT_EQ(CollectStyleSheets(document, std::ref(host), &missing, limits).size(), c.sheets);
        EXPECT_EQ(support::Missing(missing), c.missing);
    }
    // It is 8 when nobody says anything else.
    EXPECT_EQ(Collect(Chain(9, 1), {}, "s0.css").missing, "s9.css Imported too deep");
}

TEST(CollectImports, BytesOfAllSheetsCountTogether) {
    // With addresses of 5 bytes, "p{}" of 3, and the import of 16 twice.
    const SheetMap sheets = {
        {"a.css", "@import 'b.css';@import 'c.css';"}, {"b.css", "p{}"}, {"c.css", "p{}"}};
    const struct {
        std::size_t bytes;
        const char* order;
        const char* missing;
    } kCases[] = {
        {53, "b.css c.css a.css", ""},
        {52, "b.css a.css", "c.css Too many bytes"},
        {49, "b.css a.css", "c.css Too many bytes"},
        {45, "b.css a.css", "c.css Too many bytes"},
        {44, "a.css", "b.css Too many bytes"},
        {37, "a.css", "b.css Too many bytes"},
        {36, "", "a.css Too many bytes"},
        {0, "", "a.css Too many bytes"},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.bytes);
        SheetLimits limits;
        limits.bytes = c.bytes;
        EXPECT_EQ(Order(sheets, limits), c.order);
        EXPECT_EQ(Collect(sheets, limits).missing, c.missing);
    }
}

TEST(CollectImports, BehindALimitNothingIsAskedFor) {
    SheetMap host{{"a.css", "@import 'b.css'; @import 'c.css'; p{a:b}"}, {"b.css", "p{}"}};
    Dom::Document document;
    document.LoadXml(
        "<?xml-stylesheet href='a.css'?><?xml-stylesheet href='b.css'?>"
        "<html><style>@import 'd.css'; q{a:b}</style></html>");
    SheetLimits limits;
    limits.sheets = 2;
    std::vector<MissingSheet> missing;
    EXPECT_EQ(Collected(CollectStyleSheets(document, std::ref(host), &missing, limits)),
              "b.css[p {  }] a.css[@import \"b.css\"; | @import \"c.css\"; | p { a: b }] "
              "[@import \"d.css\"; | q { a: b }]");
    EXPECT_EQ(support::Missing(missing), "c.css Too many sheets");
    EXPECT_EQ(host.Asked(), "a.css|b.css|");
}

TEST(CollectImports, MediaCountAsBytes) {
    SheetLimits limits;
    limits.bytes = 100000;
    std::string text;
    for (int i = 0; i < 1000; ++i)
        text += "@import 'b.css';";
    Dom::Document document;
    document.LoadXml("<html><style media='" + std::string(10000, 'x') + "'>" + text +
                     "</style></html>");
    SheetMap host{{"b.css", ""}};
    std::vector<MissingSheet> missing;
    EXPECT_EQ(CollectStyleSheets(document, std::ref(host), &missing, limits).size(), 10U);
    EXPECT_EQ(support::Missing(missing), "b.css Too many bytes");
}

TEST(CollectImports, AThousandInOneSheetAreAllThere) {
    std::string text;
    for (int i = 0; i < 1000; ++i)
        text += "@import 'b" + std::to_string(i) + ".css';";
    SheetMap host{{"a.css", text}};
    for (int i = 0; i < 1000; ++i)
        host.Add("b" + std::to_string(i) + ".css", "p{a:b}");
    Dom::Document document;
    document.LoadXml("<?xml-stylesheet href='a.css'?><r/>");
    std::vector<MissingSheet> missing;
    const auto sheets = CollectStyleSheets(document, std::ref(host), &missing);
    ASSERT_EQ(sheets.size(), 1001U);
    EXPECT_EQ(sheets[0].sheet->Href(), "b0.css");
    EXPECT_EQ(sheets[999].sheet->Href(), "b999.css");
    EXPECT_TRUE(missing.empty());
}

TEST(CollectImports, ThatGrowExponentiallyEndAtALimit) {
    // 2 to the power of 9 sheets are as many as there may be; 16 to that power are not.
    Dom::Document document;
    document.LoadXml("<?xml-stylesheet href='s0.css'?><r/>");
    SheetMap twice = Chain(20, 2);
    std::vector<MissingSheet> missing;
    EXPECT_EQ(CollectStyleSheets(document, std::ref(twice), &missing).size(), 511U);
    EXPECT_EQ(missing.size(), 512U);

    SheetMap often = Chain(20, 16);
    missing.clear();
    const auto sheets = CollectStyleSheets(document, std::ref(often), &missing);
    EXPECT_EQ(sheets.size() + missing.size(), 4097U);
    EXPECT_EQ(missing.back().reason, "Too many sheets");
    EXPECT_EQ(sheets.back().sheet->Href(), "s0.css");
}

TEST(CollectImports, AHostThatAlwaysHasASheetIsNotAskedForever) {
    int asked = 0;
    // All lead to two of longer addresses.
    const astring text = "@import 'x/y'; @import 'z/" + std::string(100000, 'z') + "';";
    const auto host = [&](const astring&, const astring&) -> std::optional<astring> {
        ++asked;
        return text;
    };
    Dom::Document document;
    document.LoadXml("<?xml-stylesheet href='a'?><r/>");
    std::vector<MissingSheet> missing;
    SheetLimits limits;
    limits.importDepth = 1000000;
    EXPECT_FALSE(CollectStyleSheets(document, host, &missing, limits).empty());
    EXPECT_LE(asked, 168);  // of 100 KB in 16 MB
    ASSERT_EQ(missing.size(), 1U);
    EXPECT_EQ(missing[0].reason, "Too many bytes");
}

TEST(CollectImports, DamagedSheetsGiveWhatCanBeRead) {
    const struct {
        const char* text;
        const char* sheets;
    } kCases[] = {
        {"", "a.css[]"},
        {"}}}", "a.css[]"},
        {"@import 'b.css", "b.css[p { a: b }] a.css[@import \"b.css\";]"},
        {"@import 'b.css'", "b.css[p { a: b }] a.css[@import \"b.css\";]"},
        {"@import url(b.css", "b.css[p { a: b }] a.css[@import \"b.css\";]"},
        {"@import b.css; q{a:b}", "a.css[q { a: b }]"},
        {"@import 'b.css' {} q{a:b}", "a.css[q { a: b }]"},
        {"@import '\\62 .css';", "b.css[p { a: b }] a.css[@import \"b.css\";]"},
        {"/*@import 'b.css';", "a.css[]"},
        {"<!-- @import 'b.css'; -->", "b.css[p { a: b }] a.css[@import \"b.css\";]"},
        {"q{a:b", "a.css[q { a: b }]"},
        {"q{a b;c:d} r{e:f}", "a.css[q { c: d } | r { e: f }]"},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.text);
        EXPECT_EQ(Collect({{"a.css", c.text}, {"b.css", "p{a:b}"}}).sheets, c.sheets);
    }
}

TEST(CollectImports, AreInTheEncodingOfWhatImportsThem) {
    using namespace std::string_literals;
    const std::string import = "@import 'b.css';";
    std::string wide = "\xFE\xFF";
    for (const char character : import) {
        wide += '\0';
        wide += character;
    }
    const struct {
        const char* attribute;
        std::string importing;
        std::string imported;
    } kCases[] = {
        {"", import, ".\xC3\xA9{}"},
        {"charset='ISO-8859-1'", import, ".\xE9{}"},
        {"charset='ISO-8859-1'", import, "\xEF\xBB\xBF.\xC3\xA9{}"},
        {"charset='ISO-8859-1'", import, "@charset \"utf-8\";.\xC3\xA9{}"},
        {"charset='ISO-8859-1'", "@charset \"utf-8\";" + import, ".\xC3\xA9{}"},
        {"", "@charset \"windows-1251\";" + import, "@charset \"latin1\";.\xE9{}"},
        {"", "@charset \"latin1\";" + import, ".\xE9{}"},
        {"", wide, "\0.\0\xE9\0{\0}"s},
        {"charset='unheard-of'", import, ".\xC3\xA9{}"},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(std::string(c.attribute) + c.importing + c.imported);
        SheetMap host{{"a.css", c.importing}, {"b.css", c.imported}};
        Dom::Document document;
        document.LoadXml(std::string("<?xml-stylesheet href='a.css' ") + c.attribute + "?><r/>");
        const auto sheets = CollectStyleSheets(document, std::ref(host));
        ASSERT_EQ(sheets.size(), 2U);
        const std::string rules = support::RulesOf(*sheets[0].sheet);
        EXPECT_TRUE(rules.ends_with(".\xC3\xA9 {  }")) << rules;
    }
}
