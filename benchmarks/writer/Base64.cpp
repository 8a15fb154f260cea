// SPDX-License-Identifier: MIT
#include "writer/Base64.h"

#include <espalier/encoding/UnicodeEncodings.h>
#include <espalier/io/MemoryStream.h>
#include <espalier/io/SeekOrigin.h>
#include <espalier/xml/XmlTextWriter.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <vector>

namespace bench {

namespace {

constexpr std::size_t kSize = 1'000'001;  // two bytes are left over behind the groups of three

// Returns bytes that look like chance, the same ones at each call.
std::vector<unsigned char> MakeBytes() {
    std::vector<unsigned char> bytes(kSize);
    std::uint32_t state = 1;
    for (unsigned char& byte : bytes) {
        state = state * 1664525 + 1013904223;
        byte = static_cast<unsigned char>(state >> 24);
    }
    return bytes;
}

void Write(const std::vector<unsigned char>& bytes, IO::MemoryStream& stream) {
    stream.Seek(0, IO::SeekOrigin::Begin);
    stream.SetLength(0);
    Xml::UTF8Encoding encoding;
    Xml::XmlTextWriter writer(&stream, &encoding);
    writer.WriteStartElement("a");
    writer.WriteBase64(bytes.data(), 0, static_cast<int>(bytes.size()));
    writer.Close();
}

// Returns the bytes that a text in base64 stands for; line breaks and the end of the data are
// passed over.
std::vector<unsigned char> Decode(std::string_view text) {
    constexpr std::string_view kAlphabet =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::vector<unsigned char> bytes;
    std::uint32_t bits = 0;
    int count = 0;
    for (const char character : text) {
        const std::size_t value = kAlphabet.find(character);
        if (value == std::string_view::npos) continue;
        bits = bits << 6 | static_cast<std::uint32_t>(value);
        count += 6;
        if (count < 8) continue;
        count -= 8;
        bytes.push_back(static_cast<unsigned char>(bits >> count));
    }
    return bytes;
}

}  // namespace

std::string CheckBase64() {
    const std::vector<unsigned char> bytes = MakeBytes();
    IO::MemoryStream stream;
    Write(bytes, stream);
    std::string_view text(reinterpret_cast<const char*>(stream.GetBuffer()),
                          static_cast<std::size_t>(stream.Length()));
    constexpr std::string_view kStart = "<a>";
    constexpr std::string_view kEnd = "=</a>";
    if (!text.starts_with(kStart) || !text.ends_with(kEnd)) return "not in an element";
    text = text.substr(kStart.size(), text.size() - kStart.size() - kEnd.size());
    return Decode(text) == bytes ? "" : "stands for other bytes";
}

Measurement MeasureBase64(const MeasureOptions& options) {
    const std::vector<unsigned char> bytes = MakeBytes();
    std::vector<unsigned char> copy(bytes.size());
    IO::MemoryStream stream;
    // Through a pointer that the compiler knows nothing of: else it would leave the copy out.
    void* (*volatile copyBytes)(void*, const void*, std::size_t) = std::memcpy;
    const Work works[] = {
        [&] { Write(bytes, stream); },
        [&] { copyBytes(copy.data(), bytes.data(), bytes.size()); },
    };
    return Measure(static_cast<double>(bytes.size()) / 1e6, works, options);
}

}  // namespace bench
