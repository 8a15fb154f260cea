// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// \file
/// Makes gzip data and zip archives byte by byte, so that each field can be set to anything. The
/// compressed data, and the checksums, are zlib's.
namespace support {

/// Returns the content of a file of tests/data/archives.
std::string ArchiveData(std::string_view name);

/// A gzip member (RFC 1952).
struct GzipMember {
    std::string content;
    std::optional<std::string> extra = {};
    std::optional<std::string> name = {};
    std::optional<std::string> comment = {};
    bool hasHeaderChecksum = false;
};

/// Returns the bytes of the member.
std::string MakeGzip(const GzipMember& member);
std::string MakeGzip(std::string_view content);

/// Returns what zlib decompresses, which takes the data for one or more gzip members; nothing when
/// it finds a fault, or when the data end in the middle of a member.
std::optional<std::string> UnpackGzip(std::string_view data);

/// Returns what zlib decompresses of the beginning of a gzip member.
std::string UnpackGzipStart(std::string_view data);

/// A member of a zip archive; what is not set is as it should be.
struct ZipEntry {
    std::string name;
    std::string content;
    unsigned method = 8;  ///< 0 stored, 8 deflated; others are not compressed at all
    unsigned flags = 0;
    std::optional<std::uint32_t> checksum = {};
    std::optional<std::uint64_t> size = {};  ///< uncompressed, as stated
    bool isZip64 = false;                    ///< sizes stand in an extra field of 64 bits
};

/// Returns the bytes of an archive.
std::string MakeZip(const std::vector<ZipEntry>& entries);

}  // namespace support
