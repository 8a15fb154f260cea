// SPDX-License-Identifier: MIT
// Provokes the messages of encodings, strings and streams and prints them: stream_errors
// samples/herbal.epub
//
// The tables in docs/errors.md show the same calls; a test compares the two.
#include <espalier/encoding.h>
#include <espalier/io.h>

#include <climits>

#include <cstdio>
#include <filesystem>
#include <iostream>
#include <stdexcept>
#include <string>
#include <sys/resource.h>
#include <unistd.h>

namespace {

using IO::CompressionMode;
using IO::FileMode;
using IO::FileStream;
using IO::GZipStream;
using IO::MemoryStream;
using IO::SeekOrigin;
using IO::ZipFileStream;

constexpr unsigned char kBytes[] = {'a', 'b', 'c'};
constexpr long kSize = sizeof kBytes;

// A stream that can do nothing.
class Nothing : public IO::Stream {
public:
    void Close() override {}
};

// A file that cannot seek.
class Unseekable : public FileStream {
public:
    using FileStream::FileStream;
    bool CanSeek() const override { return false; }
};

// A stream that takes nothing that is written.
class Full : public Nothing {
public:
    bool CanWrite() const override { return true; }
    void Write(const unsigned char*, int, int) override { throw std::runtime_error("full"); }
};

// As long as this lives no more files can be opened.
class NoMoreFiles {
public:
    NoMoreFiles() {
        getrlimit(RLIMIT_NOFILE, &before_);
        const rlimit none = {0, before_.rlim_max};
        setrlimit(RLIMIT_NOFILE, &none);
    }
    NoMoreFiles(const NoMoreFiles&) = delete;
    NoMoreFiles& operator=(const NoMoreFiles&) = delete;
    ~NoMoreFiles() { setrlimit(RLIMIT_NOFILE, &before_); }

private:
    rlimit before_ = {};
};

// A copy of the archive with zeros where the data of META-INF/container.xml begin; removed at the
// end.
class DamagedCopy {
public:
    explicit DamagedCopy(const char* archive)
        : path_(std::filesystem::temp_directory_path() / ("damaged" + std::to_string(getpid()))) {
        std::filesystem::copy_file(archive, path_);
        FileStream file(Name(), FileMode::Open, 2, 0);
        file.Seek(110, SeekOrigin::Begin);
        file.WriteByte(0);
        file.WriteByte(0);
    }
    DamagedCopy(const DamagedCopy&) = delete;
    DamagedCopy& operator=(const DamagedCopy&) = delete;
    ~DamagedCopy() { std::filesystem::remove(path_); }

