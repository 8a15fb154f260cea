// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/io/Exception.h>
#include <espalier/io/Stream.h>
#include <espalier/xml/XmlTextReader.h>

#include "MarkupTracker.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace Tool {

/// A reference to an entity in a document.
struct TracedReference {
    std::string name;  ///< of the entity
    Place place;       ///< of the reference, with the column as the reader counts it
};

/// Returns a document from its start on; null never.
using ReopenedDocument = std::function<std::unique_ptr<IO::Stream>()>;

/// Reads a document that has an error once more, to learn whether the error is in the text of an
/// entity; the place of such an error is none in the document.
/// \param reader the one that has found the error, for its settings
/// \return the reference that stands in the document itself; none when the error does, too
/// \throws Xml::Exception when that cannot be told, and what `reopen` throws
std::optional<TracedReference> TraceErrorToReference(const Xml::Exception& error,
                                                     const ReopenedDocument& reopen,
                                                     const Xml::XmlTextReader& reader);

}  // namespace Tool
