// SPDX-License-Identifier: MIT
//
// Carries out a script of calls on a writer. The first two bytes of the input choose settings, each
// further one a call, followed by what the call takes: a text is a byte that says how long it is,
// and that many bytes; a name is a byte. A call that throws leaves everything as it was: the script
// without those calls writes the same. Unless the settings ask for rough texts, the document is
// read back, and must be well-formed.

#include <espalier/encoding.h>
#include <espalier/io/Exception.h>
#include <espalier/io/MemoryStream.h>
#include <espalier/xml/XmlTextReader.h>
#include <espalier/xml/XmlTextWriter.h>

#include "ReaderStory.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <set>
#include <span>
#include <string>
#include <string_view>

namespace {

using fuzz::Require;
using Bytes = std::span<const unsigned char>;
using Xml::WriteState;
using Xml::XmlTextWriter;

constexpr std::array<const char*, 4> kNames = {"a", "item", "_b-1.c", "x"};
constexpr std::array<const char*, 3> kPrefixes = {"p", "q", "r"};
constexpr std::array<const char*, 3> kUris = {"urn:1", "urn:2", "urn:<&>"};

// The script.
class Input {
public:
    explicit Input(Bytes bytes) : bytes_(bytes) {}

    bool IsUsed() const { return bytes_.empty(); }
    unsigned Byte() {
        if (IsUsed()) return 0;
        const unsigned byte = bytes_[0];
        bytes_ = bytes_.subspan(1);
        return byte;
    }
    std::string Text() {
        const std::size_t length = Byte();
        const Bytes block = bytes_.first(std::min(length, bytes_.size()));
        bytes_ = bytes_.subspan(block.size());
        return {block.begin(), block.end()};
    }
    template <std::size_t kCount>
    const char* OneOf(const std::array<const char*, kCount>& choices) {
        return choices[Byte() % kCount];
    }

private:
    Bytes bytes_;
};

// In EncodingFor().
constexpr unsigned kUtf16Le = 3;
constexpr unsigned kUtf16Be = 4;
constexpr unsigned kUcs4 = 5;

Xml::Encoding& EncodingFor(unsigned choice) {
    static Xml::UTF8Encoding utf8(false, false), utf8Mark(true, false);
    static Xml::UnicodeEncoding utf16Le(false, true, false), utf16Be(true, true, false);
    static Xml::Ucs4UnicodeEncoding ucs4(false, true, false);
    Xml::Encoding* const kEncodings[] = {&utf8,
                                         &utf8,
                                         &utf8Mark,
                                         &utf16Le,
                                         &utf16Be,
                                         &ucs4,
                                         Xml::Encoding::Latin1(),
                                         Xml::Encoding::Latin1()};
    return *kEncodings[choice % 8];
}

// Returns a writer with settings that can be assigned.
const XmlTextWriter& WithoutNamespaces() {
    static IO::MemoryStream stream;
    static Xml::UTF8Encoding encoding(false, false);
    static XmlTextWriter writer(&stream, &encoding);
    writer.SetNamespaces(false);
    return writer;
}

// A writer, and what the calls have to know of the document.
class Session {
public:
    // The bits of the first byte: 0 to 2 the encoding, 3 and 4 line ends, 5 namespaces, 6 the
    // quotation mark, 7 indentation; of the second one: 0 rough, 1 checks off (when rough),
    // 2 and 3 the line end, 4 and 5 the depth of indentation, 6 tabs.
    Session(Bytes script, const std::set<std::size_t>& skipped)
        : input_(script), skipped_(skipped), first_(input_.Byte()), second_(input_.Byte()) {}

    void Run();

    const std::set<std::size_t>& Thrown() const { return thrown_; }
    std::string_view Written() const {
        return {reinterpret_cast<const char*>(stream_.GetBuffer()),
                static_cast<std::size_t>(stream_.Length())};
    }
    bool IsRough() const { return (second_ & 1) != 0; }
    bool IsLatin1() const { return first_ % 8 > kUcs4; }
    bool IsUtf16() const { return first_ % 8 == kUtf16Le || first_ % 8 == kUtf16Be; }
    bool Indents() const { return (first_ & 128) != 0 && first_ % 8 != kUcs4; }
    bool HasNamespaces() const { return (first_ & 32) == 0; }

private:
    template <typename Call>
    void Do(const Call& call);
    void Settings();
    void Document(unsigned kind);
    void StartElement(unsigned kind);
    void Attribute(unsigned kind);
    void Declaration();
    void Content(unsigned kind);
    void EntityRef(std::string name);
    void Markup(unsigned kind);
    void Own(unsigned kind);
    void Rough(unsigned kind);

