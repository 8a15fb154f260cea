// SPDX-License-Identifier: MIT
#include "Formatter.h"

#include <algorithm>

namespace Tool {

namespace {

constexpr std::string_view kXmlSpace = "xml:space";
constexpr std::string_view kSectionStart = "<![CDATA[";
constexpr std::string_view kCommentStart = "<!--";

std::string_view ValueOf(const SourceNode& node, std::string_view name) {
    for (const SourceAttribute& attribute : node.attributes) {
        if (attribute.name == name) return attribute.value;
    }
    return {};
}

bool Has(const SourceNode& node, std::string_view name) {
    return std::any_of(node.attributes.begin(), node.attributes.end(),
                       [name](const SourceAttribute& attribute) { return attribute.name == name; });
}

// A value as it is written holds at most one of the two quotation marks.
char QuoteFor(std::string_view value) {
    return value.find('"') == std::string_view::npos ? '"' : '\'';
}

std::string Quoted(std::string_view value) {
    const char quote = QuoteFor(value);
    return std::string(1, quote).append(value) + quote;
}

// Returns the place that is so many characters further in the line.
Place After(Place place, std::size_t characters) {
    return {place.line, place.column + static_cast<long>(characters)};
}

}  // namespace

Formatter::Formatter(NodeQueue& nodes, const Target& target, const Layout& layout, IO::Stream& out)
    : nodes_(nodes),
      target_(target),
      layout_(layout),
      out_(out),
      writer_(&out, &target.Encoding()),
      text_(target, layout.newLine) {
    writer_.SetNamespaces(false);
    writer_.SetCheckCharacters(false);  // the reader has checked them
    writer_.SetFormatting(layout.compact ? Xml::Formatting::None : Xml::Formatting::Indented);
    writer_.SetIndentation(layout.indentation);
    writer_.SetIndentChar(layout.indentChar);
    writer_.SetNewLineChars(layout.newLine);
}

void Formatter::Run() {
    if (target_.HasMark()) WritePast("\xEF\xBB\xBF");
    const SourceNode* node = nodes_.First();
    const bool isDeclared = node != nullptr && node->type == Xml::XmlNodeType::XmlDeclaration;
    if (!isDeclared && target_.HasToBeDeclared()) WriteDeclaration("1.0", target_.Name(), {});
    for (; node != nullptr; node = nodes_.First()) {
        Write(*node);
        nodes_.Pop();
    }
    writer_.Close();
    WritePast(layout_.newLine);
}

void Formatter::Write(const SourceNode& node) {
    switch (node.type) {
    case Xml::XmlNodeType::XmlDeclaration: WriteDeclaration(node); break;
    case Xml::XmlNodeType::DocumentType: WriteDocumentType(node); break;
    case Xml::XmlNodeType::Element: WriteElement(node); break;
    case Xml::XmlNodeType::EndElement: WriteEndElement(); break;
    case Xml::XmlNodeType::Text:
    case Xml::XmlNodeType::CDATA: WriteText(node); break;
    case Xml::XmlNodeType::Whitespace:
    case Xml::XmlNodeType::SignificantWhitespace: WriteBlank(node); break;
    case Xml::XmlNodeType::Comment: WriteComment(node); break;
    case Xml::XmlNodeType::ProcessingInstruction: WriteInstruction(node); break;
    default: break;
    }
}

// Writes a text without the writer, behind all that it has written.
void Formatter::WritePast(std::string_view text) {
    if (writer_.GetWriteState() != Xml::WriteState::Closed) writer_.Flush();
    constexpr std::size_t kMostBytes = 4;  // that a byte of UTF-8 becomes
    std::vector<unsigned char> bytes(kMostBytes * text.size());
    const unsigned count =
        target_.Encoding().GetBytes(text.data(), static_cast<unsigned>(text.size()), bytes.data(),
                                    static_cast<unsigned>(bytes.size()));
    out_.Write(bytes.data(), 0, static_cast<int>(count));
}

void Formatter::WriteDeclaration(const SourceNode& node) {
    std::string_view encoding = ValueOf(node, "encoding");
    const bool changes = !target_.KeepsDeclaredName();
    if (changes && (!encoding.empty() || target_.HasToBeDeclared())) encoding = target_.Name();
    WriteDeclaration(ValueOf(node, "version"), encoding, ValueOf(node, "standalone"));
}

// The writer's own declaration names the encoding always, and by its own name for it.
void Formatter::WriteDeclaration(std::string_view version, std::string_view encoding,
                                 std::string_view standalone) {
    std::string value = "version=" + Quoted(version);
    if (!encoding.empty()) value += " encoding=" + Quoted(encoding);
    if (!standalone.empty()) value += " standalone=" + Quoted(standalone);
    WriteInstruction("xml", value);
}

// Written past the writer, which would insist on a root element of this name, and has one kind of
// quotation marks for both identifiers.
void Formatter::WriteDocumentType(const SourceNode& node) {
    std::string markup = "<!DOCTYPE " + node.name;
    const bool isPublic = Has(node, "PUBLIC");
    if (isPublic) markup += " PUBLIC " + Quoted(ValueOf(node, "PUBLIC"));
    if (Has(node, "SYSTEM")) {
        markup += (isPublic ? " " : " SYSTEM ") + Quoted(ValueOf(node, "SYSTEM"));
    }
    if (!node.value.empty()) markup += " [" + node.value + "]";
    markup += ">";
    const bool isFirst = writer_.GetWriteState() == Xml::WriteState::Start;
    if (!layout_.compact) markup.insert(isFirst ? markup.size() : 0, layout_.newLine);
    WritePast(text_.Markup(markup, node.place));
}

void Formatter::WriteElement(const SourceNode& node) {
    TakeNote();
    const Frame frame = FrameOf(node);
    writer_.WriteStartElement(text_.Name(node.name, After(node.place, 1)));
    for (const SourceAttribute& attribute : node.attributes)
        WriteAttribute(attribute);
    if (node.isEmpty) {
        writer_.WriteEndElement();
        return;
    }
    open_.push_back(frame);
    if (frame.IsVerbatim()) writer_.WriteString("");  // the writer adds nothing where text is
}

Formatter::Frame Formatter::FrameOf(const SourceNode& node) {
    Frame frame = open_.empty() ? Frame() : open_.back();
    frame.isEmpty = true;
    if (node.isEmpty) return frame;
    if (Has(node, kXmlSpace)) frame.preserves = ValueOf(node, kXmlSpace) != "default";
    if (!frame.IsVerbatim()) frame.isMixed = nodes_.IsMixed();
    return frame;
}

void Formatter::WriteAttribute(const SourceAttribute& attribute) {
    const std::string_view value = attribute.value;
    writer_.SetQuoteChar(QuoteFor(value));
    writer_.WriteStartAttribute(text_.Name(attribute.name, attribute.place));
    writer_.WriteRaw(text_.Text(value, After(attribute.place, attribute.name.size() + 2)));
    writer_.WriteEndAttribute();
}

void Formatter::WriteEndElement() {
    if (open_.back().isEmpty) writer_.WriteString("");  // <a></a> is not to become <a/>
    writer_.WriteEndElement();
    open_.pop_back();
}

void Formatter::WriteText(const SourceNode& node) {
    TakeNote();
    open_.back().isMixed = true;  // also when nobody knew until now
    if (node.type == Xml::XmlNodeType::CDATA) {
        writer_.WriteCData(text_.Markup(node.value, After(node.place, kSectionStart.size())));
    } else {
        writer_.WriteRaw(text_.Text(node.value, node.place));
    }
}

void Formatter::WriteBlank(const SourceNode& node) {
    if (open_.empty()) return;
    if (!open_.back().IsVerbatim()) {
        const SourceNode* const next = nodes_.Second();
        const bool isAll = open_.back().isEmpty && next->type == Xml::XmlNodeType::EndElement;
        if (!isAll && !IsText(*next)) return;
    }
    TakeNote();
    writer_.WriteRaw(text_.Text(node.value, node.place));
}

void Formatter::WriteComment(const SourceNode& node) {
    TakeNote();
    const std::string_view text = text_.Markup(node.value, After(node.place, kCommentStart.size()));
    OnItsLine([&] { writer_.WriteComment(text); });
}

void Formatter::WriteInstruction(const SourceNode& node) {
    TakeNote();
    WriteInstruction(text_.Name(node.name, node.place),
                     text_.Markup(node.value, After(node.place, node.name.size() + 1)));
}

void Formatter::WriteInstruction(std::string_view name, std::string_view value) {
    OnItsLine([&] { writer_.WriteProcessingInstruction(name, value); });
}

// Writes markup for which the writer begins a line, even at its start, where one has begun.
template <typename Action>
void Formatter::OnItsLine(const Action& action) {
    const bool hasBegun = writer_.GetWriteState() == Xml::WriteState::Start;
    const Xml::Formatting formatting = writer_.GetFormatting();
    if (hasBegun) writer_.SetFormatting(Xml::Formatting::None);
    action();
    writer_.SetFormatting(formatting);
}

// Notes that the innermost element has content.
void Formatter::TakeNote() {
    if (!open_.empty()) open_.back().isEmpty = false;
}

}  // namespace Tool
