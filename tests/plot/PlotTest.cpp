// SPDX-License-Identifier: MIT
#include <espalier/io/MemoryStream.h>
#include <espalier/xml/XmlTextReader.h>

#include "plot/Plot.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <limits>
#include <string>
#include <vector>

namespace {

constexpr double kNotMeasured = std::numeric_limits<double>::quiet_NaN();

bench::Chart TwoGroups() {
    return {"sample",
            "Reading & writing <fast>",
            "MB/s",
            false,
            {{"reading", {{"ours", true, 780, 792, 803.5}, {"theirs", false, 200, 211, 219}}},
             {"writing",
              {{"ours", true, 12.25, 12.5, 13},
               {"theirs", false, kNotMeasured, kNotMeasured, kNotMeasured}}}}};
}

std::string ReadWhole(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

// What is in a picture, by our own reader in standard mode.
struct Found {
    std::vector<std::string> texts;     // of text elements
    std::vector<std::string> rects;     // their classes
    std::vector<std::string> elements;  // the first ones
    std::string description;
};

Found Look(const std::string& picture) {
    IO::MemoryStream stream(reinterpret_cast<const unsigned char*>(picture.data()),
                            static_cast<long>(picture.size()));
    Xml::XmlTextReader reader;
    reader.SetConformance(Xml::XmlConformance::Standard);
    reader.SetStream(&stream, false);
    Found found;
    std::string name;
    while (reader.Read()) {
        if (reader.NodeType() == Xml::XmlNodeType::Element) {
            name = reader.LocalName().c_str();
            found.elements.push_back(name);
            EXPECT_STREQ("http://www.w3.org/2000/svg", reader.NamespaceURI().c_str());
            if (name == "rect") found.rects.emplace_back(reader.GetAttribute("class").c_str());
        } else if (reader.NodeType() == Xml::XmlNodeType::Text) {
            if (name == "text") found.texts.emplace_back(reader.Value().c_str());
            if (name == "desc") found.description = reader.Value().c_str();
        }
    }
    return found;
}

TEST(Plot, DrawsTheSamePictureEveryTime) {
    const std::string expected = ReadWhole(ESPALIER_TEST_DATA "/plots/sample.svg");
    ASSERT_FALSE(expected.empty());
    EXPECT_EQ(expected, bench::DrawChart(TwoGroups()));
    EXPECT_EQ(bench::DrawChart(TwoGroups()), bench::DrawChart(TwoGroups()));
}

TEST(Plot, IsWellFormedAndKeepsTextAsText) {
    const Found found = Look(bench::DrawChart(TwoGroups()));
    const std::vector<std::string> first(found.elements.begin(), found.elements.begin() + 3);
    EXPECT_EQ((std::vector<std::string>{"svg", "title", "desc"}), first);
    const std::vector<std::string> texts = {"Reading & writing <fast>",
                                            "MB/s, more is better",
                                            "0",
                                            "200",
                                            "400",
                                            "600",
                                            "800",
                                            "1000",
                                            "reading",
                                            "ours",
                                            "792",
                                            "theirs",
                                            "211",
                                            "writing",
                                            "ours",
                                            "12.5",
                                            "theirs",
                                            "not measured"};
    EXPECT_EQ(texts, found.texts);
    EXPECT_EQ((std::vector<std::string>{"ground", "ours", "peer", "ours"}), found.rects);
}

TEST(Plot, SaysInWordsWhatItShows) {
    EXPECT_EQ(
        "MB/s, more is better. Median, and from least to most of all rounds. "
        "reading. ours: 792 MB/s (780 to 804); theirs: 211 MB/s (200 to 219). "
        "writing. ours: 12.5 MB/s (12.2 to 13); theirs: not measured.",
        Look(bench::DrawChart(TwoGroups())).description);
}

TEST(Plot, HasColoursForLightAndDark) {
    const std::string picture = bench::DrawChart(TwoGroups());
    EXPECT_NE(std::string::npos, picture.find("@media (prefers-color-scheme: dark)"));
    EXPECT_NE(std::string::npos, picture.find("role=\"img\" aria-labelledby=\"title desc\""));
}

TEST(Plot, SaysWhereLessIsBetter) {
    bench::Chart chart = TwoGroups();
    chart.isLessBetter = true;
    EXPECT_EQ("MB/s, less is better", Look(bench::DrawChart(chart)).texts[1]);
}

TEST(Plot, PutsRoundNumbersOnTheScale) {
    using Ticks = std::vector<double>;
    EXPECT_EQ((Ticks{0, 200, 400, 600, 800, 1000}), bench::TicksFor(803.5));
    EXPECT_EQ((Ticks{0, 1, 2, 3, 4, 5}), bench::TicksFor(5));
    EXPECT_EQ((Ticks{0, 2, 4, 6}), bench::TicksFor(5.1));
    EXPECT_EQ((Ticks{0, 20, 40, 60, 80, 100}), bench::TicksFor(100));
    EXPECT_EQ((Ticks{0, 0.5, 1, 1.5}), bench::TicksFor(1.2));
}

TEST(Plot, GivesNumbersThreeDigitsThatCount) {
    EXPECT_EQ("2806", bench::FormatAmount(2806.4));
    EXPECT_EQ("100", bench::FormatAmount(99.96 + 0.04));
    EXPECT_EQ("12.5", bench::FormatAmount(12.48));
    EXPECT_EQ("3.94", bench::FormatAmount(3.942));
    EXPECT_EQ("0.047", bench::FormatAmount(0.0471));
    EXPECT_EQ("0", bench::FormatAmount(0));
}

TEST(Figures, AreReadAsTheyWereWritten) {
    bench::Figures figures;
    figures.compiler = "g++ 12";
    figures.libraries = {{"expat, namespaces", "2.5"}};
    figures.charts = {TwoGroups()};
    figures.bars = {{"a bar", 4, 3.94}, {"another", 1.05, 1.04, "times the time", true}};
    const std::string text = bench::FormatFigures(figures);
    EXPECT_NE(std::string::npos, text.find("limit\ta bar\t3.94\t4\tleast\ttimes\tMISS\n"));
    EXPECT_NE(std::string::npos,
              text.find("limit\tanother\t1.04\t1.05\tmost\ttimes the time\tOK\n"));
    const bench::Figures read = bench::ParseFigures(text);
    EXPECT_EQ(text, bench::FormatFigures(read));
    EXPECT_EQ(bench::DrawChart(TwoGroups()), bench::DrawChart(read.charts.at(0)));
}

TEST(Figures, AreRefusedWithTheirLine) {
    const char* const wrong[] = {"chart\ta\tb\tc\tmore\nbar\ta\tours\t1\t2\t3\n",
                                 "library\tone\t1\ngarden\n",
                                 "library\tone\t1\nlimit\ta\tfour\t4\tleast\ttimes\tOK\n",
                                 "library\tone\t1\nchart\ta\tb\tc\tbest\n"};
    for (const char* const text : wrong) {
        try {
            bench::ParseFigures(text);
            ADD_FAILURE() << "not refused: " << text;
        } catch (const std::runtime_error& error) {
            EXPECT_EQ(0U, std::string(error.what()).find("line 2: ")) << error.what();
        }
    }
}

}  // namespace
