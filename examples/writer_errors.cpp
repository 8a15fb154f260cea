// SPDX-License-Identifier: MIT
// Provokes every message of the writer and prints it: writer_errors
//
// The tables in docs/errors.md show the same calls; a test compares the two.
#include <espalier/espalier.h>

#include <iostream>

namespace {

using Xml::XmlTextWriter;

// Calls on a new writer, of which the last one throws.
struct Calls {
    const char* shown;
    void (*call)(XmlTextWriter& writer);
};

void OpenOn(IO::Stream* stream, Xml::Encoding* encoding) {
    const XmlTextWriter writer(stream, encoding);
}

void OpenForReading() {
    IO::StringStream stream("", false);
    OpenOn(&stream, Xml::Encoding::UTF8());
}

void WriteInvalidSpace(XmlTextWriter& writer) {
    writer.WriteStartElement("a");
    writer.WriteAttributeString("xml", "space", nullptr, "no");
}

const Calls kCalls[] = {
    // Construction and settings.
    {"a null stream", [](auto&) { OpenOn(nullptr, Xml::Encoding::UTF8()); }},
    {"a stream that cannot write", [](auto&) { OpenForReading(); }},
    {"a null encoding", [](auto&) { OpenOn(IO::Stream::Null(), nullptr); }},
    {"SetNewLineChars(\"x\")", [](auto& writer) { writer.SetNewLineChars("x"); }},
    {"SetNamespaces(false) in an element",
     [](auto& writer) {
         writer.WriteStartElement("a");
         writer.SetNamespaces(false);
     }},
    {"Close(), then WriteComment(\"x\")",
     [](auto& writer) {
         writer.Close();
         writer.WriteComment("x");
     }},
    {"Close() twice",
     [](auto& writer) {
         writer.Close();
         writer.Close();
     }},

    // Documents.
    {"WriteStartDocument() twice",
     [](auto& writer) {
         writer.WriteStartDocument();
         writer.WriteStartDocument();
     }},
    {"WriteDocType(\"a\", \"\", \"\", \"\") in an element",
     [](auto& writer) {
         writer.WriteStartElement("a");
         writer.WriteDocType("a", "", "", "");
     }},
    {"WriteDocType(\"1\", \"\", \"\", \"\")",
     [](auto& writer) { writer.WriteDocType("1", "", "", ""); }},

    // Elements.
    {"WriteDocType(\"a\", \"\", \"\", \"\"), then WriteStartElement(\"b\")",
     [](auto& writer) {
         writer.WriteDocType("a", "", "", "");
         writer.WriteStartElement("b");
     }},
    {"WriteStartElement(\"p\", \"a\", \"\")",
     [](auto& writer) { writer.WriteStartElement("p", "a", ""); }},
    {"WriteStartElement(\"xmlp\", \"a\", \"urn:x\")",
     [](auto& writer) { writer.WriteStartElement("xmlp", "a", "urn:x"); }},
    {"SetNamespaces(false), then WriteStartElement(\"a\", \"urn:x\")",
     [](auto& writer) {
         writer.SetNamespaces(false);
         writer.WriteStartElement("a", "urn:x");
     }},
    {"WriteEndElement() at the beginning", [](auto& writer) { writer.WriteEndElement(); }},
    {"WriteFullEndElement() at the beginning", [](auto& writer) { writer.WriteFullEndElement(); }},

    // Attributes.
    {"WriteAttributeString(\"x\", \"1\") at the beginning",
     [](auto& writer) { writer.WriteAttributeString("x", "1"); }},
    {"WriteEndAttribute() in a start tag",
     [](auto& writer) {
         writer.WriteStartElement("a");
         writer.WriteEndAttribute();
     }},
    {"WriteAttributeString(\"p\", \"x\", nullptr, \"1\") in a start tag",
     [](auto& writer) {
         writer.WriteStartElement("a");
         writer.WriteAttributeString("p", "x", nullptr, "1");
     }},
    {"WriteAttributeString(\"p\", \"x\", \"\", \"1\") in a start tag",
     [](auto& writer) {
         writer.WriteStartElement("a");
         writer.WriteAttributeString("p", "x", "", "1");
     }},
    {"WriteAttributeString(\"xml\", \"space\", nullptr, \"no\") in a start tag", WriteInvalidSpace},

    // Content.
    {"WriteString(\"x\") at the beginning", [](auto& writer) { writer.WriteString("x"); }},
    {"WriteString(\"\\x01\") in an element",
     [](auto& writer) {
         writer.WriteStartElement("a");
         writer.WriteString("\x01");
     }},
    {"WriteWhitespace(\"x\") in an element",
     [](auto& writer) {
         writer.WriteStartElement("a");
         writer.WriteWhitespace("x");
     }},
    {"WriteCData(\"x\") in an attribute",
     [](auto& writer) {
         writer.WriteStartElement("a");
         writer.WriteStartAttribute("x");
         writer.WriteCData("x");
     }},
    {"WriteProcessingInstruction(\"p\", \"x\") in an attribute",
     [](auto& writer) {
         writer.WriteStartElement("a");
         writer.WriteStartAttribute("x");
         writer.WriteProcessingInstruction("p", "x");
     }},
    {"WriteName(\"1\") in an element",
     [](auto& writer) {
         writer.WriteStartElement("a");
         writer.WriteName("1");
     }},
    {"WriteNmToken(\"a b\") in an element",
     [](auto& writer) {
         writer.WriteStartElement("a");
         writer.WriteNmToken("a b");
     }},
    {"WriteEntityRef(\"e\") at the beginning", [](auto& writer) { writer.WriteEntityRef("e"); }},
    {"WriteEntityRef(\"\") in an element",
     [](auto& writer) {
         writer.WriteStartElement("a");
         writer.WriteEntityRef("");
     }},

    // Copies.
    {"WriteNode(nullptr, false)", [](auto& writer) { writer.WriteNode(nullptr, false); }},
    {"WriteAttributes(&reader, false), and the reader is on no node",
     [](auto& writer) {
         Xml::XmlTextReader reader;
         writer.WriteAttributes(&reader, false);
     }},
};

bool Provoke(const Calls& calls) {
    IO::StringStream stream;
    Xml::UTF8Encoding utf8;
    XmlTextWriter writer(&stream, &utf8);
    try {
        calls.call(writer);
    } catch (const Xml::Exception& error) {
        std::cout << calls.shown << "\n    " << error.LineNumber() << ":" << error.LinePos() << ": "
                  << error.What();
        if (*error.Argument() != '\0') std::cout << " (" << error.Argument() << ")";
        std::cout << "\n";
        return true;
    }
    std::cerr << calls.shown << ": nothing was thrown\n";
    return false;
}

}  // namespace

int main() {
    bool all = true;
    for (const Calls& calls : kCalls)
        all &= Provoke(calls);
    return all ? 0 : 1;
}
