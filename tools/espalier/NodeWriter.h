// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/xml/XmlTextReader.h>

#include "Document.h"
#include "Output.h"

#include <string_view>

namespace Tool {

/// How nodes are written.
enum class NodeForm {
    Text,  ///< TYPE NAME DEPTH LINE:COLUMN [{NAMESPACE}] [ATTRIBUTE="..."]... ["VALUE"] [/]
    Json   ///< one object with the members type, depth, line, column, then those that apply
};

/// Where the attributes of elements are written.
enum class AttributePlace {
    Within,  ///< in the line of the element
    Beneath  ///< in lines of their own behind that, like nodes
};

/// Writes the nodes that the reader of a document stands on, a line each.
class NodeWriter {
public:
    /// \param out, document not owned, must live longer
    NodeWriter(Output& out, Document& document, NodeForm form, AttributePlace attributes,
               bool colored);

    /// Writes the current node. The reader stands on the same node afterwards.
    void WriteNode();

private:
    void WriteLine();
    bool WritesAttributesWithin() const;
    void WriteText();
    void WriteTextAttributes();
    void WriteJson();
    void WriteJsonAttributes();
    void WriteMember(std::string_view intro, std::string_view value);
    void StartColor(std::string_view color);
    void EndColor();
    long Column() const;
    std::string_view Value();

    Output& out_;
    Document& document_;
    Xml::XmlTextReader& reader_;
    NodeForm form_;
    AttributePlace attributes_;
    bool colored_;
    std::string declaration_;  // the value of one, see Document::Value()
};

}  // namespace Tool
