// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/io/Stream.h>

#include "support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <string_view>

namespace support {

// The numbers of access and share, by name.
inline constexpr unsigned kRead = 1;
inline constexpr unsigned kWrite = 2;
inline constexpr unsigned kReadWrite = 3;
inline constexpr unsigned kDenyAll = 0;
inline constexpr unsigned kDenyWriting = 1;
inline constexpr unsigned kDenyReading = 2;
inline constexpr unsigned kDenyNothing = 3;

/// Writes all of `text`.
inline void Write(IO::Stream& stream, std::string_view text) {
    stream.Write(reinterpret_cast<const unsigned char*>(text.data()), 0,
                 static_cast<int>(text.size()));
}

/// Reads until the end in pieces of `piece` bytes.
inline std::string ReadAll(IO::Stream& stream, int piece = 100) {
    std::string all;
    std::string buffer(static_cast<std::size_t>(piece), '\0');
    for (;;) {
        const int count = stream.Read(reinterpret_cast<unsigned char*>(buffer.data()), 0, piece);
        if (count < 1) return all;
        all.append(buffer, 0, static_cast<std::size_t>(count));
    }
}

/// Returns bytes in which each position can be told from its neighbours.
inline std::string Pattern(std::size_t length) {
    std::string text(length, '\0');
    for (std::size_t i = 0; i < length; ++i)
        text[i] = static_cast<char>((i * 7 + i / 251) & 0xFF);
    return text;
}

/// A test with a directory of its own.
class FileTest : public testing::Test {
protected:
    std::string Path(std::string_view name) const { return directory_.Path(name); }
    std::string Make(std::string_view name, std::string_view content) const {
        return directory_.Make(name, content);
    }
    static std::string Content(const std::string& path) {
        return TemporaryDirectory::Content(path);
    }

private:
    TemporaryDirectory directory_;
};

}  // namespace support
