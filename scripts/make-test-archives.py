#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Writes tests/data/archives: the same documents in archives of gzip, zip, bsdtar and Python.

    scripts/make-test-archives.py [FOLDER]

It wants the packages gzip, zip and libarchive-tools. The files are checked in, so that the tests
need none of them. Times are fixed; other versions of the tools may write other bytes.
"""

import gzip
import os
import pathlib
import subprocess
import sys
import tempfile
import zipfile

TARGET = pathlib.Path(__file__).resolve().parent.parent / "tests/data/archives"
TIME = 1774078200  # 2026-03-21 07:30:00 UTC
DATE = (2026, 3, 21, 7, 30, 0)

# Repeats itself, has bytes above 0x7F, and needs more than one block of 1 KiB.
DOCUMENT = ('<?xml version="1.0" encoding="UTF-8"?>\n<beds>\n' + "".join(
    f'  <bed number="{number}" plant="{plant}">S\u00fcdwand, row {number % 7}</bed>\n'
    for number, plant in enumerate(["thyme", "sage", "lovage", "borage", "dill"] * 12)
) + "</beds>\n").encode("utf-8")
SMALL = b"<a/>\n"
MEMBERS = {"a.xml": SMALL, "dir/beds.xml": DOCUMENT, "empty.xml": b""}


class Unseekable:
    """A file of which Python's zipfile knows only that it can be written to."""

    def __init__(self, file):
        self.write = file.write
        self.flush = file.flush


def run(command, folder, **keywords):
    environment = dict(os.environ, TZ="UTC")
    return subprocess.run(command, cwd=folder, env=environment, check=True,
                          stdout=subprocess.PIPE, **keywords).stdout


def make_sources(folder):
    for name, content in MEMBERS.items():
        path = folder / name
        path.parent.mkdir(exist_ok=True)
        path.write_bytes(content)
    for path in [*folder.rglob("*"), folder]:
        os.utime(path, (TIME, TIME))


def make_gzip_files(folder, target):
    (target / "gzip.gz").write_bytes(run(["gzip", "-9", "-c", "dir/beds.xml"], folder))
    (target / "gzip-stdin.gz").write_bytes(run(["gzip", "-1"], folder, input=DOCUMENT))
    first, second = DOCUMENT[:1000], DOCUMENT[1000:]
    (target / "gzip-two-members.gz").write_bytes(
        run(["gzip"], folder, input=first) + run(["gzip"], folder, input=second))
    with open(target / "python.gz", "wb") as output:
        with gzip.GzipFile("beds.xml", "wb", 6, output, mtime=TIME) as file:
            file.write(DOCUMENT)


def add_by_python(archive, method, force_zip64=False):
    for name, content in MEMBERS.items():
        info = zipfile.ZipInfo(name, DATE)
        info.compress_type = method
        with archive.open(info, "w", force_zip64=force_zip64) as member:
            member.write(content)


def make_zip_files(folder, target):
    names = list(MEMBERS)
    for old in target.glob("*.zip"):
        old.unlink()
    run(["zip", "-q", "-X", target / "zip.zip", *names], folder)
    run(["zip", "-q", "-X", "-0", target / "zip-stored.zip", *names], folder)
    # Through a pipe: sizes follow the data, in descriptors.
    (target / "zip-pipe.zip").write_bytes(run(["zip", "-q", "-X", "-", *names], folder))
    run(["bsdtar", "--format", "zip", "--uid", "0", "--gid", "0", "-cf", target / "bsdtar.zip",
         *names], folder)
    with zipfile.ZipFile(target / "python-stored.zip", "w") as archive:
        add_by_python(archive, zipfile.ZIP_STORED)
    with zipfile.ZipFile(target / "python-zip64.zip", "w") as archive:
        add_by_python(archive, zipfile.ZIP_DEFLATED, force_zip64=True)
    with open(target / "python-pipe.zip", "wb") as output:
        with zipfile.ZipFile(Unseekable(output), "w") as archive:
            add_by_python(archive, zipfile.ZIP_DEFLATED)
    with zipfile.ZipFile(target / "python-prefix.zip", "w") as archive:
        add_by_python(archive, zipfile.ZIP_DEFLATED)
        archive.comment = b"Beds, and a comment"
    archive = target / "python-prefix.zip"
    archive.write_bytes(b"#!/bin/sh\nexit 0\n" + archive.read_bytes())  # unpacks itself, so to say


def main():
    target = pathlib.Path(sys.argv[1]).resolve() if len(sys.argv) > 1 else TARGET
    target.mkdir(parents=True, exist_ok=True)
    (target / "a.xml").write_bytes(SMALL)
    (target / "beds.xml").write_bytes(DOCUMENT)
    with tempfile.TemporaryDirectory() as name:
        folder = pathlib.Path(name)
        make_sources(folder)
        make_gzip_files(folder, target)
        make_zip_files(folder, target)
    return 0


if __name__ == "__main__":
    sys.exit(main())
