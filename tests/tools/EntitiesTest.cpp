// SPDX-License-Identifier: MIT
// What the verbs make of the entities of a document: which of them must be declared, where errors
// in their texts are shown, and what becomes of those that are too much.
#include "tools/ManyRecords.h"
#include "tools/RunProgram.h"

#include <gtest/gtest.h>

#include <string>

namespace {

// Entities that refer ten times to the one before, as deep as asked for.
std::string Bomb(int levels) {
    std::string document = "<!DOCTYPE a [\n<!ENTITY e0 'ha'>\n";
    for (int level = 1; level <= levels; ++level) {
        document += "<!ENTITY e" + std::to_string(level) + " '";
        for (int i = 0; i < 10; ++i)
            document += "&e" + std::to_string(level - 1) + ";";
        document += "'>\n";
    }
    return document + "]>\n<a>\n  &e" + std::to_string(levels) + ";\n</a>";
}

// Entities that each name the next.
std::string Chain(int length) {
    std::string document = "<!DOCTYPE a [\n";
    for (int i = 0; i < length; ++i) {
        document += "<!ENTITY e" + std::to_string(i) + " '&e" + std::to_string(i + 1) + ";'>\n";
    }
    return document + "<!ENTITY e" + std::to_string(length) + " 'end'>\n]>\n<a>&e0;</a>";
}

}  // namespace

// XML 1.0 section 4.1, Entity Declared.
TEST(Entities, MustBeDeclaredWhereAllDeclarationsAreRead) {
    const struct {
        const char* input;
        int exitCode;
    } kCases[] = {
        {"<a>&b;</a>", 3},
        {"<!DOCTYPE a><a>&b;</a>", 3},
        {"<!DOCTYPE a [<!ENTITY c 'd'>]><a>&b;</a>", 3},
        {"<!DOCTYPE a [<!ENTITY c 'd'>]><a x='&b;'/>", 3},
        {"<!DOCTYPE a [<!ENTITY b 'd'>]><a x='&b;'>&b;</a>", 0},
        {"<!DOCTYPE a [<!ENTITY c '&b;'>]><a>&c;</a>", 3},
        {"<!DOCTYPE a [<!ENTITY c '&b;'>]><a/>", 0},
        {"<!DOCTYPE a [<!ENTITY b SYSTEM 'b.xml'>]><a>&b;</a>", 0},
        {"<!DOCTYPE a SYSTEM 'a.dtd'><a>&b;</a>", 0},  // which may declare it
        {"<!DOCTYPE a PUBLIC 'a' 'a.dtd' []><a x='&b;'>&b;</a>", 0},
        {"<?xml version='1.0' standalone='yes'?><!DOCTYPE a SYSTEM 'a.dtd'><a>&b;</a>", 3},
        {"<?xml version='1.0' standalone='no'?><!DOCTYPE a SYSTEM 'a.dtd'><a>&b;</a>", 0},
        {"<!DOCTYPE a [<!ENTITY % p SYSTEM 'p'> %p; ]><a>&b;</a>", 0},  // so may this
        {"<!DOCTYPE a [<!ENTITY % p ''>%p;]><a>&b;</a>", 0},
        {"<!DOCTYPE a [<!ENTITY % p ''><!-- %p; --><?i %p;?>]><a>&b;</a>", 3},
        {"<!DOCTYPE a [<!ATTLIST a b CDATA '%p;'>]><a>&b;</a>", 3},
    };
    for (const auto& c : kCases) {
        for (const std::vector<std::string>& verb :
             {std::vector<std::string>{"check"}, {"tree", "--counts"}}) {
            SCOPED_TRACE(verb[0] + " " + c.input);
            const ProgramResult result = RunProgram(verb, c.input);
            EXPECT_EQ(result.exitCode, c.exitCode) << result.errors;
            EXPECT_EQ(result.errors.find("error: Undeclared entity 'b'") != std::string::npos,
                      c.exitCode == 3)
                << result.errors;
        }
    }
}

