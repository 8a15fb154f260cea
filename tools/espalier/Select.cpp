// SPDX-License-Identifier: MIT
#include <espalier/dom/Document.h>
#include <espalier/dom/Element.h>
#include <espalier/dom/WriteNode.h>
#include <espalier/dom/css/QuerySelector.h>
#include <espalier/encoding/UnicodeEncodings.h>
#include <espalier/xml/XmlTextWriter.h>

#include "Document.h"
#include "LoadTree.h"
#include "OutputFile.h"
#include "OutputStream.h"
#include "SelectorArgument.h"
#include "Utf8.h"
#include "Verb.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include <algorithm>
#include <optional>

namespace Tool {

namespace {

using Dom::Element;
using Dom::CSS::Selector;

// Writes a text on one line: white space as one blank, none at its ends, and other control
// characters as "?", so that no text can command the terminal.
void WriteLine(Output& out, std::string_view text) {
    bool needsBlank = false;
    bool isFirst = true;
    while (!text.empty()) {
        const Utf8Character character = FirstCharacter(text);
        const std::size_t length = std::max<std::size_t>(character.length, 1);
        const std::string_view bytes = text.substr(0, length);
        text.remove_prefix(length);
        if (std::string_view(" \t\r\n").find(bytes[0]) != std::string_view::npos) {
            needsBlank = !isFirst;
            continue;
        }
        if (needsBlank) out.Write(' ');
        needsBlank = isFirst = false;
        const bool isControl =
            character.code < 0x20 || (character.code >= 0x7F && character.code < 0xA0);
        out.Write(isControl ? std::string_view("?") : bytes);
    }
    out.Write('\n');
}

class Select final : public Verb {
public:
    const char* Name() const override { return "select"; }

    const char* Summary() const override { return "Shows the elements that a selector selects."; }

    const char* Footer() const override {
        return "SELECTOR is one of CSS (Selectors Level 3), such as \"ul > li:first-child\".\n"
               "What it selects is shown as markup, or as --text, --attr and --count say. The\n"
               "exit code is 1 when it selects nothing. Prefixes of --ns stand before \"|\".\n"
               "\n"
               "Examples:\n"
               "  espalier select --attr href 'a[rel~=next]' page.xhtml\n"
               "  espalier select --ns d=http://purl.org/dc/elements/1.1/ 'd|title' book.opf\n";
    }

    void AddOptions(CLI::App& app) override {
        app.add_option("SELECTOR", selectorText_, "what to look for")
            ->type_name("")
            ->required()
            ->option_text(" ");
        app.add_option("FILE", names_, "documents; \"-\" or none: standard input")->type_name("");
        CLI::Option* const text =
            app.add_flag("--text", text_, "the text of each element, on one line")
                ->option_text(" ");  // not what it excludes
        CLI::Option* const attribute =
            app.add_option("--attr", attribute_, "this attribute of those that have it")
                ->option_text("NAME");
        CLI::Option* const count =
            app.add_flag("--count", count_, "how many there are")->option_text(" ");
        attribute->excludes(text);
        count->excludes(text)->excludes(attribute);
        app.add_flag("-1,--first", first_, "only the first one of each document");
        app.add_option_function<std::vector<std::string>>(
               "--ns", [this](const std::vector<std::string>& prefixes) { SetPrefixes(prefixes); },
               "what a prefix stands for; \"=URI\": types without one")
            ->option_text("PREFIX=URI")
            ->allow_extra_args(false);
        app.add_option("-o,--output", output_, "write to this file, if all goes well")
            ->option_text("FILE");
    }

    ExitCode Run(Context& context) override {
        const std::optional<Selector> selector =
            ReadSelector(selectorText_, prefixes_, Name(), context);
        if (!selector) return ExitCode::Usage;
        if (names_.empty()) names_.emplace_back("-");
        ExpectInputs(names_, context.progress);
        return WithOutputFile(output_, context, [&] {
            ExitCode worst = ExitCode::Yes;
            for (const std::string& name : names_) {
                worst =
                    Worse(worst, WithDocument(name, context, Roots::One, [&](Document& document) {
                              ShowOne(document, *selector, context);
                          }));
            }
            return Worse(worst, found_ > 0 ? ExitCode::Yes : ExitCode::No);
        });
    }

private:
    void SetPrefixes(const std::vector<std::string>& texts) {
        for (const std::string& text : texts) {
            const std::size_t equals = text.find('=');
            if (equals == std::string::npos) {
                throw CLI::ValidationError("--ns", fmt::format("\"{}\" has no \"=\"", text));
            }
            prefixes_.push_back({text.substr(0, equals), text.substr(equals + 1)});
        }
    }

    void ShowOne(Document& document, const Selector& selector, Context& context) {
        Dom::Document tree;
        LoadTree(document, tree);
        std::vector<const Element*> elements = Find(tree, selector);
        found_ += elements.size();
        context.progress.Erase();
        if (count_) {
            WriteName(document, context);
            context.out.Write(fmt::format("{}\n", elements.size()));
            return;
        }
        for (const Element* const element : elements)
            Show(*element, document, context);
    }

    std::vector<const Element*> Find(const Dom::Document& tree, const Selector& selector) const {
        std::vector<const Element*> elements;
        if (first_ && attribute_.empty()) {
            const Element* const first = QuerySelector(tree, selector);
            if (first != nullptr) elements.push_back(first);
            return elements;
        }
        elements = QuerySelectorAll(tree, selector);
        if (!attribute_.empty()) {
            std::erase_if(elements,
                          [this](const Element* element) { return !AttributeOf(*element); });
        }
        if (first_ && elements.size() > 1) elements.erase(elements.begin() + 1, elements.end());
        return elements;
    }

    // Attributes are asked for by the name that they are written with.
    std::optional<std::string_view> AttributeOf(const Element& element) const {
        for (const Dom::AttributeView attribute : element.AttributeViews()) {
            if (attribute.Name() == attribute_) return attribute.Value();
        }
        return {};
    }

    void Show(const Element& element, const Document& document, Context& context) const {
        WriteName(document, context);
        if (text_) {
            WriteLine(context.out, element.TextContent().view());
        } else if (!attribute_.empty()) {
            WriteLine(context.out, *AttributeOf(element));
        } else {
            WriteMarkup(element, context);
        }
    }

    static void WriteMarkup(const Element& element, Context& context) {
        OutputStream stream(context.out);
        Xml::UTF8Encoding encoding(false, false);
        Xml::XmlTextWriter writer(&stream, &encoding);
        writer.SetNewLineChars("\n");
        Dom::WriteNode(element, writer);
        writer.Close();
        context.out.Write('\n');
    }

    void WriteName(const Document& document, Context& context) const {
        if (names_.size() < 2) return;
        context.out.Write(document.DisplayName());
        context.out.Write(": ");
    }

    std::string selectorText_;
    std::vector<std::string> names_;
    bool text_ = false;
    std::string attribute_;
    bool count_ = false;
    bool first_ = false;
    Dom::CSS::NamespacePrefixes prefixes_;
    std::string output_;
    std::size_t found_ = 0;
};

}  // namespace

std::unique_ptr<Verb> MakeSelect() { return std::make_unique<Select>(); }

}  // namespace Tool
