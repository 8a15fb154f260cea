// SPDX-License-Identifier: MIT
// Keeps values in a hash map, by pointer and as copies.
#include <espalier/xml.h>

#include <iostream>

namespace {

//! [hash map]
long WidthPlusHeight() {
    long width = 640;
    long height = 480;
    Xml::HashMap map(64, true);  // 64 buckets to begin with, growing as needed
    map.Insert("width", &width);
    map.Insert("height", &height);
    void* const found = map.Find("width");  // null when the key is absent
    long sum = found == nullptr ? 0 : *static_cast<long*>(found);
    map.Remove("width");

    Xml::HashIterator iterator;
    for (Xml::HashItem item = iterator.First(map); !item.IsNull(); item = iterator.Next())
        sum += *static_cast<long*>(item.GetValue());
    return sum;
}
//! [hash map]

struct Size {
    int width;
    int height;
};

//! [value hooks]
void OwnValues(Xml::HashMap& map) {
    map.SetValueAllocator(
        [](XmlHashMap*, void* value) -> void* { return new Size(*static_cast<Size*>(value)); },
        [](XmlHashMap*, void* value) { delete static_cast<Size*>(value); });
}
//! [value hooks]

}  // namespace

int main() {
    std::cout << WidthPlusHeight() << "\n";
    Xml::HashMap sizes(32, true);
    OwnValues(sizes);
    {
        Size window = {640, 480};
        sizes.Insert("window", &window);  // a copy
    }
    const auto* const size = static_cast<const Size*>(sizes.Find("window"));
    std::cout << size->width << "x" << size->height << "\n";
    return 0;
}