TEST(Entities, ErrorsInTheirTextAreShownAtTheReference) {
    const struct {
        const char* input;
        const char* expected;
    } kCases[] = {
        {"<!DOCTYPE a [<!ENTITY e '<b></c>'>]>\n<a>\n  x &e;</a>",
         "<stdin>:3:5: error: End tag 'c' doesn't match start tag 'b' (in the text of the entity "
         "'e')\n"
         "    3 |   x &e;</a>\n"
         "      |     ^\n"},
        // The place that the reader tells is behind the last line.
        {"<!DOCTYPE a [<!ENTITY e '\n\n\n<b></c>'>]>\n<a>&e;</a>",
         "<stdin>:5:4: error: End tag 'c' doesn't match start tag 'b' (in the text of the entity "
         "'e')\n"
         "    5 | <a>&e;</a>\n"
         "      |    ^\n"},
        // Of nested entities the one that stands in the document is shown.
        {"<!DOCTYPE p:a [<!ENTITY e '<b x=\"&u;\"/>'><!ENTITY f '<c>&e;</c>'>]>\n"
         "<p:a>&amp;&f;</p:a>",
         "<stdin>:2:11: error: Undeclared entity 'u' (in the text of the entity 'f')\n"
         "    2 | <p:a>&amp;&f;</p:a>\n"
         "      |           ^\n"},
        {"<!DOCTYPE a [<!ENTITY e 'x&u;'>]><a>&e;</a>",
         "<stdin>:1:37: error: Undeclared entity 'u' (in the text of the entity 'e')\n"
         "    1 | <!DOCTYPE a [<!ENTITY e 'x&u;'>]><a>&e;</a>\n"
         "      |                                     ^\n"},
        // What ends in an entity and began elsewhere.
        {"<!DOCTYPE a [<!ENTITY e '</b>'>]>\n<a>&e;</a>",
         "<stdin>:2:4: error: End tag 'b' doesn't match start tag 'a' (in the text of the entity "
         "'e')\n"
         "    2 | <a>&e;</a>\n"
         "      |    ^\n"},
        // An error behind an entity is none of its own, nor is one before it.
        {"<!DOCTYPE a [<!ENTITY e '<b/>'>]>\n<a>&e;</c>",
         "<stdin>:2:10: error: End tag 'c' doesn't match start tag 'a'\n"
         "    2 | <a>&e;</c>\n"
         "      |          ^\n"
         "<stdin>:2:1: note: <a> was opened here\n"
         "    2 | <a>&e;</c>\n"
         "      | ^\n"},
        {"<!DOCTYPE a [<!ENTITY e '</c>'>]>\n<a></b>&e;</a>",
         "<stdin>:2:7: error: End tag 'b' doesn't match start tag 'a'\n"
         "    2 | <a></b>&e;</a>\n"
         "      |       ^\n"
         "<stdin>:2:1: note: <a> was opened here\n"
         "    2 | <a></b>&e;</a>\n"
         "      | ^\n"},
        // An error in a value stands behind the reference in it.
        {"<!DOCTYPE a [<!ENTITY e '&u;'>]>\n<a x='&e;'/>",
         "<stdin>:2:10: error: Undeclared entity 'u'\n"
         "    2 | <a x='&e;'/>\n"
         "      |          ^\n"},
        // The element was opened in an entity, so its place cannot be shown.
        {"<!DOCTYPE a [<!ENTITY e '<b>'>]>\n<a>&e;</a>",
         "<stdin>:2:10: error: End tag 'a' doesn't match start tag 'b'\n"
         "    2 | <a>&e;</a>\n"
         "      |          ^\n"},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.input);
        for (const std::vector<std::string>& arguments :
             {std::vector<std::string>{"check", "--compatible"},
              {"events", "--entities", "all"},
              {"tree", "--counts"}}) {
            const ProgramResult result = RunProgram(arguments, c.input);
            EXPECT_EQ(result.errors, c.expected) << arguments[0];
            EXPECT_EQ(result.exitCode, 3);
        }
    }
}

