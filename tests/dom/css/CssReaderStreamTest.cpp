// SPDX-License-Identifier: MIT
// How Dom::CSS::CssReader deals with its stream, and with streams that fail.
#include <espalier/dom/css/CssReader.h>
#include <espalier/encoding/Encoding.h>
#include <espalier/io/Exception.h>

#include "dom/css/CssText.h"
#include "support/FailingStream.h"
#include "support/GeneratedStream.h"
#include "support/PeakMemory.h"
#include "support/PrintAstring.h"
#include "support/RecordingStream.h"
#include "support/Sanitizers.h"
#include "support/TrickleStream.h"

#include <gtest/gtest.h>

#include <cstring>
#include <functional>
#include <new>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace {

using Dom::CSS::CssReader;
using support::RecordingStream;

// Gives some bytes, and then does what it is told.
class ScriptedStream : public IO::Stream {
public:
    ScriptedStream(std::string text, std::function<int()> then)
        : text_(std::move(text)), then_(std::move(then)) {}

    bool CanRead() const override { return true; }
    void Close() override {}
    int Read(unsigned char* buffer, int offset, int count) override {
        if (text_.empty()) return then_();
        const std::size_t length = std::min(text_.size(), static_cast<std::size_t>(count));
        std::memcpy(buffer + offset, text_.data(), length);
        text_.erase(0, length);
        return static_cast<int>(length);
    }

private:
    std::string text_;
    std::function<int()> then_;
};

// Counts the bytes that are taken out of another stream.
class MeteredStream : public IO::Stream {
public:
    explicit MeteredStream(IO::Stream& inner) : inner_(inner) {}

    std::size_t Taken() const { return taken_; }
    bool CanRead() const override { return true; }
    void Close() override {}
    int Read(unsigned char* buffer, int offset, int count) override {
        const int length = inner_.Read(buffer, offset, count);
        taken_ += static_cast<std::size_t>(length);
        return length;
    }

private:
    IO::Stream& inner_;
    std::size_t taken_ = 0;
};

std::string ManyRules(int count) {
    std::string text;
    for (int i = 0; i < count; ++i)
        text += "p{a:b}";
    return text;
}

}  // namespace

TEST(CssReaderStream, IsReadOnceAtTheStart) {
    RecordingStream stream("p{a:b}");
    CssReader reader(&stream, astring("UTF-8"));
    EXPECT_EQ(stream.TakeCalls(), std::vector<std::string>{"Read 1024"});
}

TEST(CssReaderStream, IsReadFurtherWhereNeedBe) {
    const std::string text = "p{a:b}" + std::string(1024, ' ') + "q{c:d}";
    RecordingStream stream(text);
    CssReader reader(&stream, astring("UTF-8"));
    stream.TakeCalls();
    EXPECT_EQ(reader.ReadRule(), "p{ a: b }");
    EXPECT_EQ(stream.TakeCalls(), std::vector<std::string>{});
    EXPECT_EQ(reader.ReadRule(), "q{ c: d }");
    EXPECT_EQ(stream.TakeCalls().front(), "Read 1024");
}

TEST(CssReaderStream, IsNotClosed) {
    RecordingStream stream("p{a:b}");
    {
        CssReader reader(&stream, astring("UTF-8"));
        EXPECT_EQ(reader.ReadRule(), "p{ a: b }");
        stream.TakeCalls();
        reader.Close();
        EXPECT_FALSE(reader.Read());
    }
    EXPECT_EQ(stream.TakeCalls(), std::vector<std::string>{});
}

TEST(CssReaderStream, NoneIsAnEmptyText) {
    CssReader named(nullptr, astring("UTF-16"));
    CssReader given(nullptr, Xml::Encoding::UTF8());
    for (CssReader* const reader : {&named, &given}) {
        EXPECT_FALSE(reader->Read());
        EXPECT_FALSE(reader->Read());
        EXPECT_EQ(reader->ReadRule(), "");
        EXPECT_EQ(reader->ReadDeclaration(), "");
        EXPECT_EQ(reader->ReadAtDeclaration(), "");
        EXPECT_FALSE(reader->StreamFailed());
        reader->Close();
    }
}

TEST(CssReaderStream, NegativeCountsAreItsEnd) {
    ScriptedStream stream("p{a:b}", [] { return -1; });
    CssReader reader(&stream, astring("UTF-8"));
    EXPECT_EQ(support::RulesOf(reader, 9), "p{ a: b }\n");
    EXPECT_FALSE(reader.StreamFailed());
    ScriptedStream empty("", [] { return -1; });
    CssReader none(&empty, astring("UTF-16"));
    EXPECT_FALSE(none.Read());
}

TEST(CssReaderStream, AnExceptionIsTheEndAndTold) {
    const std::string text = ManyRules(1000);
    for (int call = 1; call <= 6; ++call) {
        SCOPED_TRACE(call);
        RecordingStream inner(text);
        support::FailingStream stream(inner, call, support::Failure::Throw);
        CssReader reader(&stream, astring("UTF-8"));
        std::string rules;
        EXPECT_NO_THROW(rules = support::RulesOf(reader, text.size()));
        // 1024 bytes are 170 rules, and the start of one.
        const std::size_t bytes = 1024 * static_cast<std::size_t>(call - 1);
        support::CssText before(std::string_view(text).substr(0, bytes));
        std::string expected = support::RulesOf(*before, text.size());
        EXPECT_EQ(rules, expected);
        EXPECT_TRUE(reader.StreamFailed());
        EXPECT_EQ(reader.StreamError(), support::FailingStream::kMessage);
    }
}

