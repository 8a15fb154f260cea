// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/io/Stream.h>

#include <stdexcept>
#include <string>
#include <string_view>

namespace Tool {

/// Thrown when a file cannot be replaced; what() says why.
class ReplacementError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// New content for a file, or a new file. It is written to a temporary file beside it, which takes
/// its place at once, or not at all: the file is always whole, the old one or the new one.
class FileReplacement final : public IO::Stream {
public:
    /// \param name of a regular file, or of none; of a symbolic link, what it leads to is replaced
    /// \throws ReplacementError
    explicit FileReplacement(const std::string& name);

    /// Removes the temporary file, if it has not taken the place of the file.
    ~FileReplacement() override;

    FileReplacement(const FileReplacement&) = delete;
    FileReplacement& operator=(const FileReplacement&) = delete;

    bool CanWrite() const override { return true; }
    void Close() override {}

    /// \throws ReplacementError
    void Write(const unsigned char* buffer, int offset, int count) override;

    /// Puts the temporary file in the place of the file, with its permissions, and if possible its
    /// owner and group; a new file gets those that any new file gets.
    /// \throws ReplacementError
    void Commit();

private:
    void OpenTemporary();
    void TakePermissions();
    void WriteBuffer();

    std::string name_;       // without links
    bool isNew_ = false;     // there is no such file yet
    std::string temporary_;  // empty when there is none
    int descriptor_ = -1;
    std::string buffer_;
};

}  // namespace Tool
