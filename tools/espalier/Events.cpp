// SPDX-License-Identifier: MIT
#include "Choice.h"
#include "Document.h"
#include "Escape.h"
#include "NodeWriter.h"
#include "Verb.h"

#include <CLI/CLI.hpp>

namespace Tool {

namespace {

using Entities = Xml::XmlEntityHandling::XML_ENTITY_HANDLING;
using Whitespace = Xml::XmlTextReader::XmlWsHandlingEnum;

class Events final : public Verb {
public:
    const char* Name() const override { return "events"; }

    const char* Summary() const override { return "Shows the nodes of a document, one a line."; }

    const char* Footer() const override {
        return "Lines are  TYPE NAME DEPTH LINE:COLUMN {NAMESPACE} ATTRIBUTE=\"..\" \"VALUE\" /\n"
               "where NAME may be -, / is an empty-element tag, and texts are escaped as in C.\n"
               "\n"
               "Examples:\n"
               "  espalier events feed.xml | grep '^Element title '\n"
               "  espalier events --json drawing.svg | jq -r 'select(.name==\"path\").line'\n";
    }

    void AddOptions(CLI::App& app) override {
        app.add_option("FILE", name_, "the document; \"-\" or none: standard input")->type_name("");
        app.add_flag("--json", json_, "one JSON object a line");
        app.add_flag("--attributes", attributes_, "attributes on lines of their own");
        app.add_option("--entities", entities_,
                       "references to expand: nothing, char (default), all")
            ->option_text("WHICH")
            ->transform(OneOf<Entities>({{"nothing", Xml::XmlEntityHandling::ExpandNothing},
                                         {"char", Xml::XmlEntityHandling::ExpandCharEntities},
                                         {"all", Xml::XmlEntityHandling::ExpandEntities}}));
        app.add_flag("--no-namespaces", noNamespaces_, "do not split names at their colons");
        app.add_flag("--normalize", normalize_, "turn CR LF and CR into LF, in attributes a blank");
        app.add_option("--whitespace", whitespace_,
                       "white space to show: all (default), significant, none")
            ->option_text("WHICH")
            ->transform(OneOf<Whitespace>({{"all", Xml::XmlTextReader::WsAll},
                                           {"significant", Xml::XmlTextReader::WsSignificant},
                                           {"none", Xml::XmlTextReader::WsNone}}));
    }

    ExitCode Run(Context& context) override {
        ExpectInputs({name_}, context.progress);
        return WithDocument(name_, context, Roots::Any, [&](Document& document) {
            Xml::XmlTextReader& reader = document.Reader();
            reader.SetNamespaces(!noNamespaces_);
            reader.SetNormalization(normalize_);
            reader.SetWhitespaceHandling(whitespace_);
            reader.SetEntityHandling(entities_);
            NodeWriter writer(context.out, document, json_ ? NodeForm::Json : NodeForm::Text,
                              attributes_ ? AttributePlace::Beneath : AttributePlace::Within,
                              context.console.ColorsOutput());
            while (document.Next())
                writer.WriteNode();
        });
    }

private:
    std::string name_ = "-";
    bool json_ = false;
    bool attributes_ = false;
    Entities entities_ = Xml::XmlEntityHandling::ExpandCharEntities;
    bool noNamespaces_ = false;
    bool normalize_ = false;
    Whitespace whitespace_ = Xml::XmlTextReader::WsAll;
};

}  // namespace

std::unique_ptr<Verb> MakeEvents() { return std::make_unique<Events>(); }

}  // namespace Tool
