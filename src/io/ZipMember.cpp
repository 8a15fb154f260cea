// SPDX-License-Identifier: MIT
//
// minizip reads the archive through callbacks over a stream of ours. It is C: no exception may pass
// through it, so the callbacks turn what the stream throws into failures of theirs.
#include "io/ZipMember.h"

#include <espalier/io/Exception.h>

#include <climits>

#include <algorithm>
#include <utility>

namespace IO::detail {

namespace {

constexpr int kIgnoreCase = 2;          // minizip's number, for ASCII letters
constexpr uLong kEncrypted = 1U << 0U;  // bits of the general purpose flags (APPNOTE 4.4.4)
constexpr uLong kPatchData = 1U << 5U;
constexpr uLong kMaskedHeader = 1U << 13U;
constexpr uLong kStored = 0;

constexpr long kCallbackFailed = -1;

// Calls `call` with the stream and returns its result, or `failure` when it throws.
template <typename Result, typename Call>
Result WithStream(voidpf opaque, Result failure, const Call& call) {
    ZipSource& source = *static_cast<ZipSource*>(opaque);
    try {
        return call(*source.stream);
    } catch (...) {  // told by failure and flag
        source.hasFailed = true;
        return failure;
    }
}

voidpf OpenStream(voidpf opaque, const void*, int) { return opaque; }

// Reads all that minizip asks for, unless the stream ends or fails.
uLong ReadStream(voidpf opaque, voidpf, void* buffer, uLong size) {
    return WithStream<uLong>(opaque, 0, [&](Stream& stream) {
        uLong done = 0;
        while (done < size) {
            const int piece = static_cast<int>(std::min<uLong>(size - done, INT_MAX));
            const int count = stream.Read(static_cast<unsigned char*>(buffer) + done, 0, piece);
            if (count < 1) break;
            done += static_cast<uLong>(std::min(count, piece));
        }
        return done;
    });
}

uLong WriteStream(voidpf, voidpf, const void*, uLong) { return 0; }

ZPOS64_T TellStream(voidpf opaque, voidpf) {
    return WithStream(opaque, static_cast<ZPOS64_T>(kCallbackFailed),
                      [](Stream& stream) { return static_cast<ZPOS64_T>(stream.Position()); });
}

long SeekStream(voidpf opaque, voidpf, ZPOS64_T offset, int origin) {
    if (offset > ZPOS64_T{LONG_MAX}) return kCallbackFailed;
    SeekOrigin whence = SeekOrigin::Begin;
    if (origin == ZLIB_FILEFUNC_SEEK_CUR) whence = SeekOrigin::Current;
    if (origin == ZLIB_FILEFUNC_SEEK_END) whence = SeekOrigin::End;
    return WithStream(opaque, kCallbackFailed, [&](Stream& stream) {
        const long position = stream.Seek(static_cast<long>(offset), whence);
        return position < 0 ? kCallbackFailed : 0L;
    });
}

int CloseStream(voidpf, voidpf) { return 0; }  // whoever made the stream closes it

// Tells minizip an error from the end.
int HasStreamFailed(voidpf opaque, voidpf) {
    return static_cast<ZipSource*>(opaque)->hasFailed ? 1 : 0;
}

}  // namespace

ZipMember::ZipMember(std::unique_ptr<Stream> archive) : source_{std::move(archive)} {}

ZipMember::~ZipMember() {
    if (zip_ != nullptr) unzClose(zip_);  // closes the member, too
}

bool ZipMember::OpenArchive() {
    zlib_filefunc64_def functions = {};
    functions.zopen64_file = OpenStream;
    functions.zread_file = ReadStream;
    functions.zwrite_file = WriteStream;
    functions.ztell64_file = TellStream;
    functions.zseek64_file = SeekStream;
    functions.zclose_file = CloseStream;
    functions.zerror_file = HasStreamFailed;
    functions.opaque = &source_;
    zip_ = unzOpen2_64("", &functions);
    return zip_ != nullptr;
}

bool ZipMember::OpenMember(const char* name) {
    unz_file_info64 info = {};
    if (unzLocateFile(zip_, name, kIgnoreCase) != UNZ_OK) return false;
    if (unzGetCurrentFileInfo64(zip_, &info, nullptr, 0, nullptr, 0, nullptr, 0) != UNZ_OK) {
        return false;
    }
    // minizip itself would give the bytes of these for what they are not.
    if ((info.flag & (kEncrypted | kPatchData | kMaskedHeader)) != 0) return false;
    if (info.compression_method != kStored && info.compression_method != Z_DEFLATED) return false;
    length_ = static_cast<long>(std::min<ZPOS64_T>(info.uncompressed_size, LONG_MAX));
    return OpenCurrent();
}

int ZipMember::Read(unsigned char* buffer, int count) {
    if (isDamaged_) FailAtEnd();
    if (error_ < 0) return error_;
    if (!isOpen_) return position_ == length_ ? 0 : UNZ_PARAMERROR;
    const int delivered = unzReadCurrentFile(zip_, buffer, static_cast<unsigned>(count));
    if (delivered < 0) {
        error_ = delivered;
        return delivered;
    }
    position_ += delivered;
    if (delivered < count || position_ == length_) {
        // The end. minizip compares the checksum when it closes a member that was read as a whole.
        isOpen_ = false;
        if (unzCloseCurrentFile(zip_) != UNZ_OK || position_ != length_) FailAtEnd();
    }
    return delivered;
}

bool ZipMember::Reopen() {
    if (std::exchange(isOpen_, false) && unzCloseCurrentFile(zip_) != UNZ_OK) return false;
    return OpenCurrent();
}

bool ZipMember::OpenCurrent() {
    position_ = 0;
    error_ = 0;
    isDamaged_ = false;
    isOpen_ = unzOpenCurrentFile(zip_) == UNZ_OK;
    return isOpen_;
}

void ZipMember::FailAtEnd() {
    isDamaged_ = true;
    Xml::Exception::ThrowException("Read error");
}

}  // namespace IO::detail
