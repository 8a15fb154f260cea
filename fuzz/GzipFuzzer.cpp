// SPDX-License-Identifier: MIT
// Decompresses arbitrary bytes: at once, in small pieces from a source that trickles, and again
// after going back; all must tell the same. Then compresses the bytes and gets them back. The first
// byte says how small the pieces are.

#include <espalier/io/Exception.h>
#include <espalier/io/GZipStream.h>
#include <espalier/io/MemoryStream.h>

#include "../tests/support/TrickleStream.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

namespace {

using Bytes = std::vector<unsigned char>;

constexpr std::size_t kMost = 1'000'000;  // bytes that are taken from one input

void Require(bool condition) {
    if (!condition) std::abort();
}

struct Outcome {
    Bytes content;
    std::string error;

    bool operator==(const Outcome&) const = default;
};

Outcome Read(IO::Stream& stream, int piece) {
    Outcome outcome;
    while (outcome.content.size() < kMost) {
        Bytes buffer(std::min(static_cast<std::size_t>(piece), kMost - outcome.content.size()));
        const long before = stream.Position();
        int count = 0;
        try {
            count = stream.Read(buffer.data(), 0, static_cast<int>(buffer.size()));
        } catch (const Xml::Exception& error) {
            outcome.error = error.What();
            Require(outcome.error.starts_with("GZipStream read error: "));
        }
        const long delivered = stream.Position() - before;
        Require(delivered >= 0 && delivered <= static_cast<long>(buffer.size()));
        Require(!outcome.error.empty() || delivered == count);
        outcome.content.insert(outcome.content.end(), buffer.begin(), buffer.begin() + delivered);
        if (!outcome.error.empty() || count == 0) break;
    }
    return outcome;
}

void CheckReading(const Bytes& data, int piece) {
    const long size = static_cast<long>(data.size());
    IO::MemoryStream whole(data.data(), size);
    IO::GZipStream stream(&whole, IO::CompressionMode::Decompress);
    const Outcome expected = Read(stream, 100000);

    IO::MemoryStream memory(data.data(), size);
    support::TrickleStream trickle(memory, piece);
    IO::GZipStream trickling(&trickle, IO::CompressionMode::Decompress);
    Require(Read(trickling, piece) == expected);

    const long half = static_cast<long>(expected.content.size() / 2);
    Require(stream.Seek(half, IO::SeekOrigin::Begin) == half);
    Outcome rest = Read(stream, 1000);
    rest.content.resize(
        std::min(rest.content.size(), expected.content.size() - static_cast<std::size_t>(half)));
    Require(std::equal(rest.content.begin(), rest.content.end(), expected.content.begin() + half,
                       expected.content.end()));
}

void CheckRoundTrip(const Bytes& data, int piece) {
    IO::MemoryStream target;
    IO::GZipStream stream(&target, IO::CompressionMode::Compress);
    const int size = static_cast<int>(data.size());
    for (int at = 0; at < size; at += piece) {
        stream.Write(data.data(), at, std::min(piece, size - at));
        if (at % 3 == 0) stream.Flush();
    }
    stream.Close();
    target.SetPosition(0);
    IO::GZipStream back(&target, IO::CompressionMode::Decompress);
    Require(Read(back, 1000) == Outcome{data, ""});
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    const Bytes source(data + 1, data + size);
    const int piece = 1 + data[0];
    CheckReading(source, piece);
    CheckRoundTrip(source, 16 * piece);
    return 0;
}
