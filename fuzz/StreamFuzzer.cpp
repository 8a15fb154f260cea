// SPDX-License-Identifier: MIT
//
// Carries out a script of calls on a MemoryStream, and on a BufferedStream over another one, which
// must answer as the first does; and on a StringStream, which must keep the rules of streams. Each
// call is a byte that says which, and one for its number.

#include <espalier/io/BufferedStream.h>
#include <espalier/io/Exception.h>
#include <espalier/io/MemoryStream.h>
#include <espalier/io/StringStream.h>

#include "ReaderStory.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace {

using fuzz::Require;

// One call, and the number that it takes.
struct Call {
    unsigned kind;
    long number;
};

// Sizes around those of buffers, too.
long NumberOf(unsigned byte) { return byte < 200 ? byte : (byte - 199) * 137; }

// Carries it out, and tells what came of it.
std::string AnswerTo(const Call& call, IO::Stream& stream) {
    const int count = static_cast<int>(call.number);
    std::vector<unsigned char> buffer(static_cast<std::size_t>(count) + 1,
                                      static_cast<unsigned char>('a' + call.number % 26));
    switch (call.kind % 9) {
    case 0: {
        const int got = stream.Read(buffer.data(), 0, count);
        Require(got >= 0 && got <= count);
        return std::string(reinterpret_cast<const char*>(buffer.data()),
                           static_cast<std::size_t>(got));
    }
    case 1: return std::to_string(stream.ReadByte());
    case 2: stream.Write(buffer.data(), 0, count); break;
    case 3: stream.WriteByte(buffer[0]); break;
    case 4: return std::to_string(stream.Seek(call.number, IO::SeekOrigin::Begin));
    case 5: return std::to_string(stream.Seek(call.number - 100, IO::SeekOrigin::Current));
    case 6: return std::to_string(stream.Seek(-call.number, IO::SeekOrigin::End));
    case 7:
        stream.SetPosition(stream.Position());  // what is read ahead is forgotten otherwise
        stream.SetLength(call.number);
        break;
    default: stream.Flush(); break;
    }
    return "";
}

// The same, or that it was refused; then nothing has moved. The length is left out: bytes that wait
// in a buffer do not count.
std::string OutcomeOf(const Call& call, IO::Stream& stream) {
    const long position = stream.Position();
    std::string outcome;
    try {
        outcome = AnswerTo(call, stream);
    } catch (const Xml::Exception&) {
        Require(stream.Position() == position);
        outcome = "refused";
    }
    Require(stream.Position() >= 0 && stream.Length() >= 0);
    return outcome + "; at " + std::to_string(stream.Position());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    IO::MemoryStream plain, inner;
    IO::BufferedStream buffered(&inner, false);
    IO::StringStream text;
    for (std::size_t i = 0; i + 1 < size && i < 2000; i += 2) {
        const Call call = {data[i], NumberOf(data[i + 1])};
        Require(OutcomeOf(call, plain) == OutcomeOf(call, buffered));
        OutcomeOf(call, text);
    }
    buffered.Flush();
    Require(plain.Length() == inner.Length());
    Require(std::string_view(reinterpret_cast<const char*>(plain.GetBuffer()),
                             static_cast<std::size_t>(plain.Length())) ==
            std::string_view(reinterpret_cast<const char*>(inner.GetBuffer()),
                             static_cast<std::size_t>(inner.Length())));
    return 0;
}
