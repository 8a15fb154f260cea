// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/io/Exception.h>
#include <espalier/io/Stream.h>

namespace support {

/// What a FailingStream does from its n-th call on.
enum class Failure {
    Throw,           ///< throws Xml::Exception "FailingStream: The call fails", once
    ThrowForeign,    ///< throws a ForeignException, once
    EndEarly,        ///< gives no more bytes and swallows those written, for good
    EndWithMinusOne  ///< the same; each Read() returns -1, as calls of a system do
};

/// An exception that the library knows nothing of.
struct ForeignException {};

/// Passes all operations on to another stream until the n-th call, which fails.
///
/// Read(), Write(), Seek(), SetLength(), Flush() and Close() count, from 1 on; the questions
/// (CanRead(), Length(), ...) do not. Let a test run n from 1 up to the first run in which
/// HasFailed() stays false.
class FailingStream : public IO::Stream {
public:
    static constexpr char kMessage[] = "FailingStream: The call fails";

    /// `inner` is not owned.
    FailingStream(IO::Stream& inner, int failingCall, Failure failure)
        : inner_(inner), failingCall_(failingCall), failure_(failure) {}

    /// Returns whether the call that fails has been made.
    bool HasFailed() const { return calls_ >= failingCall_; }

    /// Returns how many calls were made.
    int Calls() const { return calls_; }

    bool CanRead() const override { return inner_.CanRead(); }
    bool CanSeek() const override { return inner_.CanSeek(); }
    bool CanWrite() const override { return inner_.CanWrite(); }
    long Length() const override { return inner_.Length(); }
    long Position() const override { return inner_.Position(); }
    void Close() override {
        Count();
        inner_.Close();
    }
    void Flush() override {
        if (!Count()) inner_.Flush();
    }
    int Read(unsigned char* buffer, int offset, int count) override {
        if (Count()) return failure_ == Failure::EndWithMinusOne ? -1 : 0;
        return inner_.Read(buffer, offset, count);
    }
    long Seek(long offset, IO::SeekOrigin origin) override {
        return Count() ? inner_.Position() : inner_.Seek(offset, origin);
    }
    void SetLength(long length) override {
        if (!Count()) inner_.SetLength(length);
    }
    void Write(const unsigned char* buffer, int offset, int count) override {
        if (!Count()) inner_.Write(buffer, offset, count);
    }

private:
    // Counts a call; returns whether the stream has ended early.
    bool Count() {
        ++calls_;
        if (calls_ == failingCall_ && failure_ == Failure::Throw) {
            Xml::Exception::ThrowException(kMessage);
        }
        if (calls_ == failingCall_ && failure_ == Failure::ThrowForeign) throw ForeignException();
        const bool ends = failure_ == Failure::EndEarly || failure_ == Failure::EndWithMinusOne;
        return ends && HasFailed();
    }

    IO::Stream& inner_;
    int failingCall_;  // the number of the call that fails, from 1 on
    Failure failure_;
    int calls_ = 0;
};

}  // namespace support
