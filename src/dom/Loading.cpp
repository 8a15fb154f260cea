// SPDX-License-Identifier: MIT

/// \file
/// How a document is loaded.

#include <espalier/dom/Document.h>
#include <espalier/dom/HTMLDocument.h>
#include <espalier/io/FileMode.h>
#include <espalier/io/FileStream.h>
#include <espalier/io/MemoryStream.h>
#include <espalier/xml/XmlTextReader.h>

#include "dom/DirectBuilder.h"
#include "dom/FactoryBuilder.h"
#include "dom/NodeAccess.h"
#include "dom/TreeLoader.h"

#include <cstdint>
#include <typeinfo>

namespace Dom {

namespace {

// Loads what a stream holds, in the way of a document that is loaded by its name.
void LoadStream(Document& document, IO::Stream& stream, std::string_view uri) {
    Xml::XmlTextReader reader;
    reader.SetStream(&stream, false);
    reader.SetWhitespaceHandling(Xml::XmlTextReader::WsSignificant);
    reader.SetNormalization(true);
    document.Load(reader, uri);
}

}  // namespace

void Document::Load(Xml::XmlTextReader& reader, std::string_view uri) {
    SetDocumentURI(uri);
    detail::NodeAccess::Clear(*this);
    // Once for all nodes, for lists that somebody has looked at meanwhile: a stream may.
    struct Change {
        std::uint64_t& stamp;
        explicit Change(std::uint64_t& counter) : stamp(counter) {}
        ~Change() { ++stamp; }
        Change(const Change&) = delete;
        Change& operator=(const Change&) = delete;
    } const change(detail::NodeAccess::Data(*this).stamp);
    if (typeid(*this) == typeid(Document) || typeid(*this) == typeid(HTMLDocument)) {
        detail::TreeLoader<detail::DirectBuilder>(*this, reader).Load();
    } else {
        detail::TreeLoader<detail::FactoryBuilder>(*this, reader).Load();
    }
}

void Document::Load(std::string_view uri) {
    const astring name(uri);
    IO::FileStream stream(name, IO::FileMode::Open, 1, 1);
    LoadStream(*this, stream, name);
}

void Document::LoadXml(std::string_view xml, std::string_view uri) {
    // The text may be that of a node or a property which loading destroys.
    const bool mayBeOwn = HasChildNodes() || !documentURI_.empty();
    const astring copy(mayBeOwn ? xml : std::string_view());
    const std::string_view text = mayBeOwn ? copy.view() : xml;
    IO::MemoryStream stream(reinterpret_cast<const unsigned char*>(text.data()),
                            static_cast<long>(text.size()));
    LoadStream(*this, stream, uri);
}

}  // namespace Dom
