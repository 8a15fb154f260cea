# SPDX-License-Identifier: MIT
"""Shows that the manual page tells what the program takes, and nothing else.

usage: manual_page_test.py PROGRAM MANUAL-PAGE
"""

import re
import shutil
import subprocess
import sys
import unittest
from pathlib import Path

import program_options

PROGRAM, PAGE = (Path(sys.argv.pop(1)).resolve() for _ in range(2))
SHARED = "Options of all verbs"


def subsections():
    """Returns the texts of the subsections by their names."""
    parts = re.split(r"^\.S[sh] (.*)\n", PAGE.read_text(encoding="utf-8"), flags=re.MULTILINE)
    return dict(zip(parts[1::2], parts[2::2]))


def items_of(text):
    """Returns the options that have an item, each with the text of its item."""
    items = {}
    for item in re.split(r"^\.It ", text, flags=re.MULTILINE)[1:]:
        head = item.split("\n")[0]
        for name in re.findall(r"Fl (\S+)", head):
            items["-" + name] = item
    return items


def words_of(item):
    """Returns the words that stand for themselves: what follows Cm."""
    lines = [line[4:] for line in item.split("\n") if line.startswith(".Cm ")]
    return {word for line in lines for word in line.split() if word not in (",", ".")}


class ManualPage(unittest.TestCase):
    def test_every_verb_has_a_subsection_and_a_synopsis(self):
        named = {name for name in subsections() if re.fullmatch("[a-z]+", name)}
        verbs = {*program_options.verbs_of(PROGRAM), "help"}
        self.assertEqual(named, verbs)
        synopsis = subsections()["SYNOPSIS"]
        self.assertEqual(set(re.findall(r"^\.Cm (\w+)$", synopsis, re.MULTILINE)), verbs)

    def test_every_option_has_an_item(self):
        shared = items_of(subsections()[SHARED])
        self.assertGreater(len(shared), 5)
        for verb in program_options.verbs_of(PROGRAM):
            described = {*shared, *items_of(subsections()[verb])}
            self.assertEqual(described, program_options.options_of(PROGRAM, verb), verb)

    def test_the_synopsis_names_options_of_the_verb(self):
        parts = re.split(r"^\.Nm\n\.Cm (\w+)\n", subsections()["SYNOPSIS"], flags=re.MULTILINE)
        for verb, text in zip(parts[1::2], parts[2::2]):
            if verb == "help":
                continue
            options = {"-" + name for name in re.findall(r"Fl (\S+)", text)}
            self.assertTrue(options)
            self.assertLessEqual(options, program_options.options_of(PROGRAM, verb), verb)

    def test_values_are_told(self):
        shared = items_of(subsections()[SHARED])
        count = 0
        for verb in program_options.verbs_of(PROGRAM):
            items = {**shared, **items_of(subsections()[verb])}
            for option, values in program_options.choices_of(PROGRAM, verb).items():
                self.assertEqual(words_of(items[option]) - {"css"}, set(values), (verb, option))
                count += 1
        self.assertGreater(count, 20)

    def test_exit_codes_are_those_of_the_help(self):
        text = subsections()["EXIT STATUS"]
        told = re.search("Exit codes: (.*)", program_options.output_of(PROGRAM, "--help")[1])
        self.assertEqual(re.findall(r"^\.It (\d)$", text, re.MULTILINE),
                         re.findall(r"\d", told.group(1)))

    def test_formatters_find_nothing_to_warn_of(self):
        found = []
        for command in (["mandoc", "-T", "lint", "-W", "warning"],
                        ["groff", "-mandoc", "-ww", "-z", "-K", "utf8"]):
            if not shutil.which(command[0]):
                continue
            done = subprocess.run([*command, str(PAGE)], capture_output=True, text=True)
            found.append((done.returncode, done.stdout, done.stderr))
        if not found:
            self.skipTest("neither mandoc nor groff is installed")
        self.assertEqual(found, [(0, "", "")] * len(found))


if __name__ == "__main__":
    unittest.main()