    // Notes that an element has begun.
    void HasStarted() {
        hasRoot_ = true;
        attributes_ = 0;
        declared_.clear();
    }

    std::string Name() { return IsRough() ? input_.Text() : input_.OneOf(kNames); }

    // A text that the encoding has: what becomes of others is the encoding's own affair.
    std::string Text() {
        std::string text = input_.Text();
        if (IsRough() || !IsLatin1()) return text;
        std::replace_if(
            text.begin(), text.end(), [](char c) { return static_cast<signed char>(c) < 0; }, '_');
        return text;
    }

    // A text without a character that could end what it stands in.
    std::string TextWithout(char forbidden) {
        std::string text = Text();
        if (!IsRough()) std::replace(text.begin(), text.end(), forbidden, '_');
        return text;
    }

    Input input_;
    const std::set<std::size_t>& skipped_;  // calls that are left out, by number
    unsigned first_;
    unsigned second_;
    IO::MemoryStream stream_;
    XmlTextWriter writer_{&stream_, &EncodingFor(first_)};
    std::set<std::size_t> thrown_;
    std::size_t calls_ = 0;
    bool hasRoot_ = false;
    std::string docType_;             // the name that the root element must have
    std::set<std::string> declared_;  // by attributes of the last start tag
    int attributes_ = 0;
};

// Makes a call. When it throws, what the writer shows is as before.
template <typename Call>
void Session::Do(const Call& call) {
    const std::size_t number = calls_++;
    if (skipped_.count(number) != 0) return;
    const WriteState state = writer_.GetWriteState();
    const Xml::XmlSpace space = writer_.GetXmlSpace();
    const std::string language = writer_.GetXmlLang().str();
    try {
        call();
    } catch (const Xml::Exception& error) {
        Require(*error.Argument() == '\0');
        Require(error.LineNumber() == -1 && error.LinePos() == -1);
        Require(writer_.GetWriteState() == state);
        Require(writer_.GetXmlSpace() == space);
        Require(writer_.GetXmlLang() == language);
        thrown_.insert(number);
    }
}

void Session::Settings() {
    using Xml::NewLineHandling;
    constexpr NewLineHandling::NEWLINE_HANDLING kModes[] = {
        NewLineHandling::Replace, NewLineHandling::Entitize, NewLineHandling::NoHandling,
        NewLineHandling::Replace};
    constexpr const char* kLineEnds[] = {"\r\n", "\n", "\t\r", ""};
    writer_.SetNewLineHandling(kModes[first_ >> 3 & 3]);
    writer_.SetNamespaces(HasNamespaces());
    if ((first_ & 64) != 0) writer_.SetQuoteChar('\'');
    if (Indents()) {
        writer_.SetFormatting(Xml::Formatting::Indented);
        writer_.SetIndentation(static_cast<int>(second_ >> 4 & 3));
        if ((second_ & 64) != 0) writer_.SetIndentChar('\t');
    }
    if (IsRough() && (second_ & 2) != 0) writer_.SetCheckCharacters(false);
    writer_.SetNewLineChars(kLineEnds[second_ >> 2 & 3]);
    // An encoding that nothing else tells is declared. A comment at the very start has no
    // byte-order mark before it, and when indenting begins a line, which hides UTF-16.
    if (IsLatin1() || (Indents() && IsUtf16())) writer_.WriteStartDocument();
}

void Session::Run() {
    Settings();
    while (!input_.IsUsed()) {
        const unsigned call = input_.Byte();
        const unsigned kind = call / 8;
        switch (call % 8) {
        case 0: Document(kind); break;
        case 1: StartElement(kind); break;
        case 2:
            if (kind % 4 == 3) {
                Own(kind / 4);
            } else {
                Do([&] { writer_.WriteEndElement(); });
            }
            break;
        case 3: Attribute(kind); break;
        case 4:
        case 5: Content(kind); break;
        case 6: Markup(kind); break;
        default: Rough(kind); break;
        }
    }
    if (!hasRoot_) Do([&] { writer_.WriteStartElement(docType_.empty() ? "a" : docType_); });
    try {
        writer_.Close();
        Require(writer_.GetWriteState() == WriteState::Closed);
    } catch (const Xml::Exception&) {
        Require(IsRough());
    }
}

void Session::Document(unsigned kind) {
    constexpr std::array<const char*, 3> kSubsets = {"", "<!ENTITY x 'X'>", " <!-- ] --> "};
    constexpr std::array<const char*, 3> kIdentifiers = {"", "-//X//Y", "a.dtd"};
    // UCS-4 would be declared as UTF-16.
    if (first_ % 8 == kUcs4 && !IsRough() && kind % 4 < 2) return;
    switch (kind % 4) {
    case 0: Do([&] { writer_.WriteStartDocument(); }); break;
    case 1: Do([&] { writer_.WriteStartDocument((kind & 4) != 0); }); break;
    case 2: Do([&] { writer_.Flush(); }); break;
    default: {
        const std::string name = Name();
        const char* publicId = input_.OneOf(kIdentifiers);
        const char* systemId = input_.OneOf(kIdentifiers);
        const char* subset = input_.OneOf(kSubsets);
        if (!docType_.empty() && !IsRough()) return;
        Do([&] {
            writer_.WriteDocType(name, publicId, systemId, subset);
            docType_ = name;
        });
    }
    }
}

void Session::StartElement(unsigned kind) {
    const std::string name = Name();
    const char* prefix = input_.OneOf(kPrefixes);
    const char* uri = input_.OneOf(kUris);
    const std::string text = kind % 6 == 3 || kind % 6 == 4 ? Text() : "";
    Do([&] {
        switch (kind % 6) {
        case 0: writer_.WriteStartElement(name, uri); break;
        case 1: writer_.WriteStartElement(prefix, name, uri); break;
        case 2: writer_.WriteStartElement(prefix, name, ""); break;
        case 3: writer_.WriteElementString(name, text); break;
        case 4: writer_.WriteElementString(prefix, name, uri, text); break;
        default: writer_.WriteStartElement(name); break;
        }
        HasStarted();
    });
}

// Attributes have different local names.
void Session::Attribute(unsigned kind) {
    const std::string name = Name() + (IsRough() ? "" : std::to_string(attributes_++));
    const char* prefix = input_.OneOf(kPrefixes);
    const char* uri = input_.OneOf(kUris);
    const std::string value = Text();
    switch (kind % 8) {
    case 0: Do([&] { writer_.WriteStartAttribute(name); }); break;
    case 1: Do([&] { writer_.WriteStartAttribute(name, uri); }); break;
    case 2: Do([&] { writer_.WriteStartAttribute(prefix, name, uri); }); break;
    case 3: Do([&] { writer_.WriteAttributeString(prefix, name, uri, value); }); break;
    case 4: Do([&] { writer_.WriteEndAttribute(); }); break;
    case 5: Do([&] { writer_.WriteAttributeString(name, value); }); break;
    case 6: Do([&] { writer_.WriteAttributeString(name, uri, value); }); break;
    default: Declaration(); break;
    }
}

// Writes an attribute that means something, once in a tag.
void Session::Declaration() {
    constexpr std::array<const char*, 5> kDeclared = {"p", "q", "xmlns", "lang", "space"};
    constexpr std::array<const char*, 3> kLanguages = {"", "en", "de-AT"};
    constexpr std::array<const char*, 3> kSpaces = {"default", "preserve", "none"};
    const std::string name = input_.OneOf(kDeclared);
    const char* uri = input_.OneOf(kUris);
    const char* language = input_.OneOf(kLanguages);
    const char* space = input_.OneOf(kSpaces);
    if (declared_.count(name) != 0) return;
    if (!HasNamespaces() && (name == "p" || name == "q")) return;
    Do([&] {
        if (name == "xmlns") {
            writer_.WriteAttributeString(name, uri);
        } else if (name.size() == 1) {
            writer_.WriteAttributeString("xmlns", name, "http://www.w3.org/2000/xmlns/", uri);
        } else if (HasNamespaces()) {
            writer_.WriteAttributeString("xml", name, "", name == "lang" ? language : space);
        } else {
            writer_.WriteAttributeString("xml:" + name, name == "lang" ? language : space);
        }
        declared_.insert(name);
    });
}

void Session::Content(unsigned kind) {
    const std::string text = Text();
    const auto* bytes = reinterpret_cast<const unsigned char*>(text.data());
    const auto count = static_cast<int>(text.size());
    switch (kind % 8) {
    case 0: Do([&] { writer_.WriteWhitespace(text); }); break;
    case 1: Do([&] { writer_.WriteBase64(bytes, 0, count); }); break;
    case 2: Do([&] { writer_.WriteBinHex(bytes, 0, count); }); break;
    case 3: Do([&] { writer_.WriteName(text); }); break;
    case 4: Do([&] { writer_.WriteNmToken(text); }); break;
    case 5: EntityRef(text); break;
    default: Do([&] { writer_.WriteString(text); }); break;
    }
}

// A name may hold more than one colon, but not for a reader that knows namespaces.
void Session::EntityRef(std::string name) {
    if (!IsRough()) std::replace(name.begin(), name.end(), ':', '_');
    Do([&] { writer_.WriteEntityRef(name); });
}

void Session::Markup(unsigned kind) {
    switch (kind % 3) {
    case 0: {
        const std::string text = TextWithout(']');
        Do([&] { writer_.WriteCData(text); });
        break;
    }
    case 1: {
        const std::string text = TextWithout('-');
        Do([&] { writer_.WriteComment(text); });
        break;
    }
    default: {
        const std::string name = Name();
        const std::string text = TextWithout('?');
        Do([&] { writer_.WriteProcessingInstruction(name, text); });
    }
    }
}

// Hands the writer texts of its own, and changes settings on the way.
void Session::Own(unsigned kind) {
    const char* uri = input_.OneOf(kUris);
    const std::string name = "own" + std::to_string(attributes_++);
    switch (kind) {
    case 0:
        Do([&] {
            writer_.WriteElementString("a", writer_.GetXmlLang());
            HasStarted();
        });
        break;
    case 1: Do([&] { writer_.WriteAttributeString(name, writer_.GetXmlLang()); }); break;
    case 2: Do([&] { writer_.WriteString(writer_.GetXmlLang()); }); break;
    case 3:
        Do([&] {
            writer_.WriteStartElement(writer_.LookupPrefix(uri), "a", uri);
            HasStarted();
        });
        break;
    case 4:
        Do([&] {
            writer_.WriteElementString("a", writer_.LookupPrefix(uri), uri);
            HasStarted();
        });
        break;
    case 5:
        // Its value may come in parts and end with any call, but a reader refuses most values.
        if (IsRough()) Do([&] { writer_.WriteStartAttribute("xml", "lang", nullptr); });
        break;
    case 6: writer_.SetQuoteChar(writer_.GetQuoteChar() == '"' ? '\'' : '"'); break;
    default:
        // Namespaces may come and go within the document.
        if (IsRough()) writer_ = (attributes_ & 1) != 0 ? WithoutNamespaces() : XmlTextWriter();
        break;
    }
}

// Calls that make no document of XML.
void Session::Rough(unsigned kind) {
    if (!IsRough()) return;
    const std::string text = input_.Text();
    const std::string name = input_.Text();
    const std::string uri = input_.Text();
    switch (kind % 6) {
    case 0: Do([&] { writer_.WriteFullEndElement(); }); break;
    case 1: Do([&] { writer_.WriteEndDocument(); }); break;
    case 2: Do([&] { writer_.WriteRaw(text); }); break;
    case 3: Do([&] { writer_.WriteStartElement(text, name, uri); }); break;
    case 4: Do([&] { writer_.WriteStartAttribute(text, name, uri); }); break;
    default: Do([&] { writer_.WriteAttributeString("xml", "space", "", text); }); break;
    }
}

void ReadBack(std::string_view document, bool namespaces) {
    IO::MemoryStream stream(reinterpret_cast<const unsigned char*>(document.data()),
                            static_cast<long>(document.size()));
    Xml::XmlTextReader reader;
    reader.SetStream(&stream, false);
    reader.SetNamespaces(namespaces);
    try {
        while (reader.Read())
            continue;
    } catch (const Xml::Exception& error) {
        std::fprintf(stderr, "%d:%d: %s\n%.*s\n", error.LineNumber(), error.LinePos(), error.What(),
                     static_cast<int>(document.size()), document.data());
        std::abort();
    }
    Require(reader.Eof());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const Bytes script(data, size);
    const std::set<std::size_t> none;
    Session session(script, none);
    session.Run();
    if (!session.Thrown().empty()) {
        Session again(script, session.Thrown());
        again.Run();
        Require(again.Thrown().empty());
        Require(again.Written() == session.Written());
    }
    if (!session.IsRough()) ReadBack(session.Written(), session.HasNamespaces());
    return 0;
}
