// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/io/Stream.h>

#include <string>
#include <string_view>

namespace Tool {

/// A stream that tells whether what is written to it is what a document had, and hands it on.
///
/// Both sides may come in pieces of any size. What one of them is ahead is kept until they differ.
class Comparison final : public IO::Stream {
public:
    /// \param next where to hand on what is written; null for nowhere, not owned
    explicit Comparison(IO::Stream* next) : next_(next) {}

    /// Takes what the document had.
    void TakeOriginal(std::string_view bytes) { Take(bytes, Side::Original); }

    /// Tells, when all has been taken and written, whether the two differ.
    bool Differs() const { return differs_ || !ahead_.empty(); }

    bool CanWrite() const override { return true; }
    void Close() override {}
    void Write(const unsigned char* buffer, int offset, int count) override;

private:
    enum class Side { Original, Written };

    void Take(std::string_view bytes, Side side);

    IO::Stream* next_;
    bool differs_ = false;
    Side longer_ = Side::Original;  // which side is ahead
    std::string ahead_;             // by this
};

}  // namespace Tool
