// SPDX-License-Identifier: MIT
#include "UnpackedStream.h"

#include <espalier/io/Exception.h>

#include <string>
#include <string_view>

namespace Tool {

UnpackedStream::UnpackedStream(std::unique_ptr<IO::Stream> packed)
    : packed_(std::move(packed)), stream_(packed_.get(), IO::CompressionMode::Decompress) {}

int UnpackedStream::Read(unsigned char* buffer, int offset, int count) {
    constexpr std::string_view kReadError = "GZipStream read error: ";
    const long before = stream_.Position();
    try {
        return stream_.Read(buffer, offset, count);
    } catch (const Xml::Exception& error) {
        const long delivered = stream_.Position() - before;
        if (delivered > 0) return static_cast<int>(delivered);  // the error comes again
        const std::string_view message = error.What();
        if (!message.starts_with(kReadError)) throw;
        const std::string reason(message.substr(kReadError.size()));
        Xml::Exception::ThrowException(("Damaged gzip data: " + reason).c_str());
    }
}

}  // namespace Tool
