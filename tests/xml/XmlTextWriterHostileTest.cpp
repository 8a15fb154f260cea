// SPDX-License-Identifier: MIT
//
// Documents that are large in one way, written in time and memory that grow with their size and no
// faster. A time limit of ctest stands behind each test; none measures time itself.
#include <espalier/encoding/UnicodeEncodings.h>
#include <espalier/io/Stream.h>
#include <espalier/xml/XmlTextWriter.h>

#include <gtest/gtest.h>

#include <string>

namespace {

using Xml::XmlTextWriter;

// Counts what is written, and keeps the end of it.
class CountingStream : public IO::Stream {
public:
    bool CanWrite() const override { return true; }
    void Close() override {}
    void Write(const unsigned char* buffer, int offset, int count) override {
        length_ += count;
        end_.append(reinterpret_cast<const char*>(buffer) + offset,
                    static_cast<std::size_t>(count));
        if (end_.size() > kKept) end_.erase(0, end_.size() - kKept);
    }
    long Length() const override { return length_; }

    bool EndsWith(const std::string& text) const { return end_.ends_with(text); }

private:
    static constexpr std::size_t kKept = 200;

    long length_ = 0;
    std::string end_;
};

// A writer that discards what it writes.
struct Discarding {
    CountingStream stream;
    Xml::UTF8Encoding encoding;
    XmlTextWriter writer{&stream, &encoding};
};

long LengthOfNumbers(int count) {
    long length = 0;
    for (int i = 0; i < count; ++i)
        length += static_cast<long>(std::to_string(i).size());
    return length;
}

TEST(XmlTextWriterHostile, ManyDeclarationsOnOneElement) {
    constexpr int kCount = 500'000;
    Discarding target;
    target.writer.WriteStartElement("p", "r", "urn:p");
    for (int i = 0; i < kCount; ++i)
        target.writer.WriteAttributeString("xmlns", "p" + std::to_string(i), nullptr, "u");
    target.writer.Close();
    EXPECT_TRUE(target.stream.EndsWith(" xmlns:p499999=\"u\" xmlns:p=\"urn:p\"/>"));
    EXPECT_EQ(target.stream.Length(),
              22 + LengthOfNumbers(kCount) + kCount * 12L);  // <p:r xmlns:p="urn:p"/>, xmlns:p="u"
}

TEST(XmlTextWriterHostile, ManyPrefixesOfAttributes) {
    constexpr int kCount = 200'000;
    Discarding target;
    target.writer.WriteStartElement("r");
    for (int i = 0; i < kCount; ++i) {
        const std::string number = std::to_string(i);
        target.writer.WriteAttributeString("p" + number, "a", "u" + number, "v");
    }
    target.writer.Close();
    EXPECT_TRUE(target.stream.EndsWith(" xmlns:p199999=\"u199999\"/>"));
    EXPECT_EQ(target.stream.Length(), 4 + 3 * LengthOfNumbers(kCount) + kCount * (8L + 12));
}

// Each level keeps its name, but shares the namespace and the language.
TEST(XmlTextWriterHostile, DeepElementsInANamespaceWithALongName) {
    constexpr int kDepth = 1'000'000;
    const std::string uri(100'000, 'u');
    Discarding target;
    target.writer.WriteStartElement("r");
    target.writer.WriteAttributeString("xml", "lang", nullptr, std::string(100'000, 'l'));
    for (int i = 0; i < kDepth; ++i)
        target.writer.WriteStartElement("e", uri);
    target.writer.WriteEndDocument();
    target.writer.Flush();
    EXPECT_TRUE(target.stream.EndsWith("</e></e></r>"));
    const long texts = 200'000 + 12 + 9;            // xml:lang="" and xmlns="", with blanks
    const long tags = 2 + 1 + 4 + kDepth * 7L - 3;  // the innermost is <e/>
    EXPECT_EQ(target.stream.Length(), texts + tags);
}

}  // namespace
