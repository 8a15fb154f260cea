// SPDX-License-Identifier: MIT
#include "xml/XmlToken.h"

#include <gtest/gtest.h>

#include <string>

namespace {

TEST(XmlToken, HasItsNumberAndItsName) {
    // In the order of their numbers, which are fixed.
    const char* const kNames[] = {
        "NONE",       "ERROR",   "ENDOFFILE",    "WHITESPACE", "NAME",     "NMTOKEN",
        "TEXT",       "ENTTEXT", "ENTITYREF",    "CHARREF",    "PEREF",    "TAG",
        "ENDTAG",     "TAGEND",  "EMPTYTAGEND",  "PI",         "PIEND",    "COMMENT",
        "COMMENTEND", "CDATA",   "CDATAEND",     "DECL",       "EQUALS",   "QUOTE",
        "ENDQUOTE",   "PERCENT", "DOCTYPEBEGIN", "DOCTYPEEND", "ENDENTITY"};
    int number = 0;
    for (const char* const name : kNames) {
        EXPECT_EQ(std::string(XmlTokenName(static_cast<Xml::detail::XmlToken>(number))), name);
        ++number;
    }
    EXPECT_EQ(number, 29);
    EXPECT_EQ(static_cast<int>(Xml::detail::XmlToken::ENDENTITY), 28);
}

}  // namespace
