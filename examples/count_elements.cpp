// SPDX-License-Identifier: MIT
// Counts the elements on standard input by name: count_elements < samples/drawing.svg
#include <espalier/io/Exception.h>
#include <espalier/io/FileStream.h>
#include <espalier/xml/XmlTextReader.h>

#include <iostream>
#include <map>
#include <string>

namespace {

using Counts = std::map<std::string, long>;

//! [count elements]
Counts CountElements(IO::Stream& stream) {
    Counts counts;
    Xml::XmlTextReader reader;
    reader.SetStream(&stream, false);  // the stream stays ours
    while (reader.Read()) {
        if (reader.NodeType() == Xml::XmlNodeType::Element) ++counts[reader.Name().str()];
    }
    return counts;
}
//! [count elements]

}  // namespace

int main() {
    try {
        //! [standard input]
        IO::FileStream input(0, 1, false);  // descriptor 0, to read, not to be closed
        //! [standard input]
        for (const auto& [name, count] : CountElements(input)) {
            std::cout << count << " " << name << "\n";
        }
    } catch (const Xml::Exception& error) {
        std::cerr << "line " << error.LineNumber() << ": " << error.What() << "\n";
        return 1;
    }
    return 0;
}
