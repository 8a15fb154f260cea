// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/io/Stream.h>
#include <espalier/xml/XmlTextWriter.h>

#include "NodeQueue.h"
#include "Target.h"
#include "TargetText.h"

#include <string>
#include <string_view>
#include <vector>

namespace Tool {

/// How a document is laid out.
struct Layout {
    int indentation = 2;
    char indentChar = ' ';
    bool compact = false;       ///< nothing is added; the indentation does not count
    std::string newLine{"\n"};  ///< what ends a line
};

/// Writes nodes as they were written, but for the white space between them.
///
/// White space changes where it stands between tags, comments and instructions and nothing else
/// stands there. An element that holds text of its own is written as it is, with all that is in it;
/// so is one whose xml:space is "preserve", up to where it is "default" again.
class Formatter {
public:
    /// \param nodes, target, out not owned
    Formatter(NodeQueue& nodes, const Target& target, const Layout& layout, IO::Stream& out);

    /// Writes all nodes.
    /// \throws MissingCharacter, and what reading and writing throw
    void Run();

private:
    // An open element.
    struct Frame {
        bool isMixed = false;    // it or one around it holds text
        bool preserves = false;  // says xml:space
        bool isEmpty = true;     // so far

        bool IsVerbatim() const { return isMixed || preserves; }
    };

    void Write(const SourceNode& node);
    void WriteDeclaration(const SourceNode& node);
    void WriteDeclaration(std::string_view version, std::string_view encoding,
                          std::string_view standalone);
    void WriteDocumentType(const SourceNode& node);
    void WriteElement(const SourceNode& node);
    void WriteAttribute(const SourceAttribute& attribute);
    void WriteEndElement();
    void WriteText(const SourceNode& node);
    void WriteBlank(const SourceNode& node);
    void WriteComment(const SourceNode& node);
    void WriteInstruction(const SourceNode& node);
    void WriteInstruction(std::string_view name, std::string_view value);
    template <typename Action>
    void OnItsLine(const Action& action);
    void WritePast(std::string_view text);
    void TakeNote();
    Frame FrameOf(const SourceNode& node);

    NodeQueue& nodes_;
    const Target& target_;
    const Layout& layout_;
    IO::Stream& out_;
    Xml::XmlTextWriter writer_;
    TargetText text_;
    std::vector<Frame> open_;
};

}  // namespace Tool
