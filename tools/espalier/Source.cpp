// SPDX-License-Identifier: MIT
#include "Source.h"

#include "EncodingMask.h"
#include "MemberStream.h"
#include "MeteredStream.h"
#include "PeekedStream.h"
#include "UnpackedStream.h"

#include <cstdint>
#include <functional>
#include <utility>

namespace Tool {

namespace {

// Bytes of a document, and the size of what they are unpacked from; no function when they are not.
struct Unpacked {
    std::unique_ptr<IO::Stream> stream;
    std::function<std::int64_t()> packedSize;
};

bool LooksLikeGzip(PeekedStream& stream) {
    constexpr std::size_t kMagic = 2;
    while (stream.PeekMore(kMagic))
        continue;
    return BeginsLikeGzip(stream.Peeked());
}

Unpacked OpenUnpacked(const InputName& name, Progress* progress) {
    Unpacked result;
    std::unique_ptr<IO::Stream> raw;
    if (name.member.empty()) {
        raw = OpenFile(name.file);
    } else {
        auto member = std::make_unique<MemberStream>(name.file, name.member);
        result.packedSize = [length = member->ArchiveLength()] { return length; };
        raw = std::move(member);
    }
    auto metered = std::make_unique<MeteredStream>(std::move(raw), progress);
    const MeteredStream& meter = *metered;
    auto peeked = std::make_unique<PeekedStream>(std::move(metered));
    if (LooksLikeGzip(*peeked)) {
        if (!result.packedSize) result.packedSize = [&meter] { return meter.Count(); };
        result.stream = std::make_unique<UnpackedStream>(std::move(peeked));
    } else {
        result.stream = std::move(peeked);
    }
    return result;
}

}  // namespace

Source OpenSource(const InputName& name, const InputOptions& options, Progress* progress) {
    Unpacked unpacked = OpenUnpacked(name, progress);
    auto peeked = std::make_unique<PeekedStream>(std::make_unique<LimitedStream>(
        std::move(unpacked.stream), options.limits, std::move(unpacked.packedSize)));
    const InputEncoding* encoding = options.encoding;
    if (encoding == nullptr) {
        encoding = DeclaredPage(PeekDeclaration(*peeked), options.conformance);
    }
    if (encoding == nullptr) return {std::move(peeked), nullptr};
    auto recoded = std::make_unique<RecodedStream>(std::move(peeked), *encoding);
    const RecodedStream* const pointer = recoded.get();
    return {std::move(recoded), pointer};
}

}  // namespace Tool
