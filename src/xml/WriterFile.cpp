// SPDX-License-Identifier: MIT
#include "xml/WriterFile.h"

#include <cstring>
#include <utility>  // std::exchange

namespace Xml::detail {

namespace {

constexpr unsigned kWrite = 2;      // the access
constexpr unsigned kDenyWrite = 1;  // others may read meanwhile

}  // namespace

WriterFile::WriterFile(const astring& name)
    : file_(name, IO::FileMode::Create, kWrite, kDenyWrite),
      buffer_(std::make_unique<unsigned char[]>(kCapacity)) {}

WriterFile::~WriterFile() {
    try {
        Drain();
    } catch (...) {
        // A destructor has no one to tell; Close() does.
    }
}

void WriterFile::Write(const unsigned char* buffer, int offset, int count) {
    if (count > kCapacity - used_) Drain();
    if (count > kCapacity) {
        file_.Write(buffer, offset, count);
        return;
    }
    std::memcpy(buffer_.get() + used_, buffer + offset, static_cast<std::size_t>(count));
    used_ += count;
}

void WriterFile::Flush() {
    Drain();
    file_.Flush();
}

void WriterFile::Close() {
    try {
        Drain();
    } catch (...) {
        file_.Close();
        throw;
    }
    file_.Close();
}

void WriterFile::Drain() {
    const int count = std::exchange(used_, 0);
    if (count > 0) file_.Write(buffer_.get(), 0, count);
}

}  // namespace Xml::detail
