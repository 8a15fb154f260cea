// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/astring.h>

#include "InputOptions.h"
#include "Progress.h"

#include <optional>
#include <string>
#include <string_view>

namespace Tool {

/// Returns the bytes of a style sheet, as far as the library takes them.
/// \throws Xml::Exception as Input does
astring ReadSheet(const std::string& name, const InputOptions& options, Progress& progress);

/// The style sheets beside a document: in its folder, or in one below that; of a member of an
/// archive in the archive. There is no other way to any, and none for a document from standard
/// input.
class BesideSheets {
public:
    /// \param document the name of the document as the user has given it
    /// \param options, progress not owned, must live longer
    BesideSheets(const std::string& document, const InputOptions& options, Progress& progress);

    /// Returns the name of the sheet, as a user would give it.
    /// \param address relative to that of the document, which has none itself
    std::string NameOf(std::string_view address) const;

    /// Returns the bytes of the sheet; nothing when it is not there, cannot be read or is not
    /// beside the document.
    std::optional<astring> Read(std::string_view address) const;

private:
    std::string folder_;  // what stands before the names of sheets
    bool hasPlace_;       // for standard input there is none
    const InputOptions& options_;
    Progress& progress_;
};

}  // namespace Tool
