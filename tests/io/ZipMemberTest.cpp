// SPDX-License-Identifier: MIT
//
// Archives in memory: all that can be damaged, and streams that fail.
#include <espalier/io/Exception.h>
#include <espalier/io/MemoryStream.h>

#include "io/ZipMember.h"
#include "support/Archives.h"
#include "support/FailingStream.h"
#include "support/FileTest.h"
#include "support/RecordingStream.h"
#include "support/TrickleStream.h"

#include <gtest/gtest.h>

#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace {

using IO::detail::ZipMember;
using support::FailingStream;
using support::Failure;
using support::RecordingStream;

const std::set<std::string> kErrors = {"no archive", "no member", "negative", "Read error",
                                       "not reopened"};

// What became of reading a member: its content, or a word about how far it came.
std::string Outcome(std::unique_ptr<IO::Stream> archive) {
    ZipMember member(std::move(archive));
    if (!member.OpenArchive()) return "no archive";
    if (!member.OpenMember("a")) return "no member";
    std::string content;
    for (int round = 0; round < 2; ++round) {
        content.clear();
        for (;;) {
            unsigned char bytes[3000];
            int count = 0;
            try {
                count = member.Read(bytes, static_cast<int>(sizeof bytes));
            } catch (const Xml::Exception& error) {
                return error.What();
            }
            if (count < 0) {
                EXPECT_EQ(member.Read(bytes, 1), count);  // what was lost does not come back
                return "negative";
            }
            if (count == 0) break;
            content.append(bytes, bytes + count);
        }
        if (round == 0 && !member.Reopen()) return "not reopened";
    }
    return content;
}

// The data must outlive the stream.
std::unique_ptr<IO::Stream> InMemory(const std::string& data) {
    return std::make_unique<IO::MemoryStream>(reinterpret_cast<const unsigned char*>(data.data()),
                                              static_cast<long>(data.size()));
}

std::vector<std::string> SmallArchives() {
    return {support::MakeZip({{.name = "a", .content = "abc", .method = 0}}),
            support::MakeZip({{.name = "b", .content = "other"},
                              {.name = "a", .content = support::Pattern(40)},
                              {.name = "c", .content = "other", .method = 0}}),
            support::MakeZip({{.name = "a", .content = std::string(3000, 'x'), .isZip64 = true}}),
            support::MakeZip({{.name = "a", .content = "abcdef", .method = 0, .isZip64 = true}})};
}

// Names, times and notes may be anything, as long as the member is found; all else is checked.
TEST(ZipMember, EveryChangeOfAByteIsAnErrorOrHarmless) {
    const std::vector<std::string> archives = SmallArchives();
    for (const std::string& data : archives) {
        const std::string whole = Outcome(InMemory(data));
        ASSERT_FALSE(kErrors.contains(whole)) << whole;
        int errors = 0;
        for (std::size_t i = 0; i < data.size(); ++i) {
            // In the first and smallest one every byte becomes every other one.
            const bool isThorough = &data == &archives.front();
            for (int change = 1; change < 256; ++change) {
                const bool isOneBit = (change & (change - 1)) == 0;
                if (!isThorough && !isOneBit && change != 3 && change != 255) continue;
                std::string damaged = data;
                damaged[i] = static_cast<char>(static_cast<unsigned char>(damaged[i]) ^ change);
                const std::string outcome = Outcome(InMemory(damaged));
                if (outcome == whole) continue;
                ASSERT_TRUE(kErrors.contains(outcome)) << i << ' ' << change << ' ' << outcome;
                ++errors;
            }
        }
        EXPECT_GT(errors, 800);
    }
}

// Tells behind its end whether the call that fails was made.
class Watched : public FailingStream {
public:
    Watched(IO::Stream& inner, int failingCall, Failure failure, bool& hasFailed)
        : FailingStream(inner, failingCall, failure), hasFailed_(hasFailed) {}
    ~Watched() override { hasFailed_ = HasFailed(); }

private:
    bool& hasFailed_;
};

TEST(ZipMember, WhicheverCallOfTheArchiveFailsNoWrongBytesCome) {
    for (const unsigned method : {0U, 8U}) {
        const std::string content = support::Pattern(100000);
        const std::string data =
            support::MakeZip({{.name = "b", .content = "other"},
                              {.name = "a", .content = content, .method = method}});
        for (const Failure failure : {Failure::Throw, Failure::EndEarly}) {
            std::set<std::string> seen;
            bool hasFailed = true;
            int calls = 0;
            while (hasFailed) {
                ++calls;
                SCOPED_TRACE(calls);
                RecordingStream inner(data);
                const std::string outcome =
                    Outcome(std::make_unique<Watched>(inner, calls, failure, hasFailed));
                if (outcome != content) {
                    ASSERT_TRUE(kErrors.contains(outcome)) << outcome.substr(0, 100);
                    ASSERT_TRUE(hasFailed);
                    seen.insert(outcome);
                }
            }
            EXPECT_GT(calls, 50);
            EXPECT_TRUE(seen.contains("no archive") && seen.contains("no member") &&
                        seen.contains("negative") && seen.contains("not reopened"))
                << testing::PrintToString(seen);
        }
    }
}

TEST(ZipMember, AnArchiveThatTricklesReadsEqual) {
    class Owner : public support::TrickleStream {
    public:
        explicit Owner(const std::string& data) : TrickleStream(memory_, 3), memory_(data) {}

    private:
        RecordingStream memory_;
    };
    const std::string content = support::Pattern(1000);
    EXPECT_TRUE(Outcome(std::make_unique<Owner>(
                    support::MakeZip({{.name = "a", .content = content}}))) == content);
}

}  // namespace
