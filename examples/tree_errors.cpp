// SPDX-License-Identifier: MIT
// Provokes the messages of trees and prints them: tree_errors
//
// The tables in docs/errors.md show the same calls; a test compares the two.
#include <espalier/dom.h>
#include <espalier/io/Exception.h>
#include <espalier/io/MemoryStream.h>
#include <espalier/xml.h>

#include <iostream>
#include <memory>
#include <string_view>

namespace {

using Dom::Document;
using Dom::Element;
using Dom::Node;
using Dom::NodePtr;

// An element that refuses changes.
class Locked : public Element {
public:
    explicit Locked(Document& document) : Element("", "locked", &document) {}
    void Lock() { SetReadOnly(true); }
};

// A node of a kind that no document makes.
class Declaration : public Node {
public:
    explicit Declaration(Document& document)
        : Node(Dom::DOMNodeType::XML_DECLARATION_NODE, "", "xml", &document) {}
    Node* CloneNode(bool) override { return nullptr; }
};

// What the calls work on: a document with the elements a, b in it and c behind b.
struct Tree {
    Document document;
    Document other;  // <x/>
    Element* a;
    Node* b;
    Node* c;

    Tree() {
        document.LoadXml("<a><b/><c/></a>");
        other.LoadXml("<x/>");
        a = document.DocumentElement();
        b = a->FirstChild();
        c = a->LastChild();
    }

    Element& B() const { return static_cast<Element&>(*b); }
    Element& C() const { return static_cast<Element&>(*c); }
};

struct Calls {
    const char* shown;
    void (*call)(Tree& tree);
};

// Loads what a reader gives from where it stands after so many nodes.
void LoadFrom(Document& document, std::string_view text, int nodes) {
    IO::MemoryStream stream(reinterpret_cast<const unsigned char*>(text.data()),
                            static_cast<long>(text.size()));
    Xml::XmlTextReader reader;
    reader.SetStream(&stream, false);
    for (int i = 0; i < nodes; ++i)
        reader.Read();
    document.Load(reader, "");
}

const Calls kCalls[] = {
    // Children.
    {"AppendChild(nullptr)", [](auto& tree) { tree.a->AppendChild(nullptr); }},
    {"RemoveChild(c) of b", [](auto& tree) { tree.b->RemoveChild(tree.c); }},
    {"AppendChild(b) of a read-only element",
     [](auto& tree) {
         Locked locked(tree.document);
         locked.Lock();
         locked.AppendChild(tree.b);
     }},
    {"AppendChild() of a read-only element's child",
     [](auto& tree) {
         Locked locked(tree.document);
         locked.AppendChild(tree.document.CreateElement("d"));
         locked.Lock();
         tree.a->AppendChild(locked.FirstChild());
     }},
    {"InsertBefore() of a read-only element's child, before c",
     [](auto& tree) {
         Locked locked(tree.document);
         locked.AppendChild(tree.document.CreateElement("d"));
         locked.Lock();
         tree.a->InsertBefore(locked.FirstChild(), tree.c);
     }},
    {"AppendChild() of another document's element",
     [](auto& tree) { tree.a->AppendChild(tree.other.DocumentElement()); }},
    {"InsertBefore() of another document's element, before c",
     [](auto& tree) { tree.a->InsertBefore(tree.other.DocumentElement(), tree.c); }},
    {"ReplaceChild() of c by another document's element",
     [](auto& tree) { tree.a->ReplaceChild(tree.other.DocumentElement(), tree.c); }},
    {"AppendChild(a) of b", [](auto& tree) { tree.b->AppendChild(tree.a); }},
    {"InsertBefore(a, c) of a", [](auto& tree) { tree.a->InsertBefore(tree.a, tree.c); }},
    {"ReplaceChild(a, c) of a", [](auto& tree) { tree.a->ReplaceChild(tree.a, tree.c); }},
    {"AppendChild(b) of a", [](auto& tree) { tree.a->AppendChild(tree.b); }},

    // Children of a document.
    {"AppendChild() of a second element",
     [](auto& tree) {
         const NodePtr node(tree.document.CreateElement("d"));
         tree.document.AppendChild(node.get());
     }},
    {"AppendChild() of a second document type",
     [](auto&) {
         Document document;
         document.AppendChild(new Dom::DocumentType("a", "", "", &document));
         Dom::DocumentType second("a", "", "", &document);
         document.AppendChild(&second);
     }},
    {"AppendChild() of a document type behind the root element",
     [](auto& tree) {
         Dom::DocumentType type("a", "", "", &tree.document);
         tree.document.AppendChild(&type);
     }},
    {"AppendChild() of an XML declaration",
     [](auto& tree) {
         Declaration declaration(tree.document);
         tree.document.AppendChild(&declaration);
     }},
    {"AppendChild() of the text \" x\"",
     [](auto& tree) {
         const NodePtr text(tree.document.CreateTextNode(" x"));
         tree.document.AppendChild(text.get());
     }},
    {"AppendChild() of a section",
     [](auto& tree) {
         const NodePtr section(tree.document.CreateCDATASection("x"));
         tree.document.AppendChild(section.get());
     }},

    // Names and attributes.
    {"SetPrefix(\"p\") of b, which has no namespace", [](auto& tree) { tree.b->SetPrefix("p"); }},
    {"SetAttributeNode() with another document's attribute",
     [](auto& tree) {
         const std::unique_ptr<Dom::Attr> attribute(tree.other.CreateAttribute("y"));
         tree.a->SetAttributeNode(attribute.get());
     }},
    {"SetAttributeNode() of c with an attribute of b",
     [](auto& tree) {
         tree.B().SetAttribute("y", "1");
         tree.C().SetAttributeNode(tree.B().GetAttributeNode("y"));
     }},
    {"Attributes()->SetNamedItem() with an element",
     [](auto& tree) { tree.a->Attributes()->SetNamedItem(tree.b); }},
    {"RemoveAttribute(\"x\"), and there is none", [](auto& tree) { tree.a->RemoveAttribute("x"); }},

    // Documents.
    {"Load() of a reader on a comment",
     [](auto& tree) { LoadFrom(tree.other, "<!--x--><a/>", 1); }},
    {"SetXmlVersion(\"1.1\")", [](auto& tree) { tree.document.SetXmlVersion("1.1"); }},
    {"NormalizeDocument()", [](auto& tree) { tree.document.NormalizeDocument(); }},
    {"CreateDocumentType(\"a\", \"\", \"\")",
     [](auto&) { Dom::DOMImplementation().CreateDocumentType("a", "", ""); }},
    {"ImportNode() of a document", [](auto& tree) { tree.document.ImportNode(tree.other, true); }},
};

bool Provoke(const Calls& calls) {
    constexpr std::string_view kBegin = "DOMException: ";
    Tree tree;
    try {
        calls.call(tree);
    } catch (const Dom::DOMException& error) {
        std::cout << calls.shown << "\n    " << std::string_view(error.What()).substr(kBegin.size())
                  << " (" << error.Code() << ")\n";
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
