// SPDX-License-Identifier: MIT
//
// Goes through every way into the library with one allocation or one call of the stream failing, a
// run for each: the failure reaches the caller or harms nothing, and nothing is lost.
#include <espalier/dom/DOMException.h>
#include <espalier/io/Exception.h>
#include <espalier/io/MemoryStream.h>
#include <espalier/sax/SAXParseException.h>

#include "allocation/EntryPoints.h"
#include "support/FailingAllocation.h"
#include "support/FailingStream.h"
#include "support/TrickleStream.h"

#include <gtest/gtest.h>

#include <cctype>
#include <cstdint>
#include <new>
#include <string>
#include <string_view>
#include <vector>

namespace {

using allocation::EntryPoint;
using allocation::Sum;

std::vector<EntryPoint> AllEntryPoints() {
    std::vector<EntryPoint> all;
    for (const auto points : {allocation::XmlEntryPoints(), allocation::StyleEntryPoints(),
                              allocation::BaseEntryPoints()})
        all.insert(all.end(), points.begin(), points.end());
    return all;
}

// How a run ended, and what it saw.
struct Outcome {
    std::string message;     // of an exception; "Out of memory" whoever says so
    bool isForeign = false;  // what was thrown is no exception of the library
    std::uint64_t sum = 0;

    friend bool operator==(const Outcome&, const Outcome&) = default;
};

constexpr char kOutOfMemory[] = "Out of memory";

// Runs it. What the test itself keeps of an exception needs no memory that fails.
Outcome RunOf(const EntryPoint& point, IO::Stream& stream) {
    Outcome outcome;
    const auto keep = [&outcome](const char* message) {
        FailingAllocation::Exempt([&] { outcome.message = message; });
    };
    Sum sum;
    try {
        point.run(stream, sum);
    } catch (const std::bad_alloc&) {
        keep(kOutOfMemory);
    } catch (const Xml::Exception& error) {
        keep(error.What());
    } catch (const sax::SAXParseException& error) {
        FailingAllocation::Exempt([&] { outcome.message = error.getMessage().str(); });
    } catch (const support::ForeignException&) {
        outcome.isForeign = true;
    }
    outcome.sum = sum.Value();
    return outcome;
}

IO::MemoryStream Input(const EntryPoint& point) {
    return {reinterpret_cast<const unsigned char*>(point.input.data()),
            static_cast<long>(point.input.size())};
}

class EntryPointFailure : public testing::TestWithParam<EntryPoint> {
protected:
    // What the library keeps for good is made when it is first asked for.
    void SetUp() override { Complete(); }

    // What happens when nothing fails.
    Outcome Complete() const {
        IO::MemoryStream stream = Input(GetParam());
        return RunOf(GetParam(), stream);
    }
};

TEST_P(EntryPointFailure, EveryAllocation) {
    const Outcome complete = Complete();
    ASSERT_EQ(complete.message, "");
    long reported = 0;
    const long failures = FailingAllocation::ForEachFailure([&](FailingAllocation& failure) {
        IO::MemoryStream stream = Input(GetParam());
        const Outcome outcome = RunOf(GetParam(), stream);
        FailingAllocation::Exempt([&] {
            EXPECT_EQ(failure.LiveCount(), 0);
            if (outcome == complete) return;  // it did without
            ++reported;
            EXPECT_TRUE(failure.HasFailed());
            EXPECT_TRUE(outcome.message == kOutOfMemory ||
                        outcome.message == "GZipStream initialization failed" ||
                        outcome.message == "GZipStream read error: out of memory")
                << outcome.message;
        });
    });
    EXPECT_GT(failures, 0);
    EXPECT_GT(reported, 0);
}

// The input in reads of 7 bytes, one of which fails.
struct Reads {
    Reads(const EntryPoint& point, int failingRead, support::Failure failure)
        : memory(Input(point)), trickle(memory, 7), stream(trickle, failingRead, failure) {}

    IO::MemoryStream memory;
    support::TrickleStream trickle;
    support::FailingStream stream;
};

// Lets each read fail in turn, and checks how that ends.
template <typename Check>
void LetEachReadFail(const EntryPoint& point, support::Failure failure, const Check& check) {
    bool hasFailed = true;
    for (int number = 1; hasFailed; ++number) {
        SCOPED_TRACE(number);
        const FailingAllocation counter(0);  // none fails
        Outcome outcome;
        {
            Reads reads(point, number, failure);
            outcome = RunOf(point, reads.stream);
            hasFailed = reads.stream.HasFailed();
        }
        FailingAllocation::Exempt([&] {
            EXPECT_EQ(counter.LiveCount(), 0);
            check(outcome, number, hasFailed);
        });
    }
}

TEST_P(EntryPointFailure, ReadsOfFewBytesAreEnough) {
    const Outcome complete = Complete();
    for (const int most : {1, 2, 7, 100}) {
        IO::MemoryStream memory = Input(GetParam());
        support::TrickleStream stream(memory, most);
        EXPECT_EQ(RunOf(GetParam(), stream), complete) << most;
    }
}

// A failure is told, by the exception or by what there is to ask; never taken for the end.
TEST_P(EntryPointFailure, EveryReadThatThrows) {
    const Outcome complete = Complete();
    LetEachReadFail(
        GetParam(), support::Failure::Throw, [&](const Outcome& outcome, int, bool hasFailed) {
            EXPECT_EQ(outcome == complete, !hasFailed);
            if (outcome.message.empty()) return;
            EXPECT_NE(outcome.message.find(support::FailingStream::kMessage), std::string::npos)
                << outcome.message;
        });
}

TEST_P(EntryPointFailure, EveryReadThatThrowsWhatTheLibraryDoesNotKnow) {
    const Outcome complete = Complete();
    LetEachReadFail(GetParam(), support::Failure::ThrowForeign,
                    [&](const Outcome& outcome, int, bool hasFailed) {
                        EXPECT_EQ(outcome.isForeign, hasFailed) << outcome.message;
                        EXPECT_EQ(outcome == complete, !hasFailed);
                    });
}

// A read that gives nothing is the end, whether it says 0 or -1; to a
// GZipStream the latter is an error.
TEST_P(EntryPointFailure, EveryReadMayBeTheLast) {
    std::vector<Outcome> ends;
    LetEachReadFail(GetParam(), support::Failure::EndEarly,
                    [&](const Outcome& outcome, int, bool) { ends.push_back(outcome); });
    EXPECT_GT(ends.size(), 3U);
    EXPECT_EQ(ends.back(), Complete());
    LetEachReadFail(GetParam(), support::Failure::EndWithMinusOne,
                    [&](const Outcome& outcome, int number, bool) {
                        if (outcome.message == "GZipStream read error: file error") return;
                        EXPECT_EQ(outcome, ends.at(static_cast<std::size_t>(number) - 1))
                            << outcome.message;
                    });
}

INSTANTIATE_TEST_SUITE_P(All, EntryPointFailure, testing::ValuesIn(AllEntryPoints()),
                         [](const testing::TestParamInfo<EntryPoint>& parameter) {
                             std::string name;
                             for (const char character : std::string_view(parameter.param.name)) {
                                 if (character == ' ') name += '_';
                                 if (std::isalnum(static_cast<unsigned char>(character)) != 0)
                                     name += character;
                             }
                             return name;
                         });

}  // namespace
