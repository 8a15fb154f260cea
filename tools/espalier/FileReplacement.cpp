// SPDX-License-Identifier: MIT
#include "FileReplacement.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>  // mkstemp
#include <filesystem>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace Tool {

namespace {

constexpr std::size_t kBuffer = 65536;

[[noreturn]] void Throw(int error) {
    throw ReplacementError(std::generic_category().message(error));
}

}  // namespace

FileReplacement::FileReplacement(const std::string& name) {
    std::error_code error;
    isNew_ = std::filesystem::symlink_status(name, error).type() ==
             std::filesystem::file_type::not_found;
    const std::filesystem::path target =
        isNew_ ? std::filesystem::absolute(name, error) : std::filesystem::canonical(name, error);
    if (error) throw ReplacementError(error.message());
    name_ = target.string();
    if (!isNew_) {
        if (!std::filesystem::is_regular_file(target, error)) {
            throw ReplacementError("Not a regular file");
        }
        // A file that may not be written is not replaced, though the directory would allow it.
        if (::access(name_.c_str(), W_OK) != 0) Throw(errno);
    }
    OpenTemporary();
    buffer_.reserve(kBuffer);
}

void FileReplacement::OpenTemporary() {
    const std::filesystem::path directory = std::filesystem::path(name_).parent_path();
    std::string pattern = (directory / ".espalier-XXXXXX").string();
    descriptor_ = ::mkstemp(pattern.data());
    if (descriptor_ < 0) Throw(errno);
    temporary_ = pattern;
}

FileReplacement::~FileReplacement() {
    if (descriptor_ >= 0) ::close(descriptor_);
    if (!temporary_.empty()) ::unlink(temporary_.c_str());
}

void FileReplacement::Write(const unsigned char* buffer, int offset, int count) {
    buffer_.append(reinterpret_cast<const char*>(buffer) + offset,
                   static_cast<std::size_t>(std::max(0, count)));
    if (buffer_.size() >= kBuffer) WriteBuffer();
}

void FileReplacement::Commit() {
    WriteBuffer();
    TakePermissions();
    const int descriptor = std::exchange(descriptor_, -1);
    if (::close(descriptor) != 0) Throw(errno);
    if (::rename(temporary_.c_str(), name_.c_str()) != 0) Throw(errno);
    temporary_.clear();
}

void FileReplacement::TakePermissions() {
    mode_t mode = 0666;
    if (isNew_) {
        const mode_t mask = ::umask(0);
        (void)::umask(mask);
        mode &= ~mask;
    } else {
        struct stat status {};
        if (::stat(name_.c_str(), &status) != 0) Throw(errno);
        // Only root may give files away; for others it is theirs from now on.
        (void)!::fchown(descriptor_, status.st_uid, status.st_gid);
        mode = status.st_mode & 07777;
    }
    if (::fchmod(descriptor_, mode) != 0) Throw(errno);
}

void FileReplacement::WriteBuffer() {
    std::string_view bytes = buffer_;
    while (!bytes.empty()) {
        const ssize_t written = ::write(descriptor_, bytes.data(), bytes.size());
        if (written >= 0) {
            bytes.remove_prefix(static_cast<std::size_t>(written));
        } else if (errno != EINTR) {
            Throw(errno);
        }
    }
    buffer_.clear();
}

}  // namespace Tool
