// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/Export.h>
#include <espalier/base/astring.h>
#include <espalier/dom/Forward.h>
#include <espalier/dom/css/MediaList.h>

#include <string_view>

namespace Dom::StyleSheets {

/// What all kinds of style sheets have in common.
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
    bool Disabled() const { return disabled_; }
    void Enable() { disabled_ = false; }
    void Disable() { disabled_ = true; }
    /// Returns the node that made the sheet, or null.
    Node* OwnerNode() const { return ownerNode_; }
    /// Returns the sheet that imports this one, or null.
    StyleSheet* ParentStyleSheet() const { return parentStyleSheet_; }
    const astring& Href() const { return href_; }
    const astring& Title() const { return title_; }
    /// Returns the media that the sheet is for, to look at or to change.
    MediaList& GetMediaList() { return media_; }
    const MediaList& GetMediaList() const { return media_; }

protected:
    StyleSheet(std::string_view type, Node* ownerNode, StyleSheet* parentStyleSheet,
               std::string_view href, std::string_view title);

private:
    astring type_;
    bool disabled_ = false;
    Node* ownerNode_;
    StyleSheet* parentStyleSheet_;
    astring href_;
    astring title_;
    MediaList media_;
};

}  // namespace Dom::StyleSheets
