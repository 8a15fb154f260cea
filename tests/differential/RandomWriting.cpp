// SPDX-License-Identifier: MIT
#include "RandomWriting.h"

#include <algorithm>  // std::min

namespace differential {
namespace {

using Xml::NewLineHandling;

constexpr int kDeepest = 6;
constexpr char kXmlUri[] = "http://www.w3.org/XML/1998/namespace";

// XML 1.0 section 2.11.
std::string WithLineFeeds(std::string_view text) {
    std::string out;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\r') {
            out += '\n';
            if (i + 1 < text.size() && text[i + 1] == '\n') ++i;
        } else {
            out += text[i];
        }
    }
    return out;
}

// XML 1.0 section 3.3.3, of a value without references.
std::string WithBlanks(std::string_view text) {
    std::string out = WithLineFeeds(text);
    for (char& c : out) {
        if (c == '\n' || c == '\t') c = ' ';
    }
    return out;
}

// Every line end replaced; the texts here have "\n" and "\r\n".
std::string WithLineEnds(std::string_view text, std::string_view lineEnd) {
    std::string out;
    for (const char c : WithLineFeeds(text)) {
        if (c == '\n') {
            out += lineEnd;
        } else {
            out += c;
        }
    }
    return out;
}

std::string InBase64(std::string_view bytes, std::string_view newLine) {
    constexpr char kAlphabet[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string out;
    std::size_t column = 0;
    for (std::size_t i = 0; i < bytes.size(); i += 3) {
        const std::size_t count = std::min<std::size_t>(3, bytes.size() - i);
        unsigned bits = 0;
        for (std::size_t k = 0; k < 3; ++k)
            bits = bits << 8 | (k < count ? static_cast<unsigned char>(bytes[i + k]) : 0U);
        for (std::size_t k = 0; k < 4; ++k)
            out += k <= count ? kAlphabet[bits >> (18 - 6 * k) & 63U] : '=';
        column += 4;
        if (column == 76 && count == 3) {
            out += newLine;
            column = 0;
        }
    }
    return out;
}

}  // namespace

void RandomWriting::Write(Xml::XmlTextWriter& writer, bool isWide) {
    writer_ = &writer;
    isWide_ = isWide;
    plain_ = EventList(Detail::Whole);
    standard_ = EventList(Detail::Whole);
    scopes_.assign(1, {});
    ChooseSettings();
    // The encodings of all of Unicode tell themselves.
    switch (Below(3)) {
    case 0: writer.WriteStartDocument(); break;
    case 1: writer.WriteStartDocument(Below(2) == 0); break;
    default:
        if (!isWide) writer.WriteStartDocument();
    }
    Misc();
    hasEntity_ = Below(3) == 0;
    if (hasEntity_) writer.WriteDocType("root", "", "", "<!ENTITY e 'an entity'>");
    Misc();
    const bool isLeftOpen = Below(3) == 0;  // for Close() to end
    Element(1, isLeftOpen);
    if (!isLeftOpen) Misc();
    writer.Close();
}

void RandomWriting::WriteIndented(Xml::XmlTextWriter& writer, bool isWide) {
    writer.SetFormatting(Xml::Formatting::Indented);
    writer.SetIndentation(static_cast<int>(Below(5)));
    if (Below(2) == 0) writer.SetIndentChar('\t');
    Write(writer, isWide);
}

void RandomWriting::ChooseSettings() {
    constexpr NewLineHandling::NEWLINE_HANDLING kModes[] = {
        NewLineHandling::NoHandling, NewLineHandling::Entitize, NewLineHandling::Replace};
    handling_ = kModes[Below(3)];
    newLine_ = OneOf({"\r\n", "\n", "\n\n"});
    writer_->SetNewLineHandling(handling_);
    writer_->SetNewLineChars(newLine_);
    if (Below(2) == 0) writer_->SetQuoteChar('\'');
}

void RandomWriting::Misc() {
    while (Below(3) == 0) {
        if (Below(2) == 0) {
            Comment();
        } else {
            Instruction();
        }
    }
}

void RandomWriting::Comment() {
    const std::string text = Words("-");
    writer_->WriteComment(text);
    plain_.Comment(text);
    standard_.Comment(WithLineFeeds(text));
}

void RandomWriting::Instruction() {
    const std::string target = OneOf({"p", "target", "xm"});
    const std::string text = Below(3) == 0 ? "" : "d" + Words("?");
    writer_->WriteProcessingInstruction(target, text);
    plain_.Instruction(target, text);
    standard_.Instruction(target, WithLineFeeds(text));
}

// Elements.

