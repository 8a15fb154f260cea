// SPDX-License-Identifier: MIT
#include <espalier/io/GZipStream.h>
#include <espalier/io/MemoryStream.h>
#include <espalier/sax/InputSource.h>
#include <espalier/sax/XMLReader.h>
#include <espalier/sax/helpers/DefaultHandler.h>
#include <espalier/xml/XmlTextReader.h>

#include "ceilings/Family.h"
#include "support/CollidingNames.h"

namespace ceilings {
namespace {

using Xml::XmlConformance;
using Xml::XmlEntityHandling;
using Xml::XmlTextReader;

IO::MemoryStream StreamOver(const std::string& input) {
    return {reinterpret_cast<const unsigned char*>(input.data()), static_cast<long>(input.size())};
}

// Reads all nodes and asks for their values, which are made on demand.
void ReadAll(IO::Stream& stream, XmlConformance conformance) {
    XmlTextReader reader;
    reader.SetStream(&stream, false);
    reader.SetConformance(conformance);
    reader.SetEntityHandling(XmlEntityHandling::ExpandEntities);
    while (reader.Read()) {
        (void)reader.Value();
        for (const Xml::XmlAttributeRef attribute : reader.Attributes())
            (void)attribute.Value();
    }
}

void Read(const std::string& input) {
    IO::MemoryStream stream = StreamOver(input);
    ReadAll(stream, XmlConformance::Compatible);
}

void ReadStandard(const std::string& input) {
    IO::MemoryStream stream = StreamOver(input);
    ReadAll(stream, XmlConformance::Standard);
}

void ReadCompressed(const std::string& input) {
    IO::MemoryStream source = StreamOver(input);
    IO::GZipStream stream(&source, IO::CompressionMode::Decompress);
    ReadAll(stream, XmlConformance::Compatible);
}

void Parse(const std::string& input) {
    IO::MemoryStream stream = StreamOver(input);
    sax::XMLReader reader;
    reader.setReportReaderErrors(false);
    sax::helpers::DefaultHandler handler;
    reader.setContentHandler(&handler);
    reader.parse(sax::InputSource(&stream, "input"));
}

// A document that decompresses to ten times `size`.
std::string Compressed(std::size_t size) {
    IO::MemoryStream target;
    IO::GZipStream stream(&target, IO::CompressionMode::Compress);
    const auto write = [&stream](std::string_view text) {
        stream.Write(reinterpret_cast<const unsigned char*>(text.data()), 0,
                     static_cast<int>(text.size()));
    };
    write("<a>");
    for (std::size_t i = 0; i < size / 100; ++i)
        write(std::string(990, ' ') + "<b></b>   ");
    write("</a>");
    stream.Close();
    return {reinterpret_cast<const char*>(target.GetBuffer()),
            static_cast<std::size_t>(target.Length())};
}

std::string WithSubset(const std::string& declarations, std::string_view content) {
    return "<!DOCTYPE r [" + declarations + "]><r>" + std::string(content) + "</r>";
}

// Ten entities, each of ten references to the one before; and a text as long as is asked for.
std::string NestedBomb(std::size_t size, std::string_view percent) {
    const char mark = percent.empty() ? '&' : '%';
    std::string declarations =
        "<!ENTITY " + std::string(percent) + "e0 '" + std::string(20, ' ') + "'>";
    for (int i = 1; i < 10; ++i) {
        const std::string reference = (mark == '%' ? "&#37;e" : "&e") + std::to_string(i - 1) + ";";
        declarations += "<!ENTITY " + std::string(percent) + "e" + std::to_string(i) + " '" +
                        Filled(reference.size() * 10, reference) + "'>";
    }
    if (mark == '%') return WithSubset(declarations + Filled(size, " ") + "%e9;", "");
    return WithSubset(declarations, Filled(size, "x") + "&e9;");
}

std::string CollidingAttributes(std::size_t size) {
    const auto names = support::CollidingNames(support::WeakHash::ByteSum, size / 64);
    std::string document = "<r";
    for (const std::string& name : names)
        document += " " + name + "=''";
    return document + "/>";
}

std::string Utf16(const std::string& text) {
    std::string bytes = "\xFF\xFE";
    for (const char character : text) {
        bytes += character;
        bytes += '\0';
    }
    return bytes;
}

// Documents as such.
constexpr Family kMarkup[] = {
    {"elements in each other", 16, [](std::size_t size) { return Nested(size, "<a>", "", "</a>"); },
     Read},
    {"elements that are never closed", 32, [](std::size_t size) { return Filled(size, "<a>"); },
     Read, "Missing end element"},
    {"elements in each other, as events", 16,
     [](std::size_t size) { return Nested(size, "<a>", "", "</a>"); }, Parse},
    {"attributes on one element", 48,
     [](std::size_t size) {
         return "<r" + Numbered(size, [](auto i) { return " a" + i + "='v'"; }) + "/>";
     },
     Read},
    {"attributes on one element, as events", 44,
     [](std::size_t size) {
         return "<r" + Numbered(size, [](auto i) { return " a" + i + "='&lt;'"; }) + "/>";
     },
     Parse},
    {"namespaces on one element", 42,
     [](std::size_t size) {
         return "<r" + Numbered(size, [](auto i) { return " xmlns:p" + i + "='u'"; }) + "/>";
     },
     Read},
    {"namespaces at every depth", 26,
     [](std::size_t size) {
         return Numbered(size, [](auto i) { return "<a xmlns:p" + i + "='urn:" + i + "'>"; });
     },
     Read, "Missing end element"},
    {"different names", 40,
     [](std::size_t size) {
         return "<r>" + Numbered(size, [](auto i) { return "<e" + i + "/>"; }) + "</r>";
     },
     Read},
    {"names whose hashes collide", 48, CollidingAttributes, Read},
    {"a long name", 1, [](std::size_t size) { return "<" + Filled(size, "n") + "/>"; }, Read,
     "Buffer overflow while reading markup token"},
    {"a long value", 6, [](std::size_t size) { return "<r a='" + Filled(size, "v") + "'/>"; },
     Read},
    {"a long text", 4, [](std::size_t size) { return "<r>" + Filled(size, "t ") + "</r>"; }, Read},
    {"a long comment", 4,
     [](std::size_t size) { return "<r><!--" + Filled(size, "c ") + "--></r>"; }, Read},
    {"a long instruction", 4,
     [](std::size_t size) { return "<r><?p " + Filled(size, "d ") + "?></r>"; }, Read},
    {"a long section", 4,
     [](std::size_t size) { return "<r><![CDATA[" + Filled(size, "]] ") + "]]></r>"; }, Read},
    {"a long text that has no end", 4, [](std::size_t size) { return "<r>" + Filled(size, "t "); },
     Read, "Missing end element"},
    {"blanks", 1, [](std::size_t size) { return "<r>" + Filled(size, " ") + "</r>"; }, Read},
    {"references to characters", 1,
     [](std::size_t size) { return "<r>" + Filled(size, "&#65;&lt;") + "</r>"; }, Read},
    {"references to characters in a value", 4,
     [](std::size_t size) { return "<r a='" + Filled(size, "&#65;&lt;") + "'/>"; }, Read},
    {"a text in UTF-16", 2,
     [](std::size_t size) { return Utf16("<r>" + Filled(size / 2, "t ") + "</r>"); }, Read},
    {"bytes that are no characters", 1,
     [](std::size_t size) { return "<r>" + Filled(size, "\xC0\xFF\xED\xA0\x80") + "</r>"; }, Read,
     "Invalid character"},
    {"a compressed document", 1, Compressed, ReadCompressed},
};

// Document types.
constexpr Family kDeclarations[] = {
    {"a document type that is passed over", 3,
     [](std::size_t size) { return WithSubset(Filled(size, "<!ELEMENT a (b|c)*><!-- c -->"), ""); },
     Read},
    {"entities", 24,
     [](std::size_t size) {
         return WithSubset(Numbered(size, [](auto i) { return "<!ENTITY e" + i + " 't'>"; }), "");
     },
     Read},
    {"entities that name the next", 20,
     [](std::size_t size) {
         return WithSubset(Numbered(size,
                                    [](const std::string& i) {
                                        return "<!ENTITY e" + i + " '&e" +
                                               std::to_string(std::stoi(i) + 1) + ";'>";
                                    }),
                           "&e0;");
     },
     Read, "Entity nesting limit exceeded"},
    {"attribute lists, in standard mode", 34,
     [](std::size_t size) {
         return WithSubset(
             Numbered(size, [](auto i) { return "<!ATTLIST r a" + i + " CDATA 'v'>"; }), "");
     },
     ReadStandard},
    {"entities in entities", 3, [](std::size_t size) { return NestedBomb(size, ""); }, Read,
     "Entity expansion limit exceeded"},
    {"parameter entities in each other", 2, [](std::size_t size) { return NestedBomb(size, "% "); },
     ReadStandard, "Entity expansion limit exceeded"},
    {"many references to a long entity", 130,
     [](std::size_t size) {
         return WithSubset("<!ENTITY e '" + Filled(size / 2, "x") + "'>", Filled(size / 2, "&e;"));
     },
     Read, "Entity expansion limit exceeded"},
    {"a long supplied attribute on many elements", 3,
     [](std::size_t size) {
         return WithSubset("<!ATTLIST e a CDATA '" + Filled(size / 2, "x") + "'>",
                           Filled(size / 2, "<e/>"));
     },
     ReadStandard, "Limit on supplied attributes exceeded"},
};

}  // namespace

std::span<const Family> XmlFamilies() { return kMarkup; }
std::span<const Family> DocumentTypeFamilies() { return kDeclarations; }

std::string Filled(std::size_t size, std::string_view text) {
    std::string result;
    result.reserve(size + text.size());
    do
        result += text;
    while (result.size() < size);
    return result;
}

std::string Nested(std::size_t size, std::string_view begin, std::string_view inside,
                   std::string_view end) {
    const std::size_t depth = size / (begin.size() + end.size());
    return Filled(depth * begin.size(), begin) + std::string(inside) +
           Filled(depth * end.size(), end);
}

}  // namespace ceilings
