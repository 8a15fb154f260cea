// SPDX-License-Identifier: MIT
#pragma once

namespace support {

/// Whether the tests run under AddressSanitizer, which needs most of the address space for itself.
#if defined(__SANITIZE_ADDRESS__)
inline constexpr bool kAddressSanitizer = true;
#elif defined(__has_feature)
inline constexpr bool kAddressSanitizer = __has_feature(address_sanitizer);
#else
inline constexpr bool kAddressSanitizer = false;
#endif

/// Tests of very many like cases take every `kStride`th where a sanitizer makes them slow; the
/// other builds take them all.
inline constexpr unsigned kStride = kAddressSanitizer ? 7 : 1;

}  // namespace support
