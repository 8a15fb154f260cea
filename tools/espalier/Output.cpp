// SPDX-License-Identifier: MIT
#include "Output.h"

#include <cerrno>
#include <charconv>
#include <string>
#include <system_error>
#include <unistd.h>

namespace Tool {

void Output::WriteNumber(long number) {
    std::array<char, 24> digits;
    const auto [end, error] = std::to_chars(digits.data(), digits.data() + digits.size(), number);
    Write(std::string_view(digits.data(), static_cast<std::size_t>(end - digits.data())));
}

void Output::Flush() {
    const std::size_t count = used_;
    used_ = 0;  // also after a failure: what could not be written is not tried again
    WriteAll(buffer_.data(), count);
}

void Output::WriteLong(std::string_view text) {
    Flush();
    if (text.size() >= buffer_.size()) {
        WriteAll(text.data(), text.size());
    } else {
        Write(text);
    }
}

void Output::WriteAll(const char* data, std::size_t count) {
    while (count > 0) {
        const ssize_t written = ::write(STDOUT_FILENO, data, count);
        if (written < 0) {
            if (errno == EINTR) continue;
            if (errno == EPIPE) throw BrokenPipe();
            throw OutputError(std::generic_category().message(errno));
        }
        data += written;
        count -= static_cast<std::size_t>(written);
    }
}

}  // namespace Tool
