#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Writes the tables of the code pages in src/encoding/tables/ from Python's own codecs.

    scripts/generate-code-pages.py            writes the files
    scripts/generate-code-pages.py --check    exit status 1 when a file is not current

WindowsPages.inc  for each page the characters of the bytes 80 to FF and their classes; a byte that
                  the page leaves undefined stands for the character of its own number
Gb2312.inc        the plane of 94 times 94 characters, lead and trail byte A1 to FE each; 0 where
EucKr.inc         nothing is defined; and the places of the characters in the order of their codes

The mappings are pinned by their SHA-256, so that a Python whose codecs differ is noticed.
"""

import hashlib
import importlib.util
import pathlib
import sys

SCRIPTS = pathlib.Path(__file__).resolve().parent
TABLES = SCRIPTS.parent / "src/encoding/tables"

WINDOWS_PAGES = (1250, 1251, 1252, 1254, 1257)
FIRST, SIZE = 0xA1, 94  # of the lead and trail bytes of a plane

# Two punctuation marks for which everybody reads another character than the first tables had
# (https://encoding.spec.whatwg.org/#index-gb18030): the middle dot and the em dash.
GB2312_CHANGES = {(0xA1, 0xA4): 0x00B7, (0xA1, 0xAA): 0x2014}

DIGESTS = {
    "windows-1250": "abeb4b4df20ef85ed4c2cbccf257b9fb5b40c7df35fbaa5c0a7d406b8a4bab13",
    "windows-1251": "c8e0666cb5bd05d898c0e58e0d46a6a2654c8f685dcaa1160c6b99d533a0aea4",
    "windows-1252": "357c67923d9e952c37bb2e21ef37a2725ef652fc34bffd5ffa2685a484985cd6",
    "windows-1254": "d8a71b69ef8d47737c3e6ba2f3df3b2ec6fb84e24ea56c187d213b89cedfb3de",
    "windows-1257": "f9489df7ebbb1f56237e5ed6ab4b00a7546b1ffc61a33eba5c32626d2f99cc24",
    "gb2312": "e2ffcb4d4ad4bee58301ec3c9b6195adb0f8604f6eeb45f508530fda60a4917f",
    "euc-kr": "c19b64f20495e8a9b831c67cc01f6baff0cd02178886fe61147bf5e5612d5f07",
}


def load_name_classes():
    """Returns the module that knows the classes of XML 1.0, Appendix B."""
    path = SCRIPTS / "generate-name-classes.py"
    spec = importlib.util.spec_from_file_location("name_classes", path)
    module = importlib.util.module_from_spec(spec)
    spec.loader.exec_module(module)
    return module


def codes_of(text):
    """Returns the codes of a production as a set."""
    ranges = NAME_CLASSES.parse_ranges(text)
    return {code for first, last in ranges for code in range(first, last + 1)}


NAME_CLASSES = load_name_classes()
BASE_CHARS = codes_of(NAME_CLASSES.BASE_CHAR)
COMBINING_CHARS = codes_of(NAME_CLASSES.COMBINING_CHAR)
DIGITS = codes_of(NAME_CLASSES.DIGIT)


def class_of(code):
    """Returns the number of the CharClass: Letter, Period, Digit or Other."""
    if code in BASE_CHARS:
        return 3
    if code in COMBINING_CHARS:
        return 31
    return 4 if code in DIGITS else 33


def decode(data, codec):
    """Returns the code of the one character that the bytes are, or None."""
    try:
        text = data.decode(codec)
    except UnicodeDecodeError:
        return None
    return ord(text) if len(text) == 1 else None


def windows_page(number):
    codes = [decode(bytes([byte]), f"cp{number}") or byte for byte in range(0x80, 0x100)]
    assert len(set(codes)) == len(codes)
    return codes


def plane(codec, changes):
    """Returns the 94 rows of a plane."""
    span = range(FIRST, FIRST + SIZE)
    rows = [[decode(bytes([lead, trail]), codec) or 0 for trail in span] for lead in span]
    for (lead, trail), code in changes.items():
        rows[lead - FIRST][trail - FIRST] = code
    return rows


def banner(title):
    return [
        "// SPDX-License-Identifier: MIT",
        "// Made by scripts/generate-code-pages.py; do not edit.",
        f"// {title}",
    ]


def checked(name, codes):
    """Returns the line that tells the digest of a mapping, which must be the pinned one."""
    data = b"".join(code.to_bytes(2, "big") for code in codes)
    digest = hashlib.sha256(data).hexdigest()
    if digest != DIGESTS[name]:
        sys.exit(f"{name}: this Python has another mapping, SHA-256 {digest}")
    return f"// {name}; the codes as 16-bit numbers, high byte first: SHA-256\n// {digest}"


def rows_of(values, per_row, form, ruler):
    """Yields the values row by row, each row headed by ruler(number of its first value)."""
    for start in range(0, len(values), per_row):
        row = ", ".join(form.format(value) for value in values[start : start + per_row])
        yield f"    {ruler(start)}{row},"


def windows_file():
    lines = banner("The bytes 80 to FF of the Windows pages: characters and classes.")
    for number in WINDOWS_PAGES:
        codes = windows_page(number)
        ruler = lambda start: f"/* {0x80 + start:02X} */ "
        lines += ["", checked(f"windows-{number}", codes)]
        lines += [f"constexpr std::uint16_t kWindows{number}Codes[128] = {{"]
        lines += rows_of(codes, 16, "0x{:04X}", ruler)
        lines += ["};", f"constexpr signed char kWindows{number}Classes[128] = {{"]
        lines += rows_of([class_of(code) for code in codes], 16, "{:2}", ruler)
        lines += ["};"]
    return lines


def plane_file(name, label, rows):
    codes = [code for row in rows for code in row]
    by_code = sorted((code, place) for place, code in enumerate(codes) if code)
    assert len({code for code, _ in by_code}) == len(by_code)
    places = [place for _, place in by_code]
    lines = banner("A row for each lead byte, a character for each trail byte, 0 for none.")
    lines += [checked(label, codes), f"constexpr std::uint16_t {name}Codes[{SIZE * SIZE}] = {{"]
    lines += rows_of(codes, SIZE, "0x{:04X}", lambda start: f"/* {FIRST + start // SIZE:02X} */ ")
    lines += ["};", "", "// Where the characters stand in the table, by their codes."]
    lines += [f"constexpr std::uint16_t {name}Places[{len(places)}] = {{"]
    lines += rows_of(places, SIZE, "{}", lambda start: "")
    lines += ["};"]
    return lines


def make_files():
    """Returns the texts by file name."""
    files = {
        "WindowsPages.inc": windows_file(),
        "Gb2312.inc": plane_file("kGb2312", "gb2312", plane("gb2312", GB2312_CHANGES)),
        # cp949 within the plane, for euc_kr takes the Hangul filler for the start of a sequence.
        "EucKr.inc": plane_file("kEucKr", "euc-kr", plane("cp949", {})),
    }
    return {name: "\n".join(lines) + "\n" for name, lines in files.items()}


def main():
    checks = sys.argv[1:] == ["--check"]
    if sys.argv[1:] and not checks:
        print(__doc__, file=sys.stderr)
        return 2
    status = 0
    for name, text in make_files().items():
        path = TABLES / name
        if not checks:
            path.write_text(text, encoding="ascii")
        elif not path.is_file() or path.read_text(encoding="ascii") != text:
            print(f"{path} is not current; run scripts/generate-code-pages.py", file=sys.stderr)
            status = 1
    return status


if __name__ == "__main__":
    sys.exit(main())
