// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/io/Stream.h>

#include "Document.h"
#include "Formatter.h"
#include "Target.h"

#include <functional>
#include <optional>
#include <string_view>

namespace Tool {

/// What becomes of a document.
struct Rewriting {
    Layout layout;
    std::optional<TargetForm> to;  ///< the encoding; that of the document when there is none
};

/// Writes a document to `out`, formatted. To be called before its first Next().
/// \param observer is shown the bytes of the document as they are read
/// \throws Xml::Exception for an error in the document, UnreadableSource, MissingCharacter, and
/// what
///         `out` throws; what was written before stays
void Rewrite(Document& document, const Rewriting& rewriting, IO::Stream& out,
             const std::function<void(std::string_view)>& observer);

}  // namespace Tool