// Of a long pipe the start is gone, so nobody knows where the entity was referred to, or whether it
// was. The place that the reader tells lies behind the end of the line, or it may be another's.
TEST(Entities, ErrorsInALongPipeHaveNoCaretWhereEntitiesAreDeclared) {
    const struct {
        const char* end;
        const char* place;  // in its line
        const char* message;
    } kCases[] = {
        {"&e;</a>", ":60: ", "End tag 'c' doesn't match start tag 'b'"},
        {"&f;some more text</a>", ":10: ", "End tag 'c' doesn't match start tag 'b'"},
        {"<d></c></a>", ":7: ", "End tag 'c' doesn't match start tag 'd'"},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.end);
        ProgramSetup setup;
        setup.arguments = {"check", "--compatible"};
        std::string start = "<!DOCTYPE a [<!ENTITY e '" + std::string(50, 'x') +
                            "<b></c>'><!ENTITY f '<b></c>'>]>\n<a>\n";
        auto records = ManyRecords(300000, "</r:all>\n" + std::string(c.end));
        setup.nextInput = [&] {
            return start.empty() ? records() : std::exchange(start, std::string());
        };
        const ProgramResult result = RunProgram(setup);
        EXPECT_EQ(result.exitCode, 3);
        EXPECT_NE(result.errors.find(std::string(c.place) + "error: " + c.message + "\n"),
                  std::string::npos)
            << result.errors;
        EXPECT_NE(result.errors.find(" | " + std::string(c.end) + "\n"), std::string::npos)
            << result.errors;
        EXPECT_EQ(result.errors.substr(0, result.errors.find("note:")).find("^\n"),
                  std::string::npos)
            << result.errors;
    }
}

TEST(Entities, ACycleIsShownAtItsDeclaration) {
    EXPECT_EQ(RunProgram({"check"},
                         "<!DOCTYPE a [\n"
                         "  <!ENTITY e 'x&f;'>\n"
                         "  <!ENTITY f '&e;y'>\n"
                         "]>\n"
                         "<a>\n"
                         "  <b/>&e;\n"
                         "</a>")
                  .errors,
              "<stdin>:3:3: error: Cyclic entity reference 'e'\n"
              "    3 |   <!ENTITY f '&e;y'>\n"
              "      |   ^\n"
              "<stdin>:6:7: note: the reference that leads to it is here\n"
              "    6 |   <b/>&e;\n"
              "      |       ^\n");
    // A value has no place of its own to show.
    EXPECT_EQ(
        RunProgram({"check", "--compatible"}, "<!DOCTYPE a [\n<!ENTITY e '&e;'>\n]>\n<a x='&e;'/>")
            .errors,
        "<stdin>:2:1: error: Cyclic entity reference 'e'\n"
        "    2 | <!ENTITY e '&e;'>\n"
        "      | ^\n");
}

TEST(Entities, TheirLimitsAreNoMistakesOfTheDocument) {
    const struct {
        std::string input;
        const char* expected;
    } kCases[] = {
        {Bomb(8),  // 200 million bytes
         "<stdin>:13:7: error: Entity expansion limit exceeded 'e8'\n"
         "   13 |   &e8;\n"
         "      |       ^\n"},
        {Chain(2000),
         "<stdin>:2004:8: error: Entity nesting limit exceeded 'e0'\n"
         " 2004 | <a>&e0;</a>\n"
         "      |        ^\n"},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.expected);
        for (const std::vector<std::string>& arguments :
             {std::vector<std::string>{"check", "--compatible"},
              {"events", "--entities", "all"},
              {"tree", "--counts"}}) {
            const ProgramResult result = RunProgram(arguments, c.input);
            EXPECT_EQ(result.errors, c.expected) << arguments[0];
            EXPECT_EQ(result.exitCode, 5);
        }
        EXPECT_EQ(RunProgram({"events"}, c.input).exitCode, 0);  // which expands none of them
    }
    EXPECT_EQ(RunProgram({"check"}, Bomb(3)).exitCode, 0);
    EXPECT_EQ(RunProgram({"check"}, Chain(1000)).exitCode, 0);
}

