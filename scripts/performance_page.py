# SPDX-License-Identifier: MIT
"""Makes the figures of docs/performance.md out of one run of scripts/benchmark.

What a program measured comes as the tables that it printed and as lines of figures, parted by
tabulators (benchmarks/common/Figures.h says which). The page has a section for each family, with a
picture, the spread and the tables, and one table of all bars.
"""

import datetime
import os
import re

REGION = re.compile(r"(<!-- figures: begin -->\n)(.*)(<!-- figures: end -->\n)", re.DOTALL)

# Why a bar is missed that is known to be, by the beginning of its title; one that is missed and not
# here stands in the table as not explained. A reason is not shown while
# the bar is met.
SHEETS = (
    "all selectors and declarations are checked while the sheet is read; litehtml keeps "
    "declarations as text. With properties made by both see made/whole"
)
REASONS = {
    "inner of root": "the result is the document once more, as one string; on a large document "
    "most of the time goes into that memory, of which a plain copy takes longer than reading the "
    "file",
    "inner of children": "the markup of each child is returned as a string, which reading does not "
    "make",
    "libxml2's tree": "documents with many texts (text-heavy, records, mixed markup) pull the mean "
    "down: either tree has to copy them",
    "pugixml with full content": "pugixml checks neither namespaces nor characters, nor whether an "
    "attribute is there twice; what each of these checks costs was not measured",
    "heap of libxml2's tree": "where a document is nearly all text, the text alone takes about "
    "half of what libxml2 needs for all of it",
    "litehtml, 0.6 MB": SHEETS,
    "litehtml, 10 MB": SHEETS,
    "std::unordered_map, insert, default": "the default hash takes a key byte by byte; the "
    "library's own tables use the seeded one",
}

NARROW = 0.05  # how near a miss is told to be near


class Figures:
    """What one program has written."""

    def __init__(self, text):
        self.compiler, self.libraries, self.charts, self.limits = "", [], [], []
        for line in text.splitlines():
            word, *fields = line.split("\t")
            if word == "compiler":
                self.compiler = fields[0]
            elif word == "library":
                self.libraries.append(tuple(fields))
            elif word == "chart":
                self.charts.append({"name": fields[0], "title": fields[1], "unit": fields[2],
                                    "better": fields[3], "bars": []})
            elif word == "group":
                group = fields[0]
            elif word == "bar":
                self.charts[-1]["bars"].append((group, *fields))
            elif word == "limit":
                self.limits.append(tuple(fields))
            else:
                raise ValueError(f"not understood: {line}")


def number(text):
    """Returns a figure with three digits that count."""
    if text == "-":
        return "-"
    value = float(text)
    if value == int(value) or abs(value) >= 100:
        return f"{value:.0f}"
    return f"{value:.1f}" if abs(value) >= 10 else f"{value:.2f}"


def table(rows, left=1):
    """Returns rows as a Markdown table; the first `left` columns stand on the left."""
    widths = [max(len(row[i]) for row in rows) for i in range(len(rows[0]))]
    rule = ["-" * (w + 2) if i < left else "-" * (w + 1) + ":" for i, w in enumerate(widths)]
    lines = []
    for row in rows:
        cells = [
            cell.ljust(width) if i < left else cell.rjust(width)
            for i, (cell, width) in enumerate(zip(row, widths))
        ]
        lines.append("| " + " | ".join(cells) + " |")
    lines.insert(1, "|" + "|".join(rule) + "|")
    return "\n".join(lines) + "\n"


def chart_part(chart):
    """Returns the picture of a chart and the table of its spread."""
    head = ["", "min", "median", "max"]
    rows = [head]
    for group, title, _, least, median, most in chart["bars"]:
        name = f"{group}: {title}" if group else title
        rows.append([name, number(least), number(median), number(most)])
    return (
        f"![{chart['title']}](images/performance-{chart['name']}.svg)\n\n"
        f"{chart['title']}: {chart['unit']}, of all rounds; {chart['better']} is better.\n\n"
        + table(rows)
    )


def reason_of(title, measured, wanted):
    known = [start for start in REASONS if title.startswith(start)]
    if known:
        return REASONS[max(known, key=len)]
    if abs(measured / wanted - 1) < NARROW:
        return f"missed by less than {NARROW * 100:.0f} %, not explained"
    return "not explained"


def limits_part(sections):
    """Returns the one table of all bars."""
    rows = [["family", "bar", "measured", "wanted", "", "why it is missed"]]
    for section in sections:
        for figures in section["figures"]:
            for title, measured, wanted, side, unit, verdict in figures.limits:
                bound = ("at most " if side == "most" else "at least ") + f"{float(wanted):.4g}"
                reason = ""
                if verdict == "MISS":
                    reason = reason_of(title, float(measured), float(wanted))
                reached = f"{float(measured):.2f} {unit}"
                rows.append([section["title"], title, reached, bound, verdict, reason])
    missed = sum(row[4] == "MISS" for row in rows)
    return (
        "### All bars\n\n"
        f"{len(rows) - 1 - missed} of {len(rows) - 1} are met.\n\n" + table(rows, left=6)
    )


def processor():
    with open("/proc/cpuinfo", encoding="utf-8") as file:
        found = re.search(r"^model name\s*: (.*)$", file.read(), re.MULTILINE)
    return found[1] if found else "unknown processor"


def system():
    with open("/etc/os-release", encoding="utf-8") as file:
        found = re.search(r'^PRETTY_NAME="(.*)"$', file.read(), re.MULTILINE)
    return found[1] if found else "unknown system"


def setting_part(sections, commit, command, seconds):
    """Returns on what and how all of it was measured."""
    figures = [one for section in sections for one in section["figures"]]
    libraries = {library for one in figures for library in one.libraries}
    compilers = sorted({one.compiler for one in figures if one.compiler})
    rows = [["library", "version"]] + [
        [title, version or "-"]
        for title, version in sorted(libraries, key=lambda library: library[0].lower())
    ]
    return (
        "### How it was measured\n\n"
        f"All figures below are of one run, by `{command}`.\n\n"
        f"- date: {datetime.date.today().isoformat()}, commit {commit}, "
        f"{seconds / 60:.0f} minutes\n"
        f"- machine: {processor()}, {os.cpu_count()} processors, {system()}\n"
        f"- compiler: {', '.join(compilers)}, the release preset (-O3)\n\n"
        + table(rows, left=2)
        + "\n"
    )


def section_part(section):
    parts = [f"### {section['title']}\n"]
    parts += [chart_part(chart) for figures in section["figures"] for chart in figures.charts]
    parts.append(section["text"].strip() + "\n")
    return "\n".join(parts)


def make(sections, commit, command, seconds):
    """Returns the whole part of the page between its marks."""
    parts = [setting_part(sections, commit, command, seconds).strip() + "\n", limits_part(sections)]
    parts += [section_part(section) for section in sections]
    return "\n" + "\n".join(parts) + "\n"


def put(page, part):
    """Returns the page with the part in its place; ValueError when it has none."""
    after, count = REGION.subn(lambda match: match[1] + part + match[3], page)
    if count != 1:
        raise ValueError("the page has no place for the figures")
    return after
