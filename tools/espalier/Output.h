// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/io/Stream.h>

#include <array>
#include <cstddef>
#include <cstring>
#include <stdexcept>
#include <string_view>

namespace Tool {

/// Thrown when nobody reads the output any more: a reason to stop, not to complain.
class BrokenPipe : public std::exception {};

/// Thrown when the output cannot be written; what() says why.
class OutputError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Writes `text` to standard error, at once. When that fails, there is nobody left to tell.
void WriteToErrors(std::string_view text) noexcept;

/// Standard output, or what stands in for it, written in pieces of 64 KiB. What is written stands
/// there after Flush() at the latest; an Output that is destroyed drops the rest, so that errors
/// cannot pass unseen.
class Output {
public:
    /// Says where everything goes from now on.
    /// \param target not owned; null: standard output
    void SetTarget(IO::Stream* target) { target_ = target; }

    void Write(std::string_view text) {
        if (text.size() > buffer_.size() - used_) {
            WriteLong(text);
            return;
        }
        std::memcpy(buffer_.data() + used_, text.data(), text.size());
        used_ += text.size();
    }

    void Write(char character) {
        if (used_ == buffer_.size()) Flush();
        buffer_[used_++] = character;
    }

    /// Writes `number` in decimal.
    void WriteNumber(long number);

    /// Hands on all that has been written.
    /// \throws BrokenPipe, OutputError; what the target throws
    void Flush();

private:
    void WriteLong(std::string_view text);
    void HandOn(std::string_view text);

    std::array<char, 65536> buffer_;
    std::size_t used_ = 0;          // bytes of buffer_ that wait to be written
    IO::Stream* target_ = nullptr;  // null: standard output
};

}  // namespace Tool
