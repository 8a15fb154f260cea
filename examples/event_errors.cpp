// SPDX-License-Identifier: MIT
// Provokes the messages of events and prints them: event_errors
//
// The tables in docs/errors.md show the same calls; a test compares the two.
#include <espalier/io/Exception.h>
#include <espalier/io/StringStream.h>
#include <espalier/sax.h>
#include <espalier/xml.h>

#include <exception>
#include <iostream>

namespace {

using sax::InputSource;
using sax::XMLReader;
using sax::helpers::AttributesImpl;
using sax::helpers::NamespaceSupport;

// A reader over a text.
struct Input {
    IO::StringStream stream;
    Xml::XmlTextReader reader;

    explicit Input(const char* text) : stream(text, false) { reader.SetStream(&stream, false); }
};

// Reads the reader that is the input to its end.
class Greedy : public sax::helpers::DefaultHandler {
public:
    explicit Greedy(Xml::XmlTextReader& reader) : reader_(reader) {}
    void startElement(const char*, const char*, const char*, const sax::Attributes&) override {
        while (reader_.Read())
            continue;
    }

private:
    Xml::XmlTextReader& reader_;
};

// Parses with the reader that calls it.
class Nested : public sax::helpers::DefaultHandler {
public:
    explicit Nested(XMLReader& reader) : reader_(reader) {}
    void startDocument() override { reader_.parse("other.xml"); }

private:
    XMLReader& reader_;
};

struct Calls {
    const char* shown;
    void (*call)(XMLReader& reader);
};

const Calls kCalls[] = {
    // Fatal errors.
    {"parse(InputSource())", [](auto& reader) { reader.parse(InputSource()); }},
    {"parse() of a reader without input",
     [](auto& reader) {
         Xml::XmlTextReader closed;
         reader.parse(InputSource(&closed));
     }},
    {"a handler that reads the reader to its end",
     [](auto& reader) {
         Input input("<a><b/></a>");
         Greedy handler(input.reader);
         reader.setContentHandler(&handler);
         reader.parse(InputSource(&input.reader));
     }},
    {"parse() of a reader that has failed",
     [](auto& reader) {
         Input input("a");
         try {
             input.reader.Read();
         } catch (const Xml::Exception&) {  // from now on it is in the state Error
         }
         reader.parse(InputSource(&input.reader));
     }},

    // Features and properties.
    {"getFeature(\"x\")", [](auto& reader) { reader.getFeature("x"); }},
    {"setFeature(sax::features::kValidation, true)",
     [](auto& reader) { reader.setFeature(sax::features::kValidation, true); }},
    {"setFeature(sax::features::kIsStandalone, true)",
     [](auto& reader) { reader.setFeature(sax::features::kIsStandalone, true); }},
    {"getProperty(\"x\")", [](auto& reader) { reader.getProperty("x"); }},
    {"parse() in a handler of the same reader",
     [](auto& reader) {
         IO::StringStream stream("<a/>", false);
         Nested handler(reader);
         reader.setContentHandler(&handler);
         reader.parse(InputSource(&stream, ""));
     }},

    // Helpers.
    {"processName(), then declarePrefix()",
     [](auto&) {
         NamespaceSupport support;
         support.pushContext();
         const astring* parts[3];
         support.processName("a", parts, false);
         support.declarePrefix("p", "urn:p");
     }},
    {"processName(), then setNamespaceDeclUris(true)",
     [](auto&) {
         NamespaceSupport support;
         support.pushContext();
         const astring* parts[3];
         support.processName("a", parts, false);
         support.setNamespaceDeclUris(true);
     }},
    {"AttributesImpl().setValue(0, \"x\")", [](auto&) { AttributesImpl().setValue(0, "x"); }},
};

bool Provoke(const Calls& calls) {
    XMLReader reader;
    try {
        calls.call(reader);
        std::cerr << calls.shown << ": nothing was thrown\n";
        return false;
    } catch (const sax::SAXException& error) {
        std::cout << calls.shown << "\n    " << error.getMessage() << "\n";
    } catch (const std::exception& error) {
        std::cout << calls.shown << "\n    " << error.what() << "\n";
    }
    return true;
}

}  // namespace

int main() {
    bool all = true;
    for (const Calls& calls : kCalls)
        all &= Provoke(calls);
    return all ? 0 : 1;
}
