# SPDX-License-Identifier: MIT
"""Runs the commands that README.md and the guide show, and compares what they print.

A command stands in a block that is indented by four columns, behind "$ "; what it prints, on both
outputs, follows it up to an empty line or the next command. A line "..." stands for lines that the
page leaves out. `$ cat FILE` shows a file that later commands read. The samples are there under
their names, with and without "samples/".

usage: page_commands_test.py PROGRAM ROOT
"""

import gzip
import os
import re
import shutil
import subprocess
import sys
import tempfile
from pathlib import Path

# Files that pages speak of without showing them, by the command that reads them.
LETTER = ('<!DOCTYPE letter [\n  <!ENTITY bye "<em>Yours</p>">\n]>\n<letter>\n  <p>Dear reader,</p>\n'
          "  <p>Thank you.&bye;\n</letter>\n")
STYLED_LETTER = ("<?xml-stylesheet href='http://host.example/letter.css' type='text/css'?>"
                 "<letter><salutation>Dear reader</salutation></letter>\n")
EXPORT = b'<?xml version="1.0"?><export>\n  <to>M. Gr\xfcn</to>\n</export>\n'
BOOK = ('<package xmlns:d="http://purl.org/dc/elements/1.1/"><d:title>A herbal</d:title></package>')
FILES = {
    "espalier check letter.xml": {"letter.xml": LETTER.encode()},
    "espalier style letter.xml salutation": {"letter.xml": STYLED_LETTER.encode()},
    "espalier check export.xml": {"export.xml": EXPORT},
    "espalier check bomb.xml.gz": {"bomb.xml.gz": gzip.compress(b"<a>" + b" " * (64 << 20))},
    "espalier format --to iso-8859-1 menu.xml": {
        "menu.xml": '<?xml version="1.0"?>\n<menu>\n  <!-- all in \u20ac -->\n</menu>\n'.encode()},
}
ALWAYS = {
    "shop.xml": Path("broken/mismatch.xml"),
    "book.opf": BOOK.encode(),
    "old.xml": '<?xml version="1.0" encoding="windows-1251"?><a>\u043a\u043b\u0435\u043d</a>'.encode(
        "windows-1251"),
}
# Commands that cannot be run here, and why.
NOT_RUN = {
    "curl ": "asks a host",
}
# Programs that commands use and that need not be there.
OPTIONAL = ("jq",)
# Blocks of commands without "$ " are for a person at a shell; what they name has to be there.
NAMES = re.compile(r"(?:^|\s)(\./(?:run|check)|scripts/[\w.-]+)(?=\s|$)|--preset (\w+)", re.M)


def blocks_of(text):
    """Returns the indented blocks of a page, without their indentation."""
    block = []
    is_fenced = False
    for line in [*text.splitlines(), "end"]:
        is_fenced ^= line.startswith("```")
        if line.startswith("    ") and not is_fenced:
            block.append(line[4:])
        elif not line.strip() and block:
            block.append("")
        elif block:
            yield block
            block = []


def commands_of(block):
    """Returns the commands of a block with the lines that they print."""
    found = []
    for line in block:
        if line.startswith("$ "):
            found.append((line[2:], []))
        elif found:
            found[-1][1].append(line)
    for command, lines in found:
        while lines and not lines[-1]:
            lines.pop()
        yield command, lines


def matches(shown, printed):
    """Tells whether lines are those that a page shows, with "..." for any that it leaves out."""
    pattern = "".join("(?:.*\n)*?" if line.strip() == "..." else re.escape(line) + "\n"
                      for line in shown)
    return re.fullmatch(pattern, "".join(line + "\n" for line in printed)) is not None


class Pages:
    def __init__(self, program, root):
        self.root = root
        self.folder = Path(tempfile.mkdtemp())
        shutil.copytree(root / "samples", self.folder, dirs_exist_ok=True)
        (self.folder / "samples").symlink_to(".")
        for name, content in ALWAYS.items():
            self.write(name, (self.folder / content).read_bytes()
                       if isinstance(content, Path) else content)
        self.environment = {**os.environ, "PATH": f"{program.parent}:{os.environ['PATH']}",
                            "LC_ALL": "C.UTF-8"}
        self.problems = []
        self.run_count = 0
        self.skipped = set()

    def write(self, name, content):
        (self.folder / name).write_bytes(content)

    def run(self, place, command, shown):
        for begin in NOT_RUN:
            if command.startswith(begin):
                self.skipped.add(begin)
                return
        missing = [name for name in OPTIONAL if f"| {name} " in command and not shutil.which(name)]
        if missing:
            print(f"{place}: not run without {missing[0]}: $ {command}")
            return
        if command.startswith("cat ") and shown:
            self.write(command[4:], ("\n".join(shown) + "\n").encode())
            return
        for name, content in FILES.get(command, {}).items():
            self.write(name, content)
        done = subprocess.run(["bash", "-c", command], cwd=self.folder, env=self.environment,
                              stdout=subprocess.PIPE, stderr=subprocess.STDOUT, timeout=120)
        self.run_count += 1
        # Bytes that are no UTF-8 are shown as the pages, and terminals, show them.
        printed = done.stdout.decode("utf-8", "replace").splitlines()
        if shown and not matches(shown, printed):
            self.problems.append("\n".join([f"{place}: $ {command}", "prints", *printed,
                                            "and the page shows", *shown]))
        if not shown and done.returncode:
            self.problems.append("\n".join([f"{place}: $ {command}",
                                            f"ends with {done.returncode}", *printed]))

    def check_names(self, place, block, presets):
        for path, preset in NAMES.findall("\n".join(block)):
            if path and not (self.root / path).is_file():
                self.problems.append(f"{place}: there is no {path}")
            if preset and f'"name": "{preset}"' not in presets:
                self.problems.append(f"{place}: there is no preset {preset}")


def main():
    program, root = Path(sys.argv[1]).resolve(), Path(sys.argv[2]).resolve()
    pages = Pages(program, root)
    presets = (root / "CMakePresets.json").read_text(encoding="utf-8")
    try:
        for page in [root / "README.md", root / "CONTRIBUTING.md", root / "examples/README.md",
                     root / "samples/README.md", *sorted((root / "docs").glob("*.md"))]:
            place = page.relative_to(root)
            for block in blocks_of(page.read_text(encoding="utf-8")):
                pages.check_names(place, block, presets)
                for command, shown in commands_of(block):
                    pages.run(place, command, shown)
    finally:
        shutil.rmtree(pages.folder)
    pages.problems += [f"no page has a command that begins with {begin!r}"
                       for begin in NOT_RUN if begin not in pages.skipped]
    for problem in pages.problems:
        print(problem, end="\n\n")
    print(f"{pages.run_count} commands, {len(pages.problems)} problems")
    return 1 if pages.problems or not pages.run_count else 0


if __name__ == "__main__":
    sys.exit(main())
