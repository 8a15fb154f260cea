// SPDX-License-Identifier: MIT
// Prints the links of a page, with their lines and texts: sax_links samples/page.xhtml
#include <espalier/io/Exception.h>
#include <espalier/sax.h>

#include <iostream>
#include <string>
#include <string_view>

namespace {

//! [print links]
class LinkPrinter : public sax::helpers::DefaultHandler {
public:
    void setDocumentLocator(const sax::Locator* locator) override { locator_ = locator; }

    void startElement(const char* uri, const char* localName, const char*,
                      const sax::Attributes& attributes) override {
        const char* const target = attributes.getValue("href");  // null when there is none
        if (!IsAnchor(uri, localName) || target == nullptr) return;
        line_ = locator_->getLineNumber();
        target_ = target;
        text_.clear();
    }

    // A text may come in several parts.
    void characters(const char* text, int start, int length) override {
        text_.append(text + start, static_cast<std::size_t>(length));
    }
    void ignorableWhitespace(const char* text, int start, int length) override {
        characters(text, start, length);
    }

    void endElement(const char* uri, const char* localName, const char*) override {
        if (!IsAnchor(uri, localName) || target_.empty()) return;
        std::cout << "line " << line_ << ": " << text_ << " -> " << target_ << "\n";
        target_.clear();
    }

private:
    static bool IsAnchor(std::string_view uri, std::string_view localName) {
        return uri == "http://www.w3.org/1999/xhtml" && localName == "a";
    }

    const sax::Locator* locator_ = nullptr;
    int line_ = 0;
    std::string target_;  // of the link that is open; empty when none is
    std::string text_;
};
//! [print links]

}  // namespace

int main(int argc, char** argv) {
    const char* const fileName = argc > 1 ? argv[1] : "samples/page.xhtml";
    //! [catch errors of a parse]
    LinkPrinter printer;
    sax::XMLReader reader;
    reader.setContentHandler(&printer);
    try {
        reader.parse(fileName);
    } catch (const Xml::Exception& error) {
        std::cerr << fileName << ":" << error.LineNumber() << ":" << error.LinePos() << ": "
                  << error.What() << " " << error.Argument() << "\n";
        return 1;
    }
    //! [catch errors of a parse]
    return 0;
}
