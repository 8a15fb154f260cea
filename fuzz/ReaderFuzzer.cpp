// SPDX-License-Identifier: MIT
//
// Reads arbitrary bytes as a document, with the operations that the input asks for. Its first byte
// chooses the settings, the second how many bytes the stream gives at a time, the third how many
// operations follow, one a byte; the rest is the document. The operations are carried out in turn,
// each followed by Read(), until the document ends. It is read in one piece too, and both readings
// must tell the same.

#include <espalier/io/Exception.h>
#include <espalier/io/MemoryStream.h>
#include <espalier/xml/XmlTextReader.h>

#include "../tests/support/TrickleStream.h"
#include "ReaderStory.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace {

using fuzz::Require;
using fuzz::Story;
using Xml::XmlEntityHandling;
using Xml::XmlNodeType;
using Xml::XmlTextReader;
using Bytes = std::span<const unsigned char>;

constexpr unsigned kMostOperations = 32;
constexpr Xml::XmlEntityLimits kLimits = {1 << 16, 4, 64};  // what a fuzzer has the time for

// Whether the message blames the caller, who may then go on.
bool IsMisuse(std::string_view message) {
    constexpr std::array<std::string_view, 8> kMisuses = {
        "Invalid operation",       "Argument out of range", "Not an element node",
        "Unexpected element",      "Read failed",           "Invalid node type",
        "Not an end element node", "Unexpected node type"};
    return std::find(kMisuses.begin(), kMisuses.end(), message) != kMisuses.end();
}

// A document, a reader on it, and what it has told so far.
class Session {
public:
    // The bits of the choice: 0 namespaces, 1 normalization, 2 and 3 white space, 4 and 5 entities.
    Session(Bytes document, unsigned choice, int bytesPerRead)
        : document_(reinterpret_cast<const char*>(document.data()), document.size()),
          memory_(document.data(), static_cast<long>(document.size())),
          trickle_(memory_, bytesPerRead) {
        reader_.SetStream(&trickle_, false);
        reader_.SetNamespaces((choice & 1) == 0);
        reader_.SetNormalization((choice & 2) != 0);
        SetWhitespace(choice >> 2);
        SetEntities(choice >> 4);
        reader_.SetEntityLimits(kLimits);
    }

    Story Run(Bytes operations);

private:
    void SetWhitespace(unsigned choice) {
        reader_.SetWhitespaceHandling(
            static_cast<XmlTextReader::XmlWsHandlingEnum>(choice % 4 % 3));
    }
    void SetEntities(unsigned choice) {
        reader_.SetEntityHandling(
            static_cast<XmlEntityHandling::XML_ENTITY_HANDLING>(choice % 4 % 3));
    }

    // Whether raw markup must stand in the document as it is.
    bool IsPlain() const {
        return reader_.Encoding() == "UTF-8" && document_.find("!DOCTYPE") == std::string::npos;
    }

    void ReadAll(Bytes operations);
    void Perform(unsigned operation, unsigned argument);
    void TellAttributes();
    void TellValues(bool resolves);
    void TellValue(bool resolves);
    void TellInnerXml();
    void TellOuterXml();
    void TellCharacters(int count);
    void SkipElement();
    void TellAttributeMarkup();

    std::string document_;
    IO::MemoryStream memory_;
    support::TrickleStream trickle_;
    XmlTextReader reader_;
    Story story_;
};

Story Session::Run(Bytes operations) {
    try {
        ReadAll(operations);
        Require(reader_.Eof());
    } catch (const Xml::Exception& error) {
        story_.SetEncoding(reader_.Encoding());
        story_.TellError(error);
        Require(reader_.ReadState() == XmlTextReader::Error);
        Require(error.LineNumber() >= 1 && error.LinePos() >= 1);
    }
    Require(!reader_.Read());
    story_.Tell(reader_.Encoding());
    return story_;
}

