// SPDX-License-Identifier: MIT
#include "support/RandomDocument.h"

namespace support {

namespace {

constexpr int kDeepest = 5;

}  // namespace

std::string RandomDocument::Write() {
    std::string out;
    if (Below(4) == 0) out += "<?xml version='1.0'" + Blanks(0) + "?>";
    AddMisc(out);
    // Moves all that follows to any place of the reader's buffer.
    if (Below(2) == 0) out += "<!--" + std::string(Below(1100), 'c') + "-->";
    if (Below(8) == 0) out += "<!DOCTYPE a [<!ELEMENT a ANY><!-- ' --><?p \"?>]>";
    AddMisc(out);
    AddElement(out, 1);
    AddMisc(out);
    return out;
}

void RandomDocument::AddMisc(std::string& out) {
    switch (Below(6)) {
    case 0: out += Blanks(1); break;
    case 1: out += "<!--" + Text("-") + "-->"; break;
    case 2: out += "<?target " + Text("?") + "?>"; break;
    default: break;
    }
}

void RandomDocument::AddElement(std::string& out, int depth) {
    const std::string name = Name();
    out += "<" + name;
    AddAttributes(out);
    out += Blanks(0);
    if (Below(4) == 0) {
        out += "/>";
        return;
    }
    out += ">";
    AddContent(out, depth);
    out += "</" + name + (Below(6) == 0 ? Blanks(0) : "") + ">";
}

void RandomDocument::AddAttributes(std::string& out) {
    for (std::size_t i = Below(5) == 0 ? Below(25) : Below(3); i > 0; --i) {
        out += Blanks(1);
        switch (Below(12)) {
        case 0: out += "xml:space=\"" + std::string(OneOf({"preserve", "default"})) + '"'; continue;
        case 1: out += "xml:lang='" + std::string(OneOf({"en", "de-AT", ""})) + "'"; continue;
        case 2: out += "xmlns:" + std::string(OneOf({"p", "q"})) + "='"; break;
        case 3: out += "xmlns='"; break;
        default:
            out += Name() + std::to_string(Below(40));
            if (Below(8) == 0) out += Blanks(0);
            out += "=";
            if (Below(8) == 0) out += Blanks(0);
            const char quote = Below(2) == 0 ? '"' : '\'';
            out += quote + Value(quote) + quote;
            continue;
        }
        out += std::string(OneOf({"urn:1", "urn:2", ""})) + "'";
    }
}

void RandomDocument::AddContent(std::string& out, int depth) {
    for (std::size_t i = Below(6); i > 0; --i) {
        switch (Below(10)) {
        case 0: out += "<![CDATA[" + Text("]") + "]]>"; break;
        case 1: AddMisc(out); break;
        case 2: out += Blanks(1); break;
        case 3:
        case 4:
        case 5: out += Text("<&"); break;
        case 6:
            out +=
                OneOf({"&lt;", "&amp;", "&#65;", "&#xE4;", "&#13;", "&entity;", "&apos;", "&#10;"});
            break;
        default:
            if (depth < kDeepest) AddElement(out, depth + 1);
            break;
        }
    }
}

std::string RandomDocument::Name() {
    if (Below(60) == 0) return "n" + std::string(Below(1100), 'm');
    if (Below(40) == 0) return "n" + std::to_string(Below(1000));
    return std::string(OneOf({"a", "b", "p:a", "p:b", "q:a", "abcdefghijklmno", "abcdefghijklmnop",
                              "abcdefghijklmnopq", "p:abcdefghijklmnopqrstuvwxyz1234",
                              "p:abcdefghijklmnopqrstuvwxyz123", "abcdefghijklmnopqrstuvwxyz123456",
                              "\xC3\xA4\xC3\xB6\xC3\xBC", "q:\xE1\x82\xA0-_.9", "xmlnsx", "xml:a",
                              "aTypicalNameOfAnElement"}));
}

std::string RandomDocument::Value(char quote) {
    std::string value = Text(quote == '"' ? "<&\"" : "<&'");
    if (Below(6) == 0) value += OneOf({"&lt;", "&quot;", "&#9;", "&#x1F600;", "&entity;"});
    if (Below(12) == 0) value += Text("<&\"'");
    return value;
}

// Returns characters but those that are forbidden.
std::string RandomDocument::Text(std::string_view forbidden) {
    std::string text;
    const std::size_t length = Below(30) == 0 ? Below(2500) : Below(Below(3) == 0 ? 60 : 20);
    while (text.size() < length) {
        std::string_view piece = "x";
        switch (Below(16)) {
        case 0: piece = OneOf({"]", "-", "?", ">", "'", "\"", "&", "<", "/", "="}); break;
        case 1: piece = OneOf({"\n", "\r\n", "\r", "\t", " ", "  "}); break;
        case 2: piece = OneOf({"\xC3\xA4", "\xE2\x82\xAC", "\xF0\x9F\x98\x80"}); break;
        case 3: piece = "some words of text"; break;
        default: break;
        }
        const bool isForbidden = forbidden.find(piece[0]) != std::string_view::npos;
        const bool endsSection =
            piece == ">" && text.size() > 1 && text.substr(text.size() - 2) == "]]";
        if (!isForbidden && !endsSection) text += piece;
        if (isForbidden) text += "y";
    }
    return text;
}

std::string RandomDocument::Blanks(std::size_t least) {
    std::string blanks;
    const std::size_t most = Below(40) == 0 ? 1100 : Below(8) == 0 ? 40 : 2;
    for (std::size_t count = least + Below(most); count > 0; --count)
        blanks += OneOf({" ", " ", "\n", "\t", "\r\n", "\r"});
    return blanks;
}

void RandomDocument::Mutate(std::string& document) {
    for (std::size_t i = 1 + Below(3); i > 0 && !document.empty(); --i) {
        const std::size_t at = Below(document.size());
        switch (Below(6)) {
        case 0: document[at] = static_cast<char>(Below(256)); break;
        case 1: document.erase(at, 1 + Below(4)); break;
        case 2: document.insert(at, 1, "<>/&;'\"=!?-[]:x \n\r#"[Below(19)]); break;
        case 3: document.insert(at, document.substr(Below(document.size()), Below(12))); break;
        case 4:
            document.insert(at, OneOf({"&x;", "<a>", "</a>", "<!--", "]]>", "xmlns:p=''", "\xC3",
                                       "\xED\xA0\x80", "<?xml version='1.0'?>"}));
            break;
        default: document.resize(at); break;
        }
    }
}

}  // namespace support
