// SPDX-License-Identifier: MIT
#include "sax/Parser.h"

#include <espalier/io/Exception.h>
#include <espalier/io/FileStream.h>
#include <espalier/io/MemoryStream.h>
#include <espalier/sax/ContentHandler.h>
#include <espalier/sax/DTDHandler.h>
#include <espalier/sax/ErrorHandler.h>
#include <espalier/sax/Features.h>
#include <espalier/sax/InputSource.h>
#include <espalier/sax/SAXNotRecognizedException.h>
#include <espalier/sax/SAXNotSupportedException.h>
#include <espalier/sax/SAXParseException.h>

#include "sax/AttributeHandler.h"
#include "sax/LocatorHandler.h"
#include "sax/Messages.h"
#include "sax/SkippedEntity.h"
#include "sax/TextParts.h"
#include "xml/ReaderAccess.h"
#include "xml/ReaderCore.h"

#include <climits>

#include <cstring>
#include <optional>

namespace sax::detail {

namespace {

using Xml::XmlNodeType;
using Xml::XmlTextReader;

constexpr unsigned kRead = 1;       // the access of a file
constexpr unsigned kDenyWrite = 1;  // others may read it meanwhile

astring With(const char* message, std::string_view name) {
    astring text(message);
    text += name;
    return text;
}

}  // namespace

/// One parse: its reader and what belongs to it. Whatever ends it, the settings of the reader are
/// left as they were found.
class Parser::Run {
public:
    Run(Parser& parser, XmlTextReader& source, const InputSource& input)
        : reader(source),
          core(Xml::detail::ReaderAccess::Core(source)),
          locator(source, input),
          attributes(source),
          isOwn(&source == parser.own_.get()),
          // Deliberate: a reader that stands on a start tag has read it, so it is not reported. The
          // end tag is, and ends the parse, as does any other at the depth of the first node.
          stopDepth(isOwn ? -1 : source.Depth()),
          parser_(parser) {}

    ~Run() { StopReading(); }

    Run(const Run&) = delete;
    Run& operator=(const Run&) = delete;

    void StartReading() {
        parser_.isParsing_ = true;
        parser_.standalone_ = false;
        const bool wanted = parser_.settings.normalization;
        if (reader.Normalization() == wanted) return;
        normalization_ = reader.Normalization();
        reader.SetNormalization(wanted);
    }

    void StopReading() {
        parser_.isParsing_ = false;
        if (normalization_ && reader.ReadState() != XmlTextReader::Closed) {
            reader.SetNormalization(*normalization_);
        }
        normalization_.reset();
    }

    /// The names of an element.
    struct Names {
        const char* uri;
        const char* local;
        const char* qualified;
    };

    /// Returns the names of the current element. They stay while handlers work, who may move a
    /// reader that is theirs.
    Names TakeNames() {
        if (!isOwn || reader.LocalName().empty()) [[unlikely]]
            return TakeUnusualNames();
        return {reader.NamespaceURI().c_str(), reader.LocalName().c_str(), reader.Name().c_str()};
    }

    /// Returns the attributes of the current element, which `attributes` has loaded. They stay,
    /// too.
    const Attributes& TakeAttributes() {
        if (isOwn || attributes.getLength() == 0) [[likely]]
            return attributes;
        return keptAttributes_.emplace(attributes);
    }

    XmlTextReader& reader;
    Xml::detail::ReaderCore& core;
    LocatorHandler locator;
    AttributeHandler attributes;
    const bool isOwn;
    const int stopDepth;   // of the end tag that ends the parse
    int openElements = 0;  // below 0 when the reader stood in an element to begin with
    bool hasFailed = false;

private:
    Names TakeUnusualNames() {
        kept_[0] = reader.NamespaceURI();
        kept_[1] = reader.LocalName().empty() ? reader.Name() : reader.LocalName();
        kept_[2] = reader.Name();
        return {kept_[0].c_str(), kept_[1].c_str(), kept_[2].c_str()};
    }

