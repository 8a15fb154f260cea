// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/astring.h>
#include <espalier/io/FileStream.h>
#include <espalier/io/Stream.h>

#include <memory>

namespace Xml::detail {

/// A new file to write to, with a buffer of its own.
///
/// The pieces that a writer hands out, often of 256 bytes, would each be a call of the system. What
/// the buffer holds reaches the file when it is full, and with Flush(), Close() and the destructor,
/// which keeps errors to itself. Bytes whose writing failed are lost.
class WriterFile final : public IO::Stream {
public:
    static constexpr int kCapacity = 64 * 1024;

    /// Creates the file, or empties it.
    /// \throws Xml::Exception what IO::FileStream throws
    explicit WriterFile(const astring& name);
    ~WriterFile() override;

    bool CanWrite() const override { return true; }
    void Write(const unsigned char* buffer, int offset, int count) override;
    void Flush() override;

    /// Closes the file also when writing to it fails.
    void Close() override;

private:
    void Drain();

    IO::FileStream file_;
    std::unique_ptr<unsigned char[]> buffer_;
    int used_ = 0;
};

}  // namespace Xml::detail
