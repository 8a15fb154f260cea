// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/io/Stream.h>

#include <memory>
#include <string>
#include <string_view>

namespace Tool {

/// Opens a file for reading.
/// \throws Xml::Exception as IO::FileStream does, or "Is a directory"
std::unique_ptr<IO::Stream> OpenFile(const std::string& name);

/// What the name of a document names: a file, or the member of an archive.
struct InputName {
    std::string file;    ///< "-" for standard input
    std::string member;  ///< empty for the file itself
};

/// Returns what is named by "FILE" or "ARCHIVE!MEMBER". A file of the whole name counts before any
/// archive; of several "!", the first counts before which there is the name of a file.
InputName ParseInputName(const std::string& name);

/// Tells whether a document can be read more than once.
bool CanOpenAgain(const InputName& name);

/// Tells whether a document is a member of an archive that is there, or a file that begins like
/// gzip data. What can be read only once is not looked at.
bool IsCompressed(const std::string& name);

/// Tells whether `head` begins like gzip data (RFC 1952 section 2.3.1).
bool BeginsLikeGzip(std::string_view head);

}  // namespace Tool
