// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <cstdint>
#include <string>
#include <string_view>

namespace Tool {

/// How far a piece of work has come.
struct ProgressState {
    std::int64_t bytesDone = 0;
    std::int64_t bytesTotal = 0;  ///< 0: not known
    double seconds = 0;           ///< time spent so far
};

/// Returns one line of at most `width` columns that shows how far the work has come: percent, rate
/// and time left, or bytes and rate when the total is not known.
std::string ProgressLine(const ProgressState& state, int width);

/// A line at the bottom of the terminal that shows how far the work has come.
///
/// It appears after a second of work, is redrawn ten times a second, and is erased before anything
/// else is written to the terminal and at the end.
class Progress {
public:
    ~Progress() { Erase(); }

    /// Lets the line appear; it never does unless this is called.
    void Enable() { enabled_ = true; }

    /// Says that `bytes` more will have to be read in all.
    void ExpectBytes(std::int64_t bytes) { state_.bytesTotal += bytes; }

    /// Says that the total cannot be known: there is a pipe among the inputs.
    void ExpectUnknown() { totalUnknown_ = true; }

    /// Says that `bytes` more have been read.
    void Advance(std::int64_t bytes);

    /// Takes the line from the terminal; it comes back with the next Advance() that is due.
    void Erase();

private:
    using Clock = std::chrono::steady_clock;

    void Draw(Clock::time_point now);

    bool enabled_ = false;
    bool totalUnknown_ = false;
    bool shown_ = false;  // the line stands on the terminal
    ProgressState state_;
    std::int64_t bytesUnchecked_ = 0;  // read since the clock was last looked at
    Clock::time_point begin_ = Clock::now();
    Clock::time_point nextDraw_ = begin_ + std::chrono::seconds(1);
};

}  // namespace Tool
