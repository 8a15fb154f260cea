// SPDX-License-Identifier: MIT
#pragma once

#include <span>
#include <string_view>

/// \file
/// Small documents with the verdicts of XML 1.0 and of Namespaces in XML 1.0.
namespace differential {

/// What the standards say of a document. Where the editions of XML 1.0 differ, the fifth counts.
enum class Standard { WellFormed, Malformed };

/// Says which of the other parsers decides otherwise than the standards do.
enum class Peers { Agree, ExpatDiffers, LibxmlDiffers, BothDiffer };

/// A document with its verdicts.
struct Verdict {
    Standard standard = Standard::WellFormed;
    const char* what = "";  ///< what is tried
    std::string_view document;
    const char* difference = "";  ///< the name of the one that has the reader decide otherwise
    Peers peers = Peers::Agree;
};

std::span<const Verdict> CharacterVerdicts();  ///< characters, encodings and names
std::span<const Verdict> MarkupVerdicts();     ///< prolog, tags, text, comments and so on
std::span<const Verdict> SubsetVerdicts();     ///< the document type and its internal subset
std::span<const Verdict> EntityVerdicts();     ///< references
std::span<const Verdict> NamespaceVerdicts();  ///< Namespaces in XML 1.0

}  // namespace differential
