// SPDX-License-Identifier: MIT
#include "Diagnostic.h"
#include "OutputFile.h"
#include "RuleLines.h"
#include "RuleObjects.h"
#include "RuleParts.h"
#include "Sheet.h"
#include "SheetEncoding.h"
#include "Verb.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <string_view>
#include <tuple>
#include <utility>

namespace Tool {

namespace {

// Shows a sheet that has been read.
class SheetShowing {
public:
    SheetShowing(Sheet& sheet, Output& out, bool isOneOfSeveral, bool json, bool check)
        : sheet_(sheet),
          out_(out),
          file_(isOneOfSeveral ? std::string_view(sheet.DisplayName()) : std::string_view()),
          json_(json),
          check_(check) {}

    void Show() {
        if (!check_) ShowRules(sheet_.Rules());
        while (nextRemark_ < sheet_.Remarks().size())
            ShowNextRemark();
    }

private:
    // Rules are not deep in each other, so this may recurse.
    void ShowRules(const Dom::CSS::CSSRuleList& rules) {
        for (const Dom::CSS::CSSRule* const rule : rules) {
            ShowRemarksBefore(rule->Place());
            RuleParts parts = PartsOf(*rule);
            if (json_) {
                WriteRuleObject(out_, file_, rule->Place(), outer_, parts);
            } else {
                WriteRuleLines(out_, file_, parts, outer_.size());
            }
            if (parts.rules == nullptr) continue;
            outer_.push_back(std::move(parts.head));
            ShowRules(*parts.rules);
            outer_.pop_back();
        }
    }

    // On a terminal, what is left out comes between the rules where it is.
    void ShowRemarksBefore(Dom::CSS::SourcePlace place) {
        while (nextRemark_ < sheet_.Remarks().size()) {
            const Dom::CSS::SourcePlace own = sheet_.Remarks()[nextRemark_].place;
            if (std::tie(own.line, own.column) >= std::tie(place.line, place.column)) return;
            ShowNextRemark();
        }
    }

    void ShowNextRemark() {
        const SheetRemark& remark = sheet_.Remarks()[nextRemark_++];
        if (json_ && check_) return WriteRemarkObject(out_, file_, remark);
        out_.Flush();
        sheet_.Explain(remark);
    }

    Sheet& sheet_;
    Output& out_;
    std::string_view file_;
    bool json_;
    bool check_;
    std::vector<std::string> outer_;  // the heads of the rules that we are in
    std::size_t nextRemark_ = 0;
};

class Css final : public Verb {
public:
    const char* Name() const override { return "css"; }

    const char* Summary() const override { return "Shows the rules of style sheets."; }

    const char* Footer() const override {
        return "Each rule is a line  IDS,CLASSES,ELEMENTS SELECTORS  (its specificity), and one\n"
               "for each declaration, with shorthands such as margin taken apart. Rules in\n"
               "others, such as @media, are indented. What is left out goes to standard\n"
               "error, with its line and a caret, and the exit code is 3 then. With --check,\n"
               "properties that are not known are told, too.\n"
               "\n"
               "Examples:\n"
               "  espalier css --check site/*.css\n"
               "  espalier css --json a.css | jq -r 'select(.specificity[0]>0).selector'\n";
    }

    void AddOptions(CLI::App& app) override {
        app.add_option("FILE", names_, "style sheets; \"-\" or none: standard input")
            ->type_name("");
        CLI::Option* const check =
            app.add_flag("--check", check_, "show only what is left out or unknown")
                ->option_text(" ");  // not what it excludes
        app.add_flag("--json", json_, "one JSON object a line");
        app.add_option("-o,--output", output_, "write to this file, if all goes well")
            ->option_text("FILE")
            ->excludes(check);
        app.add_option_function<std::string>(
               "--encoding", [this](const std::string& name) { SetEncoding(name); },
               "of sheets that do not say theirs; UTF-8 (default), ...")
            ->option_text("NAME");
    }

    bool TakesStandard() const override { return false; }  // there is nothing of XML in sheets

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
        encoding_ = name;
        if (IsSheetEncoding(name)) return;
        std::string names;
        for (const std::string_view encoding : SheetEncodings())
            names.append(names.empty() ? "" : ", ").append(encoding);
        throw CLI::ValidationError("--encoding", fmt::format("\"{}\" is none of {}", name, names));
    }

    ExitCode ShowOne(const std::string& name, Context& context) const {
        std::unique_ptr<Sheet> sheet;
        try {
            sheet = std::make_unique<Sheet>(name, context);
        } catch (const Xml::Exception& error) {
            return ExplainOpening(name, error, context);
        }
        const ExitCode outcome = sheet->Read(encoding_, check_);
        if (outcome != ExitCode::Yes) return outcome;
        SheetShowing showing(*sheet, context.out, names_.size() > 1, json_, check_);
        showing.Show();
        context.out.Flush();
        const bool isLeftOut = std::ranges::any_of(sheet->Remarks(), &SheetRemark::IsLeftOut);
        return isLeftOut ? ExitCode::NotWellFormed : ExitCode::Yes;
    }

    std::vector<std::string> names_;
    bool check_ = false;
    bool json_ = false;
    std::string encoding_;
    std::string output_;
};

}  // namespace

std::unique_ptr<Verb> MakeCss() { return std::make_unique<Css>(); }

}  // namespace Tool
