// SPDX-License-Identifier: MIT
#include "support/Archives.h"

#include "support/TemporaryDirectory.h"

#include <gtest/gtest.h>
#include <zlib.h>

#include <limits>

namespace support {

namespace {

constexpr int kWindow = 15;
constexpr int kRaw = -kWindow;  // no header, no trailer
constexpr int kGzip = kWindow + 16;

unsigned char* Bytes(std::string& text) { return reinterpret_cast<unsigned char*>(text.data()); }

uInt Size(std::string_view text) { return static_cast<uInt>(text.size()); }

std::uint32_t Checksum(std::string_view text) {
    return static_cast<std::uint32_t>(
        crc32(0, reinterpret_cast<const unsigned char*>(text.data()), Size(text)));
}

// The number in `size` bytes, least significant first.
std::string Number(std::uint64_t value, int size) {
    std::string bytes;
    for (int i = 0; i < size; ++i) {
        bytes += static_cast<char>(value & 0xFFU);
        value >>= 8U;
    }
    return bytes;
}

std::string Deflated(std::string content) {
    z_stream zlib = {};
    EXPECT_EQ(deflateInit2(&zlib, 9, Z_DEFLATED, kRaw, 8, Z_DEFAULT_STRATEGY), Z_OK);
    std::string output(deflateBound(&zlib, Size(content)), '\0');
    zlib.next_in = Bytes(content);
    zlib.avail_in = Size(content);
    zlib.next_out = Bytes(output);
    zlib.avail_out = Size(output);
    EXPECT_EQ(deflate(&zlib, Z_FINISH), Z_STREAM_END);
    output.resize(zlib.total_out);
    deflateEnd(&zlib);
    return output;
}

// What inflate() made of the data.
struct Unpacked {
    std::string content;
    bool isWhole = false;  // nothing is wrong, and the last member has ended
};

Unpacked Unpack(std::string data) {
    Unpacked unpacked;
    z_stream zlib = {};
    EXPECT_EQ(inflateInit2(&zlib, kGzip), Z_OK);
    zlib.next_in = Bytes(data);
    zlib.avail_in = Size(data);
    std::string piece(10000, '\0');
    int result = Z_OK;
    while (result == Z_OK || (result == Z_STREAM_END && zlib.avail_in > 0)) {
        if (result == Z_STREAM_END) inflateReset(&zlib);
        zlib.next_out = Bytes(piece);
        zlib.avail_out = Size(piece);
        result = inflate(&zlib, Z_NO_FLUSH);
        unpacked.content.append(piece, 0, piece.size() - zlib.avail_out);
    }
    unpacked.isWhole = result == Z_STREAM_END;
    inflateEnd(&zlib);
    return unpacked;
}

// The parts of an entry that stand in the local header and in the directory alike.
struct Fields {
    std::string fixed;  // from the version needed to the length of the extra field
    std::string extra;
};

Fields FieldsOf(const ZipEntry& entry, std::size_t packedSize) {
    constexpr std::uint32_t kInExtraField = std::numeric_limits<std::uint32_t>::max();
    const std::uint64_t size = entry.size.value_or(entry.content.size());
    Fields fields;
    if (entry.isZip64) {
        fields.extra = Number(0x0001, 2) + Number(16, 2) + Number(size, 8) + Number(packedSize, 8);
    }
    fields.fixed = Number(entry.isZip64 ? 45 : 20, 2) + Number(entry.flags, 2) +
                   Number(entry.method, 2) + Number(0x3BC0, 2) + Number(0x5C75, 2) +
                   Number(entry.checksum.value_or(Checksum(entry.content)), 4) +
                   Number(entry.isZip64 ? kInExtraField : packedSize, 4) +
                   Number(entry.isZip64 ? kInExtraField : size, 4) + Number(entry.name.size(), 2) +
                   Number(fields.extra.size(), 2);
    return fields;
}

}  // namespace

std::string ArchiveData(std::string_view name) {
    return TemporaryDirectory::Content(std::string(ESPALIER_TEST_DATA) + "/archives/" +
                                       std::string(name));
}

std::string MakeGzip(const GzipMember& member) {
    const int flags = (member.hasHeaderChecksum ? 2 : 0) | (member.extra ? 4 : 0) |
                      (member.name ? 8 : 0) | (member.comment ? 16 : 0);
    std::string data = "\x1F\x8B\x08" + std::string(1, static_cast<char>(flags)) + Number(0, 4) +
                       std::string("\x00\x03", 2);
    if (member.extra) data += Number(member.extra->size(), 2) + *member.extra;
    if (member.name) data += *member.name + '\0';
    if (member.comment) data += *member.comment + '\0';
    if (member.hasHeaderChecksum) data += Number(Checksum(data) & 0xFFFFU, 2);
    return data + Deflated(member.content) + Number(Checksum(member.content), 4) +
           Number(member.content.size(), 4);
}

std::string MakeGzip(std::string_view content) {
    return MakeGzip(GzipMember{.content = std::string(content)});
}

std::optional<std::string> UnpackGzip(std::string_view data) {
    Unpacked unpacked = Unpack(std::string(data));
    if (!unpacked.isWhole) return std::nullopt;
    return unpacked.content;
}

std::string UnpackGzipStart(std::string_view data) { return Unpack(std::string(data)).content; }

std::string MakeZip(const std::vector<ZipEntry>& entries) {
    std::string archive;
    std::string directory;
    for (const ZipEntry& entry : entries) {
        const std::string packed = entry.method == 8 ? Deflated(entry.content) : entry.content;
        const Fields fields = FieldsOf(entry, packed.size());
        directory += "PK\x01\x02" + Number(20, 2) + fields.fixed + Number(0, 2) + Number(0, 2) +
                     Number(0, 2) + Number(0, 4) + Number(archive.size(), 4) + entry.name +
                     fields.extra;
        archive += "PK\x03\x04" + fields.fixed + entry.name + fields.extra + packed;
    }
    const std::string end = "PK\x05\x06" + Number(0, 4) + Number(entries.size(), 2) +
                            Number(entries.size(), 2) + Number(directory.size(), 4) +
                            Number(archive.size(), 4) + Number(0, 2);
    return archive + directory + end;
}

}  // namespace support
