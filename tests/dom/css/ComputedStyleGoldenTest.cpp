// SPDX-License-Identifier: MIT

// The computed style of whole pages, compared with what a browser says: each property of
// properties.txt, for each element, and for what stands before and after it. Where the browser's
// answer is in another form, PlainValue() says by which standard the two are the same.

#include <espalier/css.h>
#include <espalier/dom.h>
#include <espalier/dom/css/HtmlStyleSheet.h>
#include <espalier/dom/css/StyleResolver.h>
#include <espalier/xml/XmlTextReader.h>

#include "dom/css/GoldenPages.h"
#include "support/PrintAstring.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace {

using Dom::Element;
using Dom::CSS::ComputedStyle;
using Dom::CSS::StyleResolver;
using support::GoldenProperty;
using support::GoldenValues;

const std::string kFolder = ESPALIER_STYLE_PAGES "/";
const std::string kSamples = ESPALIER_SAMPLES "/";

// The pages of the folder; the samples are beside it.
constexpr const char* kPages[] = {
    "cascade.xhtml",     "colours.xhtml",    "display.xhtml", "generated.xhtml", "html.xhtml",
    "inheritance.xhtml", "media.xhtml",      "plain.xml",     "recovery.xhtml",  "selectors.xhtml",
    "shapes.svg",        "shorthands.xhtml", "units.xhtml",   "variables.xhtml",
};
constexpr const char* kSamplePages[] = {"page.xhtml", "drawing.svg"};

// How a drawing looks when no sheet says anything: SVG 2 has texts that are blocks of one line.
constexpr char kDrawingSheet[] =
    "text, foreignObject { display: block } text { white-space: nowrap }";

std::optional<astring> ReadFile(const astring& address, const astring& /*encoding*/) {
    std::ifstream file(address.str(), std::ios::binary);
    if (!file) return std::nullopt;
    return astring(std::string(std::istreambuf_iterator<char>(file), {}));
}

// CSS 2.1 section 12.2: what "attr(name)" stands for is part of the computed value. Elements share
// their styles, so these leave it to whoever makes the content.
void ResolveAttributes(std::string& content, const Element& element) {
    constexpr std::string_view kBegin = "attr(";
    for (std::size_t at = 0; (at = content.find(kBegin, at)) != std::string::npos;) {
        const std::size_t end = content.find(')', at);
        const std::string name = content.substr(at + kBegin.size(), end - at - kBegin.size());
        const std::string text = "\"" + element.GetAttribute(name).str() + "\"";
        content.replace(at, end + 1 - at, text);
        at += text.size();
    }
}

double PixelsOf(std::string_view value) { return std::strtod(std::string(value).c_str(), nullptr); }

// An element whose style has been compared, or something before or after it.
struct Place {
    const Element* element;
    std::string path;
    const GoldenValues* parent;  // null for the root
    bool isBoxless;              // for an element above it has no box
};

class GoldenPage {
public:
    explicit GoldenPage(const std::string& file)
        : file_(file),
          folder_(file.substr(0, file.rfind('/') + 1)),
          properties_(support::ReadGoldenProperties(kFolder)),
          initial_(support::ReadGoldenFile(kFolder + "initial.golden").at("*")),
          golden_(support::ReadGoldenFile(kFolder + file.substr(folder_.size()) + ".golden")) {
        const bool isHtml = file.ends_with(".xhtml");
        page_ = isHtml ? std::make_unique<Dom::HTMLDocument>() : std::make_unique<Dom::Document>();
        // ":empty" asks about white space, too.
        Xml::XmlTextReader reader;
        reader.Open(file.c_str());
        reader.SetWhitespaceHandling(Xml::XmlTextReader::WsAll);
        page_->Load(reader, file);
        if (isHtml) resolver_.AddSheet(Dom::CSS::HtmlStyleSheet());
        if (file.ends_with(".svg")) {
            drawingSheet_ =
                Dom::CSS::ParseStyleSheet(kDrawingSheet, {.origin = Dom::CSS::CSSRule::UserAgent});
            resolver_.AddSheet(*drawingSheet_);
        }
        resolver_.AddSheetsOf(*page_, ReadFile);
    }

