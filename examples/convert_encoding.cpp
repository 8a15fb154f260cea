// SPDX-License-Identifier: MIT
// Converts a greeting, then ISO-8859-1 on standard input, to UTF-8:
// convert_encoding < samples/latin1.xml
#include <espalier/encoding.h>
#include <espalier/io.h>

#include <algorithm>  // std::copy
#include <iostream>
#include <string>

namespace {

//! [convert a text]
// Returns a text in ISO-8859-1 as UTF-8.
std::string ToUtf8(const std::string& latin1) {
    std::string text(2 * latin1.size() + 1, ' ');
    const unsigned written = Xml::Encoding::Convert(
        Xml::Encoding::Latin1(), Xml::Encoding::UTF8(),
        reinterpret_cast<const unsigned char*>(latin1.data()), static_cast<unsigned>(latin1.size()),
        reinterpret_cast<unsigned char*>(text.data()), static_cast<unsigned>(text.size()));
    text.resize(written);
    return text;
}
//! [convert a text]

//! [convert]
// Converts a stream block by block. What a block leaves, a character that is cut, goes before the
// next one.
void Convert(IO::Stream& from, Xml::Encoding* encoding, std::ostream& to) {
    unsigned char in[4096];
    unsigned char out[4 * sizeof in];
    unsigned kept = 0;
    const auto room = static_cast<unsigned>(sizeof in);
    while (const int count = from.Read(in, static_cast<int>(kept), static_cast<int>(room - kept))) {
        const unsigned held = kept + static_cast<unsigned>(count);
        unsigned consumed = 0;
        const unsigned written = Xml::Encoding::Convert(encoding, Xml::Encoding::UTF8(), in, held,
                                                        out, sizeof out, consumed);
        to.write(reinterpret_cast<const char*>(out), written);
        kept = held - consumed;
        std::copy(in + consumed, in + held, in);
    }
}
//! [convert]

}  // namespace

int main() {
    try {
        std::cout << ToUtf8("Gr\xFC\xDF Gott") << "\n";
        IO::FileStream input(0, 1, false);
        Convert(input, Xml::Encoding::Latin1(), std::cout);
    } catch (const Xml::Exception& error) {
        std::cerr << error.What() << "\n";
        return 1;
    }
    return 0;
}
