// SPDX-License-Identifier: MIT
#include <espalier/io/Exception.h>
#include <espalier/io/FileStream.h>
#include <espalier/io/ZipFileStream.h>

#include "io/ByteRange.h"
#include "io/SeekTarget.h"
#include "io/ZipMember.h"

#include <algorithm>
#include <utility>

namespace IO {

namespace {

constexpr unsigned kReadOnly = 1;
constexpr unsigned kDenyNothing = 3;
constexpr long kLargestSkip = 64L * 1024;  // bytes passed over at once

constexpr char kNoArchive[] = "Archive not found";
constexpr char kNotInArchive[] = "File not found in archive";

// Opens the file of the archive; null when it cannot be opened.
std::unique_ptr<Stream> OpenFile(const astring& name) {
    try {
        return std::make_unique<FileStream>(name, FileMode::Open, kReadOnly, kDenyNothing);
    } catch (const Xml::Exception&) {
        return nullptr;
    }
}

}  // namespace

ZipFileStream::ZipFileStream() = default;

ZipFileStream::ZipFileStream(const char* archive, const char* member) { Open(archive, member); }

ZipFileStream::ZipFileStream(const astring& archive, const astring& member) {
    Open(archive, member);
}

ZipFileStream::ZipFileStream(ZipFileStream& other) : Stream(other) { TakeOver(other); }

ZipFileStream::ZipFileStream(ZipFileStream&& other) noexcept { TakeOver(other); }

ZipFileStream& ZipFileStream::operator=(ZipFileStream& other) {
    if (this != &other) TakeOver(other);
    return *this;
}

ZipFileStream& ZipFileStream::operator=(ZipFileStream&& other) noexcept { return *this = other; }

ZipFileStream::~ZipFileStream() = default;

void ZipFileStream::Open(const char* archive, const char* member) {
    Open(astring(archive != nullptr ? archive : ""), astring(member != nullptr ? member : ""));
}

void ZipFileStream::Open(const astring& archive, const astring& member) {
    member_.reset();
    std::unique_ptr<Stream> file = OpenFile(archive);
    if (file == nullptr) Xml::Exception::ThrowException(kNoArchive);
    auto opened = std::make_unique<detail::ZipMember>(std::move(file));
    if (!opened->OpenArchive()) Xml::Exception::ThrowException(kNoArchive);

    astring name = member;
    std::replace(name.begin(), name.end(), '\\', '/');
    // A name that holds a NUL would be looked up by its first part.
    const bool isName = name.find('\0') == astring::npos;
    if (!isName || !opened->OpenMember(name.c_str())) {
        Xml::Exception::ThrowException(kNotInArchive);
    }
    // Deliberate: the names stay those of the first member that was opened.
    if (archiveName_.empty()) archiveName_ = archive;
    if (memberName_.empty()) memberName_ = member;
    member_ = std::move(opened);
}

const astring& ZipFileStream::ArchiveName() const { return archiveName_; }
const astring& ZipFileStream::MemberName() const { return memberName_; }
bool ZipFileStream::CanRead() const { return true; }
bool ZipFileStream::CanSeek() const { return true; }
long ZipFileStream::Length() const { return member_ != nullptr ? member_->Length() : 0; }
long ZipFileStream::Position() const { return member_ != nullptr ? member_->Position() : 0; }
void ZipFileStream::Close() { member_.reset(); }

int ZipFileStream::Read(unsigned char* buffer, int offset, int count) {
    const detail::ByteRange range = detail::FoldOffset(offset, count);
    if (range.count < 1 || member_ == nullptr) return 0;
    return member_->Read(buffer + range.offset, range.count);
}

long ZipFileStream::Seek(long offset, SeekOrigin origin) {
    if (member_ == nullptr) return 0;
    const long position = Position();
    const long length = Length();
    long target = position;
    if (origin == SeekOrigin::Begin) target = offset;
    if (origin == SeekOrigin::Current) target = detail::SaturatingAdd(position, offset);
    if (origin == SeekOrigin::End) target = detail::SaturatingAdd(length, offset);
    if (target < 0 || target > length) return position;
    if (target < position && !member_->Reopen()) {
        Xml::Exception::ThrowException("File seek failed");
    }
    SkipTo(target);
    return target;
}

// Reads on to a position that is not behind, and throws the bytes away. The length is only what the
// archive says: no memory is taken by it.
void ZipFileStream::SkipTo(long target) {
    const long missing = target - Position();
    if (missing == 0) return;
    const auto size = static_cast<std::size_t>(std::min(missing, kLargestSkip));
    const auto skipped = std::make_unique_for_overwrite<unsigned char[]>(size);
    while (Position() < target) {
        const int count = static_cast<int>(std::min(target - Position(), kLargestSkip));
        if (Read(skipped.get(), 0, count) != count) Xml::Exception::ThrowException("Read error");
    }
}

void ZipFileStream::TakeOver(ZipFileStream& other) noexcept {
    member_ = std::move(other.member_);
    archiveName_ = std::exchange(other.archiveName_, astring());
    memberName_ = std::exchange(other.memberName_, astring());
}

}  // namespace IO
