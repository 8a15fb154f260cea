#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Tells what the parser tinycss2 finds in a style sheet, for SheetsTest.cpp.

    understood_rules.py SHEET FIRST CUT RULES

FIRST gets the number of rules that CssReader must read before it meets what it does not understand,
and a word that says what that is: "at-rule", "declaration", or "end" of the sheet.

CUT gets the sheet without what CssReader does not understand: without at-rules, and without
declarations whose names do not begin with a letter. All else is as it stands in the sheet, with
comments and white space.

RULES gets a line for each rule in CUT: the selectors, a tab, and the names of the declarations.
White space is one space each, and comments are left out.
"""

import re
import sys

import tinycss2

NAME = re.compile(r"[A-Za-z][A-Za-z0-9_-]*")


class Sheet:
    """A text and the places of the parser's nodes in it."""

    def __init__(self, text):
        # As the parser does it (CSS Syntax Level 3, section 3.3), so that its places are ours.
        self.text = text.replace("\r\n", "\n").replace("\r", "\n").replace("\f", "\n")
        self.lines = [0] + [match.end() for match in re.finditer("\n", self.text)]

    def place(self, node):
        return self.lines[node.source_line - 1] + node.source_column - 1

    def spans(self, nodes, end):
        """Yields each node with its text, which goes up to the next node."""
        places = [self.place(node) for node in nodes] + [end]
        for node, begin, behind in zip(nodes, places, places[1:]):
            yield node, begin, self.text[begin:behind]


class Rule:
    """A style rule: its selectors, and what is in its block."""

    def __init__(self, sheet, node, begin, text):
        brace = sheet.place(node.content[0]) - 1 if node.content else begin + text.index("{")
        self.head = sheet.text[begin : brace + 1]
        pieces = sheet.spans(node.prelude, brace)
        self.selectors = plain("".join(piece for part, _, piece in pieces if part.type != "comment"))
        nodes = tinycss2.parse_declaration_list(node.content)
        self.parts = list(sheet.spans(nodes, begin + len(text) - 1))

    def names(self):
        return [node.name for node, _, _ in self.parts if is_understood(node)]

    def is_understood(self):
        return all(is_understood(node) or is_passed_over(node) for node, _, _ in self.parts)

    def cut(self):
        kept = [
            text for node, _, text in self.parts if is_understood(node) or is_passed_over(node)
        ]
        return self.head + "".join(kept) + "}"


def is_understood(node):
    return node.type == "declaration" and NAME.fullmatch(node.name) is not None


def is_passed_over(node):
    return node.type in ("whitespace", "comment")


def plain(text):
    return " ".join(text.split())


def first_rules(sheet, nodes):
    """Returns the number of rules before the first thing that is not understood, and its kind."""
    count = 0
    for node, begin, text in sheet.spans(nodes, len(sheet.text)):
        if is_passed_over(node):
            continue
        if node.type != "qualified-rule":
            return count, node.type
        count += 1
        if not Rule(sheet, node, begin, text).is_understood():
            return count, "declaration"
    return count, "end"


def write(path, text):
    with open(path, "w", encoding="utf-8", newline="") as output:
        output.write(text)


def main():
    source, first, cut, listing = sys.argv[1:]
    with open(source, encoding="utf-8", newline="") as file:
        sheet = Sheet(file.read())
    nodes = tinycss2.parse_stylesheet(sheet.text)
    write(first, "{} {}\n".format(*first_rules(sheet, nodes)))

    pieces, lines = [], []
    for node, begin, text in sheet.spans(nodes, len(sheet.text)):
        if is_passed_over(node):
            pieces.append(text)
        elif node.type == "qualified-rule":
            rule = Rule(sheet, node, begin, text)
            pieces.append(rule.cut())
            lines.append("\t".join([rule.selectors, *rule.names()]) + "\n")
    write(cut, "".join(pieces))
    write(listing, "".join(lines))


if __name__ == "__main__":
    main()