    astring Name() const { return path_.string().c_str(); }

private:
    std::filesystem::path path_;
};

struct Calls {
    const char* shown;
    void (*call)(const char* archive);
};

const Calls kEncodings[] = {
    {"GetCharCount() of the byte FF by UTF8Encoding(false, true)",
     [](auto*) {
         const unsigned char byte = 0xFF;
         Xml::UTF8Encoding(false, true).GetCharCount(&byte, 1);
     }},
    {"erase(4) of \"abc\"", [](auto*) { astring("abc").erase(4); }},
    {"astring().reserve(static_cast<std::size_t>(-1))",
     [](auto*) { astring().reserve(static_cast<std::size_t>(-1)); }},
};

const Calls kMemory[] = {
    {"Close(), then Read()",
     [](auto*) {
         MemoryStream stream;
         stream.Close();
         stream.ReadByte();
     }},
    {"Close(), then Write()",
     [](auto*) {
         MemoryStream stream;
         stream.Close();
         stream.WriteByte('a');
     }},
    {"Write() over constant bytes", [](auto*) { MemoryStream(kBytes, kSize).WriteByte('a'); }},
    {"Write() of two bytes over a buffer of one",
     [](auto*) {
         unsigned char buffer[1];
         MemoryStream(buffer, 1).Write(kBytes, 0, 2);
     }},
    {"Close(), then SetCapacity(1)",
     [](auto*) {
         MemoryStream stream;
         stream.Close();
         stream.SetCapacity(1);
     }},
    {"SetCapacity(9) over constant bytes",
     [](auto*) { MemoryStream(kBytes, kSize).SetCapacity(9); }},
    {"SetCapacity(9) over a buffer of one byte",
     [](auto*) {
         unsigned char buffer[1];
         MemoryStream(buffer, 1).SetCapacity(9);
     }},
    {"MemoryStream(-1)", [](auto*) { const MemoryStream stream(-1); }},
    {"MemoryStream(LONG_MAX)",  // with 32 bits there may be room for one, but not for two
     [](auto*) { const MemoryStream first(LONG_MAX), second(LONG_MAX); }},
    {"SetLength(-1)", [](auto*) { MemoryStream().SetLength(-1); }},
    {"SetLength(0) at position 1",
     [](auto*) {
         MemoryStream stream;
         stream.WriteByte('a');
         stream.SetLength(0);
     }},
    {"SetLength(9) over a buffer of one byte",
     [](auto*) {
         unsigned char buffer[1];
         MemoryStream(buffer, 1).SetLength(9);
     }},
    {"SetLength(9) over constant bytes", [](auto*) { MemoryStream(kBytes, kSize).SetLength(9); }},
    {"Write() to StringStream(\"\", false)",
     [](auto*) { IO::StringStream("", false).WriteByte('a'); }},
};

const Calls kFiles[] = {
    {"access 4", [](auto* name) { const FileStream file(name, FileMode::Open, 4, 1); }},
    {"a directory", [](auto*) { const FileStream file("/", FileMode::Open, 1, 1); }},
    {"FileMode::CreateNew of a file that is there",
     [](auto* name) { const FileStream file(name, FileMode::CreateNew, 2, 1); }},
    {"a file that is missing",
     [](auto*) { const FileStream file("/no such file", FileMode::Open, 1, 1); }},
    {"setrlimit(RLIMIT_NOFILE) to none",
     [](auto* name) {
         const NoMoreFiles none;
         const FileStream file(name, FileMode::Open, 1, 1);
     }},
    {"a name with a NUL",
     [](auto*) { const FileStream file(astring("a\0b", 3), FileMode::Open, 1, 1); }},
    {"a name of 300 bytes",
     [](auto*) { const FileStream file(std::string(300, 'n').c_str(), FileMode::Open, 1, 1); }},
    {"FileStream().ReadByte()", [](auto*) { FileStream().ReadByte(); }},
    {"ReadByte() of a FILE* that is open to write",
     [](auto*) { FileStream(std::fopen("/dev/null", "wb"), 1, true).ReadByte(); }},
    {"WriteByte() to a FILE* that is open to read",
     [](auto* name) { FileStream(std::fopen(name, "rb"), 2, true).WriteByte('a'); }},
    {"WriteByte() with access 1",
     [](auto* name) { FileStream(name, FileMode::Open, 1, 1).WriteByte('a'); }},
    {"SetLength(1) of one with a CanSeek() of its own",
     [](auto* name) { Unseekable(name, FileMode::Open, 1, 1).SetLength(1); }},
};

const Calls kArchives[] = {
    {"a target that cannot be written",
     [](auto*) {
         Nothing target;
         const GZipStream stream(&target, CompressionMode::Compress);
     }},
    {"a target that cannot be read",
     [](auto*) {
         Nothing target;
         const GZipStream stream(&target, CompressionMode::Decompress);
     }},
    {"a mode without a name",
     [](auto*) {
         MemoryStream target;
         const GZipStream stream(&target, static_cast<CompressionMode::CMODE>(2));
     }},
    {"GZipStream().ReadByte()", [](auto*) { GZipStream().ReadByte(); }},
    {"GZipStream().WriteByte()", [](auto*) { GZipStream().WriteByte('a'); }},
    {"data that end behind their first bytes",
     [](auto*) {
         const unsigned char bytes[] = {0x1F, 0x8B, 8, 0};
         MemoryStream target(bytes, sizeof bytes);
         GZipStream(&target, CompressionMode::Decompress).ReadByte();
     }},
    {"Flush() again, after the target refused",
     [](auto*) {
         Full target;
         GZipStream stream(&target, CompressionMode::Compress);
         stream.WriteByte('a');
         try {
             stream.Flush();
         } catch (const std::runtime_error&) {
             stream.Flush();
         }
     }},
    {"Seek(0, SeekOrigin::End)",
     [](auto*) {
         MemoryStream target(kBytes, kSize);
         GZipStream(&target, CompressionMode::Decompress).Seek(0, SeekOrigin::End);
     }},
    {"SetLength(1)",
     [](auto*) {
         MemoryStream target;
         GZipStream(&target, CompressionMode::Compress).SetLength(1);
     }},
    {"ZipFileStream(\"/no such file\", \"a\")",
     [](auto*) { const ZipFileStream stream("/no such file", "a"); }},
    {"a member that is not there",
     [](auto* name) { const ZipFileStream stream(name, "no such member"); }},
    {"Seek(9, SeekOrigin::Begin) over damaged data",
     [](auto* name) {
         const DamagedCopy archive(name);
         ZipFileStream(archive.Name(), "META-INF/container.xml").Seek(9, SeekOrigin::Begin);
     }},
};

bool Provoke(const Calls& calls, const char* archive) {
    try {
        calls.call(archive);
    } catch (const std::exception& error) {
        std::cout << calls.shown << "\n    " << error.what() << "\n";
        return true;
    }
    std::cerr << calls.shown << ": nothing was thrown\n";
    return false;
}

template <std::size_t kCount>
bool ProvokeAll(const Calls (&table)[kCount], const char* archive) {
    bool all = true;
    for (const Calls& calls : table)
        all &= Provoke(calls, archive);
    return all;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "usage: stream_errors ARCHIVE\n";
        return 2;
    }
    bool all = ProvokeAll(kEncodings, argv[1]);
    all &= ProvokeAll(kMemory, argv[1]);
    all &= ProvokeAll(kFiles, argv[1]);
    all &= ProvokeAll(kArchives, argv[1]);
    return all ? 0 : 1;
}
