// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/xml/XmlEntityHandling.h>

#include "support/DocumentForms.h"

#include <initializer_list>
#include <string>
#include <string_view>

/// \file
/// Documents that are read in standard mode, and what becomes of them.
namespace support {

/// The settings that matter in standard mode.
struct StandardOptions {
    bool namespaces = true;
    Xml::XmlEntityHandling entities = Xml::XmlEntityHandling::ExpandEntities;
};

/// What a reader in standard mode makes of a document.
///
/// The nodes are written like a document: `<{urn:x}a x="1" {urn:y}y="2"/>`, `text`, `</a>`,
/// `<!--c-->`, `<?target data?>`, `&e;`. Values and texts are escaped (EscapedText.h), CDATA
/// sections are text; the declaration, the document type and white space outside of the root
/// element are left out. Attributes stand in the order of the reader, declarations of namespaces
/// among them.
struct StandardReading {
    std::string nodes;    ///< up to the error, if there is one
    std::string message;  ///< of the error; "" when the document is accepted
    int line = 0;         ///< of the error
    int column = 0;
};

/// Reads the document made of these bytes.
/// \param bytesPerRead how many bytes its stream gives at a time; 0 for as many as are asked for
StandardReading ReadByStandard(std::string_view bytes, const StandardOptions& settings = {},
                               int bytesPerRead = 0);

/// A document that is well-formed, a row of a table.
struct AcceptedDocument {
    const char* input;  ///< with the escapes of EscapedText.h
    const char* nodes;  ///< as in StandardReading
};

/// A document that is not well-formed, a row of a table.
struct RefusedDocument {
    static constexpr int kAny = -2;  ///< any column

    const char* input;  ///< with the escapes of EscapedText.h
    int line;
    int column;
    const char* reason;
};

/// Reads each document as a whole and in small parts, with Forms::All also in UTF-8 and UTF-16 with
/// marks, and fails the test where one is refused or tells other nodes.
void ExpectAccepted(std::initializer_list<AcceptedDocument> documents,
                    const StandardOptions& settings = {}, Forms forms = Forms::All);

/// Reads each document in the same ways and fails the test where one is accepted, is refused
/// elsewhere, or without a message.
void ExpectRefused(std::initializer_list<RefusedDocument> documents,
                   const StandardOptions& settings = {}, Forms forms = Forms::All);

/// Reads one document in the same ways, and compares all that it tells with the first way.
/// \return what it tells
StandardReading ReadInForms(const std::string& document, const StandardOptions& settings = {},
                            Forms forms = Forms::All);

}  // namespace support
