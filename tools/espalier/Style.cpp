// SPDX-License-Identifier: MIT
#include <espalier/dom/Document.h>
#include <espalier/dom/Element.h>
#include <espalier/dom/css/CollectStyleSheets.h>
#include <espalier/dom/css/HtmlStyleSheet.h>
#include <espalier/dom/css/ParseStyleSheet.h>
#include <espalier/dom/css/QuerySelector.h>
#include <espalier/dom/css/StyleResolver.h>

#include "BesideSheets.h"
#include "Document.h"
#include "ElementPaths.h"
#include "LoadTree.h"
#include "OutputFile.h"
#include "SelectorArgument.h"
#include "SheetNames.h"
#include "StyleObjects.h"
#include "StyleTable.h"
#include "Verb.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include <algorithm>
#include <map>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

namespace Tool {

namespace {

using Dom::Element;
using Dom::CSS::ComputedStyle;
using Dom::CSS::CSSStyleSheet;
using Dom::CSS::DeclaredValue;
using Dom::CSS::StyleResolver;

constexpr std::string_view kXhtml = "http://www.w3.org/1999/xhtml";

bool IsHtml(const Dom::Document& tree) {
    const Element* const root = tree.DocumentElement();
    return root != nullptr && root->NamespaceURI() == kXhtml;
}

// Names are in small letters, but those of custom properties are as they are written.
std::string PropertyName(std::string name) {
    if (name.starts_with("--")) return name;
    std::ranges::transform(name, name.begin(), [](char letter) {
        return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
    });
    return name;
}

// Where a declaration stands; those that a shorthand was taken apart into stand in one place.
using PlaceKey = std::tuple<const Dom::CSS::CSSStyleRule*, int, int>;

PlaceKey PlaceOf(const DeclaredValue& declared) {
    return {declared.rule, declared.place.line, declared.place.column};
}

// Removes those that tell nothing but that a shorthand, or a parent, has not mentioned a property:
// their value is the initial one, and they override nothing.
void RemoveQuietRows(std::vector<StyleRow>& rows) {
    std::map<PlaceKey, int> counts;
    for (const StyleRow& row : rows) {
        for (const DeclaredValue& declared : row.explanation.declarations)
            ++counts[PlaceOf(declared)];
    }
    std::erase_if(rows, [&counts](const StyleRow& row) {
        const std::vector<DeclaredValue>& declarations = row.explanation.declarations;
        const bool overrides = declarations.size() > 1;
        if (overrides || row.explanation.value != ComputedStyle().Value(row.property)) return false;
        return !row.from.empty() || declarations.empty() ||
               counts[PlaceOf(declarations.front())] > 1;
    });
}

class Style final : public Verb {
public:
    const char* Name() const override { return "style"; }

    const char* Summary() const override { return "Shows which style elements have, and why."; }

    const char* Footer() const override {
        return "Shown are the computed values of declared properties, and where they come from;\n"
               "behind an \"x\" what has lost. Sheets that FILE links to are read from beside it.\n"
               "\n"
               "Examples:\n"
               "  espalier style page.xhtml 'p.warning'\n"
               "  espalier style --media print --property color page.xhtml h1\n";
    }

    void AddOptions(CLI::App& app) override {
        app.add_option("FILE", file_, "document; \"-\": standard input")
            ->type_name("")
            ->required()
            ->option_text(" ");
        app.add_option("SELECTOR", selectorText_, "whose style to show")
            ->type_name("")
            ->required()
            ->option_text(" ");
        app.add_option("--property", properties_, "this property, or all that it stands for")
            ->option_text("NAME")
            ->allow_extra_args(false);
        app.add_flag("--all", all_, "properties with their initial values, too");
        app.add_flag("--winners", winners_, "not what has lost");
        app.add_option("--pseudo", pseudo_, "of a pseudo-element, such as before")
            ->option_text("NAME");
        app.add_option_function<std::string>(
               "--media", [this](const std::string& type) { media_.type = type; },
               "screen (default), print and so on")
            ->option_text("TYPE");
        app.add_option("--width", media_.width,
                       "of the window, 1280 if not given; --height PX: 720")
            ->option_text("PX")
            ->check(CLI::NonNegativeNumber);
        app.add_option("--height", media_.height, "of the window")
            ->group("")  // told with the width
            ->check(CLI::NonNegativeNumber);
        app.add_flag("--no-ua", noUserAgent_, "without the sheet that HTML begins with");
        app.add_option("--sheet", sheets_, "a further style sheet, behind the others")
            ->option_text("FILE")
            ->allow_extra_args(false);
        app.add_flag("--json", json_, "one JSON object a line");
        app.add_option("-o,--output", output_, "write to this file, if all goes well")
            ->option_text("FILE");
    }

    ExitCode Run(Context& context) override {
        const std::optional<Dom::CSS::Selector> selector =
            ReadSelector(selectorText_, {}, Name(), context);
        if (!selector) return ExitCode::Usage;
        if (!ReadSheets(context)) return ExitCode::InputOutput;
        std::ranges::transform(properties_, properties_.begin(), PropertyName);
        ExpectInputs({file_}, context.progress);
        return WithOutputFile(output_, context, [&] {
            bool isFound = false;
            const ExitCode code = WithDocument(file_, context, Roots::One, [&](Document& document) {
                isFound = ShowAll(document, *selector, context);
            });
            return Worse(code, isFound ? ExitCode::Yes : ExitCode::No);
        });
    }

private:
    struct NamedSheet {
        std::string name;
        std::unique_ptr<CSSStyleSheet> sheet;
    };

