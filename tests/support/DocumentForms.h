// SPDX-License-Identifier: MIT
#pragma once

#include "support/ReaderSettings.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace support {

/// A way to write a document in bytes: an encoding, with or without the mark that tells it.
struct DocumentForm {
    enum class Unit { Utf8, Utf16LE, Utf16BE, Ucs4LE, Ucs4BE };

    const char* name;
    Unit unit;
    bool mark;
};

/// All forms, plain UTF-8 first.
const std::vector<DocumentForm>& AllDocumentForms();

/// Returns the document in another form.
/// \return nothing where the form does not exist: the bytes are not valid UTF-8, or the first four
///     bytes of the form would not tell its encoding
std::optional<std::string> WriteInForm(std::string_view utf8, const DocumentForm& form);

/// Says in which forms a document is tried.
enum class Forms {
    All,
    OnlyUtf8  ///< where the document names its encoding or its bytes matter
};

/// Reads the document in every form and with 1, 2, 3, 7 and as many bytes at a time as the reader
/// asks for, and fails the test where the nodes are not `expected` (a text of DumpNodes()).
/// \return the number of times that it was read
int ExpectNodesInAllForms(std::string_view utf8, const ReaderSettings& settings,
                          const std::string& expected, Forms forms = Forms::All);

}  // namespace support
