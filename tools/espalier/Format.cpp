// SPDX-License-Identifier: MIT
#include "Choice.h"
#include "Comparison.h"
#include "Document.h"
#include "FileReplacement.h"
#include "OutputStream.h"
#include "Rewriting.h"
#include "SourceReader.h"
#include "Verb.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include <algorithm>
#include <optional>

namespace Tool {

namespace {

class Format final : public Verb {
public:
    const char* Name() const override { return "format"; }

    const char* Summary() const override { return "Indents documents anew, or recodes them."; }

    const char* Footer() const override {
        return "White space changes between elements only: what holds text stays as it is, and\n"
               "so do references, CDATA sections, comments and the document type.\n"
               "\n"
               "Examples:\n"
               "  espalier format --indent 4 feed.xml > nice.xml\n"
               "  espalier format --in-place --to utf-8 *.xml\n";
    }

    void AddOptions(CLI::App& app) override {
        app.add_option("FILE", names_, "the document; \"-\" or none: standard input")
            ->type_name("");
        app.add_option("--indent", indentation_, "blanks for each level (default 2)")
            ->option_text("N")
            ->check(CLI::Range(0, kMostIndentation, "N"));
        app.add_flag("--tabs", tabs_, "a tab for each level");
        app.add_flag("--compact", rewriting_.layout.compact, "no white space between elements");
        app.add_option("--new-lines", newLines_, "how lines end: lf (default), crlf")
            ->option_text("HOW")
            ->transform(OneOf<NewLines>({{"lf", NewLines::Lf}, {"crlf", NewLines::CrLf}}));
        app.add_option("--to", rewriting_.to,
                       "utf-8, utf-16, utf-16le, utf-16be, iso-8859-1, us-ascii")
            ->option_text("ENCODING")
            ->transform(OneOf<TargetForm>({{"utf-8", TargetForm::Utf8},
                                           {"utf-16", TargetForm::Utf16LE},
                                           {"utf-16le", TargetForm::Utf16LE},
                                           {"utf-16be", TargetForm::Utf16BE},
                                           {"iso-8859-1", TargetForm::Latin1},
                                           {"us-ascii", TargetForm::Ascii}}))
            ->transform(CLI::Validator(ToLower, "", "ToLower"));  // the last one is the first
        app.add_flag("--check", check_, "write nothing; name documents that would change");
        app.add_flag("--in-place", inPlace_, "replace the files by what they become");
        app.add_flag("--no-namespaces", noNamespaces_, "let names hold any number of colons");
        app.parse_complete_callback([this] { RequireSense(); });
    }

    ExitCode Run(Context& context) override {
        if (names_.empty()) names_.emplace_back("-");
        if (inPlace_ && RefusesCompressed(context)) return ExitCode::Usage;
        SetLayout(rewriting_.layout);
        ExpectInputs(names_, context.progress);
        ExitCode worst = ExitCode::Yes;
        for (const std::string& name : names_)
            worst = Worse(worst, FormatOne(name, context));
        return worst;
    }

private:
    enum class NewLines { Lf, CrLf };

    static constexpr int kMostIndentation = 1000;

    static std::string ToLower(std::string& word) {
        word = CLI::detail::to_lower(word);
        return {};
    }

    void SetLayout(Layout& layout) const {
        if (indentation_) layout.indentation = *indentation_;
        if (tabs_) {
            layout.indentation = 1;
            layout.indentChar = '\t';
        }
        if (newLines_ == NewLines::CrLf) layout.newLine = "\r\n";
    }

    void RequireSense() const {
        if ((indentation_ && tabs_) || (rewriting_.layout.compact && (indentation_ || tabs_))) {
            throw CLI::ValidationError("take one of --indent, --tabs and --compact");
        }
        if (check_ && inPlace_) throw CLI::ValidationError("take one of --check and --in-place");
        const bool readsInput =
            names_.empty() || std::find(names_.begin(), names_.end(), "-") != names_.end();
        if (inPlace_ && readsInput) {
            throw CLI::ValidationError("--in-place: standard input cannot be replaced");
        }
        if (names_.size() > 1 && !inPlace_ && !check_) {
            throw CLI::ValidationError("several documents need --in-place or --check");
        }
    }

    // Before any file is replaced.
    bool RefusesCompressed(Context& context) const {
        const auto compressed = std::find_if(names_.begin(), names_.end(), IsCompressed);
        if (compressed == names_.end()) return false;
        context.console.Complain(fmt::format(
            "format: --in-place: {} is compressed, and only plain files can be replaced\n"
            "Try \"espalier format --help\".",
            *compressed));
        return true;
    }

    ExitCode FormatOne(const std::string& name, Context& context) const {
        ExitCode code = ExitCode::Yes;
        const ExitCode read = WithDocument(name, context, Roots::One, [&](Document& document) {
            try {
                code = FormatDocument(document, name, context);
            } catch (const MissingCharacter& error) {
                context.out.Flush();
                code = document.ExplainRefusal(error.Where(), ColumnCount::Escaped, error.what());
            } catch (const UnreadableSource& error) {
                context.out.Flush();
                code = document.ExplainRefusal(error.Where(), ColumnCount::Escaped, error.what());
            } catch (const ReplacementError& error) {
                context.console.Write(fmt::format("{}: error: {}\n", name, error.what()));
                code = ExitCode::InputOutput;
            }
        });
        return Worse(code, read);
    }

    // Returns the answer: whether all is well.
    ExitCode FormatDocument(Document& document, const std::string& name, Context& context) const {
        document.Reader().SetNamespaces(!noNamespaces_);
        document.ExpandDeclaredEntities();
        std::optional<FileReplacement> replacement;
        if (inPlace_) replacement.emplace(name);
        OutputStream output(context.out);
        if (!inPlace_ && !check_) {
            Rewrite(document, rewriting_, output, [](std::string_view) {});
            return ExitCode::Yes;
        }
        Comparison comparison(inPlace_ ? &*replacement : nullptr);
        Rewrite(document, rewriting_, comparison,
                [&](std::string_view bytes) { comparison.TakeOriginal(bytes); });
        if (!comparison.Differs() && !document.IsChangedByRecoding()) return ExitCode::Yes;
        if (inPlace_) {
            replacement->Commit();
            return ExitCode::Yes;
        }
        context.out.Write(fmt::format("{}: would change\n", document.DisplayName()));
        return ExitCode::No;
    }

    std::vector<std::string> names_;
    Rewriting rewriting_;
    std::optional<int> indentation_;
    bool tabs_ = false;
    NewLines newLines_ = NewLines::Lf;
    bool check_ = false;
    bool inPlace_ = false;
    bool noNamespaces_ = false;
};

}  // namespace

std::unique_ptr<Verb> MakeFormat() { return std::make_unique<Format>(); }

}  // namespace Tool
