// SPDX-License-Identifier: MIT
#pragma once

#include "Document.h"
#include "TreeNode.h"

namespace Tool {

/// Reads a document and hands on the nodes of its tree.
///
/// A node is handed on when it is known whether a text is all that it holds, so memory does not
/// grow with the document. The XML declaration, the document type and white space between markup
/// are left out.
class TreeReader {
public:
    /// \param levels how deep nodes may be; what is deeper is left out
    /// \param document, sink not owned, must live longer
    TreeReader(Document& document, int levels, TreeSink& sink)
        : document_(document), reader_(document.Reader()), levels_(levels), sink_(sink) {}

    /// Reads to the end. After an error, what was read before it has been handed on.
    void Read();

private:
    void ReadNode();
    void EnterElement();
    void TakeText();
    void TakeOther(Xml::XmlNodeType type);
    void FinishElement();
    void HandOnElement();
    bool IsTooDeep();

    Document& document_;
    Xml::XmlTextReader& reader_;
    int levels_;
    TreeSink& sink_;
    TreeNode element_;        // the last start tag, while it is not known what the element holds
    bool isWaiting_ = false;  // element_ has not been handed on
    TreeNode other_;
};

}  // namespace Tool
