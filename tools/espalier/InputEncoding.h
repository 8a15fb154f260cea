// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/encoding/Forward.h>
#include <espalier/xml/XmlConformance.h>

#include "SourceText.h"

#include <span>
#include <string_view>

namespace Tool {

/// An encoding that a document can be said to be in.
struct InputEncoding {
    std::string_view name;
    SourceForm form;
    Xml::Encoding* (*page)();  ///< of SourceForm::CodePage, otherwise null
};

/// Tells whether two names of encodings are the same, in letters of any case.
bool IsSameEncodingName(std::string_view a, std::string_view b);

/// Returns all of them.
std::span<const InputEncoding> InputEncodings();

/// Returns the one of that name, in letters of any case; null when there is none.
const InputEncoding* FindInputEncoding(std::string_view name);

/// Returns the code page that a document declares.
/// \param head the start of the document, with its XML declaration
/// \param conformance by which rules names of encodings are known
/// \return null when it declares none
const InputEncoding* DeclaredPage(std::string_view head, Xml::XmlConformance conformance);

}  // namespace Tool