TEST(Entities, WhatIsNotEndedInTheDocumentTypeIsShown) {
    const struct {
        const char* input;
        const char* expected;
    } kCases[] = {
        {"<!DOCTYPE a [\n <!ENTITY b 'c\n",
         "<stdin>:3:1: error: Unexpected token or missing close quote\n"
         "<stdin>:2:13: note: the literal begins here\n"
         "    2 |  <!ENTITY b 'c\n"
         "      |             ^\n"},
        {"<!DOCTYPE a [\n <!ENTITY b \n",
         "<stdin>:3:1: error: Unexpected end of file while parsing DTD\n"
         "<stdin>:2:2: note: the declaration begins here\n"
         "    2 |  <!ENTITY b \n"
         "      |  ^\n"},
        {"<!DOCTYPE a [\n <!ELEMENT b \n",
         "<stdin>:3:1: error: Unexpected end of file while parsing DTD\n"
         "<stdin>:1:1: note: the document type begins here\n"
         "    1 | <!DOCTYPE a [\n"
         "      | ^\n"},
        {"<!DOCTYPE a SYSTEM 'b\n",
         "<stdin>:2:1: error: Unexpected end of file while scanning for end quote\n"
         "<stdin>:1:20: note: the literal begins here\n"
         "    1 | <!DOCTYPE a SYSTEM 'b\n"
         "      |                    ^\n"},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.input);
        const ProgramResult result = RunProgram({"check", "--compatible"}, c.input);
        EXPECT_EQ(result.errors, c.expected);
        EXPECT_EQ(result.exitCode, 3);
    }
}

// By the standard, the text of an entity is judged before the reference to it is told.
TEST(Entities, ErrorsInTheirTextAreShownAtTheReferenceByTheStandard) {
    const struct {
        const char* input;
        const char* expected;
    } kCases[] = {
        {"<!DOCTYPE a [<!ENTITY e 'x<b>y</c>'>]>\n<a>&amp;&e;</a>",
         "<stdin>:2:9: error: End tag 'c' doesn't match start tag 'b' (in the text of the entity "
         "'e')\n"
         "    2 | <a>&amp;&e;</a>\n"
         "      |         ^\n"},
        {"<!DOCTYPE a [<!ENTITY e '<b x=\"&u;\"/>'><!ENTITY f '<c>&e;</c>'>]>\n<a>&f;</a>",
         "<stdin>:2:4: error: Undeclared entity 'u' (in the text of the entity 'f')\n"
         "    2 | <a>&f;</a>\n"
         "      |    ^\n"},
        {"<!DOCTYPE a [<!ENTITY e '<b>'>]>\n<a>&e;</b></a>",
         "<stdin>:2:4: error: Element does not end in the entity in which it begins 'b' (in the "
         "text of the entity 'e')\n"
         "    2 | <a>&e;</b></a>\n"
         "      |    ^\n"},
        {"<!DOCTYPE a [<!ENTITY e 'x'>]>\n<a>&e;<b></c>&e;</a>",  // behind a reference
         "<stdin>:2:13: error: End tag 'c' doesn't match start tag 'b'\n"
         "    2 | <a>&e;<b></c>&e;</a>\n"
         "      |             ^\n"
         "<stdin>:2:7: note: <b> was opened here\n"
         "    2 | <a>&e;<b></c>&e;</a>\n"
         "      |       ^\n"},
        {"<!DOCTYPE a [\n<!ENTITY e '<b>&e;</b>'>\n]>\n<a>&e;</a>",
         "<stdin>:2:1: error: Cyclic entity reference 'e'\n"
         "    2 | <!ENTITY e '<b>&e;</b>'>\n"
         "      | ^\n"
         "<stdin>:4:4: note: the reference that leads to it is here\n"
         "    4 | <a>&e;</a>\n"
         "      |    ^\n"},
        {"<!DOCTYPE a [\n<!ENTITY e '&e;'>\n]>\n<a x='&e;'>&e;</a>",  // from a value
         "<stdin>:2:1: error: Cyclic entity reference 'e'\n"
         "    2 | <!ENTITY e '&e;'>\n"
         "      | ^\n"},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.input);
        for (const std::vector<std::string>& arguments :
             {std::vector<std::string>{"check"}, {"tree", "--counts", "--standard"}}) {
            EXPECT_EQ(RunProgram(arguments, c.input).errors, c.expected) << arguments[0];
        }
    }
}
