// SPDX-License-Identifier: MIT
//
// Carries out a script of operations on a few nodes of two documents. Each byte of the input
// chooses an operation, followed by a byte for each node that it takes and for each name. After
// each one all children are where they are to be, all walks end, and the trees can be copied and
// written. In the end everything is destroyed, in an order that the input chooses.

#include <espalier/dom.h>
#include <espalier/encoding/UnicodeEncodings.h>
#include <espalier/io/Exception.h>
#include <espalier/io/MemoryStream.h>
#include <espalier/xml/XmlTextWriter.h>

#include "../tests/support/TreeDump.h"
#include "ReaderStory.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <span>
#include <stdexcept>
#include <string>

namespace {

using Dom::Attr;
using Dom::Document;
using Dom::DOMNodeType;
using Dom::Element;
using Dom::Node;
using fuzz::Require;

constexpr std::array<const char*, 6> kNames = {"a", "b", "p:a", "xmlns:p", "id", "xml:lang"};
constexpr std::array<const char*, 3> kUris = {"", "urn:1", "urn:2"};
constexpr std::array<const char*, 5> kTexts = {"", "text", " ", "i", "]]>--?>"};
constexpr std::size_t kMostNodes = 4000;  // that a walk may meet

// Returns the node whose destruction destroys this one: the element whose map holds it, even where
// it is a child, too, or else its parent; null for a free node.
Node* HolderOf(const Node& node) {
    if (node.NodeType() == DOMNodeType::ATTRIBUTE_NODE) {
        Element* const owner = static_cast<const Attr&>(node).OwnerElement();
        if (owner != nullptr) {
            Dom::NamedNodeMap& map = *owner->Attributes();
            if (std::find(map.begin(), map.end(), &node) != map.end()) return owner;
        }
    }
    return node.ParentNode();
}

bool IsBelow(const Node* node, const Node& top) {
    while (node != nullptr && node != &top)
        node = HolderOf(*node);
    return node != nullptr;
}

void RequireGoodChildren(const Node& parent) {
    const Node* last = nullptr;
    for (const Node& child : parent.Children()) {
        Require(child.ParentNode() == &parent);
        last = &child;
    }
    Require(parent.LastChild() == last);
    std::size_t count = 0;
    for (const Node* node = parent.FirstChild(); node != nullptr; node = node->NextSibling())
        Require(++count < kMostNodes);
    for (const Node* node = parent.LastChild(); node != nullptr; node = node->PreviousSibling())
        Require(++count < 2 * kMostNodes);
    Require(parent.ChildNodes().Length() < kMostNodes);
}

void RequireSameTree(const Node& copy, const Node& original) {
    const auto lines = support::TreeBelow(copy);
    const auto expected = support::TreeBelow(original);
    if (lines == expected) return;
    for (const auto& text : {lines, expected}) {
        for (const std::string& line : text)
            std::fprintf(stderr, "%s\n", line.c_str());
        std::fprintf(stderr, "instead of\n");
    }
    Require(false);
}

class Script {
public:
    explicit Script(std::span<const unsigned char> bytes) : bytes_(bytes) {
        for (auto& document : documents_)
            document = std::make_unique<Document>("", "r", nullptr, nullptr);
    }
    ~Script();
    Script(const Script&) = delete;
    Script& operator=(const Script&) = delete;

    void Run();

private:
    static constexpr int kMostOperations = 200;

    unsigned Byte() {
        if (bytes_.empty()) return 0;
        const unsigned byte = bytes_[0];
        bytes_ = bytes_.subspan(1);
        return byte;
    }
    template <std::size_t kCount>
    const char* OneOf(const std::array<const char*, kCount>& choices) {
        return choices[Byte() % kCount];
    }
    Node*& Slot() { return slots_[Byte() % slots_.size()]; }
    Node* AnyNode() {
        const unsigned byte = Byte();
        if (byte < 240) return slots_[byte % slots_.size()];
        return documents_[byte % 2].get();
    }
    template <typename T>
    T* SlotOf(DOMNodeType::DOM_NODE_TYPE type) {
        Node* const node = Slot();
        return node != nullptr && node->NodeType() == type ? static_cast<T*>(node) : nullptr;
    }
    Document& OneDocument() { return *documents_[Byte() % 2]; }

    void Forget(const Node* top);
    void Take(Node* node);
    void Destroy(Node* node);
    void Step();
    void Create(unsigned kind);
    void Edit(unsigned kind);
    void EditAttributes(unsigned kind);
    void EditText(unsigned kind);
    void Copy(unsigned kind);
    void RequireConsistent();

