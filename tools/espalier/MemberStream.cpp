// SPDX-License-Identifier: MIT
#include "MemberStream.h"

#include <espalier/io/Exception.h>

#include "InputFile.h"

#include <filesystem>
#include <string_view>

namespace Tool {

namespace {

constexpr char kNotFound[] = "Archive not found";
constexpr char kDamaged[] = "Damaged zip data";

}  // namespace

MemberStream::MemberStream(const std::string& archive, const std::string& member) {
    std::error_code error;
    if (!std::filesystem::exists(archive, error)) Xml::Exception::ThrowException(kNotFound);
    archiveLength_ = OpenFile(archive)->Length();
    try {
        stream_.Open(archive.c_str(), member.c_str());
    } catch (const Xml::Exception& failure) {
        if (failure.What() != std::string_view(kNotFound)) throw;
        Xml::Exception::ThrowException("Not a zip archive");  // it is there, and can be read
    }
}

int MemberStream::Read(unsigned char* buffer, int offset, int count) {
    constexpr int kCannotRead = -1;
    int result = 0;
    try {
        result = stream_.Read(buffer, offset, count);
    } catch (const Xml::Exception&) {
        Xml::Exception::ThrowException(kDamaged);  // shorter than stated, or not what it was
    }
    if (result < 0) Xml::Exception::ThrowException(result == kCannotRead ? "Read error" : kDamaged);
    return result;
}

}  // namespace Tool
