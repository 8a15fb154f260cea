// SPDX-License-Identifier: MIT
#pragma once

#include "Output.h"
#include "TreeNode.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace Tool {

/// Returns a text as it is shown on a line: without white space around it, with a single blank in
/// place of any other, and cut behind 60 characters. White space alone becomes one blank.
/// \param isCut gets whether it was cut
std::string ShortText(std::string_view text, bool& isCut);

/// Draws a tree with lines that lead from each node to what it holds. They depend on what follows,
/// so the nodes are kept, as they will be shown, until Draw().
class TreeDrawing final : public TreeSink {
public:
    explicit TreeDrawing(bool colored);
    ~TreeDrawing() override;

    void Take(const TreeNode& node) override;

    /// Draws what has been taken, a line each.
    void Draw(Output& out);

private:
    class Text;

    void WriteNode(const TreeNode& node);
    void WriteElement(const TreeNode& node);
    void WriteShort(std::string_view text);
    void WriteColored(std::string_view color, std::string_view prefix, std::string_view text);
    std::vector<bool> FindLast() const;

    bool colored_;
    std::unique_ptr<Text> lines_;   // without what leads to them
    std::unique_ptr<Output> into_;  // lines_
    std::vector<int> depths_;       // of the lines
};

}  // namespace Tool
