// SPDX-License-Identifier: MIT
#pragma once

namespace Xml::detail {

/// Returns a hash of the `length` bytes of `key` that differs from process to process, so that
/// nobody outside can choose keys that collide. It fits XmlHashSetKey(); use it for every table
/// whose keys come from input.
unsigned SeededHash(const char* key, unsigned length);

}  // namespace Xml::detail
