# SPDX-License-Identifier: MIT
"""Makes a source of the examples in the comments of the public headers, to be compiled.

Each block between \\code and \\endcode becomes the body of a function, in which names that it does not
declare are those of snippet_names.h. "..." at the end of a statement stands for any statement, on a
line of its own for any lines.

usage: make_snippets.py INCLUDE_DIRECTORY OUTPUT
"""

import re
import sys
from pathlib import Path

BLOCK = re.compile(r"\\code\n(.*?)^\s*///\s*\\endcode", re.M | re.S)


def blocks_of(text):
    for match in BLOCK.finditer(text):
        line = text.count("\n", 0, match.start()) + 1
        yield line, [re.sub(r"^\s*/// ?", "", row) for row in match[1].splitlines()]


def as_statements(rows):
    rows = [row for row in rows if not re.match(r"\s*\.\.\.(\s|$)", row)]
    return [re.sub(r" \.\.\.$", " {}", row) for row in rows]


def main():
    include, output = Path(sys.argv[1]), Path(sys.argv[2])
    lines = ["// Made by tests/docs/make_snippets.py.", '#include "snippet_names.h"', ""]
    count = 0
    for path in sorted(include.rglob("*.h")):
        begun = len(re.findall(r"\\code\b", path.read_text(encoding="utf-8")))
        if begun != len(list(blocks_of(path.read_text(encoding="utf-8")))):
            print(f"{path}: an example without its end")
            return 1
        for line, rows in blocks_of(path.read_text(encoding="utf-8")):
            lines.append(f"bool Snippet{count}() {{")
            lines.append(f'#line {line + 1} "{path.relative_to(include)}"')
            lines += [*as_statements(rows), "return true;", "}", ""]
            count += 1
    lines.append(f"const int kSnippets = {count};")
    output.write_text("\n".join(lines) + "\n", encoding="utf-8")
    return 0 if count else 1


if __name__ == "__main__":
    sys.exit(main())
