// SPDX-License-Identifier: MIT
// Shows operations that do something else than one expects, and their counterparts: surprises
#include <espalier/dom.h>
#include <espalier/io/MemoryStream.h>
#include <espalier/xml.h>

#include <iostream>
#include <string_view>

namespace {

//! [surprising links]
// By the links that the nodes show, and then as they are.
void PrintChildren(const Dom::Node& parent) {
    for (const Dom::Node* node = parent.FirstChild(); node != nullptr; node = node->NextSibling())
        std::cout << " " << node->NodeName();
    std::cout << ";";
    for (const Dom::Node& node : parent.Children())
        std::cout << " " << node.NodeName();
    std::cout << "\n";
}

void Insert(bool asChild) {
    Dom::Document document;
    document.LoadXml("<list><a/><c/></list>");
    Dom::Element& list = *document.DocumentElement();
    Dom::Node* const added = document.CreateElement("b");
    if (asChild) {
        list.InsertChild(added, list.LastChild());  // " a b c; a b c"
    } else {
        list.InsertBefore(added, list.LastChild());  // " a c; a b c"
    }
    PrintChildren(list);
}
//! [surprising links]

//! [surprising skips]
// Where a reader stands after it has passed over the first child of <a><b/></a><c/>.
void Skip() {
    constexpr std::string_view kText = "<x><a><b/></a><c/></x>";
    for (const bool skipsElement : {false, true}) {
        IO::MemoryStream stream(reinterpret_cast<const unsigned char*>(kText.data()),
                                static_cast<long>(kText.size()));
        Xml::XmlTextReader reader;
        reader.SetStream(&stream, false);
        while (reader.Read() && reader.Name() != "b")
            continue;
        if (skipsElement) {
            reader.SkipElement();  // to </a>
        } else {
            reader.Skip();  // to <c/>: the end tag of the element around it is gone
        }
        std::cout << reader.NodeType().ToString() << " " << reader.Name() << "\n";
    }
}
//! [surprising skips]

}  // namespace

int main() {
    Insert(false);
    Insert(true);
    Skip();
}