    // Returns a line for each value that is not the browser's, and for each path that is not there.
    std::string Differences() {
        std::vector<Place> open{
            {page_->DocumentElement(), NameOf(*page_->DocumentElement()), nullptr, false}};
        while (!open.empty()) {
            const Place place = std::move(open.back());
            open.pop_back();
            const GoldenValues& values = Compare(place, {});
            const bool isBoxless = place.isBoxless || values.at("display") == "none";
            for (const char* const pseudo : {"before", "after"})
                ComparePseudo(place, pseudo, values, isBoxless);
            AddChildren(place, values, isBoxless, open);
        }
        for (const auto& [path, values] : golden_) {
            if (!expected_.contains(path)) differences_ += path + ": no such element\n";
        }
        return differences_;
    }

private:
    static std::string NameOf(const Element& element) {
        const astring& name = element.LocalName();
        return name.empty() ? element.NodeName().str() : name.str();
    }

    static void AddChildren(const Place& place, const GoldenValues& values, bool isBoxless,
                            std::vector<Place>& open) {
        std::map<std::string, int> counts;
        std::vector<Place> children;
        for (const Dom::Node& child : place.element->Children()) {
            if (child.NodeType() != Dom::DOMNodeType::ELEMENT_NODE) continue;
            const auto& element = static_cast<const Element&>(child);
            ++counts[NameOf(element)];
            children.push_back({&element, {}, &values, isBoxless});
        }
        std::map<std::string, int> indices;
        for (Place& child : children) {
            const std::string name = NameOf(*child.element);
            const int index = ++indices[name];
            child.path = place.path + "/" + name;
            if (counts[name] > 1) child.path += "[" + std::to_string(index) + "]";
        }
        open.insert(open.end(), children.rbegin(), children.rend());
    }

    // What the browser says of a place: the lines of the file, and all that they leave out.
    const GoldenValues& Expect(const std::string& path, const GoldenValues* parent) {
        const auto found = golden_.find(path);
        GoldenValues& values = expected_[path];
        if (found != golden_.end()) values = found->second;
        const GoldenValues& from = parent != nullptr ? *parent : initial_;
        values.try_emplace("color", from.at("color"));
        // CSS 2.1 section 18.4: without a style, there is no width. Chromium keeps it, as CSS Basic
        // User Interface Level 4 wants it.
        if (values.try_emplace("outline-style", "none").first->second == "none") {
            values["outline-width"] = "0px";
        }
        for (const GoldenProperty& property : properties_) {
            const std::string& name = property.name;
            switch (property.otherwise) {
            case GoldenProperty::Default::Parent: values.try_emplace(name, from.at(name)); break;
            case GoldenProperty::Default::Color:
                values.try_emplace(name, values.at("color"));
                break;
            default: values.try_emplace(name, initial_.at(name)); break;
            }
        }
        return values;
    }

    const GoldenValues& Compare(const Place& place, std::string_view pseudo) {
        const GoldenValues& expected = Expect(place.path, place.parent);
        const ComputedStyle style = resolver_.StyleOf(*place.element, pseudo);
        const bool isBoxless = place.isBoxless || expected.at("display") == "none";
        for (const GoldenProperty& property : properties_) {
            if (property.otherwise == GoldenProperty::Default::Boxless && !isBoxless) continue;
            CompareValue(place, property, expected, style);
        }
        return expected;
    }

    void CompareValue(const Place& place, const GoldenProperty& property,
                      const GoldenValues& expected, const ComputedStyle& style) {
        const std::string& name = property.name;
        const std::string& value = expected.at(name);
        std::string actual = style.Value(name).str();
        if (name == "content") ResolveAttributes(actual, *place.element);
        // Where the color is another one, that is told once.
        if (property.otherwise == GoldenProperty::Default::Color && value == expected.at("color") &&
            actual == style.Value("color"))
            return;
        // The initial values are compared once, below.
        if (value == initial_.at(name) && actual == ComputedStyle().Value(name)) return;
        const double fontSize = PixelsOf(expected.at("font-size"));
        const std::string plain = support::PlainValue(name, value, fontSize, folder_);
        if (support::AreSameValues(plain, support::PlainValue(name, actual, fontSize, folder_)))
            return;
        differences_ +=
            place.path + ": " + name + " is \"" + actual + "\", not \"" + value + "\"\n";
    }

