// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/io/Stream.h>

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

/// \file
/// The ways into the library, for tests that let one call or allocation after the other fail.
namespace allocation {

/// A sum of all that was seen in a run. It takes no memory, and two runs that saw the same have the
/// same sum.
class Sum {
public:
    void Add(std::string_view text) {
        for (const char character : text)
            Mix(static_cast<unsigned char>(character));
        Mix(256);
    }
    void Add(std::size_t number) { Mix(number); }

    std::uint64_t Value() const { return value_; }

private:
    void Mix(std::uint64_t number) { value_ = (value_ ^ number) * 1099511628211U; }

    std::uint64_t value_ = 14695981039346656037U;  // FNV-1a
};

/// One way in.
struct EntryPoint {
    const char* name;
    std::string_view input;

    /// Takes what the stream gives, looks at all that is made of it, and destroys it.
    void (*run)(IO::Stream& stream, Sum& sum);
};

/// Readers, writers, events and trees.
std::span<const EntryPoint> XmlEntryPoints();

/// Sheets, selectors, media queries and styles.
std::span<const EntryPoint> StyleEntryPoints();

/// Streams, encodings and maps.
std::span<const EntryPoint> BaseEntryPoints();

/// Returns all that is left in a stream.
std::string TextOf(IO::Stream& stream);

}  // namespace allocation