    // Reads the sheets that the command line names; says why when one cannot be read.
    bool ReadSheets(Context& context) {
        for (const std::string& name : sheets_) {
            try {
                const astring bytes = ReadSheet(name, context.input, context.progress);
                const std::span<const unsigned char> view(
                    reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size());
                further_.push_back({name, Dom::CSS::ParseStyleSheet(view)});
            } catch (const Xml::Exception& error) {
                ExplainOpening(name, error, context);
                return false;
            }
        }
        return true;
    }

    bool ShowAll(Document& document, const Dom::CSS::Selector& selector, Context& context) {
        Dom::Document tree;
        LoadTree(document, tree);
        const std::vector<const Element*> elements =
            QuerySelectorAll(static_cast<const Dom::Document&>(tree), selector);
        const BesideSheets beside(file_, context.input, context.progress);
        StyleResolver resolver(media_);
        AddSheets(resolver, tree, beside, document.DisplayName(), context);
        SheetNames names(resolver.Sheets(), beside);
        for (const NamedSheet& further : further_)
            names.Set(*further.sheet, further.name);
        context.progress.Erase();
        ElementPaths paths;
        const bool colors = output_.empty() && context.console.ColorsOutput();
        StyleTable table(names, {.hasLosers = !winners_, .isColored = colors});
        bool isFirst = true;
        for (const Element* const element : elements) {
            const StyledElement styled = StyleOf(*element, resolver, paths);
            if (json_) {
                WriteStyleObjects(context.out, styled, names, !winners_);
                continue;
            }
            if (!isFirst) context.out.Write('\n');
            isFirst = false;
            table.Write(context.out, styled);
        }
        return !elements.empty();
    }

    void AddSheets(StyleResolver& resolver, const Dom::Document& tree, const BesideSheets& beside,
                   const std::string& documentName, Context& context) const {
        if (!noUserAgent_ && IsHtml(tree)) resolver.AddSheet(Dom::CSS::HtmlStyleSheet());
        std::vector<Dom::CSS::MissingSheet> missing;
        resolver.AddSheets(Dom::CSS::CollectStyleSheets(
            tree,
            [&beside](const astring& address, const astring&) {
                return beside.Read(address.view());
            },
            &missing));
        for (const NamedSheet& further : further_)
            resolver.AddSheet(*further.sheet);
        for (const Dom::CSS::MissingSheet& each : missing) {
            context.console.Write(Headline(
                context.console, documentName, Severity::Warning,
                fmt::format("Style sheet \"{}\": {}", each.address.view(), each.reason.view())));
        }
    }

    StyledElement StyleOf(const Element& element, StyleResolver& resolver,
                          ElementPaths& paths) const {
        const ComputedStyle style = resolver.StyleOf(element, pseudo_);
        StyledElement styled{&element, pseudo_, paths.PathOf(element), {}};
        if (!pseudo_.empty()) styled.path += "::" + pseudo_;
        for (const std::string& name : NamesFor(style)) {
            StyleRow row{name, resolver.Explain(element, name, pseudo_), {}};
            const bool isInherited =
                row.explanation.kind == Dom::CSS::StyleExplanation::Kind::Inherited;
            if (isInherited && row.explanation.element != nullptr) {
                row.from = paths.PathOf(*row.explanation.element);
            }
            styled.rows.push_back(std::move(row));
        }
        if (!all_ && properties_.empty()) RemoveQuietRows(styled.rows);
        return styled;
    }

    // Returns the names of the properties to show, in their order.
    std::vector<std::string> NamesFor(const ComputedStyle& style) const {
        std::vector<std::string> set;
        for (const astring& name : style.Names())
            set.push_back(name.str());
        if (properties_.empty() && !all_) return set;
        for (const astring& name : ComputedStyle::KnownNames())
            set.push_back(name.str());
        std::ranges::sort(set);
        set.erase(std::unique(set.begin(), set.end()), set.end());
        if (properties_.empty()) return set;
        std::vector<std::string> chosen;
        for (const std::string& property : properties_)
            Choose(property, set, chosen);
        return chosen;
    }

    // Adds a property, or those that begin with its name when it is none itself: a shorthand.
    static void Choose(const std::string& property, const std::vector<std::string>& names,
                       std::vector<std::string>& chosen) {
        if (std::ranges::binary_search(names, property)) {
            chosen.push_back(property);
            return;
        }
        std::ranges::copy_if(names, std::back_inserter(chosen), [&](const std::string& name) {
            return name.starts_with(property + "-");
        });
    }

    std::string file_;
    std::string selectorText_;
    std::vector<std::string> properties_;
    bool all_ = false;
    bool winners_ = false;
    std::string pseudo_;
    Dom::CSS::MediaContext media_;
    bool noUserAgent_ = false;
    std::vector<std::string> sheets_;
    bool json_ = false;
    std::string output_;
    std::vector<NamedSheet> further_;
};

}  // namespace

std::unique_ptr<Verb> MakeStyle() { return std::make_unique<Style>(); }

}  // namespace Tool
