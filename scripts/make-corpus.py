#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Makes the documents that the benchmarks read, in build/corpus/.

The same options give the same bytes on every machine: all choices come from generators with fixed
seeds. Each document is a head, a block of about 2 MiB that is repeated up to the wanted size, and a
foot. A block is far larger than what a branch predictor remembers, and repetition makes sure that
nothing new (a longer value, another name) appears in the second half of a document, which is where
allocations are counted.

    scripts/make-corpus.py                      everything, about 410 MB
    scripts/make-corpus.py --scale 0.02         the same shapes, fifty times smaller
    scripts/make-corpus.py --only text records  some of them
    scripts/make-corpus.py --missing            those that are not there yet
    scripts/make-corpus.py --stdout records --size 1000000000 | espalier check -
"""

import argparse
import os
import random
import shutil
import sys
import time

from corpus_documents import CLOSED, DOCUMENTS, LATIN, Prose, small_document

BLOCK = 2 * 1024 * 1024
TOP = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
DEFAULT_DIRECTORY = os.path.join(TOP, "build", "corpus")

INSTALLED = {
    "vulkan": ("vulkan.xml", "/usr/share/vulkan/registry/vk.xml"),  # libvulkan-dev
    "gtk": ("gtk.gir", "/usr/share/gir-1.0/Gtk-3.0.gir"),  # libgtk-3-dev
}


def write_document(name, size, output):
    make, _, encoding = DOCUMENTS[name]
    head, pieces, foot = make(random.Random(name))
    head, foot = head.encode(encoding), foot.encode(encoding)
    body = max(size - len(head) - len(foot), 1)
    wanted, parts = min(BLOCK, body), []
    for piece in pieces:
        if piece is CLOSED:
            if wanted <= 0:
                break
            continue
        data = piece.encode(encoding)
        parts.append(data)
        wanted -= len(data)
    block = b"".join(parts)
    output.write(head)
    for _ in range(max(1, round(body / len(block)))):
        output.write(block)
    output.write(foot)


def write_deep(path, scale):
    """Writes 100,000 nested elements, with text here and there."""
    depth = max(10, int(100_000 * scale))
    with open(path, "wb") as output:
        for level in range(depth):
            output.write(b"<level>" if level % 8 else b'<section kind="nested">text ')
        for level in reversed(range(depth)):
            output.write(b"</level>\n" if level % 8 else b"</section>\n")


def write_small(directory, scale):
    rng = random.Random("small")
    prose = Prose(rng, LATIN)
    os.makedirs(directory, exist_ok=True)
    for number in range(max(4, int(1000 * scale))):
        with open(os.path.join(directory, f"{number:04}.xml"), "wb") as output:
            output.write(small_document(rng, prose, number))


def path_of(name, directory):
    file_names = {"small": "small"} | {key: file_name for key, (file_name, _) in INSTALLED.items()}
    return os.path.join(directory, file_names.get(name, name + ".xml"))


def write_all(directory, scale, names):
    os.makedirs(directory, exist_ok=True)
    started = time.monotonic()
    for name, (_, size, _) in DOCUMENTS.items():
        if name not in names:
            continue
        path = path_of(name, directory)
        with open(path + ".part", "wb") as output:
            write_document(name, int(size * scale), output)
        os.replace(path + ".part", path)
    if "deep" in names:
        write_deep(path_of("deep", directory), scale)
    if "small" in names:
        shutil.rmtree(path_of("small", directory), ignore_errors=True)
        write_small(path_of("small", directory), scale)
    for name, (_, source) in INSTALLED.items():
        if name not in names:
            continue
        if os.path.exists(source):
            shutil.copyfile(source, path_of(name, directory))
        else:
            print(f"{source} is not installed; left out", file=sys.stderr)
    seconds = time.monotonic() - started
    print(f"corpus in {os.path.normpath(directory)}, {seconds:.1f} s", file=sys.stderr)


def parse_arguments():
    names = [*DOCUMENTS, "deep", "small", *INSTALLED]
    only_help = "of " + ", ".join(names)
    parser = argparse.ArgumentParser(
        description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter
    )
    parser.add_argument("--directory", default=DEFAULT_DIRECTORY, help="where to (build/corpus)")
    parser.add_argument("--scale", type=float, default=1.0, help="factor on all sizes (1.0)")
    parser.add_argument("--only", nargs="+", metavar="NAME", help=only_help)
    parser.add_argument("--missing", action="store_true", help="only what is not there yet")
    parser.add_argument("--stdout", choices=DOCUMENTS, metavar="NAME", help="write one to stdout")
    parser.add_argument("--size", type=int, help="its size in bytes")
    arguments = parser.parse_args()
    unknown = set(arguments.only or ()) - set(names)
    if unknown:
        parser.error("no document is named " + ", ".join(sorted(unknown)))
    arguments.names = arguments.only or names
    if arguments.missing:
        directory = arguments.directory
        arguments.names = [n for n in arguments.names if not os.path.exists(path_of(n, directory))]
    return arguments


def main():
    arguments = parse_arguments()
    if arguments.stdout:
        size = arguments.size or DOCUMENTS[arguments.stdout][1]
        write_document(arguments.stdout, size, sys.stdout.buffer)
    else:
        write_all(arguments.directory, arguments.scale, arguments.names)


if __name__ == "__main__":
    main()
