// SPDX-License-Identifier: MIT
#pragma once

#include <string>

/// \file
/// The verdicts of other parsers, which open nothing but the document.
namespace conformance {

/// Returns expat's number of the error, or 0.
int ExpatError(const std::string& document, bool namespaces);

bool ExpatAccepts(const std::string& document, bool namespaces);
bool LibxmlAccepts(const std::string& document, bool namespaces);

/// Returns the version of the parser, as its library names it.
std::string ExpatVersion();
std::string LibxmlVersion();

}  // namespace conformance
