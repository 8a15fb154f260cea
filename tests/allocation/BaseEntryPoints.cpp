// SPDX-License-Identifier: MIT
#include <espalier/encoding/Encoding.h>
#include <espalier/io/BufferedStream.h>
#include <espalier/io/FileStream.h>
#include <espalier/io/GZipStream.h>
#include <espalier/io/MemoryStream.h>
#include <espalier/io/StringStream.h>
#include <espalier/xml/HashIterator.h>
#include <espalier/xml/HashMap.h>
#include <espalier/xml/XmlNsSupport.h>

#include "allocation/EntryPoints.h"
#include "support/FailingAllocation.h"
#include "support/TemporaryDirectory.h"

#include <array>
#include <new>
#include <vector>

namespace allocation {

std::string TextOf(IO::Stream& stream) {
    std::string text;
    std::array<unsigned char, 256> buffer;
    for (;;) {
        const int count = stream.Read(buffer.data(), 0, static_cast<int>(buffer.size()));
        if (count < 1) return text;
        text.append(reinterpret_cast<const char*>(buffer.data()), static_cast<std::size_t>(count));
    }
}

namespace {

const unsigned char* BytesOf(const std::string& text) {
    return reinterpret_cast<const unsigned char*>(text.data());
}

// Writes a text in two parts, moves about, and reads it again.
void WriteAndRead(IO::Stream& target, const std::string& text, Sum& sum) {
    const int half = static_cast<int>(text.size() / 2);
    target.Write(BytesOf(text), 0, half);
    target.Write(BytesOf(text), half, static_cast<int>(text.size()) - half);
    target.Flush();
    target.SetPosition(half / 2);
    target.WriteByte('!');
    target.SetLength(target.Length() + 10);
    target.SetPosition(0);
    sum.Add(TextOf(target));
}

void ThroughMemory(IO::Stream& stream, Sum& sum) {
    IO::MemoryStream memory;
    WriteAndRead(memory, TextOf(stream), sum);
    memory.SetCapacity(memory.Length());
    IO::MemoryStream other(memory);
    sum.Add(static_cast<std::size_t>(other.Length()));
}

void ThroughAString(IO::Stream& stream, Sum& sum) {
    IO::StringStream string;
    WriteAndRead(string, TextOf(stream), sum);
    const IO::StringStream copy(string);
    sum.Add(copy.GetString());
}

void ThroughAFile(IO::Stream& stream, Sum& sum) {
    static const support::TemporaryDirectory& kDirectory =
        *FailingAllocation::Exempt([] { return new support::TemporaryDirectory(); });
    const std::string path = FailingAllocation::Exempt([] { return kDirectory.Path("file"); });
    IO::FileStream file(path.c_str(), IO::FileMode::Create, 3, 3);
    IO::BufferedStream buffered(&file, false);
    WriteAndRead(buffered, TextOf(stream), sum);
    buffered.Close();
    file.Close();
}

void Buffered(IO::Stream& stream, Sum& sum) {
    IO::BufferedStream buffered(&stream, false);
    sum.Add(static_cast<std::size_t>(buffered.ReadByte()));
    sum.Add(TextOf(buffered));
}

void Compress(IO::Stream& stream, Sum& sum) {
    const std::string text = TextOf(stream);
    IO::MemoryStream target;
    IO::GZipStream gzip(&target, IO::CompressionMode::Compress);
    gzip.Write(BytesOf(text), 0, static_cast<int>(text.size()));
    gzip.Close();
    sum.Add(static_cast<std::size_t>(target.Length()));
}

void Decompress(IO::Stream& stream, Sum& sum) {
    IO::GZipStream gzip(&stream, IO::CompressionMode::Decompress);
    sum.Add(TextOf(gzip));
    gzip.Close();
}

void Convert(IO::Stream& stream, Sum& sum) {
    const std::string text = TextOf(stream);
    for (Xml::Encoding* const encoding :
         {Xml::Encoding::UTF8(), Xml::Encoding::Unicode(), Xml::Encoding::Latin1(),
          Xml::Encoding::GB2312(), Xml::Encoding::EUC_KR(), Xml::Encoding::Windows_1251()}) {
        std::vector<unsigned char> bytes(text.size() * 4);
        const unsigned count = Xml::Encoding::Convert(
            Xml::Encoding::UTF8(), encoding, BytesOf(text), static_cast<unsigned>(text.size()),
            bytes.data(), static_cast<unsigned>(bytes.size()));
        sum.Add(count);
        sum.Add(encoding->GetCharCount(bytes.data(), count));
        sum.Add(encoding->GetByteCount(astring(text)));
    }
}

void KeepInAMap(IO::Stream& stream, Sum& sum) {
    const std::string text = TextOf(stream);
    Xml::HashMap map(1, true);
    for (std::size_t begin = 0; begin + 3 < text.size(); ++begin)
        map.Insert(text.data() + begin, 3, &map);
    const Xml::HashMap copy(map);
    Xml::HashMap assigned(4, false);
    assigned = copy;
    assigned.GrowTable();
    map.Remove(text.data(), 3);
    map.Clear();
    std::size_t count = 0;
    Xml::HashIterator iterator;
    for (Xml::HashItem item = iterator.First(assigned); !item.IsNull(); item = iterator.Next())
        ++count;
    sum.Add(count);
    sum.Add(assigned.Find(text.data() + 1, 3) != nullptr);
}

// Says in an exception that there was no memory.
void Declare(sax::XmlNsSupport& namespaces, std::string_view prefix, std::string_view uri) {
    if (namespaces.DeclarePrefix(prefix, uri) == nullptr) throw std::bad_alloc();
}

void DeclareNamespaces(IO::Stream& stream, Sum& sum) {
    const std::string text = TextOf(stream);
    sax::XmlNsSupport namespaces;
    for (std::size_t begin = 0; begin + 40 < text.size(); begin += 10) {
        namespaces.PushContext();
        Declare(namespaces, text.substr(begin, 30), text.substr(begin, 40));
    }
    const sax::XmlNsSupport copy(namespaces);
    sum.Add(copy.GetURI(text.substr(0, 30)));
    const astring* parts[3] = {};
    Declare(namespaces, "p", "urn:p");
    sum.Add(*namespaces.ProcessName("p:name", parts, false)[0]);
    namespaces.PopContext();
    namespaces.Reset();
}

constexpr std::string_view kText =
    "A text with letters of several scripts: \xC3\xA4\xC3\xB6, \xD0\xB6\xD0\xB8, "
    "\xE4\xB8\xAD\xE5\x9B\xBD, \xED\x95\x9C\xEA\xB5\xAD, and enough of it that no string keeps "
    "it inside, nor a buffer that has just been made.";

// The text, compressed.
std::string Compressed() {
    IO::MemoryStream target;
    IO::GZipStream gzip(&target, IO::CompressionMode::Compress);
    gzip.Write(reinterpret_cast<const unsigned char*>(kText.data()), 0,
               static_cast<int>(kText.size()));
    gzip.Close();
    return {reinterpret_cast<const char*>(target.GetBuffer()),
            static_cast<std::size_t>(target.Length())};
}

}  // namespace

std::span<const EntryPoint> BaseEntryPoints() {
    static const std::string kCompressed = Compressed();
    static const EntryPoint kPoints[] = {
        {"MemoryStream", kText, ThroughMemory},
        {"StringStream", kText, ThroughAString},
        {"FileStream, BufferedStream", kText, ThroughAFile},
        {"BufferedStream over another", kText, Buffered},
        {"GZipStream, compressing", kText, Compress},
        {"GZipStream, decompressing", kCompressed, Decompress},
        {"Encoding", kText, Convert},
        {"HashMap", kText, KeepInAMap},
        {"XmlNsSupport", kText, DeclareNamespaces},
    };
    return kPoints;
}

}  // namespace allocation
