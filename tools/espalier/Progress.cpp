// SPDX-License-Identifier: MIT
#include "Progress.h"

#include "Output.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <sys/ioctl.h>
#include <unistd.h>

namespace Tool {

namespace {

constexpr int kDefaultWidth = 80;
constexpr int kBarWidth = 24;
constexpr long kBytesPerLook = 65536;  // how often the clock is looked at
constexpr auto kRedraw = std::chrono::milliseconds(100);

std::string BytesText(double bytes) {
    static constexpr std::array kUnits = {"B", "KiB", "MiB", "GiB", "TiB"};
    std::size_t unit = 0;
    while (bytes >= 1024 && unit + 1 < kUnits.size()) {
        bytes /= 1024;
        ++unit;
    }
    return fmt::format("{:.{}f} {}", bytes, unit > 0 && bytes < 10 ? 1 : 0, kUnits[unit]);
}

std::string TimeText(double seconds) {
    const long whole = std::max(1L, std::lround(seconds));
    if (whole < 3600) return fmt::format("{}:{:02}", whole / 60, whole % 60);
    return fmt::format("{}:{:02}:{:02}", whole / 3600, whole / 60 % 60, whole % 60);
}

int TerminalWidth() {
    winsize size{};
    if (::ioctl(STDERR_FILENO, TIOCGWINSZ, &size) != 0 || size.ws_col == 0) return kDefaultWidth;
    return size.ws_col;
}

}  // namespace

std::string ProgressLine(const ProgressState& state, int width) {
    const double rate = static_cast<double>(state.bytesDone) / std::max(state.seconds, 0.001);
    std::string line;
    if (state.bytesTotal <= 0) {
        line = fmt::format("{}, {}/s", BytesText(static_cast<double>(state.bytesDone)),
                           BytesText(rate));
    } else {
        const double part = std::min(
            1.0, static_cast<double>(state.bytesDone) / static_cast<double>(state.bytesTotal));
        const auto filled = static_cast<std::size_t>(part * kBarWidth);
        const auto missing = static_cast<double>(state.bytesTotal - state.bytesDone);
        const double left = std::max(0.0, missing) / std::max(rate, 1.0);
        line = fmt::format("[{}{}] {:3} % of {}, {}/s, {} left", std::string(filled, '#'),
                           std::string(kBarWidth - filled, '.'), static_cast<int>(part * 100),
                           BytesText(static_cast<double>(state.bytesTotal)), BytesText(rate),
                           TimeText(left));
    }
    line.resize(std::min(line.size(), static_cast<std::size_t>(std::max(width, 0))));
    return line;
}

void Progress::Advance(std::int64_t bytes) {
    state_.bytesDone += bytes;
    if (!enabled_) return;
    bytesUnchecked_ += bytes;
    if (bytesUnchecked_ < kBytesPerLook) return;
    bytesUnchecked_ = 0;
    const Clock::time_point now = Clock::now();
    if (now >= nextDraw_) Draw(now);
}

void Progress::Draw(Clock::time_point now) {
    ProgressState state = state_;
    if (totalUnknown_) state.bytesTotal = 0;
    state.seconds = std::chrono::duration<double>(now - begin_).count();
    // One column stays free: in the last one some terminals wrap the line.
    WriteToErrors(fmt::format("\r{}\x1B[K", ProgressLine(state, TerminalWidth() - 1)));
    shown_ = true;
    nextDraw_ = now + kRedraw;
}

void Progress::Erase() {
    if (!shown_) return;
    WriteToErrors("\r\x1B[K");
    shown_ = false;
}

}  // namespace Tool
