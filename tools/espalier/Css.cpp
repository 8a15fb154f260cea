// SPDX-License-Identifier: MIT
#include "Diagnostic.h"
#include "OutputFile.h"
#include "RuleLines.h"
#include "RuleObjects.h"
#include "Sheet.h"
#include "Verb.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>

namespace Tool {

namespace {

class Css final : public Verb {
public:
    const char* Name() const override { return "css"; }

    const char* Summary() const override { return "Shows the rules of style sheets."; }

    const char* Footer() const override {
        return "Each rule is a line  IDS,CLASSES,ELEMENTS SELECTORS  (its specificity), and one\n"
               "for each declaration, with shorthands such as margin taken apart. What is\n"
               "refused goes to standard error, with its line and a caret, and the exit code\n"
               "is 3 then.\n"
               "\n"
               "Examples:\n"
               "  espalier css --check site/*.css\n"
               "  espalier css --json a.css | jq -r 'select(.specificity[0]>0).selector'\n";
    }

    void AddOptions(CLI::App& app) override {
        app.add_option("FILE", names_, "style sheets; \"-\" or none: standard input")
            ->type_name("");
        CLI::Option* const check = app.add_flag("--check", check_, "show only what is refused")
                                       ->option_text(" ");  // not what it excludes
        app.add_flag("--json", json_, "one JSON object a line");
        app.add_option("-o,--output", output_, "write to this file, if all goes well")
            ->option_text("FILE")
            ->excludes(check);
        app.add_option_function<std::string>(
               "--encoding", [this](const std::string& name) { SetEncoding(name); },
               "UTF-8 (default), UTF-16, ISO-8859-1 and their like")
            ->option_text("NAME");
    }

    ExitCode Run(Context& context) override {
        if (names_.empty()) names_.emplace_back("-");
        ExpectInputs(names_, context.progress);
        return WithOutputFile(output_, context, [&] {
            ExitCode worst = ExitCode::Yes;
            for (const std::string& name : names_)
                worst = Worse(worst, ShowOne(name, context));
            return worst;
        });
    }

private:
    void SetEncoding(const std::string& name) {
        encoding_ = FindSheetEncoding(name);
        if (encoding_ != nullptr) return;
        std::string names;
        for (const SheetEncoding& encoding : SheetEncodings())
            names.append(names.empty() ? "" : ", ").append(encoding.name);
        throw CLI::ValidationError("--encoding", fmt::format("\"{}\" is none of {}", name, names));
    }

    ExitCode ShowOne(const std::string& name, Context& context) const {
        std::unique_ptr<Sheet> sheet;
        try {
            sheet = std::make_unique<Sheet>(name, *encoding_, context);
        } catch (const Xml::Exception& error) {
            return ExplainOpening(name, error, context);
        }
        ExitCode worst = ExitCode::Yes;
        while (const std::optional<SheetItem> item = sheet->Next())
            worst = Worse(worst, Show(*item, *sheet, context));
        context.out.Flush();
        return Worse(worst, sheet->ExplainFailure());
    }

    ExitCode Show(const SheetItem& item, Sheet& sheet, Context& context) const {
        const std::string_view file =
            names_.size() > 1 ? std::string_view(sheet.DisplayName()) : std::string_view();
        const bool isRefused = item.rule == nullptr;
        if (json_ && isRefused == check_) {
            WriteRuleObject(context.out, file, item);
        } else if (!check_ && !isRefused) {
            WriteRuleLines(context.out, file, *item.rule);
        }
        if (!isRefused) return ExitCode::Yes;
        if (json_ && check_) return ExitCode::NotWellFormed;
        context.out.Flush();  // on a terminal it comes after the rules before it
        return sheet.ExplainRefusal(item);
    }

    std::vector<std::string> names_;
    bool check_ = false;
    bool json_ = false;
    const SheetEncoding* encoding_ = SheetEncodings().data();
    std::string output_;
};

}  // namespace

std::unique_ptr<Verb> MakeCss() { return std::make_unique<Css>(); }

}  // namespace Tool
