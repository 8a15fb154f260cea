// SPDX-License-Identifier: MIT
#pragma once

#include "Output.h"
#include "TreeNode.h"

#include <string>
#include <string_view>

namespace Tool {

/// Writes the nodes of a tree as JSON, an object a line with the members that apply of file, depth,
/// type, name, namespace, attributes, value, cut.
class TreeObjects final : public TreeSink {
public:
    /// \param file the name of the document to say in each object, or empty
    /// \param out not owned, must live longer
    TreeObjects(Output& out, std::string_view file) : out_(out), file_(file) {}

    void Take(const TreeNode& node) override;

private:
    void WriteMember(std::string_view intro, std::string_view value);

    Output& out_;
    std::string file_;
};

}  // namespace Tool