    Parser& parser_;
    astring kept_[3];
    std::optional<helpers::AttributesImpl> keptAttributes_;
    std::optional<bool> normalization_;  // what the reader had, when it was changed
};

Parser::Parser() = default;
Parser::~Parser() = default;

// Features.

namespace {

struct SettableFeature {
    std::string_view name;
    bool ParserSettings::*flag;
};
constexpr SettableFeature kSettable[] = {
    {features::kNamespaces, &ParserSettings::namespaces},
    {features::kNamespacePrefixes, &ParserSettings::namespacePrefixes},
    {features::kNormalization, &ParserSettings::normalization},
};

}  // namespace

bool Parser::GetFeature(std::string_view name) const {
    for (const SettableFeature& feature : kSettable) {
        if (name == feature.name) return settings.*feature.flag;
    }
    if (name == features::kValidation || name == features::kXmlnsUris || name == features::kXml11) {
        return false;
    }
    if (name != features::kIsStandalone) {
        throw SAXNotRecognizedException(With(Message::kFeatureNotRecognized, name));
    }
    if (!isParsing_) throw SAXException(Message::kInvalidOperation);
    return standalone_;
}

void Parser::SetFeature(std::string_view name, bool value) {
    for (const SettableFeature& feature : kSettable) {
        if (name != feature.name) continue;
        bool& flag = settings.*feature.flag;
        if (!isParsing_) flag = value;
        if (flag == value) return;
        throw SAXNotSupportedException(With(Message::kFeatureNotNow, name));
    }
    if (name == features::kValidation || name == features::kXmlnsUris) {
        if (!value) return;
        throw SAXNotSupportedException(With(Message::kFeatureNotSupported, name));
    }
    if (name == features::kXml11 || name == features::kIsStandalone) {
        throw SAXNotSupportedException(With(Message::kFeatureNotNow, name));
    }
    throw SAXNotRecognizedException(With(Message::kFeatureNotRecognized, name));
}

// Input.

// Returns the reader to be used, which is closed when there is no input.
XmlTextReader& Parser::OpenInput(const InputSource& input) {
    const bool bringsReader = input.getByteStream() == nullptr && input.getFile() == nullptr &&
                              input.getCharacterStream() == nullptr;
    if (bringsReader && input.getReader() != nullptr) return *input.getReader();
    if (own_ == nullptr) own_ = std::make_unique<XmlTextReader>();
    own_->SetNamespaces(settings.namespaces);
    own_->SetEntityHandling(Xml::XmlEntityHandling::ExpandCharEntities);
    own_->SetEntityLimits(settings.entityLimits);
    std::unique_ptr<IO::Stream> stream;
    if (input.getByteStream() != nullptr) {
        own_->SetStream(input.getByteStream(), false);
    } else if (input.getFile() != nullptr) {
        stream = std::make_unique<IO::FileStream>(input.getFile(), kRead, false);
    } else if (const char* const text = input.getCharacterStream()) {
        stream = std::make_unique<IO::MemoryStream>(reinterpret_cast<const unsigned char*>(text),
                                                    static_cast<long>(std::strlen(text)));
    } else if (!input.getSystemId().empty()) {
        stream = std::make_unique<IO::FileStream>(input.getSystemId(), IO::FileMode::Open, kRead,
                                                  kDenyWrite);
    }
    if (stream != nullptr) own_->SetStream(stream.release(), true);
    return *own_;
}

void Parser::Parse(const InputSource& input) {
    if (isBusy_) throw SAXException(Message::kInvalidOperation);
    // Made before anything is opened: whatever ends the parse, the parser is ready for the next.
    struct Busy {
        Parser& parser;
        explicit Busy(Parser& busy) : parser(busy) { parser.isBusy_ = true; }
        ~Busy() {
            if (parser.own_ != nullptr) parser.own_->Close();
            parser.isBusy_ = false;
        }
    } const busy(*this);
    Run run(*this, OpenInput(input), input);
    ParseDocument(input, run);
    if (settings.contentHandler != nullptr) settings.contentHandler->endDocument();
}

// The part of a parse before its end is told.
void Parser::ParseDocument(const InputSource& input, Run& run) {
    const bool isClosed = run.reader.ReadState() == XmlTextReader::Closed;
    if (isClosed && input.getReader() != &run.reader) {
        ReportFatal(SAXParseException(Message::kNoInput, astring(), astring(), 0, 0));
    }
    if (settings.contentHandler != nullptr) {
        settings.contentHandler->setDocumentLocator(&run.locator);
    }
    if (settings.contentHandler != nullptr) settings.contentHandler->startDocument();
    if (isClosed || run.reader.Eof()) {
        ReportFatal(Message::kMissingStart, run.locator);
        return;
    }
    run.StartReading();
    ReadNodes(run);
    run.StopReading();
    if (run.hasFailed) return;
    if (run.reader.ReadState() == XmlTextReader::Error) {
        ReportFatal(Message::kUnsupported, run.locator);
    } else if (run.openElements > 0) {
        ReportFatal(Message::kUnclosed, run.locator);
    }
}

// Errors.

void Parser::ReportFatal(const SAXParseException& exception) const {
    if (settings.errorHandler == nullptr) throw SAXParseException(exception);
    settings.errorHandler->fatalError(exception);
}

void Parser::ReportFatal(const char* message, const Locator& locator) const {
    ReportFatal(SAXParseException(message, &locator));
}

namespace {

SAXParseException AsParseException(const Xml::Exception& error, const Locator& locator) {
    astring text(error.What());
    if (*error.Argument() != '\0') (text += ": ") += error.Argument();
    return {text, locator.getPublicId(), locator.getSystemId(), error.LineNumber(),
            error.LinePos()};
}

}  // namespace

// Has the reader do something that may find an error in the document.
// Returns what `action` does; false when it failed and a handler has taken the error.
template <typename Action>
bool Parser::AskReader(Run& run, const Action& action) {
    try {
        return action();
    } catch (const Xml::Exception& error) {
        if (!settings.reportsReaderErrors) throw;
        run.hasFailed = true;
        ReportFatal(AsParseException(error, run.locator));
    }
    return false;
}

// Nodes. What nearly every node goes through is inline, down to the calls of the handler.

void Parser::ReadNodes(Run& run) {
    const auto read = [&run] { return run.core.Read(); };
    do {
        isParsing_ = AskReader(run, read);
    } while (isParsing_ && IsOnNode(run) && Dispatch(run));
}

// Tells whether there is a node to report.
[[gnu::always_inline]] inline bool Parser::IsOnNode(const Run& run) const {
    if (run.core.readState == XmlTextReader::Interactive) [[likely]]
        return true;
    return IsOnNodeElse(run);
}

// Does the same for the other states. The reader, which throws its errors and returns false at the
// end, leaves none of them behind a Read() that returned true.
bool Parser::IsOnNodeElse(const Run& run) const {
    switch (run.core.readState) {
    case XmlTextReader::Initial:
    case XmlTextReader::Interactive: return true;
    case XmlTextReader::Closed:
    case XmlTextReader::EndOfFile: return false;
    case XmlTextReader::Error: break;
    }
    ReportFatal(Message::kError, run.locator);
    return false;
}

// Reports the current node. Returns whether there may be more.
[[gnu::always_inline]] inline bool Parser::Dispatch(Run& run) {
    const XmlNodeType::XML_NODE_TYPE type = run.reader.NodeType();
    if (type == XmlNodeType::Element) return ReportStart(run);
    if (type == XmlNodeType::EndElement) return ReportEnd(run);
    if (type == XmlNodeType::Text) {
        ReportText(run.reader.Value(), &ContentHandler::characters);
        return true;
    }
    if (type == XmlNodeType::Whitespace) {
        ReportText(run.reader.Value(), &ContentHandler::ignorableWhitespace);
        return true;
    }
    return DispatchRare(run);
}

// Does the same for nodes that are few.
bool Parser::DispatchRare(Run& run) {
    switch (run.reader.NodeType()) {
    case XmlNodeType::CDATA:
    case XmlNodeType::SignificantWhitespace:
        ReportText(run.reader.Value(), &ContentHandler::characters);
        return true;
    case XmlNodeType::EntityReference: return EnterEntity(run);
    case XmlNodeType::ProcessingInstruction: ReportInstruction(run); return true;
    case XmlNodeType::XmlDeclaration:
        standalone_ = run.reader.GetAttribute("standalone") == "yes";
        return true;
    case XmlNodeType::DocumentType: ReportDeclarations(run); return true;
    case XmlNodeType::Element:
    case XmlNodeType::EndElement:
    case XmlNodeType::Text:
    case XmlNodeType::Whitespace:  // the last four have been reported
    case XmlNodeType::None:
    case XmlNodeType::Attribute:
    case XmlNodeType::Entity:
    case XmlNodeType::Comment:
    case XmlNodeType::Document:
    case XmlNodeType::DocumentFragment:
    case XmlNodeType::Notation:
    case XmlNodeType::EndEntity: return true;
    }
    isParsing_ = false;
    ReportFatal(Message::kInternal, run.locator);
    return false;
}

// Goes on with the text of the entity that the current node refers to, if that can be read.
bool Parser::EnterEntity(Run& run) {
    if (IsSkipped(run.core, run.reader.Name())) {
        const astring name = run.reader.Name();  // a handler may move a reader that is its own
        if (settings.contentHandler != nullptr)
            settings.contentHandler->skippedEntity(name.c_str());
        return true;
    }
    return AskReader(run, [&run] {
        run.reader.ResolveEntity();
        return true;
    });
}

[[gnu::always_inline]] inline bool Parser::ReportStart(Run& run) {
    const bool isLoaded = AskReader(run, [&run] {
        run.attributes.Load();
        return true;
    });
    if (!isLoaded) return false;
    const bool isEmpty = run.reader.IsEmptyElement();
    const Run::Names names = run.TakeNames();
    if (settings.contentHandler != nullptr) {
        settings.contentHandler->startElement(names.uri, names.local, names.qualified,
                                              run.TakeAttributes());
    }
    if (!isEmpty) {
        ++run.openElements;
    } else if (settings.contentHandler != nullptr) {
        settings.contentHandler->endElement(names.uri, names.local, names.qualified);
    }
    return true;
}

[[gnu::always_inline]] inline bool Parser::ReportEnd(Run& run) {
    const Run::Names names = run.TakeNames();
    if (settings.contentHandler != nullptr) {
        settings.contentHandler->endElement(names.uri, names.local, names.qualified);
    }
    --run.openElements;
    return run.reader.Depth() != run.stopDepth;
}

[[gnu::always_inline]] inline void Parser::ReportText(const astring& text, TextEvent event) const {
    if (settings.contentHandler == nullptr) return;
    if (text.length() > INT_MAX) [[unlikely]]
        return ReportLongText(text, event);
    (settings.contentHandler->*event)(text.c_str(), 0, static_cast<int>(text.length()));
}

// Reports a text of gigabytes in parts.
void Parser::ReportLongText(const astring& text, TextEvent event) const {
    const std::size_t end = text.length();
    // A handler that moves a reader of its own has another text put in the place of this one.
    for (std::size_t start = 0; start < end && text.length() == end;) {
        if (settings.contentHandler == nullptr) return;
        const std::size_t length = PartLength(text, start, INT_MAX);
        (settings.contentHandler->*event)(text.c_str() + start, 0, static_cast<int>(length));
        start += length;
    }
}

void Parser::ReportInstruction(const Run& run) const {
    if (settings.contentHandler == nullptr) return;
    settings.contentHandler->processingInstruction(run.reader.Name().c_str(),
                                                   run.reader.Value().c_str());
}

// Reports the notations and unparsed entities that the document type declares.
void Parser::ReportDeclarations(const Run& run) const {
    // Everything is asked for anew each time: a handler may close a reader that is its own.
    for (std::size_t i = 0; settings.dtdHandler != nullptr; ++i) {
        const Xml::detail::EntityTable* const table = run.core.Entities();
        if (table == nullptr || i >= table->Records().size()) return;
        const Xml::detail::EntityRecord& record = table->Records()[i];
        if (record.ids == nullptr) continue;
        const char* const publicId = record.ids->publicId.c_str();
        const char* const systemId = record.ids->systemId.c_str();
        if (record.kind == Xml::detail::EntityKind::Notation) {
            settings.dtdHandler->notationDecl(record.name.c_str(), publicId, systemId);
        } else if (record.IsUnparsed()) {
            settings.dtdHandler->unparsedEntityDecl(record.name.c_str(), publicId, systemId,
                                                    record.ids->notation.c_str());
        }
    }
}

}  // namespace sax::detail
