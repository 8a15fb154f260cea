// SPDX-License-Identifier: MIT
// Reads members of arbitrary bytes taken for a zip archive: in small pieces, then again after going
// back, which must give the same.

#include <espalier/io/Exception.h>
#include <espalier/io/MemoryStream.h>

#include "io/ZipMember.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <vector>

namespace {

using Bytes = std::vector<unsigned char>;
using IO::detail::ZipMember;

constexpr std::size_t kMost = 200'000;  // bytes that are taken from one member

void Require(bool condition) {
    if (!condition) std::abort();
}

struct Outcome {
    Bytes content;
    bool hasFailed = false;

    bool operator==(const Outcome&) const = default;
};

Outcome Read(ZipMember& member, int piece) {
    Outcome outcome;
    Bytes buffer(static_cast<std::size_t>(piece));
    while (outcome.content.size() < kMost) {
        Require(member.Position() == static_cast<long>(outcome.content.size()));
        int count = 0;
        try {
            count = member.Read(buffer.data(), piece);
        } catch (const Xml::Exception&) {
            outcome.hasFailed = true;
            return outcome;
        }
        Require(count <= piece);
        if (count <= 0) {
            outcome.hasFailed = count < 0;
            break;
        }
        outcome.content.insert(outcome.content.end(), buffer.begin(), buffer.begin() + count);
    }
    Require(member.Position() <= member.Length());
    return outcome;
}

void CheckMember(const Bytes& archive, const char* name) {
    ZipMember member(
        std::make_unique<IO::MemoryStream>(archive.data(), static_cast<long>(archive.size())));
    if (!member.OpenArchive() || !member.OpenMember(name)) return;
    Require(member.Length() >= 0 && member.Position() == 0);
    const Outcome expected = Read(member, 1000);
    if (!member.Reopen()) return;
    Require(Read(member, 1000) == expected);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const Bytes archive(data, data + size);
    for (const char* name : {"a", "a.xml", "dir/beds.xml", "mimetype", "OEBPS/content.opf"}) {
        CheckMember(archive, name);
    }
    return 0;
}
