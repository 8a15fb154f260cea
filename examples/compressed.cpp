// SPDX-License-Identifier: MIT
// Writes a compressed document and reads it back: compressed FILE, which is written and removed
#include <espalier/encoding/Encoding.h>
#include <espalier/io.h>
#include <espalier/xml/XmlTextReader.h>
#include <espalier/xml/XmlTextWriter.h>

#include <cstdio>
#include <iostream>
#include <string>

namespace {

//! [write compressed]
// Writes so many readings of a rain gauge into an .xml.gz file.
void WriteReadings(const char* fileName, int count) {
    IO::FileStream file(fileName, IO::FileMode::Create, 2, 1);
    IO::GZipStream stream(&file, IO::CompressionMode::Compress);
    Xml::XmlTextWriter writer(&stream, Xml::Encoding::UTF8());
    writer.WriteStartElement("readings");
    for (int i = 0; i < count; ++i)
        writer.WriteElementString("rain", std::to_string(i % 50));
    writer.WriteEndElement();
    writer.Close();
    stream.Close();  // ends the compressed data
    file.Close();
}
//! [write compressed]

//! [read compressed]
// Adds up the readings of a file, be it compressed or not.
long SumOfReadings(const char* fileName) {
    IO::FileStream file(fileName, IO::FileMode::Open, 1, 1);
    IO::GZipStream stream(&file, IO::CompressionMode::Decompress);
    Xml::XmlTextReader reader;
    reader.SetStream(&stream, false);
    long sum = 0;
    reader.ReadStartElement("readings");
    while (reader.IsStartElement("rain"))
        sum += std::stol(reader.ReadElementString().c_str());
    return sum;
}
//! [read compressed]

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "usage: compressed FILE, which is written and removed\n";
        return 2;
    }
    try {
        WriteReadings(argv[1], 10000);
        std::cout << SumOfReadings(argv[1]) << " mm\n";
        const IO::FileStream file(argv[1], IO::FileMode::Open, 1, 1);
        std::cout << (file.Length() < 10000 ? "small" : "large") << "\n";
        std::remove(argv[1]);
    } catch (const Xml::Exception& error) {
        std::cerr << argv[1] << ": " << error.What() << "\n";
        return 1;
    }
    return 0;
}
