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
    const std::filesystem::path target = std::filesystem::canonical(name, error);
    if (error) throw ReplacementError(error.message());
    if (!std::filesystem::is_regular_file(target, error)) {
        throw ReplacementError("Not a regular file");
    }
    name_ = target.string();
    // A file that may not be written is not replaced, though the directory would allow it.
    if (::access(name_.c_str(), W_OK) != 0) Throw(errno);
    std::string pattern = (target.parent_path() / ".espalier-XXXXXX").string();
    descriptor_ = ::mkstemp(pattern.data());
    if (descriptor_ < 0) Throw(errno);
    temporary_ = pattern;
    buffer_.reserve(kBuffer);
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
    struct stat status {};
    if (::stat(name_.c_str(), &status) != 0) Throw(errno);
    // Only root may give files away; for others it is theirs from now on.
    (void)!::fchown(descriptor_, status.st_uid, status.st_gid);
    if (::fchmod(descriptor_, status.st_mode & 07777) != 0) Throw(errno);
    const int descriptor = std::exchange(descriptor_, -1);
    if (::close(descriptor) != 0) Throw(errno);
    if (::rename(temporary_.c_str(), name_.c_str()) != 0) Throw(errno);
    temporary_.clear();
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
