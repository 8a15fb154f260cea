// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/Export.h>
#include <espalier/base/astring.h>
#include <espalier/dom/Forward.h>
#include <espalier/dom/css/MediaList.h>

#include <string_view>
#include <vector>

namespace Dom::StyleSheets {

/// What all kinds of style sheets have in common.
///
/// A sheet belongs to the node that made it or to the lists that it was added to. Any of them may
/// delete it, and so may anybody else: the others forget it then.
class ESPALIER_EXPORT StyleSheet {
public:
    StyleSheet(const StyleSheet&) = delete;
    StyleSheet& operator=(const StyleSheet&) = delete;

    // The order of the virtual functions is part of the binary interface: append, never reorder.

    /// Returns this object as the class `name`, for example "Dom::StyleSheets::StyleSheet", or null
    /// when it is none. The pointer is that of the subobject of the class.
    virtual void* QueryInterface(const char* name);

    virtual ~StyleSheet();

    /// Returns the kind of sheet, "text/css" for all that the library makes.
    const astring& Type() const { return type_; }

    /// \name Whether the sheet counts
    /// It does at first.
    /// @{
    bool Disabled() const { return disabled_; }
    void Enable() { disabled_ = false; }
    void Disable() { disabled_ = true; }
    /// @}

    /// Returns the node that made the sheet, or null.
    Node* OwnerNode() const { return ownerNode_; }
    /// Returns the sheet that imports this one, or null.
    StyleSheet* ParentStyleSheet() const { return parentStyleSheet_; }
    /// Returns where the sheet comes from, or empty.
    const astring& Href() const { return href_; }
    /// Returns the title, or empty.
    const astring& Title() const { return title_; }
    /// Returns the media that the sheet is for, to look at or to change.
    MediaList& GetMediaList() { return media_; }
    const MediaList& GetMediaList() const { return media_; }

protected:
    StyleSheet(std::string_view type, Node* ownerNode, StyleSheet* parentStyleSheet,
               std::string_view href, std::string_view title);

private:
    friend class LinkStyle;
    friend class StyleSheetListImpl;

    astring type_;
    bool disabled_ = false;
    Node* ownerNode_;
    StyleSheet* parentStyleSheet_;
    astring href_;
    astring title_;
    MediaList media_;
    LinkStyle* keeper_ = nullptr;             // whose Sheet() this is; null when nobody's
    std::vector<StyleSheetListImpl*> lists_;  // that hold this sheet
};

}  // namespace Dom::StyleSheets
