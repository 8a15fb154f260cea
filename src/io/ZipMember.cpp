// SPDX-License-Identifier: MIT
//
// minizip reads the archive through callbacks over a stream of ours. It is C: no exception may pass
// through it, so the callbacks turn what the stream throws into failures of theirs.
#include "io/ZipMember.h"

#include <espalier/base/astring.h>
#include <espalier/io/Exception.h>

#include <climits>
#include <zlib.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>
#include <utility>

namespace IO::detail {

namespace {

constexpr int kIgnoreCase = 2;          // minizip's number, for ASCII letters
constexpr uLong kEncrypted = 1U << 0U;  // bits of the general purpose flags (APPNOTE 4.4.4)
constexpr uLong kPatchData = 1U << 5U;
constexpr uLong kMaskedHeader = 1U << 13U;
constexpr uLong kStored = 0;

constexpr ZPOS64_T kInExtraField = 0xFFFFFFFF;  // stands for a size that needs 64 bits

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
    const bool padsEnd = static_cast<ZipSource*>(opaque)->padsEnd;
    return WithStream<uLong>(opaque, 0, [&](Stream& stream) {
        uLong done = 0;
        while (done < size) {
            const int piece = static_cast<int>(std::min<uLong>(size - done, INT_MAX));
            const int count = stream.Read(static_cast<unsigned char*>(buffer) + done, 0, piece);
            if (count < 1) break;
            done += static_cast<uLong>(std::min(count, piece));
        }
        if (!padsEnd || done == 0) return done;
        std::memset(static_cast<unsigned char*>(buffer) + done, 0, size - done);
        return size;
    });
}

uLong WriteStream(voidpf, voidpf, const void*, uLong) { return 0; }

ZPOS64_T TellStream(voidpf opaque, voidpf) {
    return WithStream(opaque, static_cast<ZPOS64_T>(kCallbackFailed),
                      [](Stream& stream) { return static_cast<ZPOS64_T>(stream.Position()); });
}

long SeekStream(voidpf opaque, voidpf, ZPOS64_T offset, int origin) {
    SeekOrigin whence = SeekOrigin::Begin;
    if (origin == ZLIB_FILEFUNC_SEEK_CUR) whence = SeekOrigin::Current;
    if (origin == ZLIB_FILEFUNC_SEEK_END) whence = SeekOrigin::End;
    // From the current position minizip also goes back, by numbers that have wrapped around.
    if (whence != SeekOrigin::Current && offset > ZPOS64_T{LONG_MAX}) return kCallbackFailed;
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

// The sizes of a member.
struct Sizes {
    ZPOS64_T uncompressed;
    ZPOS64_T compressed;
};

ZPOS64_T NumberAt(std::span<const unsigned char> bytes, std::size_t position, std::size_t size) {
    ZPOS64_T number = 0;
    for (std::size_t i = size; i > 0; --i)
        number = number << 8U | bytes[position + i - 1];
    return number;
}

// Takes the sizes of more than 32 bits from the extra field that holds them (APPNOTE 4.5.3).
// minizip 1.1, which is Debian's, does not.
void TakeSizesOf64Bits(std::span<const unsigned char> extra, Sizes& sizes) {
    constexpr std::size_t kHeader = 4;  // number and size, 2 bytes each
    constexpr std::size_t kSize = 8;
    while (extra.size() >= kHeader) {
        const std::size_t length =
            std::min<std::size_t>(NumberAt(extra, 2, 2), extra.size() - kHeader);
        if (NumberAt(extra, 0, 2) == 1) {
            std::span<const unsigned char> field = extra.subspan(kHeader, length);
            for (ZPOS64_T* size : {&sizes.uncompressed, &sizes.compressed}) {
                if (*size != kInExtraField || field.size() < kSize) continue;
                *size = NumberAt(field, 0, kSize);
                field = field.subspan(kSize);
            }
            return;
        }
        extra = extra.subspan(kHeader + length);
    }
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
    std::array<char, UINT16_MAX> found;  // neither can be longer
    std::array<unsigned char, UINT16_MAX> extra;
    if (unzLocateFile(zip_, name, kIgnoreCase) != UNZ_OK) return false;
    if (unzGetCurrentFileInfo64(zip_, &info, found.data(), found.size(), extra.data(), extra.size(),
                                nullptr, 0) != UNZ_OK) {
        return false;
    }
    // minizip compares up to a NUL; a name that holds one is another.
    if (info.size_filename != std::strlen(name)) return false;
    // minizip itself would give the bytes of these for what they are not.
    if ((info.flag & (kEncrypted | kPatchData | kMaskedHeader)) != 0) return false;
    if (info.compression_method != kStored && info.compression_method != Z_DEFLATED) return false;
    Sizes sizes = {info.uncompressed_size, info.compressed_size};
    TakeSizesOf64Bits(std::span(extra).first(info.size_file_extra), sizes);
    if (info.compression_method == kStored && sizes.uncompressed != sizes.compressed) return false;
    isTooLong_ = sizes.uncompressed > ZPOS64_T{LONG_MAX};
    length_ = isTooLong_ ? LONG_MAX : static_cast<long>(sizes.uncompressed);
    statedChecksum_ = info.crc;
    // minizip takes a size that it did not find for 4 GiB, and would read on beyond the archive.
    checksHere_ = source_.padsEnd = sizes.uncompressed != info.uncompressed_size;
    return OpenCurrent() && HasTheSameNameInFront({found.data(), info.size_filename});
}

int ZipMember::Read(unsigned char* buffer, int count) {
    if (isDamaged_) FailAtEnd();
    if (error_ < 0) return error_;
    if (!isOpen_) return position_ == length_ ? 0 : UNZ_PARAMERROR;
    const long wanted = std::min<long>(count, length_ - position_);
    const int delivered = unzReadCurrentFile(zip_, buffer, static_cast<unsigned>(wanted));
    if (delivered < 0) {
        error_ = delivered;
        return delivered;
    }
    position_ += delivered;
    if (checksHere_) checksum_ = crc32(checksum_, buffer, static_cast<uInt>(delivered));
    if ((delivered < wanted || position_ == length_) && !EndsWell()) FailAtEnd();
    return delivered;
}

// Closes the member, and tells whether its data were what they should be.
bool ZipMember::EndsWell() {
    isOpen_ = false;
    // minizip compares the checksum when it closes a member that it has read as a whole.
    const bool isRight = unzCloseCurrentFile(zip_) == UNZ_OK && position_ == length_ && !isTooLong_;
    return isRight && (!checksHere_ || checksum_ == statedChecksum_);
}

bool ZipMember::Reopen() {
    if (std::exchange(isOpen_, false) && unzCloseCurrentFile(zip_) != UNZ_OK) return false;
    return OpenCurrent();
}

bool ZipMember::OpenCurrent() {
    position_ = 0;
    checksum_ = 0;
    error_ = 0;
    isDamaged_ = false;
    isOpen_ = unzOpenCurrentFile(zip_) == UNZ_OK;
    return isOpen_;
}

// Tells whether the header in front of the data has that name, too: minizip looks at its length
// alone.
bool ZipMember::HasTheSameNameInFront(std::string_view name) {
    const int extra = unzGetLocalExtrafield(zip_, nullptr, 0);
    const auto data = static_cast<long>(unzGetCurrentFileZStreamPos64(zip_));
    const long place = data - extra - static_cast<long>(name.size());
    const uLong size = static_cast<unsigned>(name.size());  // 16 bits in the archive
    astring inFront;
    inFront.resize(name.size());
    return extra >= 0 && place >= 0 &&
           SeekStream(&source_, nullptr, static_cast<ZPOS64_T>(place), ZLIB_FILEFUNC_SEEK_SET) ==
               0 &&
           ReadStream(&source_, nullptr, inFront.begin(), size) == size && inFront == name;
}

void ZipMember::FailAtEnd() {
    isDamaged_ = true;
    Xml::Exception::ThrowException("Read error");
}

}  // namespace IO::detail
