// SPDX-License-Identifier: MIT
#pragma once

#include "xml/EscapeScan.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

// The wide form is part of the library for x86-64, and used on processors that have AVX2. With
// ESPALIER_NARROW_SCAN it is left out.
#if defined(__x86_64__) && !defined(ESPALIER_PORTABLE_SCAN) && !defined(ESPALIER_NARROW_SCAN)
#    define ESPALIER_WIDE_SCAN 1
#endif

/// The scans of the writer, 32 bytes at a time.
namespace Xml::detail::wide {

inline constexpr std::size_t kBlock = 32;

#if defined(ESPALIER_WIDE_SCAN)

/// Tells whether the processor has what the functions below need.
inline bool IsAvailable() { return __builtin_cpu_supports("avx2"); }

/// Does the work of ExamineText().
TextNeeds Examine(std::string_view text, bool breaksArePlain, bool checks);

/// Does the work of CopyPlain().
/// \pre the text has at least kBlock bytes
bool CopyPlain(unsigned char* to, std::string_view text, bool breaksArePlain);

/// Tells whether [begin, end) is UTF-8.
/// \pre kBlock ASCII bytes follow
bool IsUtf8(const unsigned char* begin, const unsigned char* end);

/// Returns a mask of the bytes to escape among the 64 from `at` on, the lowest bit for the first.
std::uint64_t EscapesIn64(const char* at, bool breaksArePlain);

#endif

}  // namespace Xml::detail::wide