void RandomWriting::Element(int depth, bool isLeftOpen) {
    scopes_.push_back(scopes_.back());
    const std::string name = StartElement();
    std::vector<Attribute> attributes;
    Attributes(attributes);
    EventList::Attributes plain;
    EventList::Attributes standard;
    for (const Attribute& attribute : attributes) {
        plain.emplace_back(attribute.name, attribute.value.plain);
        standard.emplace_back(attribute.name, attribute.value.standard);
    }
    plain_.Start(name, plain);
    standard_.Start(name, standard);
    Content(depth);
    if (!isLeftOpen) writer_->WriteEndElement();
    plain_.End(name);
    standard_.End(name);
    scopes_.pop_back();
}

// Starts an element, with declarations by attributes if any, and returns its expanded name. The
// root element has the name that the document type may give it.
std::string RandomWriting::StartElement() {
    Scope& scope = scopes_.back();
    const std::string local = scopes_.size() == 2 ? "root" : Name();
    const std::string uri = Uri();
    switch (Below(4)) {
    case 0: {  // a namespace without a prefix
        writer_->WriteStartElement(local, uri);
        if (uri != scope.defaultNs && !IsBound(uri)) scope.defaultNs = uri;
        return ExpandedName(uri, local);
    }
    case 1: {  // a prefix of its own
        const std::string prefix = OneOf({"p", "q"});
        writer_->WriteStartElement(prefix, local, uri);
        scope.prefixes[prefix] = uri;
        return ExpandedName(uri, local);
    }
    case 2: {  // a prefix in scope, or one that an attribute declares
        const auto bound = scope.prefixes.find("r");
        if (bound == scope.prefixes.end()) break;
        const std::string ns = bound->second;
        writer_->WriteStartElement("r", local, "");
        return ExpandedName(ns, local);
    }
    default: break;
    }
    writer_->WriteStartElement(local);
    if (Below(6) == 0) {
        writer_->WriteAttributeString("xmlns", uri);
        scope.defaultNs = uri;
    }
    if (Below(6) == 0) {
        writer_->WriteAttributeString("xmlns", "r", "http://www.w3.org/2000/xmlns/", uri);
        scope.prefixes["r"] = uri;
    }
    return ExpandedName(scope.defaultNs, local);
}

// Attributes have different local names, whatever their namespaces.
void RandomWriting::Attributes(std::vector<Attribute>& attributes) {
    const int count = static_cast<int>(Below(8) == 0 ? Below(20) : Below(3));
    for (int i = 0; i < count; ++i) {
        const std::string name = StartAttribute(i);
        attributes.push_back({name, AttributeValue()});
    }
    if (Below(8) == 0) {
        const std::string language = OneOf({"en", "de-AT", ""});
        writer_->WriteAttributeString("xml", "lang", "", language);
        attributes.push_back({ExpandedName(kXmlUri, "lang"), AsWritten(language)});
    }
    if (Below(8) == 0) {
        const std::string space = OneOf({"default", "preserve"});
        writer_->WriteAttributeString("xml", "space", "", space);
        attributes.push_back({ExpandedName(kXmlUri, "space"), AsWritten(space)});
    }
}

std::string RandomWriting::StartAttribute(int index) {
    Scope& scope = scopes_.back();
    const std::string local = "x" + std::to_string(index);
    const std::string uri = Uri();
    switch (Below(5)) {
    case 0: {  // a namespace without a prefix: one in scope, or a new one
        writer_->WriteStartAttribute(local, uri);
        if (!IsBound(uri)) scope.prefixes["generated for " + uri] = uri;
        return ExpandedName(uri, local);
    }
    case 1: {  // a prefix for this namespace alone
        const std::string prefix = "s" + std::to_string(uri.size());
        writer_->WriteStartAttribute(prefix, local, uri);
        scope.prefixes[prefix] = uri;
        return ExpandedName(uri, local);
    }
    default: writer_->WriteStartAttribute(local); return ExpandedName("", local);
    }
}

RandomWriting::Told RandomWriting::AttributeValue() {
    Told value;
    for (std::size_t count = Below(4); count > 0; --count) {
        switch (Below(6)) {
        case 0:
            if (!hasEntity_) break;
            writer_->WriteEntityRef("e");
            value.Add(AsWritten("an entity"));
            break;
        case 1:
            writer_->WriteName("name");
            value.Add(AsWritten("name"));
            break;
        case 2:
            writer_->WriteRaw("&lt;raw&#x41;");
            value.Add(AsWritten("<rawA"));
            break;
        default: {
            const std::string text = Words("");
            writer_->WriteString(text);
            value.Add(InValue(text));
        }
        }
    }
    if (Below(2) == 0) writer_->WriteEndAttribute();
    return value;
}

// Content.

void RandomWriting::Text(const Told& told) {
    plain_.Text(told.plain);
    standard_.Text(told.standard);
}

// An element with nothing but text.
void RandomWriting::Whole(const std::string& name, const Told& told) {
    plain_.Start(name, {});
    standard_.Start(name, {});
    Text(told);
    plain_.End(name);
    standard_.End(name);
}

void RandomWriting::Content(int depth) {
    for (std::size_t count = Below(7); count > 0; --count)
        OneContent(depth);
}

