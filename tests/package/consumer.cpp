// SPDX-License-Identifier: MIT
//
// Uses the library as a program of somebody else does: public headers, and symbols that come from
// the shared library.
#include <espalier/base/astring.h>
#include <espalier/io/Exception.h>
#include <espalier/io/GZipStream.h>
#include <espalier/io/MemoryStream.h>
#include <espalier/io/Stream.h>

#include <cstdio>

// Whether the libraries behind the library come along.
static bool IsCompressed() {
    IO::MemoryStream memory;
    IO::GZipStream writing(&memory, IO::CompressionMode::Compress);
    writing.WriteByte('x');
    writing.Close();
    memory.SetPosition(0);
    IO::GZipStream reading(&memory, IO::CompressionMode::Decompress);
    return memory.Length() > 18 && reading.ReadByte() == 'x';
}

int main() {
    if (!IsCompressed()) return 1;
    IO::Stream* stream = IO::Stream::Null();
    stream->WriteByte('x');
    if (stream->ReadByte() != -1) return 1;
    try {
        Xml::Exception::ThrowException("thrown in the library", astring("caught outside"), 2, 3);
    } catch (const Xml::Exception& error) {
        std::printf("%s, %s\n", error.What(), error.Argument());
        return error.LineNumber() == 2 && error.LinePos() == 3 ? 0 : 1;
    }
    return 1;
}
