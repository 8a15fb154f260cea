// SPDX-License-Identifier: MIT
#include "Document.h"
#include "Verb.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>

namespace Tool {

namespace {

class Check final : public Verb {
public:
    const char* Name() const override { return "check"; }

    const char* Summary() const override {
        return "Tells whether documents are well-formed, and where not.";
    }

    const char* Footer() const override {
        return "Documents are judged by XML 1.0 and Namespaces in XML 1.0 to the letter. Nothing\n"
               "is said when all is well. The first error of each document goes to standard\n"
               "error, with its line and a caret. The exit code is that of the worst document:\n"
               "0 well-formed, 3 not well-formed, 4 cannot be read, 5 beyond a limit.\n"
               "\n"
               "Examples:\n"
               "  espalier check *.xml\n"
               "  curl -s https://example.org/feed.xml | espalier check -v\n";
    }

    void AddOptions(CLI::App& app) override {
        app.add_option("FILE", names_, "documents; \"-\" or none: standard input")->type_name("");
        app.add_flag("-v,--verbose", verbose_, "also name the documents that are well-formed");
        app.add_flag("--compatible", compatible_,
                     "judge as other verbs do, but take one root element only");
        app.add_flag("--no-namespaces", noNamespaces_, "let names hold any number of colons");
    }

    bool TakesStandard() const override { return false; }  // it does so unless it is told not to

    ExitCode Run(Context& context) override {
        context.input.conformance =
            compatible_ ? Xml::XmlConformance::Compatible : Xml::XmlConformance::Standard;
        if (names_.empty()) names_.emplace_back("-");
        ExpectInputs(names_, context.progress);
        ExitCode worst = ExitCode::Yes;
        for (const std::string& name : names_)
            worst = Worse(worst, CheckOne(name, context));
        return worst;
    }

private:
    ExitCode CheckOne(const std::string& name, Context& context) const {
        return WithDocument(name, context, Roots::One, [&](Document& document) {
            const long nodes = CountNodes(document);
            if (!verbose_) return;
            context.out.Write(fmt::format("{}: ok, {} {}\n", document.DisplayName(), nodes,
                                          nodes == 1 ? "node" : "nodes"));
        });
    }

    long CountNodes(Document& document) const {
        document.Reader().SetNamespaces(!noNamespaces_);
        document.ExpandDeclaredEntities();
        long nodes = 0;
        while (document.Next())
            ++nodes;
        return nodes;
    }

    std::vector<std::string> names_;
    bool verbose_ = false;
    bool compatible_ = false;
    bool noNamespaces_ = false;
};

}  // namespace

std::unique_ptr<Verb> MakeCheck() { return std::make_unique<Check>(); }

}  // namespace Tool
