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

/// Scans of the writer, and of the input of the reader, 32 bytes at a time.
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

/// Returns a position from `p` on that is at most 128 bytes before the first carriage return or
/// byte above ASCII; one at `end` or behind it when there is none. \pre 32 zero bytes follow
const unsigned char* SkipUsual(const unsigned char* p, const unsigned char* end);

/// Returns a position from `p` on that is at most 32 bytes before the first carriage return, or EF
/// with BF behind it; one at `end` or behind it when there is none.
/// \pre 32 zero bytes follow
const unsigned char* SkipToReturnOrLast(const unsigned char* p, const unsigned char* end);

#endif

}  // namespace Xml::detail::wide
