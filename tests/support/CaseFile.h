// SPDX-License-Identifier: MIT
#pragma once

#include "support/DocumentForms.h"
#include "support/ReaderSettings.h"

#include <cstddef>
#include <string>
#include <vector>

/// \file
/// Files of cases for the reader: documents with the nodes that they have. Those for the events are
/// of the same form, with "--- events" in the place of "--- nodes".
///
///     === an empty element yields no end element {namespaces off; whitespace none}
///     <a x="1"/>
///     --- nodes
///     Element a depth=1 empty @1:1
///       Attribute x="1" depth=2 @1:4
///
/// The lines before the first "===" say what the file is about. A case's name is followed by its
/// settings in braces, where it has any: "namespaces off", "normalization on", "whitespace none",
/// "whitespace significant", "entities nothing", "entities char" (the reader's own default),
/// "entities all", "resolve" where every reference to an entity is resolved, "parts" where the
/// values of attributes are shown part by part too, and "bytes" where the document cannot be tried
/// in other encodings. The document is what stands between the name and "--- nodes", without the
/// last line's end; it is in ASCII with the escapes of EscapedText.h. What follows is the text of
/// DumpNodes().
namespace support {

struct ReaderCase {
    std::string name;
    std::string settingsText;  ///< as written, without the braces
    std::string inputText;     ///< as written, with escapes
    std::string expected;
    int line = 0;  ///< of the name in the file

    /// Returns the document in UTF-8.
    std::string Document() const;

    /// Returns the settings one by one.
    std::vector<std::string> SettingTexts() const;

    /// \throws std::invalid_argument for a setting that is none of the reader
    ReaderSettings Settings() const;

    Forms AllowedForms() const;
};

struct CaseFile {
    std::string mark;  ///< between a document and what is expected of it
    std::string heading;
    std::vector<ReaderCase> cases;

    /// Reads a file.
    /// \throws std::runtime_error when it cannot be read or has not the form described above
    static CaseFile Load(const std::string& fileName, const std::string& mark = "--- nodes");

    void Save(const std::string& fileName) const;
};

/// How many cases a file has, so that none is lost unseen.
struct CaseCount {
    const char* name;  ///< of the file, without extension
    std::size_t cases;
};

/// Returns the names of the files of a folder, without extension, in their order.
std::vector<std::string> CaseFileNames(const std::string& folder);

/// Tells whether files of cases are to be written anew: whether ESPALIER_UPDATE_CASES is 1.
bool IsCaseUpdate();

}  // namespace support
