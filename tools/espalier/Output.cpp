// SPDX-License-Identifier: MIT
#include "Output.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <limits>
#include <string>
#include <system_error>
#include <unistd.h>

namespace Tool {

namespace {

// Returns 0, or the error number of a write that failed.
int WriteAll(int descriptor, std::string_view text) {
    while (!text.empty()) {
        const ssize_t written = ::write(descriptor, text.data(), text.size());
        if (written >= 0) {
            text.remove_prefix(static_cast<std::size_t>(written));
        } else if (errno != EINTR) {
            return errno;
        }
    }
    return 0;
}

void WriteToOutput(std::string_view text) {
    const int error = WriteAll(STDOUT_FILENO, text);
    if (error == EPIPE) throw BrokenPipe();
    if (error != 0) throw OutputError(std::generic_category().message(error));
}

}  // namespace

void WriteToErrors(std::string_view text) noexcept { WriteAll(STDERR_FILENO, text); }

void Output::WriteNumber(long number) {
    std::array<char, 24> digits;
    const auto [end, error] = std::to_chars(digits.data(), digits.data() + digits.size(), number);
    Write(std::string_view(digits.data(), static_cast<std::size_t>(end - digits.data())));
}

void Output::Flush() {
    const std::size_t count = used_;
    used_ = 0;  // also after a failure: what could not be written is not tried again
    HandOn({buffer_.data(), count});
}

void Output::WriteLong(std::string_view text) {
    Flush();
    if (text.size() >= buffer_.size()) {
        HandOn(text);
    } else {
        Write(text);
    }
}

void Output::HandOn(std::string_view text) {
    if (target_ == nullptr) {
        WriteToOutput(text);
        return;
    }
    constexpr std::size_t kMost = std::numeric_limits<int>::max();
    for (; !text.empty(); text.remove_prefix(std::min(text.size(), kMost))) {
        target_->Write(reinterpret_cast<const unsigned char*>(text.data()), 0,
                       static_cast<int>(std::min(text.size(), kMost)));
    }
}

}  // namespace Tool
