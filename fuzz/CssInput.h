// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

/// \file
/// The input of the fuzz targets that take texts of style sheets.
namespace fuzz {

/// An input that is numbers first, one a byte, and texts behind them, each ended by a NUL.
class CssInput {
public:
    CssInput(const std::uint8_t* data, std::size_t size)
        : rest_(reinterpret_cast<const char*>(data), size) {}

    bool IsAtEnd() const { return rest_.empty(); }

    /// Returns the next byte, 0 when there is none.
    unsigned Byte() {
        if (rest_.empty()) return 0;
        const auto byte = static_cast<unsigned char>(rest_[0]);
        rest_.remove_prefix(1);
        return byte;
    }

    /// Returns the next text, which is empty when there is none.
    std::string Text() {
        const std::size_t length = rest_.find('\0');
        std::string text(rest_.substr(0, length));
        rest_.remove_prefix(length == std::string_view::npos ? rest_.size() : length + 1);
        return text;
    }

private:
    std::string_view rest_;
};

}  // namespace fuzz