void RandomWriting::OneContent(int depth) {
    switch (Below(10)) {
    case 0: Comment(); return;
    case 1: {
        // Behind an attribute the start tag must be closed first.
        if (writer_->GetWriteState() == Xml::WriteState::Attribute) writer_->WriteEndAttribute();
        Instruction();
        return;
    }
    case 2: {
        if (writer_->GetWriteState() == Xml::WriteState::Attribute) writer_->WriteEndAttribute();
        const std::string text = Words("]");
        writer_->WriteCData(text);
        Text({text, WithLineFeeds(text)});
        return;
    }
    case 3:
    case 4:
    case 5:
        if (depth < kDeepest) Element(depth + 1, false);
        return;
    default: Simple(); return;
    }
}

// A call that writes text.
void RandomWriting::Simple() {
    // In an attribute it would go to the value.
    if (writer_->GetWriteState() == Xml::WriteState::Attribute) writer_->WriteEndAttribute();
    switch (Below(8)) {
    case 0:
        if (!hasEntity_) return;
        writer_->WriteEntityRef("e");
        Text(AsWritten("an entity"));
        return;
    case 1: {
        const std::string blanks = OneOf({" ", "\n", "\t ", " \r\n "});
        writer_->WriteWhitespace(blanks);
        Text(InContent(blanks));
        return;
    }
    case 2: {
        const std::string bytes = Words("");
        writer_->WriteBase64(reinterpret_cast<const unsigned char*>(bytes.data()), 0,
                             static_cast<int>(bytes.size()));
        const std::string text = InBase64(bytes, newLine_);
        Text({text, WithLineFeeds(text)});
        return;
    }
    case 3:
        writer_->WriteNmToken("-.9");
        Text(AsWritten("-.9"));
        return;
    case 4:
        writer_->WriteRaw("<raw/>&amp;");
        Whole(ExpandedName(scopes_.back().defaultNs, "raw"), {});
        Text(AsWritten("&"));
        return;
    case 5: {
        const std::string uri = Uri();
        const std::string text = Words("");
        writer_->WriteElementString("w", uri, text);
        Whole(ExpandedName(uri, "w"), InContent(text));
        return;
    }
    default: {
        const std::string text = Words("");
        writer_->WriteString(text);
        Text(InContent(text));
        return;
    }
    }
}

RandomWriting::Told RandomWriting::AsWritten(std::string_view text) {
    return {std::string(text), std::string(text)};
}

RandomWriting::Told RandomWriting::InContent(std::string_view text) const {
    switch (handling_) {
    case NewLineHandling::NoHandling: return {std::string(text), WithLineFeeds(text)};
    case NewLineHandling::Entitize: return AsWritten(text);  // a lone LF, or CR by reference
    case NewLineHandling::Replace: break;
    }
    const std::string replaced = WithLineEnds(text, newLine_);
    return {replaced, WithLineFeeds(replaced)};
}

RandomWriting::Told RandomWriting::InValue(std::string_view text) const {
    switch (handling_) {
    case NewLineHandling::NoHandling: return {std::string(text), WithBlanks(text)};
    case NewLineHandling::Entitize: return AsWritten(text);
    case NewLineHandling::Replace: break;
    }
    return AsWritten(WithLineFeeds(text));
}

// Names and texts.

bool RandomWriting::IsBound(const std::string& uri) const {
    for (const auto& [prefix, ns] : scopes_.back().prefixes) {
        if (ns == uri) return true;
    }
    return false;
}

std::string RandomWriting::Uri() { return OneOf({"urn:1", "urn:two", "urn:a&b&c"}); }

std::string RandomWriting::Name() {
    if (isWide_ && Below(8) == 0) return OneOf({"\xC3\xA4\xC3\xB6", "\xCE\xB1", "\xE1\x82\xA0"});
    if (Below(60) == 0) return "n" + std::string(Below(400), 'm');
    return OneOf({"a", "b", "item", "a-longer.name_1", "aTypicalNameOfAnElement"});
}

std::string RandomWriting::Words(std::string_view forbidden) {
    std::string text;
    const std::size_t length = Below(30) == 0 ? Below(3000) : Below(40);
    while (text.size() < length) {
        std::string piece = "x";
        switch (Below(12)) {
        case 0: piece = OneOf({"<", ">", "&", "\"", "'", "]", "]]>", "-", "?", "="}); break;
        case 1: piece = OneOf({"\n", "\r\n", "\t", " "}); break;
        case 2:
            piece = isWide_ ? OneOf({"\xC3\xA9", "\xE2\x82\xAC", "\xF0\x9F\x98\x80"}) : "\x7E";
            break;
        case 3: piece = "some words of text"; break;
        default: break;
        }
        const bool isForbidden = piece.find_first_of(forbidden) != std::string::npos;
        text += isForbidden ? "y" : piece;
    }
    return text;
}

}  // namespace differential