void Session::ReadAll(Bytes operations) {
    constexpr unsigned kKinds = 20;
    for (std::size_t i = 0; reader_.Read(); ++i) {
        Require(reader_.ReadState() == XmlTextReader::Interactive);
        story_.TellNode(reader_);
        TellAttributes();
        if (operations.empty()) {
            // Each node takes a byte; only entities make more of them.
            Require(i <= document_.size() || document_.find("!DOCTYPE") != std::string::npos ||
                    reader_.Encoding() != "UTF-8");
            continue;
        }
        const unsigned operation = operations[i % operations.size()];
        try {
            Perform(operation % kKinds, operation / kKinds);
        } catch (const Xml::Exception& error) {
            if (!IsMisuse(error.What())) throw;
            Require(reader_.ReadState() != XmlTextReader::Error);
            story_.TellError(error);
        }
        story_.Tell(reader_.ReadState());
        if (reader_.ReadState() != XmlTextReader::Interactive) return;
        story_.TellNode(reader_);
    }
}

void Session::Perform(unsigned operation, unsigned argument) {
    const int number = static_cast<int>(argument);
    switch (operation) {
    case 0:
    case 1: break;  // Read() alone
    case 2: TellValues(false); break;
    case 3: TellValues(true); break;
    case 4: reader_.ResolveEntity(); break;
    case 5: TellInnerXml(); break;
    case 6: TellOuterXml(); break;
    case 7: story_.Tell(reader_.ReadString()); break;
    case 8: story_.Tell(reader_.ReadElementString()); break;
    case 9: reader_.Skip(); break;
    case 10: SkipElement(); break;
    case 11: TellCharacters(number + 1); break;
    case 12: story_.Tell(reader_.MoveToContent()); break;
    case 13:
        story_.Tell(reader_.IsStartElement());
        reader_.ReadStartElement();
        break;
    case 14: reader_.ReadEndElement(); break;
    case 15:
        story_.Tell(reader_.MoveToAttribute("x"));
        reader_.MoveToAttribute(number - 1);
        break;
    case 16: TellAttributeMarkup(); break;
    case 17:  // leaves the reader in the middle of a value
        if (reader_.MoveToFirstAttribute()) story_.Tell(reader_.ReadAttributeValue());
        break;
    case 18: SetEntities(argument); break;
    default:
        SetWhitespace(argument);
        reader_.SetNormalization((argument & 4) != 0);
        break;
    }
}

void Session::TellAttributes() {
    int index = 0;
    for (bool more = reader_.MoveToFirstAttribute(); more; more = reader_.MoveToNextAttribute()) {
        story_.TellNode(reader_);
        Require(reader_.NodeType() == XmlNodeType::Attribute);
        Require(reader_.GetCurrentAttributeIndex() == index);
        Require(reader_.GetAttribute(index) == reader_.Value());
        Require(reader_.GetAttribute(reader_.Name()) == reader_.Value());
        if (!reader_.NamespaceURI().empty()) {
            Require(reader_.GetAttribute(reader_.LocalName(), reader_.NamespaceURI()) ==
                    reader_.Value());
        }
        ++index;
    }
    Require(reader_.MoveToElement() == (index > 0));
    if (reader_.NodeType() == XmlNodeType::Element) Require(index == reader_.AttributeCount());
    int count = 0;
    for (const Xml::XmlAttributeRef attribute : reader_.Attributes()) {
        story_.Tell(attribute.Name());
        story_.Tell(attribute.Value());
        Require(attribute.Value() == reader_.GetAttribute(count));
        ++count;
    }
    Require(count == reader_.AttributeCount());
    Require(reader_.GetAttribute(count).empty());
}

// Steps through the values of all attributes.
void Session::TellValues(bool resolves) {
    for (bool more = reader_.MoveToFirstAttribute(); more; more = reader_.MoveToNextAttribute())
        TellValue(resolves);
}

