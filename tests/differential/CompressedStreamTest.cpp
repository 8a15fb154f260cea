// SPDX-License-Identifier: MIT
//
// GZipStream against the programs gzip and python3 where they are installed, and against zlib's own
// gzip files: what each writes the others read, and they refuse the same damaged data.
#include <espalier/io/FileStream.h>
#include <espalier/io/GZipStream.h>

#include "support/FileTest.h"
#include "support/StreamOutcome.h"

#include <gtest/gtest.h>
#include <zlib.h>

#include <cstdlib>
#include <optional>
#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace {

using IO::CompressionMode;

bool HasProgram(const std::string& name) {
    return std::system(("command -v " + name + " >/dev/null 2>&1").c_str()) == 0;
}

std::vector<std::string> Contents() {
    std::mt19937 random(20260321);
    std::vector<std::string> contents = {"", "x", "<a/>\n", std::string(1000000, 'z'),
                                         support::Pattern(200000)};
    for (const std::size_t size : {100UL, 70000UL}) {
        std::string noise(size, '\0');
        for (char& byte : noise)
            byte = static_cast<char>(random() & 0xFFU);
        contents.push_back(noise);
    }
    return contents;
}

class CompressedStreamTest : public support::FileTest {
protected:
    // Writes a file in pieces, with flushes on the way.
    std::string Compress(std::string_view content, std::size_t piece) const {
        std::string path = Path("ours.gz");
        IO::FileStream file(path.c_str(), IO::FileMode::Create, 2, 1);
        IO::GZipStream stream(&file, CompressionMode::Compress);
        for (std::size_t at = 0; at < content.size(); at += piece) {
            support::Write(stream, content.substr(at, piece));
            if (at % 7 == 3) stream.Flush();
        }
        stream.Close();
        file.Close();
        return path;
    }
};

// Returns what gzread() gives; nothing when it finds a fault or the file ends too early.
std::optional<std::string> ReadByZlib(const std::string& path) {
    const gzFile file = ::gzopen(path.c_str(), "rb");
    std::string content;
    std::vector<char> piece(5000);
    int count = 0;
    while ((count = ::gzread(file, piece.data(), 5000)) > 0)
        content.append(piece.data(), static_cast<std::size_t>(count));
    int error = Z_OK;
    ::gzerror(file, &error);
    ::gzclose(file);
    if (count < 0 || error != Z_OK) return std::nullopt;
    return content;
}

TEST_F(CompressedStreamTest, GzipAcceptsWhatWeWrite) {
    if (!HasProgram("gzip")) GTEST_SKIP() << "gzip is not installed";
    for (const std::string& content : Contents()) {
        for (const std::size_t piece : {1003UL, 1000000UL}) {
            const std::string path = Compress(content, piece);
            EXPECT_EQ(std::system(("gzip -t " + path).c_str()), 0);
            const std::string plain = Path("plain");
            EXPECT_EQ(std::system(("gzip -dc " + path + " >" + plain).c_str()), 0);
            EXPECT_TRUE(Content(plain) == content);
        }
    }
}

TEST_F(CompressedStreamTest, WeReadWhatGzipWrites) {
    if (!HasProgram("gzip")) GTEST_SKIP() << "gzip is not installed";
    for (const std::string& content : Contents()) {
        for (const char* level : {"-1", "-6", "-9"}) {
            const std::string plain = Make("plain", content);
            const std::string path = Path("theirs.gz");
            ASSERT_EQ(
                std::system(("gzip -c " + std::string(level) + " " + plain + " >" + path).c_str()),
                0);
            EXPECT_EQ(support::Decompress(Content(path)), (support::ReadOutcome{content, ""}));
        }
    }
}

TEST_F(CompressedStreamTest, PythonAcceptsWhatWeWrite) {
    if (!HasProgram("python3")) GTEST_SKIP() << "python3 is not installed";
    for (const std::string& content : Contents()) {
        const std::string path = Compress(content, 10007);
        const std::string plain = Make("plain", content);
        const std::string script =
            "import gzip, sys; "
            "sys.exit(gzip.open(sys.argv[1]).read() != "
            "open(sys.argv[2], 'rb').read())";
        EXPECT_EQ(std::system(("python3 -c \"" + script + "\" " + path + " " + plain).c_str()), 0);
    }
}

TEST_F(CompressedStreamTest, ZlibReadsTheSameOfDamagedData) {
    const std::string good = Content(Compress(support::Pattern(3000), 500));
    std::mt19937 random(20260321);
    int refused = 0;
    for (int i = 0; i < 1000; ++i) {
        std::string data = good + (i % 2 == 0 ? good : "garbage");
        const std::size_t place = random() % data.size();
        data[place] = static_cast<char>(random() & 0xFFU);
        if (i % 5 == 0) data.resize(place);
        const std::optional<std::string> theirs = ReadByZlib(Make("damaged.gz", data));
        const support::ReadOutcome ours = support::Decompress(data);
        ASSERT_EQ(ours.error.empty(), theirs.has_value()) << i << ' ' << ours.error;
        if (theirs) {
            ASSERT_TRUE(ours.content == *theirs) << i;
        } else {
            ++refused;
        }
    }
    EXPECT_GT(refused, 300);
}

}  // namespace
