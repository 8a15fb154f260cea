// SPDX-License-Identifier: MIT
//
// Streams in a process that gets no more memory, which POSIX can make of one.
#include <espalier/io/MemoryStream.h>

#include "support/ExpectThrow.h"
#include "support/FileTest.h"
#include "support/Sanitizers.h"

#include <gtest/gtest.h>

#include <string>
#include <sys/mman.h>
#include <sys/resource.h>

namespace {

using IO::MemoryStream;
using support::Write;

TEST(MemoryStreamLimit, DeliberateWriteWithoutMemoryNamesSetCapacity) {
    if (support::kAddressSanitizer) GTEST_SKIP() << "needs the address space";
    constexpr std::size_t kSize = std::size_t{1} << 30;
    void* zeros =
        ::mmap(nullptr, kSize, PROT_READ, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
    ASSERT_NE(zeros, MAP_FAILED);
    MemoryStream stream;
    Write(stream, "abc");
    rlimit before = {};
    ASSERT_EQ(::getrlimit(RLIMIT_AS, &before), 0);
    rlimit none = before;
    none.rlim_cur = kSize + kSize / 2;  // the source is in it already
    ASSERT_EQ(::setrlimit(RLIMIT_AS, &none), 0);
    EXPECT_THROW_FULL(
        stream.Write(static_cast<const unsigned char*>(zeros), 0, static_cast<int>(kSize)),
        "MemoryStream::SetCapacity: Out of memory", "", -1, -1);
    ASSERT_EQ(::setrlimit(RLIMIT_AS, &before), 0);
    EXPECT_EQ(stream.Capacity(), 1024);
    unsigned char content[3] = {};
    EXPECT_EQ(stream.ToArray(content, 3), 3);
    EXPECT_EQ(std::string(content, content + 3), "abc");
    EXPECT_EQ(stream.Position(), 3);
    ::munmap(zeros, kSize);
}

}  // namespace