void Session::TellValue(bool resolves) {
    const astring value = reader_.Value();
    const int depth = reader_.Depth();
    std::string joined;
    int open = 0;  // entities
    bool anyResolved = false;
    while (reader_.ReadAttributeValue()) {
        story_.TellNode(reader_);
        Require(reader_.AttributeCount() == 0);
        switch (reader_.NodeType()) {
        case XmlNodeType::Text: joined += reader_.Value().view(); break;
        case XmlNodeType::EndEntity: --open; break;
        default:
            Require(reader_.NodeType() == XmlNodeType::EntityReference);
            joined += "&" + std::string(reader_.Name()) + ";";
            if (!resolves) break;
            reader_.ResolveEntity();
            anyResolved = true;
            ++open;
            break;
        }
        Require(open >= 0);
    }
    Require(open == 0);
    Require(reader_.NodeType() == XmlNodeType::Attribute && reader_.Depth() == depth);
    Require(reader_.Value() == value);
    Require(anyResolved || value == joined);
}

void Session::TellInnerXml() {
    const bool isElement = reader_.NodeType() == XmlNodeType::Element;
    const bool isEmpty = reader_.IsEmptyElement();
    const astring inner = reader_.ReadInnerXml();
    story_.Tell(inner);
    Require(inner.empty() || (isElement && !isEmpty));
    Require(!IsPlain() || document_.find(inner.view()) != std::string::npos);
}

void Session::TellOuterXml() {
    const bool isElement = reader_.NodeType() == XmlNodeType::Element;
    const bool isEmpty = reader_.IsEmptyElement();
    const std::string name(reader_.Name());
    const astring outer = reader_.ReadOuterXml();
    story_.Tell(outer);
    Require(outer.empty() != isElement || !IsPlain());
    if (!isElement || !IsPlain()) return;
    const std::string_view text = outer;
    Require(text.starts_with("<" + name) && text.ends_with(isEmpty ? "/>" : ">"));
    Require(isEmpty || text.find("</" + name) != std::string_view::npos);
    Require(document_.find(text) != std::string::npos);
}

void Session::TellCharacters(int count) {
    constexpr char kUntouched = '\x7F';
    std::array<char, 16> buffer{};
    for (int copied = 1; copied > 0;) {
        buffer.fill(kUntouched);
        copied = reader_.ReadChars(buffer.data(), 1, count);
        Require(copied >= 0 && copied <= count);
        Require(buffer[0] == kUntouched &&
                buffer[static_cast<std::size_t>(count) + 1] == kUntouched);
        story_.Tell(std::string_view(buffer.data() + 1, static_cast<std::size_t>(copied)));
    }
}

void Session::SkipElement() {
    const bool isElement = reader_.NodeType() == XmlNodeType::Element;
    const int depth = reader_.Depth();
    const bool more = reader_.SkipElement();
    if (more && isElement && IsPlain()) Require(reader_.Depth() <= depth);
}

void Session::TellAttributeMarkup() {
    if (!reader_.MoveToFirstAttribute()) return;
    const astring value = reader_.Value();
    const std::string quote(1, reader_.QuoteChar());
    Require(reader_.ReadInnerXml() == value);
    Require(reader_.ReadOuterXml() ==
            std::string(reader_.Name()) + "=" + quote + std::string(value) + quote);
    Require(reader_.NodeType() == XmlNodeType::Attribute);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 3) return 0;
    const unsigned choice = data[0];
    const int bytesPerRead = data[1] % 64 + 1;
    const Bytes rest(data + 3, size - 3);
    const std::size_t count = std::min<std::size_t>(data[2] % kMostOperations, rest.size());
    const Bytes operations = rest.first(count);
    const Bytes document = rest.subspan(count);
    Require(Session(document, choice, 1024).Run(operations) ==
            Session(document, choice, bytesPerRead).Run(operations));
    return 0;
}
