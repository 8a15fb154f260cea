// SPDX-License-Identifier: MIT
// Streams in memory, in a string and in files: use_streams FILE
#include <espalier/io.h>

#include <cstdio>
#include <iostream>

namespace {

//! [read a file]
long CountBytes(const char* fileName) {
    IO::FileStream file(fileName, IO::FileMode::Open, 1, 1);  // to read; others may read, too
    unsigned char bytes[4096];
    long total = 0;
    while (const int count = file.Read(bytes, 0, sizeof bytes))
        total += count;
    return total;
}
//! [read a file]

//! [open files]
// Appends two lines to a file: opened by its name, and by a handle of the C library.
void AppendLines(const char* fileName) {
    IO::FileStream log(fileName, IO::FileMode::Append, 2, 1);
    log.WriteByte('\n');
    log.Close();
    IO::FileStream last(std::fopen(fileName, "a"), 2, true);  // a FILE* that the stream closes
    last.WriteByte('\n');
    last.Close();
}
//! [open files]

//! [memory]
int FirstByteOf(const unsigned char* bytes, int count) {
    IO::MemoryStream stream;  // grows as it is written
    stream.Write(bytes, 0, count);
    stream.SetPosition(0);
    return stream.ReadByte();
}
//! [memory]

//! [over bytes]
// Copies from bytes that are read only into a buffer that is written over.
void Copy(const unsigned char* from, unsigned char* to, long size) {
    IO::MemoryStream input(from, size);
    IO::MemoryStream output(to, size);
    unsigned char bytes[512];
    while (const int count = input.Read(bytes, 0, sizeof bytes))
        output.Write(bytes, 0, count);
}
//! [over bytes]

//! [string]
astring Overwritten() {
    const unsigned char capitals[] = {'X', 'Y', 'Z'};
    IO::StringStream text("abcdef", true);  // writable
    text.SetPosition(1);
    text.Write(capitals, 0, 3);
    return text.GetString();  // "aXYZef"
}
//! [string]

//! [buffered]
void WriteNumbers(const char* fileName) {
    IO::BufferedStream stream(new IO::FileStream(fileName, IO::FileMode::Create, 2, 1), true);
    for (unsigned char byte = 0; byte < 200; ++byte)
        stream.WriteByte(byte);
    stream.Close();  // writes what is pending and closes the file
}
//! [buffered]

//! [counting stream]
// Swallows what is written and counts it.
class CountingStream : public IO::Stream {
public:
    bool CanWrite() const override { return true; }
    long Position() const override { return count_; }
    void Close() override {}
    void Write(const unsigned char* /*buffer*/, int /*offset*/, int count) override {
        count_ += count;
    }

private:
    long count_ = 0;
};
//! [counting stream]

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "usage: use_streams FILE, which is written and removed\n";
        return 2;
    }
    try {
        WriteNumbers(argv[1]);
        std::cout << CountBytes(argv[1]) << "\n";
        AppendLines(argv[1]);
        std::cout << CountBytes(argv[1]) << "\n";
        const unsigned char bytes[] = {7, 8, 9};
        unsigned char copied[sizeof bytes] = {};
        Copy(bytes, copied, sizeof bytes);
        std::cout << FirstByteOf(copied, sizeof copied) << "\n" << Overwritten() << "\n";
        CountingStream counter;
        counter.Write(bytes, 0, sizeof bytes);
        std::cout << counter.Position() << "\n";
        std::remove(argv[1]);
    } catch (const Xml::Exception& error) {
        std::cerr << error.What() << "\n";
        return 1;
    }
    return 0;
}