TEST(CssReaderStream, WithoutAnExceptionNothingIsTold) {
    RecordingStream inner(ManyRules(1000));
    support::FailingStream stream(inner, 3, support::Failure::EndEarly);
    CssReader reader(&stream, astring("UTF-8"));
    support::RulesOf(reader, 6000);
    EXPECT_FALSE(reader.StreamFailed());
    EXPECT_EQ(reader.StreamError(), "");
}

TEST(CssReaderStream, AnExceptionInsideANodeEndsThat) {
    const struct {
        const char* text;
        const char* rule;
    } kCases[] = {
        {"p{a:b", "p{ a: b }"},
        {"p{a:'b", "p{ a: 'b }"},
        {"p{a:b;c", "p{ a: b }"},
        {"p{", "p{  }"},
        {"p", ""},
        {"@a{b:c", "@a{ b: c; }"},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.text);
        ScriptedStream stream(c.text,
                              []() -> int { Xml::Exception::ThrowException("the line is dead"); });
        CssReader reader(&stream, astring("UTF-8"));
        EXPECT_EQ(reader.ReadRule(), c.rule);
        EXPECT_FALSE(reader.Read());
        EXPECT_TRUE(reader.StreamFailed());
        EXPECT_EQ(reader.StreamError(), "the line is dead");
    }
}

TEST(CssReaderStream, MemoryThatIsOutIsNotItsFailure) {
    ScriptedStream stream("p{a:b", []() -> int { throw std::bad_alloc(); });
    CssReader reader(&stream, astring("UTF-8"));
    EXPECT_THROW(reader.ReadRule(), std::bad_alloc);
    EXPECT_FALSE(reader.StreamFailed());
}

TEST(CssReaderStream, IsNotReadFarAhead) {
    constexpr int kRules = 5000;
    support::GeneratedStream generated;
    generated.Add("p{a:b}", kRules);
    MeteredStream stream(generated);
    CssReader reader(&stream, astring("UTF-8"));
    int rules = 0;
    while (!reader.ReadRule().empty()) {
        ++rules;
        const std::size_t read = 6 * static_cast<std::size_t>(rules);
        ASSERT_GE(stream.Taken(), read);
        ASSERT_LE(stream.Taken(), read + 2048);
    }
    EXPECT_EQ(rules, kRules);
}

TEST(CssReaderStream, ALongSheetTakesLittleMemory) {
    if (support::kAddressSanitizer) GTEST_SKIP() << "it keeps what is freed";
    constexpr int kRules = 400000;
    const std::string rule = "h1 , h2 {color:red;  /* c */ margin : 0 1px !important}\n";
    support::GeneratedStream stream;
    stream.Add(rule, kRules);
    const std::size_t before = support::PeakMemory();
    CssReader reader(&stream, astring("UTF-8"));
    int rules = 0;
    while (reader.ReadRule() == "h1 , h2 { color: red; margin: 0 1px !important }") {
        ++rules;
        ASSERT_TRUE(reader.Read());  // the line feed
    }
    EXPECT_EQ(rules, kRules);
    EXPECT_LT(support::PeakMemory() - before, 4U << 20)
        << "of " << rule.size() * kRules << " bytes";
}

TEST(CssReaderStream, ReadsOfAnySizeTellTheSame) {
    const std::string text =
        "/* 1 */ h1 , h2 {color:red;  /* c */ margin : 0 /**/ 1px !important}\n"
        "p{content:'a;b}\\'' \"\xC3\xA9\"}@media print{p{a:b}}.x \xE2\x82\xAC{c:d;;e:f}q{";
    const std::string expected = support::RulesOf(text);
    ASSERT_EQ(expected,
              "h1 , h2 { color: red; margin: 0  1px !important }\n"
              "p{ content: 'a;b}\\'' \"\xC3\xA9\" }\n"
              "@media print{ a: b; }\n"
              ".x \xE2\x82\xAC{ c: d }\n\n"
              "q{  }\n");
    const std::string nodes = support::NodesOf(text);
    for (const int most : {1, 2, 3, 7, 64}) {
        SCOPED_TRACE(most);
        RecordingStream forRules(text);
        support::TrickleStream rulesStream(forRules, most);
        CssReader rules(&rulesStream, astring("UTF-8"));
        EXPECT_EQ(support::RulesOf(rules, text.size()), expected);
        RecordingStream forNodes(text);
        support::TrickleStream nodesStream(forNodes, most);
        CssReader reader(&nodesStream, astring("UTF-8"));
        EXPECT_EQ(support::NodesOf(reader, text.size()), nodes);
    }
}

TEST(CssReaderStream, TheStarThatBeginsACommentDoesNotEndIt) {
    // The pieces end right behind "/*/": by their size here, and where 1024 bytes end.
    const struct {
        std::size_t before;
        int most;
    } kCases[] = {{0, 1}, {0, 2}, {0, 3}, {0, 1024}, {1020, 1024}, {1021, 1024}, {1022, 1024}};
    for (const auto& c : kCases) {
        SCOPED_TRACE(testing::Message() << c.before << " bytes before, reads of " << c.most);
        const std::string text = std::string(c.before, ' ') + "/*/ a */p{b:c}";
        RecordingStream inner(text);
        support::TrickleStream stream(inner, c.most);
        CssReader reader(&stream, astring("UTF-8"));
        EXPECT_EQ(reader.ReadComment(), "/*/ a */");
        EXPECT_EQ(reader.ReadRule(), "p{ b: c }");
    }
}
