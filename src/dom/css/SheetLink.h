// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/astring.h>
#include <espalier/dom/Element.h>
#include <espalier/dom/ProcessingInstruction.h>

#include <optional>
#include <string_view>

namespace Dom::CSS::detail {

/// What a node of a document says of a style sheet.
struct SheetLink {
    Node* owner = nullptr;
    astring href = {};   ///< empty for the text of an element
    astring title = {};  ///< may be empty, as all that follows
    astring media = {};
    astring charset = {};
    bool isText = false;  ///< the sheet is the text of the element
};

/// Tells whether one of the words of a text is `word`, in any case.
bool HasWord(std::string_view text, std::string_view word);

/// Tells whether an address leads out of what it stands in: it is not empty, and no fragment alone.
inline bool LeadsElsewhere(std::string_view href) { return !href.empty() && href.front() != '#'; }

/// Returns the texts and CDATA sections in an element, joined. Of what is below other nodes only
/// that of references to entities counts.
astring TextIn(const Element& element);

/// Returns what an instruction before the root element says, if it is of a sheet that counts.
std::optional<SheetLink> LinkOf(ProcessingInstruction& instruction);

/// Returns what an element says, if it is of a sheet that counts.
/// \param xhtml the namespace that the elements of XHTML have in the document
std::optional<SheetLink> LinkOf(Element& element, std::string_view xhtml);

/// Tells whether an element has that local name and namespace.
inline bool IsNamed(const Element& element, std::string_view uri, std::string_view name) {
    return element.LocalNameView() == name && element.NamespaceURI() == uri;
}

}  // namespace Dom::CSS::detail
