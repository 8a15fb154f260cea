// SPDX-License-Identifier: MIT
#include "Document.h"
#include "OutputFile.h"
#include "PathCounts.h"
#include "TreeCounts.h"
#include "TreeDrawing.h"
#include "TreeObjects.h"
#include "TreeReader.h"
#include "Verb.h"

#include <CLI/CLI.hpp>

#include <limits>
#include <optional>

namespace Tool {

namespace {

class Tree final : public Verb {
public:
    const char* Name() const override { return "tree"; }

    const char* Summary() const override { return "Draws documents as trees, or counts paths."; }

    const char* Footer() const override {
        return "Draws elements with attributes and texts, which are shortened. With --counts:\n"
               "how many elements each path has, and bytes of text in them, of all documents\n"
               "together, in constant memory. After an error, there is what comes before it.\n"
               "\n"
               "Examples:\n"
               "  espalier tree --depth 3 feed.xml\n"
               "  espalier tree --counts --json *.xml | jq -r 'select(.text>1e6).path'\n";
    }

    void AddOptions(CLI::App& app) override {
        app.add_option("FILE", names_, "documents; \"-\" or none: standard input")->type_name("");
        app.add_option("--depth", depth_, "how many levels (default 256; with --json all)")
            ->option_text("N")
            ->check(CLI::Range(1, kAllLevels, "N"));
        app.add_flag("--counts", counts_, "count elements by path");
        app.add_flag("--json", json_, "one JSON object a line");
        app.add_flag("--no-namespaces", noNamespaces_, "let names hold any number of colons");
        app.add_option("-o,--output", output_, "write to this file, if all goes well")
            ->option_text("FILE");
    }

    ExitCode Run(Context& context) override {
        if (names_.empty()) names_.emplace_back("-");
        ExpectInputs(names_, context.progress);
        return WithOutputFile(output_, context,
                              [&] { return counts_ ? CountAll(context) : ShowAll(context); });
    }

private:
    static constexpr int kAllLevels = std::numeric_limits<int>::max();

    // What leads to a node takes some bytes for each level, so the drawing of a very deep document
    // would be much larger than the document.
    static constexpr int kMostLevels = 256;

    ExitCode ShowAll(Context& context) const {
        ExitCode worst = ExitCode::Yes;
        for (const std::string& name : names_) {
            worst = Worse(worst, WithDocument(name, context, Roots::Any, [&](Document& document) {
                              document.Reader().SetNamespaces(!noNamespaces_);
                              if (json_) {
                                  WriteObjects(document, context);
                              } else {
                                  Draw(document, context);
                              }
                          }));
        }
        return worst;
    }

    void WriteObjects(Document& document, Context& context) const {
        TreeObjects objects(context.out, names_.size() > 1 ? document.DisplayName() : "");
        TreeReader(document, depth_.value_or(kAllLevels), objects).Read();
    }

    void Draw(Document& document, Context& context) const {
        TreeDrawing drawing(output_.empty() && context.console.ColorsOutput());
        try {
            TreeReader(document, depth_.value_or(kMostLevels), drawing).Read();
        } catch (const Xml::Exception&) {
            DrawOne(document, drawing, context);
            throw;
        }
        DrawOne(document, drawing, context);
    }

    void DrawOne(const Document& document, TreeDrawing& drawing, Context& context) const {
        context.progress.Erase();
        if (names_.size() > 1) {
            context.out.Write(document.DisplayName());
            context.out.Write(":\n");
        }
        drawing.Draw(context.out);
    }

    ExitCode CountAll(Context& context) const {
        PathCounts counts;
        ExitCode worst = ExitCode::Yes;
        for (const std::string& name : names_) {
            counts.Begin();
            worst = Worse(worst, WithDocument(name, context, Roots::Any, [&](Document& document) {
                              Count(document, counts);
                          }));
        }
        context.progress.Erase();
        if (json_) {
            WriteCountsAsJson(context.out, counts, depth_.value_or(kAllLevels));
        } else {
            WriteCountsAsText(context.out, counts, depth_.value_or(kAllLevels));
        }
        return worst;
    }

    void Count(Document& document, PathCounts& counts) const {
        Xml::XmlTextReader& reader = document.Reader();
        reader.SetNamespaces(!noNamespaces_);
        reader.SetWhitespaceHandling(Xml::XmlTextReader::WsSignificant);
        document.ExpandDeclaredEntities();
        while (document.Next()) {
            switch (reader.NodeType()) {
            case Xml::XmlNodeType::Element: CountElement(reader, counts); break;
            case Xml::XmlNodeType::EndElement: counts.LeaveElement(); break;
            case Xml::XmlNodeType::Text:
            case Xml::XmlNodeType::CDATA:
            case Xml::XmlNodeType::SignificantWhitespace:
                counts.AddText(reader.Value().length());
                break;
            default: break;
            }
        }
    }

    static void CountElement(const Xml::XmlTextReader& reader, PathCounts& counts) {
        counts.EnterElement(reader.Name().view());
        for (const Xml::XmlAttributeRef attribute : reader.Attributes()) {
            counts.AddAttribute(attribute.Name().view(),
                                static_cast<std::size_t>(attribute.Index()));
        }
        if (reader.IsEmptyElement()) counts.LeaveElement();
    }

    std::vector<std::string> names_;
    std::optional<int> depth_;
    bool counts_ = false;
    bool json_ = false;
    bool noNamespaces_ = false;
    std::string output_;
};

}  // namespace

std::unique_ptr<Verb> MakeTree() { return std::make_unique<Tree>(); }

}  // namespace Tool
