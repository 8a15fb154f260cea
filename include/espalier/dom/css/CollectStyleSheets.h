// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/Export.h>
#include <espalier/base/astring.h>
#include <espalier/dom/Forward.h>
#include <espalier/dom/css/CSSStyleSheet.h>
#include <espalier/dom/css/LoadStyleSheets.h>

#include <cstddef>
#include <memory>
#include <vector>

namespace Dom::CSS {

/// A style sheet that a document has, or that one of them imports.
struct CollectedSheet {
    /// Its Href() is the absolute address, as far as that of the document is; of an element "style"
    /// it is the one that addresses in its text are relative to. OwnerNode() is the node of the
    /// document; OwnerRule() and ParentStyleSheet() of a sheet that is imported lead to the one
    /// that imports it.
    std::unique_ptr<CSSStyleSheet> sheet;
    /// The media of the sheets and of the imports that lead to it, the outer one first, without
    /// those that are empty: all of them must match, and the sheet's own, too.
    std::vector<astring> importMedia;
};

/// A style sheet that is not there although something leads to it.
struct MissingSheet {
    astring address;  ///< as the host would have got it
    /// "Not found", "Imported by itself", "Imported too deep", "Too many bytes" or "Too many
    /// sheets". The last two come once, and nothing is asked for behind them.
    astring reason;
};

/// What a document and its sheets may have.
struct SheetLimits {
    int importDepth = 8;  ///< sheets that are imported by each other, below one of the document
    /// Of all sheets that the host gives, with their addresses and the media of imports.
    std::size_t bytes = std::size_t{16} << 20;
    std::size_t sheets = 4096;  ///< that links, instructions and imports lead to
};

/// Makes the style sheets that a document has, in the order in which they count. The document keeps
/// its list of sheets, and nodes the sheets that they have made.
///
/// There are sheets of:
/// - instructions "xml-stylesheet" before the root element, but for those with alternate="yes"
///   (Associating Style Sheets with XML documents);
/// - elements "link" of XHTML, with the word "stylesheet" in "rel" and without "alternate", in any
///   case; an attribute "disabled" takes them out, whatever its value;
/// - elements "style" of XHTML and of SVG, unless "disabled" is "yes", "true" or "1".
///
/// Elements count by their namespace, in any document; in one whose root is "html" without a
/// namespace, those that have none count as XHTML. Types must be "text/css" in any case, with
/// parameters or without, or not there. Titles choose nothing. Links without an address, and
/// those with a fragment alone, lead to no sheet.
///
/// Texts are read by ParseStyleSheet(). Bytes that do not tell their encoding have the one that the
/// link names, else that of the document, or of the sheet that imports them.
///
/// Addresses are relative to that of the document, those in elements behind the first "base" with
/// an "href" of at most 4,096 bytes, of XHTML, to that; those of imports are relative to the sheet
/// that has them. "xml:base" is not looked at. What a sheet imports comes before it, in the order
/// of the imports, each time that it is imported. A sheet that imports itself, or one that is about
/// to import it, is missing. The media of an import are what stands behind its address; "layer" and
/// "supports()" there are media that never match.
///
/// Time and memory are in proportion to the document and the limits, whatever sheets import.
///
/// \param host asked for every address in turn, twice for one that is there twice; may be empty,
///     then nothing that is linked to or imported is found
/// \param missing gets what is not there, in the order of the document; may be null
/// \throws what the host throws
ESPALIER_EXPORT std::vector<CollectedSheet> CollectStyleSheets(
    const Document& document, const StyleSheetHost& host = {},
    std::vector<MissingSheet>* missing = nullptr, const SheetLimits& limits = {});

}  // namespace Dom::CSS
