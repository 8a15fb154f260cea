// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/Export.h>
#include <espalier/base/astring.h>

#include <cstddef>
#include <string_view>

namespace Dom::StyleSheets {

/// The media that a style sheet is for, as a text of names separated by commas.
class ESPALIER_EXPORT MediaList {
public:
    /// Makes an empty list.
    MediaList() = default;
    explicit MediaList(std::string_view mediaText) : mediaText_(mediaText) {}
    MediaList(const MediaList&) = default;
    MediaList& operator=(const MediaList&) = default;

    /// Returns this object as "Dom::StyleSheets::MediaList", or null for other names.
    virtual void* QueryInterface(const char* name);
    virtual ~MediaList() = default;

    /// Returns the text.
    const astring& MediaText() const { return mediaText_; }
    /// Replaces the text, whatever it is.
    void SetMediaText(std::string_view mediaText) { mediaText_ = mediaText; }

    /// Returns the number of names in the text.
    std::size_t Length() const;
    /// Returns name `index`, from 0 on; empty when there are not as many.
    astring Item(std::size_t index) const;
    /// Tells whether a name is in the list.
    bool Contains(std::string_view name) const;
    /// Tells whether the text is empty.
    bool IsEmpty() const { return mediaText_.empty(); }

    /// Adds a name, also when it is in the list already.
    void AppendMedium(std::string_view name);
    /// Takes a name and a separator out; nothing happens when it is not in the list.
    void DeleteMedium(std::string_view name);

private:
    astring mediaText_;
};

}  // namespace Dom::StyleSheets
