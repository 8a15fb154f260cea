// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/io/MemoryStream.h>

#include <string>
#include <vector>

namespace support {

/// A memory stream that notes each operation that reaches it: "Read 512", "Write 3",
/// "Seek -5 Current", "SetLength 7", "Flush", "Close".
class RecordingStream : public IO::MemoryStream {
public:
    RecordingStream() = default;

    /// Holds `content` with the position at its start; nothing of that is noted.
    explicit RecordingStream(const std::string& content) {
        IO::MemoryStream::Write(reinterpret_cast<const unsigned char*>(content.data()), 0,
                                static_cast<int>(content.size()));
        IO::MemoryStream::Seek(0, IO::SeekOrigin::Begin);
    }

    ~RecordingStream() override {
        if (destroyed != nullptr) *destroyed = true;
    }

    void Close() override {
        calls.push_back("Close");
        IO::MemoryStream::Close();
    }

    void Flush() override { calls.push_back("Flush"); }

    int Read(unsigned char* buffer, int offset, int count) override {
        calls.push_back("Read " + std::to_string(count));
        return IO::MemoryStream::Read(buffer, offset, count);
    }

    long Seek(long offset, IO::SeekOrigin origin) override {
        calls.push_back("Seek " + std::to_string(offset) + " " + origin.ToString());
        return IO::MemoryStream::Seek(offset, origin);
    }

    void SetLength(long length) override {
        calls.push_back("SetLength " + std::to_string(length));
        IO::MemoryStream::SetLength(length);
    }

    void Write(const unsigned char* buffer, int offset, int count) override {
        calls.push_back("Write " + std::to_string(count));
        IO::MemoryStream::Write(buffer, offset, count);
    }

    /// Returns the calls noted since the last TakeCalls().
    std::vector<std::string> TakeCalls() {
        std::vector<std::string> taken;
        taken.swap(calls);
        return taken;
    }

    /// Returns the whole content, and notes nothing.
    std::string Content() const {
        return {reinterpret_cast<const char*>(GetBuffer()), static_cast<std::size_t>(Length())};
    }

    std::vector<std::string> calls;
    bool* destroyed = nullptr;  // set to true by the destructor; not owned
};

}  // namespace support
