// SPDX-License-Identifier: MIT

// The writer's state machine: documents, elements, and markup between them.

#include "xml/WriterCore.h"

#include <espalier/encoding/Encoding.h>
#include <espalier/io/Exception.h>
#include <espalier/xml/XmlTextReader.h>

#include "xml/EscapeScan.h"
#include "xml/WriterMessages.h"

#include <cstdint>
#include <new>  // std::bad_alloc

namespace Xml::detail {

void WriterCore::Throw(const char* message) {
    Exception::ThrowException(message, astring(), -1, -1);
}

void WriterCore::Open(IO::Stream* stream, const Encoding* encoding) {
    if (stream == nullptr) Throw(Message::kNoStream);
    if (!stream->CanWrite()) Throw(Message::kStreamNotWritable);
    if (encoding == nullptr) Throw(Message::kNoEncoding);
    stream_ = stream;
    encoding_ = encoding;
    output_.Attach(stream, encoding);
    state_ = WriteState::Start;
}

void WriterCore::OpenFile(const astring& name, const Encoding* encoding) {
    if (encoding == nullptr) Throw(Message::kNoEncoding);
    file_ = std::make_unique<WriterFile>(name);
    Open(file_.get(), encoding);
    settings.closeOutput = true;
}

// State.

XmlSpace WriterCore::Space() const {
    return depth_ == 0 ? XmlSpace(XmlSpace::SpaceNone) : Top().space;
}

const astring& WriterCore::Language() const { return depth_ == 0 ? empty_ : *Top().language; }

void WriterCore::RequireOpen() const {
    if (State() == WriteState::Closed) Throw(Message::kWriterClosed);
}

// An element has ended for good when no frame is left, whatever the state still says.
bool WriterCore::IsInElement() const {
    return depth_ > 0 && (state_ == WriteState::Element || state_ == WriteState::Attribute ||
                          state_ == WriteState::Content);
}

void WriterCore::RequireText() const {
    RequireOpen();
    if (!IsInElement()) Throw(Message::kNoTextHere);
}

// Tells whether the root element has ended, but not its document.
bool WriterCore::IsBehindRoot() const {
    return depth_ == 0 && (state_ == WriteState::Element || state_ == WriteState::Content);
}

// White space may stand behind the root element, too, and so may markup that is not looked at.
void WriterCore::RequireTextOrEnd() const {
    RequireOpen();
    if (!IsInElement() && !IsBehindRoot()) Throw(Message::kNoTextHere);
}

// Returns whether the text has anything to escape.
bool WriterCore::CheckText(std::string_view text) const {
    const TextNeeds needs = ExamineText(text, BreaksArePlain(), settings.checkCharacters);
    if (needs.isBad) Throw(Message::kBadCharacter);
    return needs.escapes;
}

void WriterCore::Flush() {
    if (State() == WriteState::Closed) Throw(Message::kAlreadyClosed);
    output_.Drain();
    try {
        stream_->Flush();
    } catch (...) {
        // A stream of the caller has all bytes and may be asked again; a file has lost some.
        if (file_ != nullptr) output_.GiveUp();
        throw;
    }
}

void WriterCore::Close() {
    if (State() == WriteState::Closed) Throw(Message::kAlreadyClosed);
    EndDocument();
    state_ = WriteState::Closed;  // also when the stream throws now
    output_.Drain();
    stream_->Flush();
    if (settings.closeOutput) stream_->Close();
}

// Frames.

// Enters an element.
void WriterCore::Push(const ElementPlan& plan, std::string_view localName, std::string_view ns) {
    if (depth_ == frames_.size()) frames_.emplace_back();
    WriterFrame& frame = frames_[depth_];
    const bool isRoot = depth_ == 0;
    frame.nameBegin = names_.length();
    frame.textsBefore = textCount_;
    frame.defaultNs = isRoot ? &empty_ : Top().defaultNs;
    frame.language = isRoot ? &empty_ : Top().language;
    frame.space = isRoot ? XmlSpace(XmlSpace::SpaceNone) : Top().space;
    frame.declaration = WriterFrame::Declaration::None;
    frame.isMixed = false;
    ++depth_;
    if (!plan.prefix.empty()) (names_ += plan.prefix) += ':';
    names_ += localName;
    namespaces_.PushContext();
    used_.clear();
    if (plan.binds) {
        Declare(plan.prefix, ns);
    } else {
        NoteUse(plan.prefix);
    }
    if (plan.defaults) {
        frame.defaultNs = Keep(ns);
        frame.declaration = WriterFrame::Declaration::Pending;
    }
    written_.clear();
}

// Leaves an element. The state of the last one stays.
void WriterCore::Pop() {
    names_.resize(Top().nameBegin);
    textCount_ = Top().textsBefore;
    --depth_;
    namespaces_.PopContext();
    tagOpen_ = false;
    if (depth_ > 0) state_ = WriteState::Content;
}

// Keeps a text for the innermost element and what is in it.
const astring* WriterCore::Keep(std::string_view text) {
    if (textCount_ == texts_.size()) texts_.emplace_back();
    texts_[textCount_] = text;
    return &texts_[textCount_++];
}

// Layout.

bool WriterCore::Indents() const {
    return settings.formatting == Formatting::Indented && (depth_ == 0 || !Top().isMixed);
}

// Begins a line for what is `depth` elements deep. The first of a document needs none.
void WriterCore::NewLine(std::size_t depth) {
    if (state_ != WriteState::Start) output_.PutToken(settings.newLineChars);
    const auto indentation = static_cast<std::uint64_t>(settings.indentation);
    for (std::uint64_t count = depth * indentation; count > 0; --count)
        output_.Put(settings.indentChar);
}

// Start tags.

// Ends the start tag that is open, and its attribute, if one is.
void WriterCore::FinishOpenTag() {
    if (state_ == WriteState::Attribute) FinishAttribute();
    FinishTag(false);
    state_ = WriteState::Content;
}

void WriterCore::FinishTag(bool isEmpty) {
    if (NeedsDeclarations()) DeclareBound();
    if (isEmpty) output_.Put('/');
    output_.Put('>');
    tagOpen_ = false;
}

// Writes the declarations that the element needs and its attributes did not make.
void WriterCore::DeclareBound() {
    WriterFrame& frame = Top();
    if (frame.declaration == WriterFrame::Declaration::Pending) {
        WriteDeclaration({}, *frame.defaultNs);
        frame.declaration = WriterFrame::Declaration::Written;
    }
    Make([this] { CollectBound(); });
    for (auto ns = bound_.rbegin(); ns != bound_.rend(); ++ns)
        WriteDeclaration((*ns)->prefix, (*ns)->uri);
}

// Finds the prefixes bound in the element that no attribute of it has declared, the latest first.
void WriterCore::CollectBound() {
    bound_.clear();
    auto written = written_.rbegin();  // the latest comes first, as in the namespaces
    for (const sax::XmlNamespace* ns = namespaces_.FirstDeclaredNs(); ns != nullptr;
         ns = namespaces_.NextDeclaredNs(ns)) {
        if (written != written_.rend() && *written == ns) {
            ++written;
        } else if (ns->current) {
            bound_.push_back(ns);
        }
    }
}

void WriterCore::WriteDeclaration(std::string_view prefix, std::string_view uri) {
    output_.PutToken(prefix.empty() ? " xmlns" : " xmlns:");
    output_.PutToken(prefix);
    output_.Put('=');
    output_.Put(settings.quoteChar);
    PutEscaped(uri);
    output_.Put(settings.quoteChar);
}

// Documents.

void WriterCore::StartDocument(const char* standalone) {
    RequireOpen();
    if (state_ != WriteState::Start) Throw(Message::kBadState);
    const char quote = settings.quoteChar;
    const auto part = [this, quote](std::string_view name, std::string_view value) {
        output_.PutToken(name);
        output_.Put(quote);
        output_.PutToken(value);
        output_.Put(quote);
    };
    output_.PutPreamble();
    part("<?xml version=", "1.0");
    part(" encoding=", encoding_->WebName());
    if (standalone != nullptr) part(" standalone=", standalone);
    output_.PutToken("?>");
    state_ = WriteState::Prolog;
}

void WriterCore::EndDocument() {
    RequireOpen();
    while (depth_ > 0)
        EndElement();
    docTypeName_.clear();
    prefixCount_ = 0;
    state_ = WriteState::Start;
}

void WriterCore::DocType(std::string_view name, std::string_view publicId,
                         std::string_view systemId, std::string_view subset) {
    RequireOpen();
    if (state_ != WriteState::Start && state_ != WriteState::Prolog) {
        Throw(Message::kNoDoctypeHere);
    }
    if (!XmlTextReader::IsName(name, true)) Throw(Message::kNoName);
    docTypeName_ = name;
    if (settings.formatting == Formatting::Indented) NewLine(0);
    const auto literal = [this](std::string_view text) {
        output_.Put(settings.quoteChar);
        output_.PutToken(text);
        output_.Put(settings.quoteChar);
    };
    output_.PutToken("<!DOCTYPE ");
    output_.PutToken(name);
    if (!publicId.empty()) {
        output_.PutToken(" PUBLIC ");
        literal(publicId);
        output_.Put(' ');
        literal(systemId);
    } else if (!systemId.empty()) {
        output_.PutToken(" SYSTEM ");
        literal(systemId);
    }
    if (!subset.empty()) {
        output_.PutToken(" [");
        output_.PutText(subset);
        output_.Put(']');
    }
    output_.Put('>');
    state_ = WriteState::Prolog;
}

// Elements.

void WriterCore::StartElement(std::string_view prefix, std::string_view localName,
                              std::string_view ns) {
    RequireOpen();
    const ElementPlan plan = SettleAndPlan([&] { return PlanElement(prefix, localName, ns); });
    BeginElement(plan, localName, ns);
}

void WriterCore::BeginElement(const ElementPlan& plan, std::string_view localName,
                              std::string_view ns) {
    if (state_ == WriteState::Start) output_.PutPreamble();
    CloseTag();
    const bool indents = Indents();
    const std::size_t outside = depth_;
    Make([&] { Push(plan, localName, ns); });
    if (indents) NewLine(outside);
    if (!output_.PutStartTag(TopName())) {
        output_.Put('<');
        output_.PutToken(TopName());
    }
    tagOpen_ = true;
    state_ = WriteState::Element;
}

void WriterCore::EndElement() {
    RequireOpen();
    if (!IsInElement()) Throw(Message::kNotInElement);
    SettleAttribute();
    if (state_ == WriteState::Attribute) FinishAttribute();
    if (tagOpen_) {
        FinishTag(true);
    } else {
        if (Indents()) NewLine(depth_ - 1);
        if (!output_.PutEndTag(TopName())) {
            output_.PutToken("</");
            output_.PutToken(TopName());
            output_.Put('>');
        }
    }
    Pop();
}

void WriterCore::FullEndElement() {
    RequireOpen();
    if (!IsInElement()) Throw(Message::kWrongState);
    SettleAttribute();
    CloseTag();
    // Deliberate: clients rely on these bytes, an end tag without "/" and with a NUL behind it.
    output_.Put('<');
    output_.PutToken(TopName());
    output_.Put('>');
    output_.Put('\0');
    Pop();
}

void WriterCore::ElementString(std::string_view prefix, std::string_view localName,
                               std::string_view ns, std::string_view text) {
    RequireOpen();
    const ElementPlan plan = SettleAndPlan([&] {
        const ElementPlan made = PlanElement(prefix, localName, ns);
        CheckText(text);
        return made;
    });
    BeginElement(plan, localName, ns);
    String(text);
    EndElement();
}

// Markup between tags.

// Gets ready for a comment or an instruction, which begin a line even at the start of a document.
void WriterCore::BeginMarkup() {
    CloseTag();
    if (state_ == WriteState::Start) state_ = WriteState::Prolog;
    if (Indents()) NewLine(depth_);
}

void WriterCore::Comment(std::string_view text) {
    RequireOpen();
    CheckText(text);
    SettleAttribute();
    BeginMarkup();
    output_.PutToken("<!--");
    output_.PutText(text);
    output_.PutToken("-->");
}

void WriterCore::Instruction(std::string_view name, std::string_view text) {
    RequireOpen();
    if (state_ == WriteState::Attribute) Throw(Message::kWrongState);
    if (!XmlTextReader::IsName(name, true)) Throw(Message::kNoName);
    CheckText(text);
    BeginMarkup();
    output_.PutToken("<?");
    output_.PutToken(name);
    output_.Put(' ');
    output_.PutText(text);
    output_.PutToken("?>");
}

void WriterCore::CData(std::string_view text) {
    RequireOpen();
    if (state_ == WriteState::Attribute) Throw(Message::kNotInContent);
    if (!IsInElement()) Throw(Message::kNoTextHere);
    CheckText(text);
    BeginContent();
    output_.PutToken("<![CDATA[");
    output_.PutText(text);
    output_.PutToken("]]>");
}

}  // namespace Xml::detail