    std::span<const unsigned char> bytes_;
    std::array<std::unique_ptr<Document>, 2> documents_;
    std::array<Node*, 12> slots_{};  // owned where free
};

// Empties the slots of what is destroyed with `top`.
void Script::Forget(const Node* top) {
    if (top == nullptr) return;
    for (Node*& slot : slots_) {
        if (slot != nullptr && slot != top && IsBelow(slot, *top)) slot = nullptr;
    }
    std::replace(slots_.begin(), slots_.end(), const_cast<Node*>(top), static_cast<Node*>(nullptr));
}

// Puts a free node into a slot, in place of another.
void Script::Take(Node* node) {
    if (node == nullptr || std::find(slots_.begin(), slots_.end(), node) != slots_.end()) return;
    Node*& slot = Slot();
    Node* const before = slot;
    slot = node;
    if (before != nullptr && HolderOf(*before) == nullptr) Destroy(before);
}

void Script::Destroy(Node* node) {
    Forget(node);
    node->DestroyNode();
}

void Script::Create(unsigned kind) {
    Document& document = OneDocument();
    const char* const name = OneOf(kNames);
    switch (kind) {
    case 0: return Take(document.CreateElement(name));
    case 1: return Take(document.CreateElementNS(OneOf(kUris), name));
    case 2: return Take(document.CreateTextNode(OneOf(kTexts)));
    case 3: return Take(document.CreateAttribute(name));
    case 4: return Take(document.CreateAttributeNS(OneOf(kUris), name));
    case 5: return Take(document.CreateCDATASection(OneOf(kTexts)));
    case 6: return Take(document.CreateComment(OneOf(kTexts)));
    case 7: return Take(document.CreateDocumentFragment());
    case 8: return Take(document.CreateEntityReference(name));
    case 9: return Take(document.CreateProcessingInstruction(name, OneOf(kTexts)));
    default: return Take(new Element(OneOf(kUris), name, &document));  // not of the document's pool
    }
}

void Script::Edit(unsigned kind) {
    Node* const parent = AnyNode();
    Node* const node = Slot();
    Node* const reference = Slot();
    if (parent == nullptr) return;
    switch (kind) {
    case 0: parent->AppendChild(node); break;
    case 1: parent->InsertBefore(node, reference); break;
    case 2: Take(parent->ReplaceChild(node, reference)); break;
    case 3: Take(parent->RemoveChild(node)); break;
    case 4: parent->InsertChild(node, reference); break;
    case 5: Take(parent->ExchangeChild(node, reference)); break;
    case 6: {
        Node* const first = parent->FirstChild();
        parent->InsertBefore(node, first);
        break;
    }
    default:
        for (Node& child : parent->Children()) {
            if (child.NodeType() == DOMNodeType::TEXT_NODE) Forget(&child);
        }
        for (Node*& slot : slots_) {  // a text further down may be joined with another
            const bool isText = slot != nullptr && slot->NodeType() == DOMNodeType::TEXT_NODE;
            if (isText && HolderOf(*slot) != nullptr && IsBelow(slot, *parent)) slot = nullptr;
        }
        parent->Normalize();
        break;
    }
}

void Script::EditAttributes(unsigned kind) {
    auto* const element = SlotOf<Element>(DOMNodeType::ELEMENT_NODE);
    if (element == nullptr) return;
    const char* const name = OneOf(kNames);
    const char* const uri = OneOf(kUris);
    const astring local = Dom::NodePtr(documents_[0]->CreateElement(name))->LocalName();
    switch (kind) {
    case 0:
        Forget(element->GetAttributeNode(name));
        element->SetAttribute(name, OneOf(kTexts));
        break;
    case 1:
        Forget(*uri == '\0' ? element->GetAttributeNode(name)
                            : element->GetAttributeNodeNS(uri, local));
        element->SetAttributeNS(uri, name, OneOf(kTexts));
        break;
    case 2: Take(element->SetAttributeNode(SlotOf<Attr>(DOMNodeType::ATTRIBUTE_NODE))); break;
    case 3: Take(element->SetAttributeNodeNS(SlotOf<Attr>(DOMNodeType::ATTRIBUTE_NODE))); break;
    case 4: {
        auto* const attribute = SlotOf<Attr>(DOMNodeType::ATTRIBUTE_NODE);
        if (attribute != nullptr) Take(element->RemoveAttributeNode(attribute));
        break;
    }
    case 5:
        Forget(element->GetAttributeNode(name));
        element->RemoveAttribute(name);
        break;
    default:
        Forget(element->GetAttributeNodeNS(uri, local));
        element->RemoveAttributeNS(uri, local);
        break;
    }
}

void Script::EditText(unsigned kind) {
    Node* const node = Slot();
    if (node == nullptr) return;
    if (node->NodeType() == DOMNodeType::ATTRIBUTE_NODE) {
        for (const Node& child : node->Children())
            Forget(&child);
        static_cast<Attr*>(node)->SetValue(OneOf(kTexts));
        return;
    }
    if (kind == 0) return node->SetPrefix("q");
    auto* const text = static_cast<Dom::Text*>(node->QueryInterface("Dom::Text"));
    if (text == nullptr) return;
    switch (kind) {
    case 1: text->SetData(OneOf(kTexts)); break;
    case 2: text->InsertData(Byte() % 3, OneOf(kTexts)); break;
    case 3: text->DeleteData(Byte() % 3, Byte() % 3); break;
    default: {
        Dom::Text* const tail = text->SplitText(Byte() % 4);
        if (HolderOf(*tail) == nullptr) Take(tail);
        break;
    }
    }
}

void Script::Copy(unsigned kind) {
    Node* const node = Slot();
    if (node == nullptr) return;
    switch (kind) {
    case 0: {
        Node* const clone = node->CloneNode(true);
        Require(clone->NodeName() == node->NodeName());
        Require(clone->NodeType() == DOMNodeType::ATTRIBUTE_NODE || !clone->HasChildNodes());
        return Take(clone);
    }
    case 1: {
        Node* const clone = node->CloneTree();
        RequireSameTree(*clone, *node);
        return Take(clone);
    }
    default: return Take(OneDocument().ImportNode(*node, true));
    }
}

void Script::Step() {
    const unsigned operation = Byte();
    const unsigned kind = operation / 8;
    switch (operation % 8) {
    case 0: return Create(kind % 11);
    case 1:
    case 2:
    case 3: return Edit(kind % 8);
    case 4: return EditAttributes(kind % 7);
    case 5: return EditText(kind % 5);
    case 6: return Copy(kind % 3);
    default: {
        Node* const node = Slot();
        if (node != nullptr) Destroy(node);
    }
    }
}

void Script::RequireConsistent() {
    for (const auto& document : documents_)
        RequireGoodChildren(*document);
    for (Node* const slot : slots_) {
        if (slot == nullptr) continue;
        RequireGoodChildren(*slot);
        std::size_t count = 0;
        for (const Node* node = slot->NextSibling(); node != nullptr; node = node->NextSibling())
            Require(++count < kMostNodes);
        if (slot->ParentNode() == nullptr) {
            Require(slot->NextSibling() == nullptr && slot->PreviousSibling() == nullptr);
        }
        if (slot->NodeType() == DOMNodeType::ELEMENT_NODE) {
            for (Node* const item : *slot->Attributes())
                Require(static_cast<Attr*>(item)->OwnerElement() == slot);
        }
    }
}

void WriteTree(const Node& node) {
    IO::MemoryStream stream;
    Xml::UTF8Encoding utf8(false, false);
    Xml::XmlTextWriter writer(&stream, &utf8);
    writer.WriteStartElement("written");
    try {
        Dom::WriteNode(node, writer);
    } catch (const Xml::Exception&) {
        return;  // a name or a value that the writer refuses
    }
    writer.Close();
    Require(stream.Length() > 0);
}

void Script::Run() {
    for (int i = 0; i < kMostOperations && !bytes_.empty(); ++i) {
        try {
            Step();
        } catch (const Dom::DOMException&) {
        } catch (const std::out_of_range&) {
        }
        RequireConsistent();
    }
    for (const auto& document : documents_) {
        WriteTree(*document);
        const Dom::NodePtr copy(document->CloneTree());
        RequireSameTree(*copy, *document);
        document->GetElementById("i");
    }
    for (const Node* const slot : slots_) {
        if (slot != nullptr) WriteTree(*slot);
    }
}

// Nodes may outlive their documents.
Script::~Script() {
    for (auto& document : documents_) {
        if (Byte() % 2 == 0) continue;
        Forget(document.get());
        document.reset();
    }
    for (Node*& slot : slots_) {
        Node* const node = slot;
        if (node != nullptr && HolderOf(*node) == nullptr) Destroy(node);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Script({data, size}).Run();
    return 0;
}
