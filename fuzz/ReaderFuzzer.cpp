// SPDX-License-Identifier: MIT
// Reads arbitrary bytes as a document, node by node, and looks at everything that a node tells. The
// first byte chooses the settings, the second how many bytes the stream gives at a time; the rest
// is the document. It is read in one piece too, and both readings must tell the same.

#include <espalier/io/Exception.h>
#include <espalier/io/MemoryStream.h>
#include <espalier/xml/XmlTextReader.h>

#include "../tests/support/TrickleStream.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <span>
#include <string>
#include <string_view>

namespace {

using Xml::XmlEntityHandling;
using Xml::XmlNodeType;
using Xml::XmlTextReader;
using Document = std::span<const unsigned char>;

void Require(bool condition) {
    if (!condition) std::abort();
}

// The bits of the first byte: 0 namespaces, 1 normalization, 2 and 3 white space, 4 and 5 entities.
void ApplySettings(XmlTextReader& reader, unsigned choice) {
    reader.SetNamespaces((choice & 1) == 0);
    reader.SetNormalization((choice & 2) != 0);
    reader.SetWhitespaceHandling(
        static_cast<XmlTextReader::XmlWsHandlingEnum>((choice >> 2) % 4 % 3));
    reader.SetEntityHandling(
        static_cast<XmlEntityHandling::XML_ENTITY_HANDLING>((choice >> 4) % 4 % 3));
}

// Collects what a reading tells.
class Story {
public:
    void Tell(std::string_view text) {
        text_ += text;
        text_ += '\x1F';
    }
    void Tell(int number) { Tell(std::to_string(number)); }

    bool operator==(const Story& other) const { return text_ == other.text_; }

private:
    std::string text_;
};

void TellNode(const XmlTextReader& reader, Story& story) {
    story.Tell(reader.NodeType());
    for (const astring* text : {&reader.Name(), &reader.LocalName(), &reader.Prefix(),
                                &reader.NamespaceURI(), &reader.Value(), &reader.XmlLang()}) {
        story.Tell(*text);
    }
    story.Tell(reader.Depth());
    story.Tell(reader.LineNumber());
    story.Tell(reader.LinePosition());
    story.Tell(reader.IsEmptyElement());
    story.Tell(reader.QuoteChar());
    story.Tell(reader.GetXmlSpace());
    story.Tell(reader.AttributeCount());
    story.Tell(reader.LookupNamespace(reader.Prefix()));
    Require(reader.ReadState() == XmlTextReader::Interactive);
    Require(reader.Depth() >= 1);
    Require(reader.LineNumber() >= 1 && reader.LinePosition() >= 1);
    Require(reader.HasValue() || reader.Value().empty());
    Require(reader.HasAttributes() == (reader.AttributeCount() > 0));
}

void TellAttributes(XmlTextReader& reader, Story& story) {
    int index = 0;
    for (bool more = reader.MoveToFirstAttribute(); more; more = reader.MoveToNextAttribute()) {
        TellNode(reader, story);
        Require(reader.NodeType() == XmlNodeType::Attribute);
        Require(reader.GetCurrentAttributeIndex() == index);
        Require(reader.GetAttribute(index) == reader.Value());
        Require(reader.GetAttribute(reader.Name().view()) == reader.Value());
        if (!reader.NamespaceURI().empty()) {
            Require(reader.GetAttribute(reader.LocalName().view(), reader.NamespaceURI().view()) ==
                    reader.Value());
        }
        ++index;
    }
    Require(reader.MoveToElement() == (index > 0));
    if (reader.NodeType() == XmlNodeType::Element) Require(index == reader.AttributeCount());
    for (int i = 0; i <= reader.AttributeCount(); ++i)
        story.Tell(reader.GetAttribute(i));
}

Story Read(Document document, unsigned choice, int bytesPerRead) {
    IO::MemoryStream memory(document.data(), static_cast<long>(document.size()));
    support::TrickleStream trickle(memory, bytesPerRead);
    XmlTextReader reader;
    reader.SetStream(&trickle, false);
    ApplySettings(reader, choice);

    Story story;
    try {
        std::size_t nodes = 0;
        while (reader.Read()) {
            TellNode(reader, story);
            TellAttributes(reader, story);
            Require(++nodes <= document.size());
        }
        Require(reader.Eof());
    } catch (const Xml::Exception& error) {
        story.Tell(error.What());
        story.Tell(error.Argument());
        story.Tell(error.LineNumber());
        story.Tell(error.LinePos());
        Require(reader.ReadState() == XmlTextReader::Error);
        Require(error.LineNumber() >= 1 && error.LinePos() >= 1);
    }
    Require(!reader.Read());
    story.Tell(reader.Encoding());
    return story;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 2) return 0;
    const unsigned choice = data[0];
    const int bytesPerRead = data[1] % 64 + 1;
    const Document document(data + 2, size - 2);
    Require(Read(document, choice, 1024) == Read(document, choice, bytesPerRead));
    return 0;
}
