// SPDX-License-Identifier: MIT
#include "Document.h"

#include "Excerpt.h"
#include "Utf8.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <string_view>

namespace Tool {

namespace {

constexpr std::string_view kSecondRoot = "Second root element";
constexpr std::string_view kSecondRootByStandard = "Only one document element is allowed";
constexpr std::string_view kCyclicEntity = "Cyclic entity reference";
constexpr std::string_view kMissingEnd = "Missing end element";
constexpr std::string_view kMismatch = "' doesn't match start tag '";

// Messages that mean that the document may be fine, but more than the reader takes.
constexpr std::array<std::string_view, 6> kLimits = {
    "Input buffer overflow",
    "Buffer overflow while reading markup token",
    "Input buffer full - token too big",
    "Entity expansion limit exceeded",
    "Entity nesting limit exceeded",
    "Limit on supplied attributes exceeded",
};

// Returns an argument of a message as one short line.
std::string OneLine(std::string_view argument) {
    constexpr std::size_t kLongest = 60;
    std::string line(argument.substr(0, kLongest));
    if (argument.size() > kLongest) {
        while (!line.empty() && IsContinuation(argument[line.size()]))
            line.pop_back();
        line += "...";
    }
    std::replace_if(
        line.begin(), line.end(), [](char byte) { return byte >= 0 && byte < ' '; }, ' ');
    return line;
}

// Returns the name of the open element that an error is about, or empty.
std::string_view OpenElementName(const Xml::Exception& error) {
    const std::string_view message = error.What();
    if (message == kMissingEnd) return error.Argument();
    const std::size_t mismatch = message.find(kMismatch);
    if (mismatch == std::string_view::npos) return {};
    std::string_view name = message.substr(mismatch + kMismatch.size());
    name.remove_suffix(name.empty() ? 0 : 1);  // the quotation mark
    return name;
}

// What a message says is open at the end of the document, and where it begins.
struct OpenConstruct {
    std::string name;
    Place place;
};

constexpr std::string_view kEndIn = "Unexpected end of file in the ";
constexpr std::string_view kBeginsAt = " that begins at line ";

// Reads "Unexpected end of file in the NAME that begins at line LINE, position POSITION".
std::optional<OpenConstruct> ReadOpenConstruct(std::string_view message) {
    const std::size_t begins = message.find(kBeginsAt);
    if (!message.starts_with(kEndIn) || begins == std::string_view::npos) return std::nullopt;
    OpenConstruct open{std::string(message.substr(kEndIn.size(), begins - kEndIn.size())), {}};
    constexpr std::string_view kPosition = ", position ";
    const std::string_view line = message.substr(begins + kBeginsAt.size());
    const std::size_t comma = line.find(kPosition);
    if (comma == std::string_view::npos) return std::nullopt;
    const std::string_view position = line.substr(comma + kPosition.size());
    std::from_chars(line.data(), line.data() + comma, open.place.line);
    std::from_chars(position.data(), position.data() + position.size(), open.place.column);
    return open;
}

std::string MessageText(const Xml::Exception& error) {
    std::string_view message = error.What();
    const std::string_view argument = error.Argument();
    if (ReadOpenConstruct(message)) message = message.substr(0, message.find(kBeginsAt));
    const bool saysAll = message.find(kMismatch) != std::string_view::npos;
    if (argument.empty() || saysAll) return std::string(message);
    return fmt::format("{} '{}'", message, OneLine(argument));
}

// Tells whether a message is about something that was begun and not ended.
bool IsAboutMissingEnd(std::string_view message) {
    return message.starts_with("Unexpected end of file") ||
           message == "Unexpected token or missing close quote";
}

std::string_view ConstructName(Construct construct) {
    switch (construct) {
    case Construct::None: break;
    case Construct::Tag: return "the tag";
    case Construct::Value: return "the attribute value";
    case Construct::Comment: return "the comment";
    case Construct::CData: return "the CDATA section";
    case Construct::ProcessingInstruction: return "the processing instruction";
    case Construct::DocumentType: return "the document type";
    case Construct::Declaration: return "the declaration";
    case Construct::Literal: return "the literal";
    }
    return {};
}

// Tells whether an internal subset refers to a parameter entity, which may stand for declarations.
bool RefersToDeclarations(std::string_view subset) {
    MarkupTracker tracker;
    tracker.Advance("<!DOCTYPE a [");
    for (const char byte : subset) {
        if (byte == '%' && tracker.Inside() == Construct::DocumentType) return true;
        tracker.Step(byte);
    }
    return false;
}

ExitCode CodeOf(const Xml::Exception& error) {
    const bool isLimit = std::find(kLimits.begin(), kLimits.end(), error.What()) != kLimits.end();
    return isLimit ? ExitCode::Limit : ExitCode::NotWellFormed;
}

}  // namespace

Document::Document(const std::string& name, Context& context, Roots roots)
    : context_(context), input_(name, context.input, context.progress), roots_(roots) {
    reader_.SetConformance(context.input.conformance);
    reader_.SetStream(&input_, false);
}

bool Document::Next() {
    const bool more = reader_.Read();
    if (!started_) {
        started_ = true;
        NoteEncoding();
    }
    if (more) Follow();
    return more;
}

std::string Document::Value() const {
    const std::string_view value = reader_.Value().view();
    const bool isMasked =
        DeclaresFormerEncoding() && reader_.NodeType() == Xml::XmlNodeType::XmlDeclaration;
    return isMasked ? WithoutMask(value, input_.Mask()) : std::string(value);
}

bool Document::IsJudgedByStandard() const {
    return reader_.Conformance() == Xml::XmlConformance::Standard;
}

MarkupTracker::Names Document::Names() const {
    return reader_.Namespaces() ? MarkupTracker::Names::Prefixed : MarkupTracker::Names::Whole;
}

void Document::NoteEncoding() { input_.SetEncoding(reader_.Encoding().view(), Names()); }

void Document::ExpandDeclaredEntities() {
    expandsDeclared_ = true;
    reader_.SetEntityHandling(Xml::XmlEntityHandling::ExpandEntities);
}

void Document::Follow() {
    switch (reader_.NodeType()) {
    case Xml::XmlNodeType::XmlDeclaration:
        isStandalone_ = reader_.GetAttribute("standalone") == "yes";
        break;
    case Xml::XmlNodeType::DocumentType: FollowDocumentType(); break;
    case Xml::XmlNodeType::Element: FollowElement(); break;
    case Xml::XmlNodeType::EndElement:
        if (!open_.empty()) open_.pop_back();
        break;
    default: break;
    }
}

// XML 1.0 section 4.1, Entity Declared: only where all declarations have been read, a reference to
// an entity without one is an error. A reader that keeps to the standard knows by itself.
void Document::FollowDocumentType() {
    declaresEntities_ = reader_.Value().find("<!ENTITY") != astring::npos;
    if (!expandsDeclared_ || isStandalone_ || IsJudgedByStandard()) return;
    const bool isElsewhere = reader_.HasAttributes() || RefersToDeclarations(reader_.Value());
    if (isElsewhere) reader_.SetEntityHandling(Xml::XmlEntityHandling::ExpandCharEntities);
}

// Keeps in mind which elements are open.
void Document::FollowElement() {
    const Place place{reader_.LineNumber(), reader_.LinePosition()};
    if (open_.empty()) {
        if (rootSeen_ && roots_ == Roots::One) {
            Xml::Exception::ThrowException(kSecondRoot.data(), reader_.Name(), reader_.LineNumber(),
                                           reader_.LinePosition());
        }
        if (!rootSeen_) root_ = place;
        rootSeen_ = true;
    }
    if (!reader_.IsEmptyElement()) open_.push_back(place);
}

ExitCode Document::Explain(const Xml::Exception& error) {
    const std::string text = MessageText(error);
    if (input_.Failed() || error.LineNumber() < 1) {
        context_.console.Write(
            Headline(context_.console, input_.DisplayName(), Severity::Error, text));
        return input_.Failed() ? input_.Failure() : CodeOf(error);
    }
    NoteEncoding();
    const auto [reference, isUnsure] = TraceError(error);
    const bool isAtDeclaration = error.What() == kCyclicEntity;
    if (reference && !isAtDeclaration) {
        const std::string name = OneLine(reference->name);
        ExplainAt(reference->place, fmt::format("{} (in the text of the entity '{}')", text, name),
                  Find(reference->place, ColumnCount::Reader));
        return CodeOf(error);
    }
    const Place place{error.LineNumber(), error.LinePos()};
    Excerpt excerpt = Find(place, ColumnCount::Reader);
    excerpt.isUnsure = isUnsure && !isAtDeclaration;
    ExplainAt(place, text, excerpt);
    if (reference) {
        Note(Find(reference->place, ColumnCount::Reader), reference->place,
             "the reference that leads to it is here");
    } else {
        ExplainOtherEnd(error, excerpt);
    }
    return CodeOf(error);
}

ExitCode Document::ExplainRefusal(Place place, ColumnCount count, std::string_view text) {
    ExplainAt(place, text, Find(place, count));
    return ExitCode::InputOutput;
}

Document::Trace Document::TraceError(const Xml::Exception& error) {
    const bool expands = reader_.EntityHandling() == Xml::XmlEntityHandling::ExpandEntities;
    if (!expands || !declaresEntities_) return {};
    const auto reopen = [this] {
        std::unique_ptr<IO::Stream> again = input_.Reopen();
        if (again == nullptr) Xml::Exception::ThrowException("The start has gone by");
        return again;
    };
    try {
        return {TraceErrorToReference(error, reopen, reader_), false};
    } catch (const Xml::Exception&) {
        // The file is gone or cannot be read twice, or nobody can tell.
    }
    return {std::nullopt, true};
}

void Document::ExplainAt(Place place, std::string_view text, const Excerpt& excerpt) {
    const Console& console = context_.console;
    const Place shown =
        excerpt.found && !excerpt.isBehind && !excerpt.isUnsure ? excerpt.place : place;
    const std::string where =
        fmt::format("{}:{}:{}", input_.DisplayName(), shown.line, shown.column);
    context_.console.Write(Headline(console, where, Severity::Error, text) +
                           Picture(console, excerpt));
}

// Shows the place that an error refers to but does not stand at, where there is one.
void Document::ExplainOtherEnd(const Xml::Exception& error, const Excerpt& excerpt) {
    const std::string_view message = error.What();
    const std::string_view openName = OpenElementName(error);
    if (!openName.empty() && !open_.empty()) {
        const Excerpt opening = Find(open_.back(), ColumnCount::Reader);
        const std::string tag = fmt::format("<{}", openName);
        if (opening.found && !opening.after.starts_with(tag)) return;  // in the text of an entity
        Note(opening, open_.back(), fmt::format("<{}> was opened here", OneLine(openName)));
    } else if (message == kSecondRoot || message == kSecondRootByStandard) {
        Note(Find(root_, ColumnCount::Reader), root_, "the first root element is here");
    } else if (const std::optional<OpenConstruct> open = ReadOpenConstruct(message)) {
        Note(Find(open->place, ColumnCount::Reader), open->place,
             fmt::format("the {} begins here", open->name));
    } else if (IsAboutMissingEnd(message) && excerpt.found && !excerpt.isBehind &&
               !excerpt.isUnsure && excerpt.inside != Construct::None) {
        const Place since = excerpt.insideSince;
        Note(Find(since, ColumnCount::People), since,
             fmt::format("{} begins here", ConstructName(excerpt.inside)));
    }
}

Excerpt Document::Find(Place place, ColumnCount count) {
    try {
        const std::unique_ptr<SourceText> text = input_.Reread();
        return FindPlace(*text, place, count);
    } catch (const Xml::Exception&) {
        return {};  // the file is gone or cannot be read twice: the message has to do without
    }
}

// Without an excerpt only the line is sure: the reader's column leaves out colons.
void Document::Note(const Excerpt& excerpt, Place place, std::string_view text) {
    const std::string where = excerpt.found
                                  ? fmt::format("{}:{}:{}", input_.DisplayName(),
                                                excerpt.place.line, excerpt.place.column)
                                  : fmt::format("{}:{}", input_.DisplayName(), place.line);
    context_.console.Write(Headline(context_.console, where, Severity::Note, text) +
                           Picture(context_.console, excerpt));
}

}  // namespace Tool
