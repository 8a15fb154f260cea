// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/astring.h>
#include <espalier/dom/Forward.h>
#include <espalier/dom/css/CSSStyleSheet.h>
#include <espalier/io/Forward.h>

#include <memory>
#include <string_view>

namespace Dom::CSS::detail {

/// The type of the sheets that nodes make.
inline constexpr std::string_view kSheetType = "text/css";

/// What a node says of the sheet that it makes.
struct SheetNotes {
    Node& owner;
    const astring href;
    const astring title;
    const astring media;
};

/// Makes a sheet of what a stream holds, in an encoding that CssReader knows by name. Rules that
/// the sheet refuses are left out.
std::unique_ptr<CSSStyleSheet> MakeSheet(const SheetNotes& notes, IO::Stream* stream,
                                         const astring& encoding);

}  // namespace Dom::CSS::detail
