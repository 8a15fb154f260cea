// SPDX-License-Identifier: MIT
#include <espalier/dom.h>
#include <espalier/encoding/UnicodeEncodings.h>
#include <espalier/io/MemoryStream.h>
#include <espalier/xml/XmlTextReader.h>
#include <espalier/xml/XmlTextWriter.h>

#include "ceilings/Family.h"

#include <memory>

namespace ceilings {
namespace {

void Load(const std::string& input) {
    Dom::Document document;
    document.LoadXml(input);
}

// Takes the texts of entities into the tree.
void LoadExpanded(const std::string& input) {
    IO::MemoryStream stream(reinterpret_cast<const unsigned char*>(input.data()),
                            static_cast<long>(input.size()));
    Xml::XmlTextReader reader;
    reader.SetStream(&stream, false);
    reader.SetEntityHandling(Xml::XmlEntityHandling::ExpandEntities);
    Dom::Document document;
    document.Load(reader, "");
}

void LoadPage(const std::string& input) {
    Dom::HTMLDocument document;
    document.LoadXml(input);
}

// Copies the tree, and joins its texts.
void Copy(const std::string& input) {
    Dom::Document document;
    document.LoadXml(input);
    const std::unique_ptr<Dom::Node> copy(document.CloneTree());
    copy->Normalize();
    (void)copy->TextContent();
}

void Write(const std::string& input) {
    Dom::Document document;
    document.LoadXml(input);
    IO::MemoryStream target;
    Xml::UTF8Encoding encoding;
    Xml::XmlTextWriter writer(&target, &encoding);
    Dom::WriteNode(document, writer);
    writer.Close();
}

std::string Deep(std::size_t size) { return Nested(size, "<a>", "", "</a>"); }

std::string Wide(std::size_t size) { return "<r>" + Filled(size, "<a/>t") + "</r>"; }

std::string Attributes(std::size_t size) {
    return "<r" + Numbered(size, [](auto i) { return " a" + i + "='v" + i + "'"; }) + "/>";
}

constexpr Family kFamilies[] = {
    {"a deep tree", 26, Deep, Load},
    {"a deep tree of a page", 42,
     [](std::size_t size) {
         return "<html xmlns='http://www.w3.org/1999/xhtml'>" + Nested(size, "<p>", "", "</p>") +
                "</html>";
     },
     LoadPage},
    {"a deep tree that is copied and joined", 26, Deep, Copy},
    {"a deep tree that is written", 32, Deep, Write},
    {"a wide tree", 34, Wide, Load},
    {"a wide tree that is copied and joined", 80, Wide, Copy},
    {"attributes of one element of a tree", 60, Attributes, Load},
    {"attributes that are copied", 60, Attributes, Copy},
    {"a tree of different names", 70,
     [](std::size_t size) {
         return "<r>" + Numbered(size, [](auto i) { return "<e" + i + "/>"; }) + "</r>";
     },
     Load},
    {"a tree of one long text", 4,
     [](std::size_t size) { return "<r>" + Filled(size, "t ") + "</r>"; }, Load},
    {"entities in entities, in a tree", 3,
     [](std::size_t size) {
         std::string declarations = "<!ENTITY e0 'ha'>";
         for (int i = 1; i < 10; ++i) {
             declarations += "<!ENTITY e" + std::to_string(i) + " '" +
                             Filled(40, "&e" + std::to_string(i - 1) + ";") + "'>";
         }
         return "<!DOCTYPE r [" + declarations + "]><r>" + Filled(size, "x") + "&e9;</r>";
     },
     LoadExpanded, "Entity expansion limit exceeded"},
};

}  // namespace

std::span<const Family> TreeFamilies() { return kFamilies; }

}  // namespace ceilings
