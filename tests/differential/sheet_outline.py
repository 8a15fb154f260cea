#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Tells what the parser tinycss2 finds in a style sheet, for ParsedSheetsTest.cpp.

    sheet_outline.py SHEET...

Prints a line for each rule: its line in the sheet, how many others it is in, a tab, what stands
before its block or its end, and for each declaration a tab and its name, with a "!" when it is
important, and a line "end" behind each sheet. Shorthands that the library takes apart are left out,
and so is what only the grammar of a property or a rule refuses: values with errors in them or with
a block, and rules that miss their block. White space is one space each, and comments are a space.
"""

import sys

import tinycss2

SHORTHANDS = {
    "margin", "padding", "background", "border", "border-width", "border-style", "border-color",
    "border-top", "border-right", "border-bottom", "border-left",
}


GROUPS = ("media", "supports")


def plain(nodes):
    text = "".join(" " if node.type == "comment" else node.serialize() for node in nodes)
    # It keeps tokens apart that would be one.
    return " ".join(text.replace("/**/", "").split())


def has_error(nodes):
    for node in nodes:
        inner = getattr(node, "content", None) or getattr(node, "arguments", None) or []
        # What the end of the text closes is no error that drops anything.
        is_error = node.type == "error" and not node.kind.startswith("eof-")
        if is_error or has_error(inner):
            return True
    return False


def is_refused(node):
    blocks = any(part.type == "{} block" for part in node.value)
    marks = any(part.type == "literal" and part.value == "!" for part in node.value)
    return has_error(node.value) or marks or (blocks and not node.name.startswith("--"))


def is_kept(node):
    value = plain(node.value)
    if is_refused(node) or (not value and not node.name.startswith("--")):
        return False
    return node.lower_name not in SHORTHANDS


def names(content):
    for node in tinycss2.parse_declaration_list(content):
        if node.type == "declaration" and is_kept(node):
            yield node.name + ("!" if node.important else "")


def misses_block(node):
    return node.lower_at_keyword in GROUPS + ("font-face", "page") and node.content is None


def outline(nodes, depth):
    for node in nodes:
        if node.type == "at-rule" and misses_block(node):
            continue
        if node.type == "qualified-rule":
            head, declarations = plain(node.prelude), list(names(node.content))
        elif node.type == "at-rule":
            head, declarations = "@" + node.at_keyword, []
            if node.lower_at_keyword in GROUPS + ("import", "charset", "page"):
                head += " " + plain(node.prelude)
            if node.lower_at_keyword in ("font-face", "page"):
                declarations = list(names(node.content))
        else:
            continue
        print("\t".join([f"{node.source_line} {depth}", head.strip(), *declarations]))
        if node.type == "at-rule" and node.lower_at_keyword in GROUPS:
            outline(tinycss2.parse_rule_list(node.content), depth + 1)


def main():
    for name in sys.argv[1:]:
        with open(name, encoding="utf-8", newline="") as file:
            nodes = tinycss2.parse_stylesheet(file.read())
        outline(nodes, 0)
        print("end")


if __name__ == "__main__":
    main()
