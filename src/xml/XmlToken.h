// SPDX-License-Identifier: MIT
#pragma once

namespace Xml::detail {

/// What the scanner found. The numbers index XmlTokenName().
enum class XmlToken : unsigned char {
    NONE,          ///< nothing before markup
    ERROR,         ///< no name where one was looked for
    ENDOFFILE,     ///< the end of the input
    WHITESPACE,    ///< a run of white space in content
    NAME,          ///< a name
    NMTOKEN,       ///< a name token
    TEXT,          ///< characters
    ENTTEXT,       ///< characters of an entity value
    ENTITYREF,     ///< "&" before a name
    CHARREF,       ///< "&#"
    PEREF,         ///< "%" before a name
    TAG,           ///< "<" before a name
    ENDTAG,        ///< "</"
    TAGEND,        ///< ">"
    EMPTYTAGEND,   ///< "/>"
    PI,            ///< "<?"
    PIEND,         ///< "?>"
    COMMENT,       ///< "<!--"
    COMMENTEND,    ///< "-->"
    CDATA,         ///< "<![CDATA["
    CDATAEND,      ///< "]]>"
    DECL,          ///< "<!"
    EQUALS,        ///< "="
    QUOTE,         ///< the quotation mark that opens a literal
    ENDQUOTE,      ///< the quotation mark that closes it
    PERCENT,       ///< "%"
    DOCTYPEBEGIN,  ///< "[" of an internal subset
    DOCTYPEEND,    ///< "]" of an internal subset
    ENDENTITY      ///< the end of an entity's text
};

/// Returns the token's name as it stands in messages and diagnostics.
constexpr const char* XmlTokenName(XmlToken token) {
    constexpr const char* kNames[] = {
        "NONE",       "ERROR",   "ENDOFFILE",    "WHITESPACE", "NAME",     "NMTOKEN",
        "TEXT",       "ENTTEXT", "ENTITYREF",    "CHARREF",    "PEREF",    "TAG",
        "ENDTAG",     "TAGEND",  "EMPTYTAGEND",  "PI",         "PIEND",    "COMMENT",
        "COMMENTEND", "CDATA",   "CDATAEND",     "DECL",       "EQUALS",   "QUOTE",
        "ENDQUOTE",   "PERCENT", "DOCTYPEBEGIN", "DOCTYPEEND", "ENDENTITY"};
    static_assert(sizeof kNames / sizeof kNames[0] == 29);
    return kNames[static_cast<int>(token)];
}

}  // namespace Xml::detail
