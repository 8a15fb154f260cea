// SPDX-License-Identifier: MIT
//
// Lets every single allocation of the compressed streams fail, zlib's among them, one run for each.
// minizip takes its memory from malloc(), which does not fail here.
#include <espalier/io/Exception.h>
#include <espalier/io/GZipStream.h>
#include <espalier/io/MemoryStream.h>
#include <espalier/io/ZipFileStream.h>

#include "support/FailingAllocation.h"

#include <gtest/gtest.h>

#include <new>
#include <string>

namespace {

using IO::CompressionMode;

const std::string kContent(100000, 'x');
const auto* const kBytes = reinterpret_cast<const unsigned char*>(kContent.data());

enum class Ending { Complete, BadAlloc, NotOpened, ReadError, OtherError };

template <typename Work>
Ending EndingOf(const Work& work) {
    try {
        work();
        return Ending::Complete;
    } catch (const std::bad_alloc&) {
        return Ending::BadAlloc;
    } catch (const Xml::Exception& error) {
        const std::string text = error.What();
        if (text == "GZipStream initialization failed") return Ending::NotOpened;
        if (text == "GZipStream read error: out of memory") return Ending::ReadError;
        return Ending::OtherError;
    }
}

// Writes to memory that is there already.
void Compress(IO::MemoryStream& target) {
    IO::GZipStream stream(&target, CompressionMode::Compress);
    stream.Write(kBytes, 0, 100);
    stream.Write(kBytes, 100, static_cast<int>(kContent.size()) - 100);
    stream.Close();
}

std::string Compressed() {
    IO::MemoryStream target(100000);
    Compress(target);
    return {reinterpret_cast<const char*>(target.GetBuffer()),
            static_cast<std::size_t>(target.Length())};
}

TEST(CompressedStreamAllocation, EveryAllocationOfWritingMayFail) {
    const std::string expected = Compressed();
    int failures = 0;
    FailingAllocation::ForEachFailure([&](FailingAllocation& failure) {
        IO::MemoryStream target =
            FailingAllocation::Exempt([] { return IO::MemoryStream(100000); });
        const Ending ending = EndingOf([&] { Compress(target); });
        FailingAllocation::Exempt([&] {
            EXPECT_EQ(failure.LiveCount(), 0);
            if (failure.HasFailed()) {
                EXPECT_EQ(ending, Ending::NotOpened);
                EXPECT_EQ(target.Length(), 0);
                ++failures;
            } else {
                EXPECT_EQ(ending, Ending::Complete);
                EXPECT_EQ(target.Length(), static_cast<long>(expected.size()));
            }
        });
    });
    EXPECT_GT(failures, 5);  // the handle, two buffers, and several blocks of zlib
}

TEST(CompressedStreamAllocation, EveryAllocationOfReadingMayFail) {
    const std::string data = Compressed();
    for (const int piece : {100, 30000}) {
        int failures = 0;
        FailingAllocation::ForEachFailure([&](FailingAllocation& failure) {
            long length = 0;
            const Ending ending = EndingOf([&] {
                IO::MemoryStream source(reinterpret_cast<const unsigned char*>(data.data()),
                                        static_cast<long>(data.size()));
                IO::GZipStream stream(&source, CompressionMode::Decompress);
                static unsigned char buffer[30000];
                while (const int count = stream.Read(buffer, 0, piece))
                    length += count;
            });
            FailingAllocation::Exempt([&] {
                EXPECT_EQ(failure.LiveCount(), 0);
                EXPECT_EQ(ending == Ending::Complete, !failure.HasFailed());
                EXPECT_NE(ending, Ending::OtherError);
                if (!failure.HasFailed()) {
                    EXPECT_EQ(length, static_cast<long>(kContent.size()));
                }
            });
            if (failure.HasFailed()) ++failures;
        });
        EXPECT_GT(failures, 3);
    }
}

// A read that found no memory can be taken up again.
TEST(CompressedStreamAllocation, ReadingGoesOnAfterAFailure) {
    const std::string data = Compressed();
    bool isDone = false;
    for (long number = 1; !isDone; ++number) {
        SCOPED_TRACE(number);
        IO::MemoryStream source(reinterpret_cast<const unsigned char*>(data.data()),
                                static_cast<long>(data.size()));
        IO::GZipStream stream(&source, CompressionMode::Decompress);
        unsigned char buffer[100];
        Ending ending = Ending::Complete;
        {
            const FailingAllocation failure(number);
            ending = EndingOf([&] { stream.Read(buffer, 0, 100); });
            isDone = !failure.HasFailed();
        }
        // What was decompressed before the failure is given first.
        if (ending == Ending::Complete) {
            EXPECT_EQ(stream.Position(), 100);
        }
        stream.SetPosition(0);
        long length = 0;
        while (const int count = stream.Read(buffer, 0, 100))
            length += count;
        EXPECT_EQ(length, static_cast<long>(kContent.size()));
    }
}

TEST(CompressedStreamAllocation, ClosingNeedsNoMemory) {
    IO::MemoryStream target(100000);
    IO::GZipStream stream(&target, CompressionMode::Compress);
    stream.Write(kBytes, 0, 1000);
    const FailingAllocation failure(1);
    stream.Close();
    EXPECT_FALSE(failure.HasFailed());
}

TEST(CompressedStreamAllocation, EveryAllocationOfAZipMemberMayFail) {
    const std::string book = ESPALIER_SAMPLES "/herbal.epub";
    int failures = 0;
    FailingAllocation::ForEachFailure([&](FailingAllocation& failure) {
        long length = 0;
        const Ending ending = EndingOf([&] {
            IO::ZipFileStream stream(book.c_str(), "OEBPS/content.opf");
            unsigned char buffer[100];
            int count = 0;
            while ((count = stream.Read(buffer, 0, 100)) > 0)
                length += count;
            stream.Seek(5, IO::SeekOrigin::Begin);
            length += count;
        });
        FailingAllocation::Exempt([&] {
            EXPECT_EQ(failure.LiveCount(), 0);
            // minizip tries again in another way what has failed once.
            if (ending == Ending::Complete) {
                EXPECT_EQ(length, 858);
            } else {
                EXPECT_TRUE(ending == Ending::BadAlloc || ending == Ending::OtherError);
                EXPECT_TRUE(failure.HasFailed());
                ++failures;
            }
        });
    });
    EXPECT_GT(failures, 3);
}

}  // namespace
