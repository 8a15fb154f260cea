// SPDX-License-Identifier: MIT
//
// Loads arbitrary bytes as a tree. The first byte of the input chooses the reader's settings, the
// second how many bytes the stream gives at a time, the third how many nodes the reader has read
// before; the rest is the document. It is loaded in one piece, and by a document whose nodes its
// factory makes, too, and all must give the same tree. A copy of the tree is the same; what it is
// written as is the same tree again, where that can be.

#include <espalier/dom.h>
#include <espalier/encoding/UnicodeEncodings.h>
#include <espalier/io/Exception.h>
#include <espalier/io/MemoryStream.h>
#include <espalier/xml/XmlTextReader.h>
#include <espalier/xml/XmlTextWriter.h>

#include "../tests/support/TreeDump.h"
#include "../tests/support/TrickleStream.h"
#include "ReaderStory.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

namespace {

using fuzz::Require;
using Lines = std::vector<std::string>;
using Xml::XmlTextReader;

constexpr Xml::XmlEntityLimits kLimits = {1 << 16, 4, 64};  // what a fuzzer has the time for

// The bits of the first byte; those left choose how references and white space are handled.
enum Choice : unsigned { kNoNamespaces = 1, kNormalization = 2 };

class FactoryDocument : public Dom::Document {};

struct Settings {
    unsigned choice;
    unsigned nodesBefore;

    bool Has(Choice bit) const { return (choice & bit) != 0; }
    unsigned Entities() const { return (choice >> 2) % 3; }
    bool ReportsAllWhitespace() const { return (choice >> 4) % 3 == 0; }

    void ApplyTo(XmlTextReader& reader) const {
        constexpr Xml::XmlEntityHandling kHandling[] = {Xml::XmlEntityHandling::ExpandCharEntities,
                                                        Xml::XmlEntityHandling::ExpandEntities,
                                                        Xml::XmlEntityHandling::ExpandNothing};
        constexpr XmlTextReader::XmlWsHandlingEnum kWhitespace[] = {
            XmlTextReader::WsAll, XmlTextReader::WsSignificant, XmlTextReader::WsNone};
        reader.SetNamespaces(!Has(kNoNamespaces));
        reader.SetNormalization(Has(kNormalization));
        reader.SetEntityHandling(kHandling[Entities()]);
        reader.SetWhitespaceHandling(kWhitespace[(choice >> 4) % 3]);
        reader.SetEntityLimits(kLimits);
    }
};

// Loads and returns what went wrong, or "".
std::string Load(Dom::Document& document, std::string_view text, const Settings& settings,
                 int bytesPerRead) {
    IO::MemoryStream memory(reinterpret_cast<const unsigned char*>(text.data()),
                            static_cast<long>(text.size()));
    support::TrickleStream stream(memory, bytesPerRead);
    XmlTextReader reader;
    reader.SetStream(&stream, false);
    settings.ApplyTo(reader);
    std::string error;
    try {
        for (unsigned i = 0; i < settings.nodesBefore && reader.Read(); ++i) {
        }
        document.Load(reader, "document");
    } catch (const Xml::Exception& exception) {
        error = std::string(exception.What()) + ":" + std::to_string(exception.LinePos());
    }
    Require(support::WrongLink(document).empty());
    return error;
}

std::string Written(const Dom::Document& document) {
    IO::MemoryStream stream;
    Xml::UTF8Encoding utf8(false, false);
    Xml::XmlTextWriter writer(&stream, &utf8);
    writer.SetNewLineHandling(Xml::NewLineHandling::Entitize);
    Dom::WriteNode(document, writer);
    writer.Close();
    return {reinterpret_cast<const char*>(stream.GetBuffer()),
            static_cast<std::size_t>(stream.Length())};
}

// Tells whether the names of an element mean the same when they are read again: not where a prefix
// is bound to nothing, or where "xml" or "xmlns" is bound.
bool HasPlainNames(const Dom::Element& element) {
    if (element.NamespaceURI().empty() && !element.PrefixView().empty()) return false;
    for (const Dom::AttributeView attribute : element.AttributeViews()) {
        const bool declares = attribute.Prefix() == "xmlns";
        if (declares && attribute.LocalName().starts_with("xml")) return false;
        if (declares || attribute.Prefix().empty()) continue;
        if (attribute.NamespaceURI().empty()) return false;
    }
    return true;
}

// Tells whether a text is one node when it is read again. White space at its start, before a
// reference or alone, is white space between markup then, and makes no node.
bool IsPlainText(std::string_view text) {
    const std::size_t start = text.find_first_not_of(" \t\n");
    if (start == std::string_view::npos) return text.empty();
    return start == 0 || std::string_view("&<>\"'\r").find(text[start]) == std::string_view::npos;
}

bool IsPlain(const Dom::Node& node, const Settings& settings) {
    switch (node.NodeType()) {
    case Dom::DOMNodeType::ELEMENT_NODE:
        return settings.Has(kNoNamespaces) || HasPlainNames(static_cast<const Dom::Element&>(node));
    case Dom::DOMNodeType::TEXT_NODE: return IsPlainText(node.NodeValue().view());
    default: return true;
    }
}

bool AreAllPlain(const Dom::Document& document, const Settings& settings) {
    for (const Dom::Node* node = document.FirstChild(); node != nullptr;) {
        if (!IsPlain(*node, settings)) return false;
        const Dom::Node* next = node->FirstChild();
        while (next == nullptr && node != nullptr) {
            next = node->NextSibling();
            if (next == nullptr) node = node->ParentNode();
        }
        node = next;
    }
    return true;
}

// Entities are not declared in what is written; names may be too long in another encoding.
void RequireSameWhenWritten(const Dom::Document& document, std::string_view text,
                            const Settings& settings) {
    const bool isTold = document.InputEncoding() == "UTF-8" && settings.Entities() != 2 &&
                        settings.ReportsAllWhitespace() &&
                        text.find("<!ENTITY") == std::string_view::npos &&
                        AreAllPlain(document, settings);
    std::string written;
    try {
        written = Written(document);
    } catch (const Xml::Exception&) {
        return;  // characters that the writer refuses, references without a name
    }
    if (!isTold) return;
    Dom::Document again;
    const std::string error = Load(again, written, {settings.choice, 0}, 1024);
    if (!error.empty() || support::ContentBelow(again) != support::ContentBelow(document)) {
        std::fprintf(stderr, "%s\n%s\n", error.c_str(), written.c_str());
        Require(false);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 3) return 0;
    const Settings settings{data[0], data[2] % 8U};
    const std::string_view text(reinterpret_cast<const char*>(data) + 3, size - 3);
    Dom::Document document;
    const std::string error = Load(document, text, settings, 1024);
    const Lines tree = support::TreeBelow(document);

    Dom::Document pieces;
    Require(Load(pieces, text, settings, data[1] % 64 + 1) == error);
    Require(support::TreeBelow(pieces) == tree);
    FactoryDocument factory;
    Require(Load(factory, text, settings, 1024) == error);
    Require(support::TreeBelow(factory, support::AttributeAccess::Nodes) == tree);

    const Dom::NodePtr copy(document.CloneTree());
    Require(support::TreeBelow(*copy) == tree);
    if (error.empty() && settings.nodesBefore == 0 && document.HasChildNodes()) {
        RequireSameWhenWritten(document, text, settings);
    }
    document.LoadXml("<a><b/></a>");
    Require(support::TreeBelow(document).size() == 2);
    return 0;
}
