#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Writes the compressed samples: samples/herbal.epub, an e-book, and samples/feed.xml.gz.

    scripts/generate-sample-archives.py            writes the files
    scripts/generate-sample-archives.py --check    exit status 1 when one holds something else

The same files come out each time. --check compares what the archives hold, in which order and how
stored, but not the compressed bytes: these may differ between versions of zlib.
"""

import gzip
import io
import pathlib
import sys
import zipfile

SAMPLES = pathlib.Path(__file__).resolve().parent.parent / "samples"
BOOK = SAMPLES / "herbal.epub"
FEED = SAMPLES / "feed.xml"
COMPRESSED_FEED = SAMPLES / "feed.xml.gz"
DATE = (2026, 3, 21, 7, 30, 0)  # of all members

# The members in the order of the archive. The first one is stored, so that its text stands at a
# fixed place in the file; the others are deflated.
MEMBERS = {
    "mimetype": "application/epub+zip",
    "META-INF/container.xml": """\
<?xml version="1.0" encoding="UTF-8"?>
<container version="1.0" xmlns="urn:oasis:names:tc:opendocument:xmlns:container">
  <rootfiles>
    <rootfile full-path="OEBPS/content.opf" media-type="application/oebps-package+xml"/>
  </rootfiles>
</container>
""",
    "OEBPS/content.opf": """\
<?xml version="1.0" encoding="UTF-8"?>
<package xmlns="http://www.idpf.org/2007/opf" version="2.0" unique-identifier="id">
  <metadata xmlns:dc="http://purl.org/dc/elements/1.1/" xmlns:opf="http://www.idpf.org/2007/opf">
    <dc:title>A Small Herbal</dc:title>
    <dc:title>Kleines Kr\u00e4uterbuch</dc:title>
    <dc:creator opf:role="aut">Ilse Baumg\u00e4rtner</dc:creator>
    <dc:language>en</dc:language>
    <dc:identifier id="id">urn:uuid:5d1c2b2e-5a0f-4f4e-9b57-3f0f3c0a6a11</dc:identifier>
  </metadata>
  <manifest>
    <item id="toc" href="toc.ncx" media-type="application/x-dtbncx+xml"/>
    <item id="thyme" href="thyme.xhtml" media-type="application/xhtml+xml"/>
    <item id="sage" href="sage.xhtml" media-type="application/xhtml+xml"/>
  </manifest>
  <spine toc="toc">
    <itemref idref="thyme"/>
    <itemref idref="sage"/>
  </spine>
</package>
""",
    "OEBPS/toc.ncx": """\
<?xml version="1.0" encoding="UTF-8"?>
<ncx xmlns="http://www.daisy.org/z3986/2005/ncx/" version="2005-1" xml:lang="en">
  <head>
    <meta name="dtb:uid" content="urn:uuid:5d1c2b2e-5a0f-4f4e-9b57-3f0f3c0a6a11"/>
    <meta name="dtb:depth" content="1"/>
  </head>
  <docTitle><text>A Small Herbal</text></docTitle>
  <navMap>
    <navPoint id="n1" playOrder="1">
      <navLabel><text>Thyme</text></navLabel>
      <content src="thyme.xhtml"/>
    </navPoint>
    <navPoint id="n2" playOrder="2">
      <navLabel><text>Sage</text></navLabel>
      <content src="sage.xhtml"/>
    </navPoint>
  </navMap>
</ncx>
""",
    "OEBPS/thyme.xhtml": """\
<?xml version="1.0" encoding="UTF-8"?>
<html xmlns="http://www.w3.org/1999/xhtml" xml:lang="en">
  <head><title>Thyme</title></head>
  <body>
    <h1>Thyme</h1>
    <p>Wants <em>sun</em> and stones. Cut it after flowering, never into the old wood.</p>
    <p>Leaves keep their taste when dried; pick them before noon.</p>
  </body>
</html>
""",
    "OEBPS/sage.xhtml": """\
<?xml version="1.0" encoding="UTF-8"?>
<html xmlns="http://www.w3.org/1999/xhtml" xml:lang="en">
  <head><title>Sage</title></head>
  <body>
    <h1>Sage</h1>
    <p>Grey leaves, blue lips; bees come from afar. Renew the shrub every four years.</p>
    <p>Below \u221210\u00a0\u00b0C it wants a cover of brushwood.</p>
  </body>
</html>
""",
}


def make_book():
    output = io.BytesIO()
    with zipfile.ZipFile(output, "w") as archive:
        for name, text in MEMBERS.items():
            info = zipfile.ZipInfo(name, DATE)
            info.create_system = 3  # Unix, whichever system makes it
            info.external_attr = 0o644 << 16
            is_first = name == "mimetype"
            info.compress_type = zipfile.ZIP_STORED if is_first else zipfile.ZIP_DEFLATED
            archive.writestr(info, text.encode("utf-8"), compresslevel=9)
    return output.getvalue()


def content_of_book(data):
    with zipfile.ZipFile(io.BytesIO(data)) as archive:
        return [(info.filename, info.date_time, info.compress_type, archive.read(info))
                for info in archive.infolist()]


def make_feed():
    output = io.BytesIO()
    with gzip.GzipFile("feed.xml", "wb", 9, output, mtime=0) as file:
        file.write(FEED.read_bytes())
    return output.getvalue()


FILES = {BOOK: (make_book, content_of_book), COMPRESSED_FEED: (make_feed, gzip.decompress)}


def is_current(path):
    make, content_of = FILES[path]
    return path.is_file() and content_of(path.read_bytes()) == content_of(make())


def main():
    if sys.argv[1:] == ["--check"]:
        old = [path for path in FILES if not is_current(path)]
        for path in old:
            print(f"{path} is not current; run scripts/generate-sample-archives.py",
                  file=sys.stderr)
        return 1 if old else 0
    if sys.argv[1:]:
        print(__doc__, file=sys.stderr)
        return 2
    for path, (make, _) in FILES.items():
        path.write_bytes(make())
    return 0


if __name__ == "__main__":
    sys.exit(main())
