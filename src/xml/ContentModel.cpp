// SPDX-License-Identifier: MIT

// Content models. Who writes the document says how deep groups are nested, so they stand on a stack
// of their own, of a byte each: the separator that the group has, or kNone while it has none.

#include "xml/ContentModel.h"

#include "xml/SubsetMessages.h"

#include <vector>

namespace Xml::detail {

namespace {

constexpr char kNone = ' ';

void SkipOccurrence(XmlScanner& scanner) {
    for (const char* const sign : {"?", "*", "+"}) {
        if (scanner.Accept(sign)) return;
    }
}

// [51] Mixed ::= '(' S? '#PCDATA' (S? '|' S? Name)* S? ')*' | '(' S? '#PCDATA' S? ')'
//
// Entered behind "#PCDATA".
void ParseMixed(XmlScanner& scanner, DeclarationScanner& parts) {
    bool hasNames = false;
    for (;;) {
        scanner.SkipWhitespace();
        if (scanner.Accept(")")) break;
        parts.Require('|', Message::kExpectedMixedBar);
        scanner.SkipWhitespace();
        parts.ScanName(Message::kExpectedMixedName);
        hasNames = true;
    }
    if (hasNames) {
        parts.Require('*', Message::kExpectedMixedEnd);
    } else {
        scanner.Accept("*");
    }
}

const char* ExpectedIn(char separator) {
    if (separator == '|') return Message::kExpectedBar;
    return separator == ',' ? Message::kExpectedComma : Message::kExpectedSeparator;
}

// Parses what follows a particle: the ends of groups, and the separator before the next particle.
void ParseSeparator(XmlScanner& scanner, DeclarationScanner& parts, std::vector<char>& groups) {
    SkipOccurrence(scanner);
    while (!groups.empty()) {
        scanner.SkipWhitespace();
        const char c = parts.Peek();
        char& separator = groups.back();
        if (c == ')') {
            scanner.Accept(")");
            groups.pop_back();
            SkipOccurrence(scanner);
            continue;
        }
        const bool fits = (c == '|' || c == ',') && (separator == kNone || separator == c);
        if (!fits) parts.Fail(ExpectedIn(separator));
        separator = c;
        scanner.Accept({&c, 1});
        return;
    }
}

// [47] children ::= (choice | seq) ('?' | '*' | '+')?
// [48] cp ::= (Name | choice | seq) ('?' | '*' | '+')?
// [49] choice ::= '(' S? cp ( S? '|' S? cp )+ S? ')'
// [50] seq ::= '(' S? cp ( S? ',' S? cp )* S? ')'
//
// Entered behind the first "(" and white space.
void ParseChildren(XmlScanner& scanner, DeclarationScanner& parts) {
    std::vector<char> groups{kNone};
    while (!groups.empty()) {
        scanner.SkipWhitespace();
        if (scanner.Accept("(")) {
            groups.push_back(kNone);
            continue;
        }
        parts.ScanName(Message::kExpectedParticle);
        ParseSeparator(scanner, parts, groups);
    }
}

}  // namespace

// [46] contentspec ::= 'EMPTY' | 'ANY' | Mixed | children
void ParseContentModel(XmlScanner& scanner, DeclarationScanner& parts) {
    if (scanner.Accept("EMPTY") || scanner.Accept("ANY")) return;
    parts.Require('(', Message::kExpectedContent);
    scanner.SkipWhitespace();
    if (scanner.Accept("#PCDATA")) {
        ParseMixed(scanner, parts);
    } else {
        ParseChildren(scanner, parts);
    }
}

}  // namespace Xml::detail