    // Without a content, there is nothing before or after an element.
    void ComparePseudo(const Place& place, const std::string& pseudo, const GoldenValues& values,
                       bool isBoxless) {
        const std::string path = place.path + "::" + pseudo;
        if (golden_.contains(path)) {
            Compare({place.element, path, &values, isBoxless}, pseudo);
            return;
        }
        const astring content = resolver_.StyleOf(*place.element, pseudo).Value("content");
        if (content == "none" || content == "normal") return;
        differences_ += path + ": content is \"" + content.str() + "\", not none\n";
    }

    std::string file_;
    std::string folder_;
    std::vector<GoldenProperty> properties_;
    GoldenValues initial_;
    std::map<std::string, GoldenValues> golden_;
    std::unique_ptr<Dom::Document> page_;
    std::unique_ptr<Dom::CSS::CSSStyleSheet> drawingSheet_;
    StyleResolver resolver_{{.type = "screen", .width = 1280, .height = 720}};
    std::map<std::string, GoldenValues> expected_;  // by path; nodes stay where they are
    std::string differences_;
};

std::string TestName(const testing::TestParamInfo<const char*>& info) {
    std::string name = info.param;
    std::replace(name.begin(), name.end(), '.', '_');
    return name;
}

}  // namespace

class ComputedStyleGolden : public testing::TestWithParam<const char*> {};
class ComputedStyleGoldenSample : public testing::TestWithParam<const char*> {};

TEST_P(ComputedStyleGolden, IsThatOfTheBrowser) {
    EXPECT_EQ(GoldenPage(kFolder + GetParam()).Differences(), "");
}

TEST_P(ComputedStyleGoldenSample, IsThatOfTheBrowser) {
    EXPECT_EQ(GoldenPage(kSamples + GetParam()).Differences(), "");
}

INSTANTIATE_TEST_SUITE_P(Page, ComputedStyleGolden, testing::ValuesIn(kPages), TestName);
INSTANTIATE_TEST_SUITE_P(Page, ComputedStyleGoldenSample, testing::ValuesIn(kSamplePages),
                         TestName);

TEST(ComputedStyleGoldenFiles, InitialValuesAreThoseOfTheBrowser) {
    GoldenValues initial = support::ReadGoldenFile(kFolder + "initial.golden").at("*");
    initial["outline-width"] = "0px";  // see Expect()
    const ComputedStyle style;
    const auto properties = support::ReadGoldenProperties(kFolder);
    ASSERT_GT(properties.size(), 90U);
    for (const GoldenProperty& property : properties) {
        if (property.isInitialOpen) continue;
        const std::string& name = property.name;
        EXPECT_PRED2(support::AreSameValues,
                     support::PlainValue(name, style.Value(name).view(), 16, kFolder),
                     support::PlainValue(name, initial.at(name), 16, kFolder))
            << name;
    }
}

TEST(ComputedStyleGoldenFiles, EachPageIsTested) {
    std::set<std::string> tested(std::begin(kPages), std::end(kPages));
    std::set<std::string> found;
    for (const auto& entry : std::filesystem::directory_iterator(kFolder)) {
        const std::string extension = entry.path().extension().string();
        if (extension == ".xhtml" || extension == ".svg" || extension == ".xml") {
            found.insert(entry.path().filename().string());
        }
    }
    EXPECT_EQ(found, tested);
}

TEST(ComputedStyleGoldenFiles, PlainValuesAreThoseOfTheStandards) {
    const struct {
        const char* property;
        const char* value;
        const char* plain;
    } kCases[] = {
        {"line-height", "1.5", "30px"},
        {"line-height", "24px", "24px"},
        {"line-height", "normal", "normal"},
        {"content", "\"a\" \"b\" counter(c) \"d\"", "\"ab\" counter(c) \"d\""},
        {"content", "\"\" \"\\\"\" \"b\"", "\"\\\"b\""},
        {"list-style-image", "url(\"/here/a.png\")", "url(\"a.png\")"},
    };
    for (const auto& c : kCases) {
        EXPECT_EQ(support::PlainValue(c.property, c.value, 20, "/here/"), c.plain) << c.value;
    }
    EXPECT_TRUE(support::AreSameValues("a 1.00000px", "a 1px"));
    EXPECT_TRUE(support::AreSameValues("66.6667%", "66.666667%"));
    EXPECT_FALSE(support::AreSameValues("66.67%", "66.6667%"));
    EXPECT_FALSE(support::AreSameValues("1px", "1px 2px"));
    EXPECT_FALSE(support::AreSameValues("red", "blue"));
}
