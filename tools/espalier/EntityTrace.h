// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/io/Exception.h>
#include <espalier/io/Stream.h>

#include "MarkupTracker.h"

#include <optional>
#include <string>

namespace Tool {

/// A reference to an entity in a document.
struct TracedReference {
    std::string name;  ///< of the entity
    Place place;       ///< of the reference, with the column as the reader counts it
};

/// Reads a document that has an error once more, to learn whether the error is in the text of an
/// entity; the place of such an error is none in the document.
/// \param document the document from its start on
/// \return the reference that stands in the document itself; none when the error does, too
std::optional<TracedReference> TraceErrorToReference(const Xml::Exception& error,
                                                     IO::Stream& document, bool namespaces);

}  // namespace Tool
