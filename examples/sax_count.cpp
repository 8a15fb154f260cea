// SPDX-License-Identifier: MIT
//! [receive events]
#include <espalier/sax.h>

#include <iostream>
#include <map>
#include <string>

class Counter : public sax::helpers::DefaultHandler {
public:
    std::map<std::string, long> counts;

    void startElement(const char*, const char* localName, const char*,
                      const sax::Attributes&) override {
        ++counts[localName];
    }
};

int main(int argc, char** argv) {
    Counter counter;
    sax::XMLReader reader;
    reader.setContentHandler(&counter);
    reader.parse(argc > 1 ? argv[1] : "samples/drawing.svg");
    for (const auto& [name, count] : counter.counts)
        std::cout << count << " " << name << "\n";
}
//! [receive events]
