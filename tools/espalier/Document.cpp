// SPDX-License-Identifier: MIT
#include "Document.h"

#include "Excerpt.h"
#include "Utf8.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <string_view>

namespace Tool {

namespace {

constexpr std::string_view kSecondRoot = "Second root element";
constexpr std::string_view kMissingEnd = "Missing end element";
constexpr std::string_view kMismatch = "' doesn't match start tag '";

// Messages that mean that the document may be fine, but more than the reader takes.
constexpr std::array<std::string_view, 3> kLimits = {
    "Input buffer overflow",
    "Buffer overflow while reading markup token",
    "Input buffer full - token too big",
};

enum class Severity { Error, Note };

// Joins the parts of a message in the form of compilers: "FILE:LINE:COLUMN: error: TEXT".
std::string Headline(const Console& console, std::string_view where, Severity severity,
                     std::string_view text) {
    const bool isError = severity == Severity::Error;
    if (!console.ColorsErrors()) {
        return fmt::format("{}: {} {}\n", where, isError ? "error:" : "note:", text);
    }
    return fmt::format("\x1B[1m{}: {}\x1B[0m {}\n", where,
                       isError ? "\x1B[31merror:" : "\x1B[36mnote:", text);
}

std::string Picture(const Console& console, const Excerpt& excerpt) {
    if (!console.ColorsErrors()) return ShowExcerpt(excerpt);
    return ShowExcerpt(excerpt, "\x1B[1;32m", "\x1B[0m");
}

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

std::string MessageText(const Xml::Exception& error) {
    const std::string_view message = error.What();
    const std::string_view argument = error.Argument();
    const bool saysAll = message.find(kMismatch) != std::string_view::npos;
    if (argument.empty() || saysAll) return std::string(message);
    return fmt::format("{} '{}'", message, OneLine(argument));
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

ExitCode CodeOf(const Xml::Exception& error) {
    const bool isLimit = std::find(kLimits.begin(), kLimits.end(), error.What()) != kLimits.end();
    return isLimit ? ExitCode::Limit : ExitCode::NotWellFormed;
}

}  // namespace

Document::Document(const std::string& name, Context& context, Roots roots)
    : context_(context), input_(name, context.progress), roots_(roots) {
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

void Document::NoteEncoding() {
    input_.SetEncoding(reader_.Encoding().view(), reader_.Namespaces()
                                                      ? MarkupTracker::Names::Prefixed
                                                      : MarkupTracker::Names::Whole);
}

// Keeps in mind which elements are open.
void Document::Follow() {
    const Xml::XmlNodeType type = reader_.NodeType();
    if (type == Xml::XmlNodeType::EndElement) {
        if (!open_.empty()) open_.pop_back();
        return;
    }
    if (type != Xml::XmlNodeType::Element) return;

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
    const Console& console = context_.console;
    if (input_.Failed() || error.LineNumber() < 1) {
        context_.console.Write(
            Headline(console, input_.DisplayName(), Severity::Error, MessageText(error)));
        return input_.Failed() ? ExitCode::InputOutput : CodeOf(error);
    }
    NoteEncoding();
    const Excerpt excerpt = Find({error.LineNumber(), error.LinePos()}, ColumnCount::Reader);
    const Place place = excerpt.found ? excerpt.place : Place{error.LineNumber(), error.LinePos()};
    const std::string where =
        fmt::format("{}:{}:{}", input_.DisplayName(), place.line, place.column);
    context_.console.Write(Headline(console, where, Severity::Error, MessageText(error)) +
                           Picture(console, excerpt));
    ExplainOtherEnd(error, excerpt);
    return CodeOf(error);
}

// Shows the place that an error refers to but does not stand at, where there is one.
void Document::ExplainOtherEnd(const Xml::Exception& error, const Excerpt& excerpt) {
    const std::string_view message = error.What();
    const std::string_view openName = OpenElementName(error);
    if (!openName.empty() && !open_.empty()) {
        Note(Find(open_.back(), ColumnCount::Reader), open_.back(),
             fmt::format("<{}> was opened here", OneLine(openName)));
    } else if (message == kSecondRoot) {
        Note(Find(root_, ColumnCount::Reader), root_, "the first root element is here");
    } else if (IsAboutMissingEnd(message) && excerpt.found && excerpt.inside != Construct::None) {
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

ExitCode ExplainOpening(const std::string& name, const Xml::Exception& error, Context& context) {
    context.console.Write(
        Headline(context.console, name == "-" ? "<stdin>" : name, Severity::Error, error.What()));
    return ExitCode::InputOutput;
}

}  // namespace Tool
