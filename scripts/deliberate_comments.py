# SPDX-License-Identifier: MIT
"""Finds the comments "Deliberate: ..." of the headers and sources."""

import re

COMMENT = re.compile(r"^\s*(?://[/!]?|\*)?<? ?(.*)$")


def deliberate_comments(root):
    """Returns file and text of each, the text from behind "Deliberate:" to the end of the comment."""
    found = []
    for folder in ("include/espalier", "src"):
        for path in sorted([*(root / folder).rglob("*.h"), *(root / folder).rglob("*.cpp")]):
            lines = path.read_text(encoding="utf-8").splitlines()
            for number, line in enumerate(lines):
                for begin in re.finditer("Deliberate: ?", line):
                    parts = [line[begin.end():]]
                    for below in lines[number + 1:]:
                        if not below.lstrip().startswith("//"):
                            break
                        parts.append(COMMENT.match(below)[1])
                    text = re.sub(r"\s+", " ", " ".join(parts)).strip()
                    found.append((path.relative_to(root).as_posix(), text))
    return found
