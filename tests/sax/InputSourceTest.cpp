// SPDX-License-Identifier: MIT
#include <espalier/io/MemoryStream.h>
#include <espalier/sax/InputSource.h>
#include <espalier/xml/XmlTextReader.h>

#include "support/PrintAstring.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <type_traits>

namespace {

using sax::InputSource;

struct Fields {
    const char* publicId = "";
    const char* systemId = "";
    const char* encoding = "";
    const char* characters = nullptr;
    IO::Stream* stream = nullptr;
    Xml::XmlTextReader* reader = nullptr;
    std::FILE* file = nullptr;
};

void ExpectFields(const InputSource& source, const Fields& fields) {
    EXPECT_EQ(source.getPublicId(), fields.publicId);
    EXPECT_EQ(source.getSystemId(), fields.systemId);
    EXPECT_EQ(source.getEncoding(), fields.encoding);
    EXPECT_EQ(source.getCharacterStream(), fields.characters);
    EXPECT_EQ(source.getByteStream(), fields.stream);
    EXPECT_EQ(source.getReader(), fields.reader);
    EXPECT_EQ(source.getFile(), fields.file);
}

TEST(InputSource, EachConstructorSetsWhatItIsGiven) {
    IO::MemoryStream stream;
    Xml::XmlTextReader reader;
    ExpectFields(InputSource(), {});
    ExpectFields(InputSource("system"), {.systemId = "system"});
    ExpectFields(InputSource(astring("system")), {.systemId = "system"});
    ExpectFields(InputSource(&stream, "system"), {.systemId = "system", .stream = &stream});
    ExpectFields(InputSource(stdin, "system"), {.systemId = "system", .file = stdin});
    ExpectFields(InputSource(&reader), {.reader = &reader});
}

TEST(InputSource, EachSetterSetsItsField) {
    static const char kText[] = "<a/>";
    IO::MemoryStream stream;
    InputSource source;
    source.setPublicId("public");
    ExpectFields(source, {.publicId = "public"});
    source.setSystemId("system");
    ExpectFields(source, {.publicId = "public", .systemId = "system"});
    source.setEncoding("UTF-8");
    ExpectFields(source, {.publicId = "public", .systemId = "system", .encoding = "UTF-8"});
    source.setCharacterStream(kText);
    source.setByteStream(&stream, "of the stream");
    ExpectFields(source, {.publicId = "public",
                          .systemId = "of the stream",
                          .encoding = "UTF-8",
                          .characters = kText,
                          .stream = &stream});
    source.setByteStream(stdin, "of the file");
    ExpectFields(source, {.publicId = "public",
                          .systemId = "of the file",
                          .encoding = "UTF-8",
                          .characters = kText,
                          .stream = &stream,
                          .file = stdin});
}

TEST(InputSource, CopiesTakeEveryField) {
    static const char kText[] = "<a/>";
    IO::MemoryStream stream;
    Xml::XmlTextReader reader;
    InputSource source(&reader);
    source.setPublicId("public");
    source.setEncoding("UTF-8");
    source.setCharacterStream(kText);
    source.setByteStream(&stream, "");
    source.setByteStream(stdin, "system");
    const Fields all = {"public", "system", "UTF-8", kText, &stream, &reader, stdin};
    ExpectFields(source, all);
    const InputSource copy(source);
    ExpectFields(copy, all);
    InputSource assigned("another");
    assigned = source;
    ExpectFields(assigned, all);
}

TEST(InputSource, OwnsNothing) {
    IO::MemoryStream stream;
    stream.WriteByte('a');
    { const InputSource source(&stream, "system"); }
    EXPECT_TRUE(stream.CanRead());
    EXPECT_EQ(stream.Length(), 1);
}

TEST(InputSource, ANullPointerForAnIdentifierIsAnEmptyText) {
    IO::MemoryStream stream;
    ExpectFields(InputSource(static_cast<const char*>(nullptr)), {});
    ExpectFields(InputSource(&stream, nullptr), {.stream = &stream});
    ExpectFields(InputSource(stdin, nullptr), {.file = stdin});
}

TEST(InputSource, IsMadeToBeDerivedFrom) {
    EXPECT_TRUE(std::has_virtual_destructor_v<InputSource>);
}

}  // namespace
