// SPDX-License-Identifier: MIT
#include "Document.h"
#include "Escape.h"
#include "PathCounts.h"
#include "Verb.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include <algorithm>
#include <array>

namespace Tool {

namespace {

using Entry = PathCounts::Entry;

// Writes what has been counted, entry by entry in the order of the documents.
class CountsWriter {
public:
    CountsWriter(Output& out, const PathCounts& counts) : out_(out), counts_(counts) {}

    virtual ~CountsWriter() = default;

    void Write() {
        for (const int root : counts_.Roots())
            WriteFrom(root);
    }

protected:
    virtual void WriteEntry(const Entry& entry) = 0;

    const Entry& At(int index) const { return counts_.Entries()[static_cast<std::size_t>(index)]; }

    Output& out_;
    const PathCounts& counts_;

private:
    // The depth of entries is bounded.
    void WriteFrom(int index) {
        WriteEntry(At(index));
        for (const int child : At(index).children)
            WriteFrom(child);
    }
};

// A table: count, bytes of text, name, indented by its level.
class TextCounts final : public CountsWriter {
public:
    TextCounts(Output& out, const PathCounts& counts) : CountsWriter(out, counts) {
        for (const Entry& entry : counts.Entries()) {
            countWidth_ = std::max(countWidth_, fmt::formatted_size("{}", entry.count));
            textWidth_ = std::max(textWidth_, fmt::formatted_size("{}", entry.textBytes));
            for (const PathCounts::Attribute& attribute : entry.attributes)
                countWidth_ = std::max(countWidth_, fmt::formatted_size("{}", attribute.count));
        }
        if (!counts.Entries().empty()) WriteLine("count", "text", 0, "", "element");
    }

private:
    void WriteEntry(const Entry& entry) override {
        const std::string text =
            entry.textBytes == 0 ? std::string() : fmt::format("{}", entry.textBytes);
        WriteLine(fmt::format("{}", entry.count), text, entry.level, "", entry.name);
        for (const PathCounts::Attribute& attribute : entry.attributes) {
            WriteLine(fmt::format("{}", attribute.count), "", entry.level + 1, "@", attribute.name);
        }
    }

    void WriteLine(std::string_view count, std::string_view text, int level, std::string_view mark,
                   std::string_view name) {
        out_.Write(fmt::format("{:>{}}  {:>{}}  {:{}}{}{}\n", count, countWidth_, text, textWidth_,
                               "", 2 * level, mark, name));
    }

    std::size_t countWidth_ = std::string_view("count").size();
    std::size_t textWidth_ = std::string_view("text").size();
};

class JsonCounts final : public CountsWriter {
public:
    using CountsWriter::CountsWriter;

private:
    void WriteEntry(const Entry& entry) override {
        path_.resize(static_cast<std::size_t>(entry.level));
        path_.push_back(entry.name);
        std::string path;
        for (const std::string_view name : path_)
            path.append("/").append(name);
        out_.Write("{\"path\":");
        WriteJsonString(out_, path);
        out_.Write(",\"count\":");
        out_.WriteNumber(entry.count);
        std::string_view intro = ",\"attributes\":{";
        for (const PathCounts::Attribute& attribute : entry.attributes) {
            out_.Write(intro);
            WriteJsonString(out_, attribute.name);
            out_.Write(':');
            out_.WriteNumber(attribute.count);
            intro = ",";
        }
        if (!entry.attributes.empty()) out_.Write('}');
        out_.Write(",\"text\":");
        out_.WriteNumber(entry.textBytes);
        out_.Write("}\n");
    }

    std::vector<std::string_view> path_;  // the names from the root to the last entry
};

class Tree final : public Verb {
public:
    const char* Name() const override { return "tree"; }

    const char* Summary() const override { return "Shows the shape of documents, with counts."; }

    const char* Footer() const override {
        return "Counts the elements of each path, their attributes (@name) and the bytes of text\n"
               "in them; of several documents together. Memory does not grow with them: beyond\n"
               "100,000 paths or 256 levels, the rest is counted under \"...\". After an error,\n"
               "there is what was counted up to it.\n"
               "\n"
               "Examples:\n"
               "  espalier tree --counts export.xml\n"
               "  espalier tree --counts --json *.xml | jq -r 'select(.text>1e6).path'\n";
    }

    void AddOptions(CLI::App& app) override {
        app.add_option("FILE", names_, "documents; \"-\" or none: standard input")->type_name("");
        app.add_flag("--counts", counts_, "count elements by path (has to be given)");
        app.add_flag("--json", json_, "one JSON object a line and path");
        app.add_flag("--no-namespaces", noNamespaces_, "let names hold any number of colons");
        app.parse_complete_callback([this] {
            if (counts_) return;
            throw CLI::ValidationError(
                fmt::format("--counts is missing: espalier tree --counts {}",
                            names_.empty() ? "FILE" : fmt::format("{}", fmt::join(names_, " "))));
        });
    }

    ExitCode Run(Context& context) override {
        if (names_.empty()) names_.emplace_back("-");
        ExpectInputs(names_, context.progress);
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
            JsonCounts(context.out, counts).Write();
        } else {
            TextCounts(context.out, counts).Write();
        }
        return worst;
    }

private:
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
    bool counts_ = false;
    bool json_ = false;
    bool noNamespaces_ = false;
};

}  // namespace

std::unique_ptr<Verb> MakeTree() { return std::make_unique<Tree>(); }

}  // namespace Tool
