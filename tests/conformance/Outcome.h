// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/xml/XmlConformance.h>

#include <string>
#include <string_view>

/// \file
/// What the library makes of a document, as the suite looks at it.
namespace conformance {

/// How a document is read. Entities are always expanded, and line ends normalized.
struct Mode {
    Xml::XmlConformance conformance;
    bool namespaces = true;
};

inline constexpr Mode kStandard = {Xml::XmlConformance::Standard, true};
inline constexpr Mode kCompatible = {Xml::XmlConformance::Compatible, true};

/// What became of a document.
struct Outcome {
    std::string error;  ///< line, position, message and argument; "" when it was accepted
    std::string form;   ///< the canonical form of what was read

    bool IsAccepted() const { return error.empty(); }
    bool operator==(const Outcome&) const = default;
};

/// Reads with XmlTextReader, and takes the notations from the events that sax::XMLReader makes of
/// the nodes of a second one.
Outcome Read(std::string_view document, Mode mode);

/// \name
/// The same by one class. The form is without the document type, of which readers do not tell the
/// notations, events not the name, and trees nothing.
/// @{

/// \param bytesPerRead how many bytes the input gives at a time; 0 for as many as are asked for
Outcome ReadNodes(std::string_view document, Mode mode, int bytesPerRead = 0);

/// Reads with sax::XMLReader, which is given a reader of that mode.
Outcome ReadEvents(std::string_view document, Mode mode);

/// Loads a Dom::Document from a reader of that mode.
Outcome LoadTree(std::string_view document, Mode mode);

/// @}

}  // namespace conformance
