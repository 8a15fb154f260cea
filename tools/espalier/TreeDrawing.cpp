// SPDX-License-Identifier: MIT
#include "TreeDrawing.h"

#include <espalier/io/Stream.h>

#include "Colors.h"
#include "Escape.h"
#include "Utf8.h"

#include <algorithm>

namespace Tool {

namespace {

constexpr std::size_t kLongest = 60;  // characters of a text that are shown

// XML 1.0 [3] S
constexpr std::string_view kSpace = " \t\r\n";

constexpr std::string_view kCut = "\u2026";  // the ellipsis

// What leads to a node that has later siblings, and to what it holds; and to the last one.
constexpr std::string_view kBranch = "\u251C\u2500 ";
constexpr std::string_view kBesideBranch = "\u2502  ";
constexpr std::string_view kLastBranch = "\u2514\u2500 ";
constexpr std::string_view kBesideNothing = "   ";

// What stands before the lines of a tree. It is kept from line to line, for all levels.
class Branches {
public:
    // Writes what leads to a node of the level `depth`, of which the first has nothing.
    void Write(Output& out, int depth, bool isLast) {
        if (depth < 2) return;
        const std::size_t level = static_cast<std::size_t>(depth) - 2;
        ends_.resize(level + 1, text_.size());
        text_.resize(ends_[level]);
        out.Write(text_);
        out.Write(isLast ? kLastBranch : kBranch);
        text_.append(isLast ? kBesideNothing : kBesideBranch);
    }

private:
    std::string text_;               // what stands before what the last node holds
    std::vector<std::size_t> ends_;  // of text_ before each level
};

// Returns where the text is to be cut; its size when it fits.
std::size_t FindCut(std::string_view text) {
    std::size_t position = 0;
    for (std::size_t count = 0; position < text.size(); ++position) {
        if (IsContinuation(text[position])) continue;
        if (count++ == kLongest) break;
    }
    return position;
}

}  // namespace

std::string ShortText(std::string_view text, bool& isCut) {
    std::string line;
    isCut = false;
    for (;;) {
        text.remove_prefix(std::min(text.find_first_not_of(kSpace), text.size()));
        if (text.empty()) return line.empty() ? " " : line;
        if (!line.empty()) line += ' ';
        // More than can be shown is not looked at, however long it is.
        const std::string_view word =
            text.substr(0, std::min(text.find_first_of(kSpace), 4 * kLongest + 4));
        line += word;
        text.remove_prefix(word.size());
        const std::size_t cut = FindCut(line);
        if (cut == line.size()) continue;
        isCut = true;
        line.resize(cut);
        return line;
    }
}

// The lines, each with its line feed.
class TreeDrawing::Text final : public IO::Stream {
public:
    bool CanWrite() const override { return true; }
    void Close() override {}
    void Write(const unsigned char* buffer, int offset, int count) override {
        text_.append(reinterpret_cast<const char*>(buffer) + offset,
                     static_cast<std::size_t>(std::max(0, count)));
    }

    std::string_view Get() const { return text_; }

private:
    std::string text_;
};

TreeDrawing::TreeDrawing(bool colored)
    : colored_(colored), lines_(std::make_unique<Text>()), into_(std::make_unique<Output>()) {
    into_->SetTarget(lines_.get());
}

TreeDrawing::~TreeDrawing() = default;

void TreeDrawing::Take(const TreeNode& node) {
    depths_.push_back(node.depth);
    WriteNode(node);
    into_->Write('\n');
}

void TreeDrawing::WriteNode(const TreeNode& node) {
    switch (node.type) {
    case Xml::XmlNodeType::Element: WriteElement(node); return;
    case Xml::XmlNodeType::EntityReference: WriteColored(kTypeColor, "&", node.name + ";"); return;
    case Xml::XmlNodeType::ProcessingInstruction: WriteColored(kTypeColor, "?", node.name); break;
    case Xml::XmlNodeType::Comment: WriteColored(kTypeColor, "#", "comment"); break;
    case Xml::XmlNodeType::CDATA: WriteColored(kTypeColor, "#", "cdata-section"); break;
    default: WriteShort(node.value); return;
    }
    if (node.value.empty()) return;
    into_->Write(' ');
    WriteShort(node.value);
}

void TreeDrawing::WriteElement(const TreeNode& node) {
    WriteColored(kNameColor, "", node.name);
    for (const TreeNode::Attribute& attribute : node.attributes) {
        into_->Write(' ');
        into_->Write(attribute.name);
        into_->Write('=');
        WriteShort(attribute.value);
    }
    if (node.hasValue) {
        into_->Write(' ');
        WriteShort(node.value);
    }
    if (!node.isCut) return;
    into_->Write(' ');
    into_->Write(kCut);
}

void TreeDrawing::WriteShort(std::string_view text) {
    bool isCut = false;
    const std::string shown = text.empty() ? std::string() : ShortText(text, isCut);
    if (colored_) into_->Write(kValueColor);
    WriteQuoted(*into_, shown);
    if (isCut) into_->Write(kCut);
    if (colored_) into_->Write(kNoColor);
}

void TreeDrawing::WriteColored(std::string_view color, std::string_view prefix,
                               std::string_view text) {
    if (colored_) into_->Write(color);
    into_->Write(prefix);
    into_->Write(text);
    if (colored_) into_->Write(kNoColor);
}

// Tells for each line whether it is the last one on its level beneath its parent.
std::vector<bool> TreeDrawing::FindLast() const {
    std::vector<bool> isLast(depths_.size());
    std::vector<bool>
        isFollowed;  // by level: whether there is a later node, beneath the same parent
    for (std::size_t i = depths_.size(); i-- > 0;) {
        const std::size_t depth = static_cast<std::size_t>(depths_[i]);
        isFollowed.resize(depth + 1);  // deeper ones are beneath this node
        isLast[i] = !isFollowed[depth];
        isFollowed[depth] = true;
    }
    return isLast;
}

void TreeDrawing::Draw(Output& out) {
    into_->Flush();
    const std::vector<bool> isLast = FindLast();
    std::string_view rest = lines_->Get();
    Branches branches;
    for (std::size_t i = 0; i < depths_.size(); ++i) {
        const std::size_t length = rest.find('\n') + 1;
        branches.Write(out, depths_[i], isLast[i]);
        out.Write(rest.substr(0, length));
        rest.remove_prefix(length);
    }
}

}  // namespace Tool
