// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <utility>

/// A piece of a document of records, long enough to be worth a call.
inline std::string Records() {
    std::string piece;
    while (piece.size() < 60000) {
        piece += "  <r:record r:id=\"4711\" kind='x'>text &amp; more<!-- note --></r:record>\n";
    }
    return piece;
}

/// The most memory that a run may take on a document of any size.
inline constexpr long kPeakKilobytes = 10 * 1024;

/// Tells whether peaks of memory are the program's: sanitizers keep memory of their own beside it.
#if defined(__SANITIZE_ADDRESS__)
inline constexpr bool kMeasuresMemory = false;
#elif defined(__has_feature)
inline constexpr bool kMeasuresMemory = !__has_feature(address_sanitizer);
#else
inline constexpr bool kMeasuresMemory = true;
#endif

/// Delivers a document of about `size` bytes.
inline std::function<std::string()> ManyRecords(std::size_t size, std::string end) {
    return [size, end, piece = Records(), sent = std::size_t{0}]() mutable {
        if (sent == 0) {
            sent = 1;
            return std::string("<r:all xmlns:r='urn:records'>\n");
        }
        if (sent < size) {
            sent += piece.size();
            return piece;
        }
        return std::exchange(end, std::string());
    };
}
