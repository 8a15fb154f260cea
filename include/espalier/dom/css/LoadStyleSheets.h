// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/Export.h>
#include <espalier/base/astring.h>
#include <espalier/dom/Forward.h>

#include <functional>
#include <optional>

namespace Dom::CSS {

/// Gives the bytes of a style sheet that a document links to, or nothing when there is none to be
/// had. It may throw; it must change neither the document nor its list of sheets.
///
/// The first argument is the address: that of the link, relative to that of the document
/// (RFC 3986, section 5.2), without a fragment. It is relative itself when both are. The second
/// one is the name of the encoding that the link states, or empty.
using StyleSheetHost =
    std::function<std::optional<astring>(const astring& address, const astring& encoding)>;

/// Makes the style sheets of a document, and puts them into StyleSheets() behind those that are
/// there, in document order. Sheets that the nodes have made before are deleted.
///
/// There are sheets of:
/// - instructions "xml-stylesheet" before the root element;
/// - elements "link" of an HTMLDocument with the word "stylesheet" in "rel", in any case; with the
///   word "alternate", too, the sheet is disabled;
/// - elements "style" of an HTMLDocument.
///
/// Each is what the node's CreateStyleSheet() makes, so links without a type "text/css" have none.
/// Neither have those without an address, or with one that is nothing but a fragment. Nothing is
/// fetched but by the host. Sheets that sheets import, "xml:base" and the element "base" are not
/// looked at.
///
/// \param host may be empty; then nothing that is linked to has a sheet
/// \throws what the host throws; the sheets that were made before stay
ESPALIER_EXPORT void LoadStyleSheets(Document& document, const StyleSheetHost& host);

}  // namespace Dom::CSS
