// SPDX-License-Identifier: MIT
// Writes bytes of a stream as base64, piece by piece, and a few as hexadecimal digits.
#include <espalier/espalier.h>

#include <iostream>

namespace {

//! [write binary]
// Writes what a stream holds as base64. The pieces are a multiple of 57 bytes long, which make a
// line of 76 characters, so the text is the same as if all bytes were written at once.
void WriteBytes(Xml::XmlTextWriter& writer, IO::Stream& stream) {
    unsigned char bytes[57 * 64];
    int held = 0;
    while (const int count = stream.Read(bytes, held, static_cast<int>(sizeof bytes) - held)) {
        held += count;
        if (held < static_cast<int>(sizeof bytes)) continue;
        writer.WriteBase64(bytes, 0, held);
        held = 0;
    }
    writer.WriteBase64(bytes, 0, held);
}
//! [write binary]

void Write() {
    unsigned char picture[100];
    for (unsigned char i = 0; i < sizeof picture; ++i)
        picture[i] = i;
    constexpr unsigned char kHash[] = {0x00, 0xAB, 0xCD, 0xEF};

    IO::MemoryStream input(picture, static_cast<long>(sizeof picture));
    IO::StringStream output;
    Xml::UTF8Encoding utf8;
    Xml::XmlTextWriter writer(&output, &utf8);
    writer.SetNewLineChars("\n");
    writer.WriteStartElement("picture");
    //! [write hexadecimal]
    writer.WriteStartAttribute("hash");
    writer.WriteBinHex(kHash, 0, sizeof kHash);
    writer.WriteEndAttribute();
    //! [write hexadecimal]
    WriteBytes(writer, input);
    writer.WriteEndElement();
    writer.Close();
    std::cout << output.GetString() << "\n";
}

}  // namespace

int main() {
    try {
        Write();
    } catch (const Xml::Exception& error) {
        std::cerr << error.What() << "\n";
        return 1;
    }
    return 0;
}
