// SPDX-License-Identifier: MIT
//
// Uses the library as a program of somebody else does: public headers, and symbols that come from
// the shared library.
#include <espalier/base/astring.h>
#include <espalier/io/Exception.h>
#include <espalier/io/Stream.h>

#include <cstdio>

int main() {
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
