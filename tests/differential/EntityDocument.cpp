// SPDX-License-Identifier: MIT
#include "EntityDocument.h"

#include <algorithm>

namespace differential {

namespace {

constexpr int kDeepest = 4;
constexpr std::size_t kMostDeclarations = 8;

// Makes a literal for an entity's value of a text that holds neither "%" nor this quotation mark.
std::string Literal(std::string text, char quote) {
    std::erase(text, quote);
    return quote + text + quote;
}

}  // namespace

std::string EntityDocument::Write() {
    entities_.clear();
    hasNotation_ = false;
    std::string out = "<!DOCTYPE a";
    if (Below(6) == 0) out += OneOf({" SYSTEM 'a.dtd'", " PUBLIC \"-//a//EN\" 'a.dtd'"});
    out += OneOf({" [", "[", "\n[\n"});
    AddDeclarations(out);
    out += OneOf({"]>", "] >", "]\n>\n"});
    return out + Element(1) + std::string(OneOf({"", "\n", "<!-- end -->", "<?end?>"}));
}

void EntityDocument::AddDeclarations(std::string& out) {
    for (std::size_t i = Below(kMostDeclarations) + 1; i > 0; --i) {
        AddDeclaration(out);
        out += OneOf({"", "", " ", "\n"});
    }
}

void EntityDocument::AddDeclaration(std::string& out) {
    if (Below(3) != 0) return AddEntity(out);
    AddOther(out);
}

// Adds an entity, under a name that may be taken already.
void EntityDocument::AddEntity(std::string& out) {
    Entity entity;
    entity.name = "e" + std::to_string(Below(kMostDeclarations));
    const char quote = Quote();
    valueQuote_ = quote == '"' ? '\'' : '"';
    std::string literal;
    switch (Below(8)) {
    case 0: literal = OneOf({"SYSTEM 'e.xml'", "PUBLIC 'e' \"e.xml\""}); break;
    case 1:
    case 2: literal = Literal(Content(kDeepest - 2), quote); break;
    default:
        literal = Literal(Value(), quote);
        entity.mayBeInValue = true;
        break;
    }
    valueQuote_ = 0;
    out += "<!ENTITY " + entity.name + " " + literal + std::string(OneOf({"", " ", "\n"})) + ">";
    const bool isNew = std::none_of(entities_.begin(), entities_.end(),
                                    [&](const Entity& other) { return other.name == entity.name; });
    if (isNew) entities_.push_back(std::move(entity));
}

void EntityDocument::AddOther(std::string& out) {
    switch (Below(9)) {
    case 0: out += "<!-- ]> ' \" <!ENTITY e0 'no'> -->"; break;
    case 1: out += "<?pi ]> ' \" <!ENTITY e0 'no'> ?>"; break;
    case 2:
        out += OneOf({"<!ELEMENT a ANY>", "<!ELEMENT b (#PCDATA|a)*>", "<!ELEMENT c (a,b?)>"});
        break;
    case 3: out += "<!ATTLIST a x CDATA #IMPLIED y CDATA #REQUIRED>"; break;
    case 4: out += "<!ATTLIST b z CDATA \"]>\" z2 CDATA #FIXED '>'>"; break;
    case 5: out += "<!ENTITY % e" + std::to_string(Below(kMostDeclarations)) + " 'no'>"; break;
    case 6: out += "<!ENTITY % p SYSTEM 'p.dtd'>"; break;
    case 7:
        if (!hasNotation_) out += OneOf({"<!NOTATION n SYSTEM 'n'>", "<!NOTATION n PUBLIC \"n\">"});
        hasNotation_ = true;
        break;
    default:
        if (hasNotation_) out += "<!ENTITY u SYSTEM 'u.png' NDATA n>";
        break;
    }
}

std::string EntityDocument::Element(int depth) {
    const std::string name(OneOf({"a", "b", "c"}));
    std::string out = "<" + name;
    for (const char* attribute : {"x", "y"}) {
        if (Below(3) != 0) continue;
        const char quote = valueQuote_ == 0 ? Quote() : valueQuote_;
        out += std::string(" ") + attribute + "=" + Literal(Value(), quote);
    }
    if (depth < kDeepest && Below(4) != 0)
        return out + ">" + Content(depth + 1) + "</" + name + ">";
    return out + "/>";
}

std::string EntityDocument::Content(int depth) {
    std::string out;
    for (std::size_t i = Below(6); i > 0; --i) {
        switch (Below(8)) {
        case 0:
        case 1:
            if (depth < kDeepest) out += Element(depth);
            break;
        case 2: out += OneOf({"<!-- c -->", "<?pi d?>", "<![CDATA[<]]>", "<![CDATA[]]>"}); break;
        case 3:
        case 4:
            if (!entities_.empty()) out += "&" + entities_[Below(entities_.size())].name + ";";
            break;
        default: out += Words(); break;
        }
    }
    return out;
}

// Returns what may stand in an attribute and in an entity that is used there.
std::string EntityDocument::Value() {
    std::string out;
    for (std::size_t i = Below(5); i > 0; --i) {
        if (entities_.empty() || Below(2) == 0) {
            out += Words();
            continue;
        }
        const Entity& entity = entities_[Below(entities_.size())];
        if (entity.mayBeInValue) out += "&" + entity.name + ";";
    }
    return out;
}

// None of these becomes markup when it is read twice, as in the literal of an entity.
std::string EntityDocument::Words() {
    return std::string(
        OneOf({"x", "word ", " ", "\n", "&lt;", "&amp;", "&#65;", "&#x20AC;", "]>", "\xC3\xA9",
               "it's ", "\"", "&quot;", "&#10;", "--", "&gt;", "=", "/>"}));
}

}  // namespace differential
