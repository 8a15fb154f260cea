// SPDX-License-Identifier: MIT
#include <espalier/io/StringStream.h>
#include <espalier/xml/XmlTextReader.h>

int main() {
    IO::StringStream stream("<plot><pear/></plot>", false);
    Xml::XmlTextReader reader;
    reader.SetStream(&stream, false);
    int elements = 0;
    while (reader.Read()) {
        if (reader.NodeType() == Xml::XmlNodeType::Element) ++elements;
    }
    return elements == 2 ? 0 : 1;
}
