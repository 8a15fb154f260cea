# SPDX-License-Identifier: MIT
"""Shows that each fuzz target has inputs to begin with and a dictionary that libFuzzer can read."""

import re
import unittest
from pathlib import Path

FUZZ = Path(__file__).resolve().parent.parent.parent / "fuzz"
# A line of a dictionary: NAME="VALUE", the name left out or not, with \\, \" and \xAB in the value.
ENTRY = re.compile(r'^(?:\w+=)?"(?:[^"\\]|\\\\|\\"|\\x[0-9A-Fa-f]{2})+"$')


def rows():
    """Returns {target: (corpus, dictionary)} as targets.tsv has them."""
    lines = (FUZZ / "targets.tsv").read_text(encoding="utf-8").splitlines()
    columns = [line.split("\t") for line in lines if not line.startswith("#")]
    return {name: (corpus, dictionary) for name, corpus, dictionary in columns}


class FuzzTargets(unittest.TestCase):
    def test_all_targets_are_listed(self):
        lists = (FUZZ / "CMakeLists.txt").read_text(encoding="utf-8")
        added = re.findall(r"^ *espalier_add_fuzzer\(([\w-]+) ", lists, re.MULTILINE)
        self.assertGreater(len(added), 20)
        self.assertEqual(sorted(added), sorted(rows()))

    def test_all_sources_are_targets(self):
        lists = (FUZZ / "CMakeLists.txt").read_text(encoding="utf-8")
        for source in FUZZ.glob("*Fuzzer.cpp"):
            self.assertIn(source.name, lists)

    def test_each_has_inputs(self):
        for name, (corpus, _) in rows().items():
            inputs = [path for path in (FUZZ / "corpus" / corpus).iterdir() if path.is_file()]
            self.assertGreaterEqual(len(inputs), 4, name)

    def test_each_corpus_is_replayed(self):
        used = {corpus for corpus, _ in rows().values()}
        self.assertEqual(used, {path.name for path in (FUZZ / "corpus").iterdir()})
        for name, (corpus, _) in rows().items():  # as CMakeLists.txt has it
            self.assertEqual(corpus, name.split("-")[0])

    def test_each_has_a_dictionary(self):
        used = {dictionary for _, dictionary in rows().values()}
        self.assertEqual(used, {path.name for path in (FUZZ / "dictionaries").iterdir()})
        for dictionary in used:
            text = (FUZZ / "dictionaries" / dictionary).read_text(encoding="utf-8")
            lines = [line for line in text.splitlines() if line and not line.startswith("#")]
            self.assertGreater(len(lines), 5, dictionary)
            for line in lines:
                self.assertRegex(line, ENTRY, dictionary)


if __name__ == "__main__":
    unittest.main()
