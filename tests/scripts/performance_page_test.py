#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Tests what scripts/performance_page.py makes of figures."""

import sys
import unittest
from pathlib import Path

sys.dont_write_bytecode = True
sys.path.insert(0, str(Path(__file__).resolve().parent.parent.parent / "scripts"))

import performance_page as page  # noqa: E402

FIGURES = """compiler\tg++ 12.2.0
library\tespalier\t0.1.0
library\tlitehtml\t
chart\treader\tReading\tMB/s\tmore
group\ta file
bar\tespalier\tours\t780.4\t792\t803.5
bar\ttinyxml2\tpeer\t-\t-\t-
limit\tpeer A\t5.736\t5\tleast\ttimes\tOK
limit\tinner of root, lowest of all files (text)\t0.394\t1\tleast\ttimes\tMISS
limit\tsomething new\t1.2\t1.05\tmost\ttimes\tMISS
limit\tsomething near\t1.08\t1.05\tmost\ttimes\tMISS
"""


def section():
    return {"title": "Reader", "text": "| a | table |\n", "figures": [page.Figures(FIGURES)]}


def made():
    return page.make([section()], "abc123", "scripts/benchmark --update-docs", 900)


class Page(unittest.TestCase):
    def test_all_bars_stand_in_one_table(self):
        text = page.limits_part([section()])
        self.assertIn("1 of 4 are met.", text)
        rows = [[cell.strip() for cell in line.split("|")[1:-1]] for line in text.splitlines()
                if line.startswith("| Reader")]
        self.assertEqual(rows[0], ["Reader", "peer A", "5.74 times", "at least 5", "OK", ""])
        self.assertEqual(rows[1][2:5], ["0.39 times", "at least 1", "MISS"])
        self.assertEqual(rows[1][5], page.REASONS["inner of root"])
        self.assertEqual(rows[2][3:], ["at most 1.05", "MISS", "not explained"])
        self.assertEqual(rows[3][5], "missed by less than 5 %, not explained")

    def test_a_chart_has_a_picture_and_its_spread(self):
        text = page.section_part(section())
        self.assertIn("![Reading](images/performance-reader.svg)", text)
        self.assertRegex(text, r"\| a file: espalier +\| +780 +\| +792 +\| +804 +\|")
        self.assertRegex(text, r"\| a file: tinyxml2 +\| +- +\| +- +\| +- +\|")
        self.assertTrue(text.endswith("| a | table |\n"))

    def test_the_page_says_how_it_was_measured(self):
        text = made()
        for words in ("`scripts/benchmark --update-docs`", "commit abc123", "15 minutes",
                      "g++ 12.2.0", "| litehtml | -"):
            self.assertIn(words, text)

    def test_figures_replace_those_of_the_run_before(self):
        before = "# P\n<!-- figures: begin -->\nold\n<!-- figures: end -->\nend\n"
        after = page.put(before, made())
        self.assertNotIn("old", after)
        self.assertEqual(after, page.put(after, made()))
        self.assertTrue(after.startswith("# P\n") and after.endswith("end\n"))

    def test_a_page_without_a_place_is_refused(self):
        with self.assertRaises(ValueError):
            page.put("# P\n", made())

    def test_unknown_figures_are_refused(self):
        with self.assertRaises(ValueError):
            page.Figures("garden\t1\n")

    def test_numbers_have_three_digits(self):
        self.assertEqual([page.number(text) for text in ("-", "0", "2806.4", "12.34", "0.394")],
                         ["-", "0", "2806", "12.3", "0.39"])


if __name__ == "__main__":
    unittest.main()
