// SPDX-License-Identifier: MIT
// Prints the title of a plant, and reads no further than that: sax_stop samples/catalogue.xml
#include <espalier/io/Exception.h>
#include <espalier/sax.h>

#include <iostream>
#include <optional>
#include <string>
#include <string_view>

namespace {

//! [stop early]
// Thrown by the handler when it knows enough.
struct Found {
    std::string title;
};

class TitleFinder : public sax::helpers::DefaultHandler {
public:
    explicit TitleFinder(std::string_view id) : id_(id) {}

    void startElement(const char*, const char* localName, const char*,
                      const sax::Attributes& attributes) override {
        const std::string_view name = localName;
        const char* const id = attributes.getValue("id");  // null when there is none
        if (name == "plant") isPlant_ = id != nullptr && id == id_;
        isTitle_ = isPlant_ && name == "title";
    }
    void characters(const char* text, int start, int length) override {
        if (isTitle_) title_.append(text + start, static_cast<std::size_t>(length));
    }
    void endElement(const char*, const char*, const char*) override {
        if (isTitle_) throw Found{title_};
    }

private:
    std::string_view id_;
    bool isPlant_ = false;  // the plant has been found
    bool isTitle_ = false;  // and its title is open
    std::string title_;
};

std::optional<std::string> TitleOf(const char* fileName, std::string_view id) {
    TitleFinder finder(id);
    sax::XMLReader reader;
    reader.setContentHandler(&finder);
    try {
        reader.parse(fileName);
    } catch (const Found& found) {
        return found.title;  // the file is closed, and the reader could parse another
    }
    return std::nullopt;
}
//! [stop early]

}  // namespace

int main(int argc, char** argv) {
    const char* const fileName = argc > 1 ? argv[1] : "samples/catalogue.xml";
    try {
        for (const char* const id : {"p-102", "p-999"}) {
            std::cout << id << ": " << TitleOf(fileName, id).value_or("(none)") << "\n";
        }
    } catch (const Xml::Exception& error) {
        std::cerr << fileName << ": " << error.What() << "\n";
        return 1;
    }
    return 0;
}
