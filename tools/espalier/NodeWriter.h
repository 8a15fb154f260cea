// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/xml/XmlTextReader.h>

#include "Output.h"

#include <string_view>

namespace Tool {

/// How nodes are written.
enum class NodeForm {
    Text,  ///< TYPE NAME DEPTH LINE:COLUMN [{NAMESPACE}] [ATTRIBUTE="..."]... ["VALUE"] [/]
    Json   ///< one object with the members type, depth, line, column, then those that apply
};

/// Writes the nodes that a reader stands on, a line each.
///
/// Columns count every character. The reader leaves the colons of prefixed names out, so the
/// writer, which sees all names, adds those that come earlier on the same line.
class NodeWriter {
public:
    /// \param out, reader not owned, must live longer
    NodeWriter(Output& out, Xml::XmlTextReader& reader, NodeForm form, bool colored)
        : out_(out), reader_(reader), form_(form), colored_(colored) {}

    /// Writes the current node. The reader stands on the same node afterwards.
    void WriteNode();

private:
    void WriteText(Xml::XmlNodeType type, long column);
    void WriteTextAttributes();
    void WriteJson(Xml::XmlNodeType type, long column);
    void WriteJsonAttributes();
    void WriteMember(std::string_view intro, std::string_view value);
    void StartColor(std::string_view color);
    void EndColor();

    long FollowColumn();

    Output& out_;
    Xml::XmlTextReader& reader_;
    NodeForm form_;
    bool colored_;
    long colonLine_ = 0;  // line that `colons_` is about
    long colons_ = 0;     // colons on that line that the reader has not counted
};

}  // namespace Tool
