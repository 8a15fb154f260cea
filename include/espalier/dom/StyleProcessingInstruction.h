// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/dom/ProcessingInstruction.h>
#include <espalier/dom/css/Forward.h>
#include <espalier/dom/css/LinkStyle.h>
#include <espalier/io/Forward.h>

namespace Dom {

/// An instruction with the target "xml-stylesheet", which links a document to a style sheet
/// (Associating Style Sheets with XML documents). Documents make them for that target.
///
/// Its data are pseudo-attributes, such as `href="a.css" type="text/css"`. They are read when one
/// is asked for; what stands behind a fault in them is left out. It owns the sheet that it made
/// last, Sheet().
class ESPALIER_EXPORT StyleProcessingInstruction : public ProcessingInstruction,
                                                   public StyleSheets::LinkStyle {
public:
    StyleProcessingInstruction(std::string_view data, Document* ownerDocument);
    ~StyleProcessingInstruction() override;

    void* QueryInterface(const char* name) override;
    /// Returns a new instruction with the same data, without a sheet.
    Node* CloneNode(bool deep) override;

    /// Replaces the data; the pseudo-attributes are read anew. The sheet stays.
    /// Deliberate: also when the node is read-only.
    void SetData(std::string_view data) override;

    /// \name Pseudo-attributes
    /// The last one of the name, with references to characters replaced; an empty string when there
    /// is none. Valid until the data change.
    /// @{
    const astring& Type() const;
    const astring& Title() const;
    const astring& Media() const;
    const astring& Href() const;
    const astring& Charset() const;
    /// Tells whether a pseudo-attribute "altenate" is "yes", in any case.
    ///
    /// Deliberate: its name is spelt in this way; "alternate" is not known.
    bool Alternate() const;
    /// @}

    /// Makes the sheet that the instruction links to, and deletes the one before. What cannot be
    /// read is left out, as CSS::CssReader and CSS::CSSStyleSheet::InsertRule() tell. An
    /// alternate sheet is disabled.
    ///
    /// \param stream the text of the sheet, in the encoding that Charset() names to CssReader, so
    ///     US-ASCII when it is empty; stays the caller's; may be null, which is an empty text
    /// \return the sheet, which the instruction owns; null, when Type() is not exactly "text/css"
    CSS::CSSStyleSheet* CreateStyleSheet(IO::Stream* stream);

private:
    void ReadData() const;
    void ForgetValues() const;

    // What the data say, once they are read.
    mutable bool alternate_ = false;
    mutable astring charset_;
    mutable astring href_;
    mutable astring media_;
    mutable astring title_;
    mutable astring type_;
    mutable bool isRead_ = false;
};

}  // namespace Dom
