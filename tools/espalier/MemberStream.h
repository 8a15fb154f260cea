// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/io/ZipFileStream.h>

#include "InputStream.h"

#include <string>

namespace Tool {

/// A member of a zip archive.
class MemberStream final : public InputStream {
public:
    /// \throws Xml::Exception "Archive not found", "Not a zip archive", "Is a directory", "File not
    ///         found in archive", or what IO::FileStream says of an archive that cannot be opened
    MemberStream(const std::string& archive, const std::string& member);

    /// Returns the size of the archive.
    long ArchiveLength() const { return archiveLength_; }

    /// Returns the length that the archive states for the member.
    long StatedLength() const { return stream_.Length(); }

    /// \throws Xml::Exception "Damaged zip data", "Read error"
    int Read(unsigned char* buffer, int offset, int count) override;

private:
    IO::ZipFileStream stream_;
    long archiveLength_ = 0;
};

}  // namespace Tool
