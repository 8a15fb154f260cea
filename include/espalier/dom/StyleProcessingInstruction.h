// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/dom/ProcessingInstruction.h>
#include <espalier/dom/css/LinkStyle.h>

namespace Dom {

/// An instruction with the target "xml-stylesheet", which links a document to a style sheet
/// (Associating Style Sheets with XML documents). Documents make them for that target.
///
/// It owns the sheet that it keeps.
class ESPALIER_EXPORT StyleProcessingInstruction : public ProcessingInstruction,
                                                   public StyleSheets::LinkStyle {
public:
    StyleProcessingInstruction(std::string_view data, Document* ownerDocument);
    ~StyleProcessingInstruction() override;

    void* QueryInterface(const char* name) override;
    /// Returns a new instruction with the same data, without a sheet.
    Node* CloneNode(bool deep) override;
};

}  // namespace Dom
