#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Makes the documents that the benchmarks read, in build/corpus/.

The same options give the same bytes on every machine: all choices come from generators with fixed
seeds. Each document is a head, a block of about 2 MiB that is repeated up to the wanted size, and a
foot. A block is far larger than what a branch predictor remembers, and repetition makes sure that
nothing new (a longer value, another name) appears in the second half of a document, which is where
allocations are counted.

    scripts/make-corpus.py                      everything, about 400 MB
    scripts/make-corpus.py --scale 0.02         the same shapes, fifty times smaller
    scripts/make-corpus.py --only text records  some of them
    scripts/make-corpus.py --stdout records --size 1000000000 | espalier check -
"""

import argparse
import itertools
import os
import random
import shutil
import sys
import time

MB = 1_000_000
BLOCK = 2 * 1024 * 1024
DEFAULT_DIRECTORY = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "build", "corpus")

INSTALLED = {
    "vulkan.xml": "/usr/share/vulkan/registry/vk.xml",  # libvulkan-dev
    "gtk.gir": "/usr/share/gir-1.0/Gtk-3.0.gir",  # libgtk-3-dev
}

LATIN = "a e i o u an en in on er re te ti at or st al ar ed it is ou to ha ng as es hi le ve co me de".split()
ACCENTS = "é è à ç ê ü ö ä ß ñ á í ó ú å ø æ de la ment tion ge sch en er un che que ver".split()
CYRILLIC = "о е а и н т с р в л ко на по не то ра ст го ни ре при пре ова ени ние ого ать ски".split()
GREEK = "α ο ι ε τ σ ν η υ ρ το και την απο στη μεν ους τικ λογ φων χαρ δια παρ συν".split()
CHINESE = (
    "的一是在不了有和人这中大为上个国我以要他时来用们生到作地于出就分对成会可主发年动同工也能下过"
    "子说产种面而方后多定行学法所民得经十三之进着等部度家电力里如水化高自二理起小物现实加量都两体"
)


class Prose:
    """Words, sentences and paragraphs from a fixed seed, in one or several scripts."""

    def __init__(self, rng, *scripts):
        self.rng = rng
        words = []
        for script in scripts:
            for _ in range(400):
                syllables = rng.choices((1, 2, 3, 4), (30, 40, 20, 10))[0]
                words.append("".join(rng.choices(script, k=syllables)))
        rng.shuffle(words)
        self.vocabulary = words
        # Few words are frequent and many are rare, as in any text.
        self.weights = list(itertools.accumulate(1.0 / (rank + 3) for rank in range(len(words))))

    def words(self, count):
        return self.rng.choices(self.vocabulary, cum_weights=self.weights, k=count)

    def phrase(self, least, most):
        return " ".join(self.words(self.rng.randint(least, most)))

    def title(self, least, most):
        return self.phrase(least, most).capitalize()

    def sentence(self):
        words = self.words(self.rng.randint(5, 24))
        words[0] = words[0].capitalize()
        if len(words) > 9:
            words[len(words) // 2] += ","
        if len(words) == 17:
            words[3] = "(" + words[3] + ")"
        return " ".join(words) + self.rng.choice((".", ".", ".", ".", "?", ";"))

    def paragraph(self, sentences, width=76):
        """Returns `sentences` sentences in lines of about `width` characters."""
        lines, line, length = [], [], 0
        for word in " ".join(self.sentence() for _ in range(sentences)).split(" "):
            if length + len(word) > width:
                lines.append(" ".join(line))
                line, length = [], 0
            line.append(word)
            length += len(word) + 1
        lines.append(" ".join(line))
        return "\n".join(lines)


DECLARATION = '<?xml version="1.0" encoding="UTF-8"?>\n'


# Each document is a function of a random generator that returns its head, an endless iterator of
# pieces, and its foot. A piece CLOSED says that all elements opened by the pieces before it are
# closed again, so that a block may end there.

CLOSED = None


def text(rng):
    prose = Prose(rng, LATIN)

    def pieces():
        for chapter in itertools.count(1):
            yield f"<chapter id=\"c{chapter % 1000}\">\n<title>{prose.title(3, 7)}</title>\n"
            for number in range(30):
                if number % 6 == 5:
                    yield f"<p>{prose.paragraph(2)} <em>{prose.phrase(1, 3)}</em> {prose.paragraph(3)}</p>\n"
                else:
                    yield f"<p>{prose.paragraph(rng.randint(2, 10))}</p>\n"
            yield "</chapter>\n"
            yield CLOSED

    return DECLARATION + "<book>\n", pieces(), "</book>\n"


def attributes(rng):
    prose = Prose(rng, LATIN)
    letters = "ABCDEFGHIJKLMNOPQRSTUVWXYZ"

    def pieces():
        while True:
            yield f'\t<territory type="{"".join(rng.choices(letters, k=2))}" gdp="{rng.randint(10**6, 10**12)}" literacyPercent="{rng.randint(50, 100)}" population="{rng.randint(1000, 10**9)}">\n'
            for _ in range(rng.randint(1, 8)):
                yield f'\t\t<languagePopulation type="{"".join(rng.choices(LATIN, k=2))}" populationPercent="{rng.randint(1, 99)}" officialStatus="{rng.choice(("official", "official_regional", "de_facto_official"))}" references="R{rng.randint(1000, 1300)}"/>\n'
            yield "\t</territory>\n"
            for _ in range(6):
                year = rng.randint(1900, 2020)
                yield f'\t\t<usesMetazone from="{year}-{rng.randint(1, 12):02}-01 00:00" to="{year + 3}-10-28 {rng.randint(0, 23):02}:00" mzone="{prose.title(1, 1)}_{prose.title(1, 1)}" draft="contributed"/>\n'
            yield f'\t<currencyData iso4217="{"".join(rng.choices(letters, k=3))}" digits="2" rounding="0" cashDigits="{rng.randint(0, 2)}" cashRounding="5" displayName="{prose.phrase(1, 4)}" alt="" territories="{" ".join("".join(rng.choices(letters, k=2)) for _ in range(rng.randint(1, 30)))}"/>\n'
            yield CLOSED

    return DECLARATION + "<supplementalData>\n", pieces(), "</supplementalData>\n"


def map_data(rng):
    prose = Prose(rng, LATIN, LATIN, LATIN, ACCENTS)
    keys = "building highway name surface source addr:street addr:city addr:housenumber oneway maxspeed natural landuse".split()

    def common(number):
        return (
            f'id="{number}" visible="true" version="{rng.randint(1, 20)}" changeset="{rng.randint(10**6, 10**8)}" '
            f'timestamp="20{rng.randint(10, 25)}-{rng.randint(1, 12):02}-{rng.randint(1, 28):02}T{rng.randint(0, 23):02}:{rng.randint(0, 59):02}:{rng.randint(0, 59):02}Z" '
            f'user="{users[rng.randrange(200)]}" uid="{rng.randint(1000, 10**7)}"'
        )

    users = [prose.phrase(1, 2) for _ in range(200)]

    def tags(count):
        return "".join(f'  <tag k="{rng.choice(keys)}" v="{prose.phrase(1, 3)}"/>\n' for _ in range(count))

    def pieces():
        number = 240_000_000
        while True:
            for _ in range(40):
                number += rng.randint(1, 99)
                place = f'lat="{rng.uniform(45, 55):.7f}" lon="{rng.uniform(5, 15):.7f}"'
                if rng.random() < 0.9:
                    yield f" <node {common(number)} {place}/>\n"
                else:
                    yield f" <node {common(number)} {place}>\n{tags(rng.randint(1, 5))} </node>\n"
            for _ in range(5):
                number += 1
                references = "".join(f'  <nd ref="{rng.randint(10**8, 10**10)}"/>\n' for _ in range(rng.randint(3, 25)))
                yield f" <way {common(number)}>\n{references}{tags(rng.randint(1, 6))} </way>\n"
            yield CLOSED

    head = DECLARATION + '<osm version="0.6" generator="make-corpus">\n <bounds minlat="45.0" minlon="5.0" maxlat="55.0" maxlon="15.0"/>\n'
    return head, pieces(), "</osm>\n"


def namespaces(rng):
    prose = Prose(rng, LATIN)
    concepts = ["".join(word.capitalize() for word in prose.words(rng.randint(2, 5))) for _ in range(300)]
    prefixes = ["us-gaap", "dei", "ifrs-full", "srt", "country", "acme"]

    def envelope(number):
        return (
            '<soap:Envelope xmlns:soap="http://www.w3.org/2003/05/soap-envelope" xmlns:wsa="http://www.w3.org/2005/08/addressing">'
            f"<soap:Header><wsa:MessageID>urn:uuid:{rng.getrandbits(64):016x}</wsa:MessageID>"
            f"<wsa:To soap:mustUnderstand=\"1\">https://example.org/services/{prose.phrase(1, 1)}</wsa:To>"
            '<wsse:Security xmlns:wsse="http://docs.oasis-open.org/wss/2004/01/oasis-200401-wss-wssecurity-secext-1.0.xsd" soap:mustUnderstand="true">'
            f'<wsu:Timestamp xmlns:wsu="http://docs.oasis-open.org/wss/2004/01/oasis-200401-wss-wssecurity-utility-1.0.xsd" wsu:Id="TS-{number}">'
            "<wsu:Created>2026-05-04T12:00:00Z</wsu:Created><wsu:Expires>2026-05-04T12:05:00Z</wsu:Expires></wsu:Timestamp></wsse:Security></soap:Header>"
            f'<soap:Body><m:GetPrice xmlns:m="http://example.org/stock"><m:Item xsi:type="xsd:string">{prose.phrase(1, 3)}</m:Item>'
            f"<m:Quantity>{rng.randint(1, 500)}</m:Quantity></m:GetPrice></soap:Body></soap:Envelope>\n"
        )

    def context(number):
        return (
            f'<xbrli:context id="c{number}"><xbrli:entity><xbrli:identifier scheme="http://www.sec.gov/CIK">{rng.randint(10**9, 10**10)}</xbrli:identifier>'
            f'<xbrli:segment><xbrldi:explicitMember dimension="us-gaap:{rng.choice(concepts)}Axis">acme:{rng.choice(concepts)}Member</xbrldi:explicitMember></xbrli:segment></xbrli:entity>'
            "<xbrli:period><xbrli:startDate>2025-01-01</xbrli:startDate><xbrli:endDate>2025-12-31</xbrli:endDate></xbrli:period></xbrli:context>\n"
        )

    def fact():
        name = f"{rng.choice(prefixes)}:{rng.choice(concepts)}"
        kind = rng.random()
        if kind < 0.1:
            return f'<{name} contextRef="c{rng.randint(1, 400)}" unitRef="usd" xsi:nil="true"/>\n'
        return f'<{name} contextRef="c{rng.randint(1, 400)}" unitRef="usd" decimals="-3">{rng.randint(-10**9, 10**9)}</{name}>\n'

    def pieces():
        for number in itertools.count():
            for _ in range(12):
                yield fact()
            yield context(number % 400)
            if number % 2 == 0:
                yield envelope(number)
            yield CLOSED

    declared = "".join(f' xmlns:{prefix}="http://fasb.org/{prefix}/2025"' for prefix in prefixes)
    head = (
        DECLARATION
        + '<xbrli:xbrl xmlns:xbrli="http://www.xbrl.org/2003/instance" xmlns:xbrldi="http://xbrl.org/2006/xbrldi"'
        ' xmlns:link="http://www.xbrl.org/2003/linkbase" xmlns:xlink="http://www.w3.org/1999/xlink"'
        ' xmlns:xsi="http://www.w3.org/2001/XMLSchema-instance" xmlns:xsd="http://www.w3.org/2001/XMLSchema"'
        + declared
        + '>\n<link:schemaRef xlink:type="simple" xlink:href="acme-2025.xsd"/>\n'
    )
    return head, pieces(), "</xbrli:xbrl>\n"


def records(rng):
    prose = Prose(rng, LATIN)

    def pieces():
        for number in itertools.count(1):
            yield (
                f"  <row>\n    <id>{100_000 + number % 900_000}</id>\n    <name>{prose.title(2, 2)}</name>\n    <email>{prose.phrase(1, 1)}@example.org</email>\n"
                f"    <city>{prose.title(1, 2)}</city>\n    <zip>{rng.randint(10000, 99999)}</zip>\n    <amount>{rng.uniform(0, 9999):.2f}</amount>\n"
                f"    <currency>EUR</currency>\n    <date>2026-{rng.randint(1, 12):02}-{rng.randint(1, 28):02}</date>\n    <active>{rng.choice(('true', 'false'))}</active>\n"
                f"    <note>{prose.phrase(0, 6)}</note>\n  </row>\n"
            )
            yield CLOSED

    return DECLARATION + "<table>\n", pieces(), "</table>\n"


def markup(rng):
    prose = Prose(rng, LATIN)
    inline = "literal function varname filename emphasis option command parameter".split()

    def running(count):
        parts = []
        for _ in range(count):
            tag = rng.choice(inline)
            parts.append(f"{prose.phrase(2, 9)} <{tag}>{prose.phrase(1, 1)}</{tag}>")
            kind = rng.random()
            if kind < 0.1:
                parts.append(f' <xref linkend="{prose.phrase(1, 1)}-{rng.randint(1, 99)}"/>')
            elif kind < 0.2:
                parts.append(f' <ulink url="https://example.org/{prose.phrase(1, 1)}?a=1&amp;b={rng.randint(1, 9)}">{prose.phrase(1, 3)}</ulink>')
            elif kind < 0.24:
                parts.append(f" {prose.phrase(1, 2)} &lt;{prose.phrase(1, 1)}&gt;")
            parts.append(",\n      " if kind > 0.6 else " ")
        return "".join(parts) + "."

    def pieces():
        for number in itertools.count(1):
            yield f'  <section id="s{number % 1000}" role="{prose.phrase(1, 1)}">\n    <title>{prose.title(2, 6)}</title>\n'
            for kind in range(8):
                yield f"    <para>{running(rng.randint(2, 9))}</para>\n"
                if kind == 2:
                    items = "".join(f"      <listitem><para>{running(2)}</para></listitem>\n" for _ in range(4))
                    yield f'    <itemizedlist spacing="compact">\n{items}    </itemizedlist>\n'
                elif kind == 4:
                    code = "".join(f"  if ({prose.phrase(1, 1)} < {rng.randint(1, 99)} && !{prose.phrase(1, 1)}) return;\n" for _ in range(6))
                    yield f'    <programlisting language="c"><![CDATA[{code}]]></programlisting>\n'
                elif kind == 6:
                    yield f"    <!-- {prose.phrase(4, 20)} -->\n    <?dbfo keep-together=\"auto\"?>\n"
            yield "  </section>\n"
            yield CLOSED

    return DECLARATION + '<book lang="en">\n', pieces(), "</book>\n"


def unicode_text(rng):
    russian, greek, french = Prose(rng, CYRILLIC), Prose(rng, GREEK), Prose(rng, LATIN, LATIN, LATIN, ACCENTS)

    def chinese(count):
        return "，".join("".join(rng.choices(CHINESE, k=rng.randint(4, 18))) for _ in range(count)) + "。"

    def pieces():
        for number in itertools.count(1):
            yield f'<статья номер="{number % 1000}" заголовок="{russian.title(2, 6)}">\n  <автор>{russian.title(2, 2)}</автор>\n'
            yield f"  <абзац>{russian.paragraph(rng.randint(2, 8))}</абзац>\n  <абзац>{russian.paragraph(4)} <выделение>{russian.phrase(1, 3)}</выделение>.</абзац>\n"
            yield f'  <p xml:lang="zh">{chinese(rng.randint(3, 30))}</p>\n  <entry key="{chinese(1)}" value="{chinese(2)}"/>\n'
            yield f'  <παράγραφος τίτλος="{greek.title(2, 5)}">{greek.paragraph(rng.randint(2, 6))}</παράγραφος>\n'
            yield f"  <résumé>{french.paragraph(rng.randint(2, 5))}</résumé>\n</статья>\n"
            yield CLOSED

    return DECLARATION + "<собрание>\n", pieces(), "</собрание>\n"


def references(rng):
    prose = Prose(rng, LATIN)
    forms = ["&amp;", "&lt;", "&gt;", "&quot;", "&apos;", "&#65;", "&#x42;", "&#233;", "&#x20AC;", "&#x1F600;"]

    def dense(count):
        return "".join(f"{prose.phrase(1, 2)}{rng.choice(forms)}" for _ in range(count))

    def pieces():
        while True:
            yield f'<item code="{dense(rng.randint(0, 3))}" href="/find?q={prose.phrase(1, 1)}&amp;page={rng.randint(1, 9)}&amp;size=20">{dense(rng.randint(4, 30))}</item>\n'
            yield CLOSED

    return DECLARATION + "<items>\n", pieces(), "</items>\n"


def latin1(rng):
    prose = Prose(rng, LATIN, LATIN, LATIN, ACCENTS)

    def pieces():
        for number in itertools.count(1):
            yield f'<fiche numéro="{number % 1000}" référence="{prose.phrase(1, 2)}">\n  <titre>{prose.title(2, 6)}</titre>\n  <prix devise="EUR">{rng.uniform(1, 99):.2f}</prix>\n'
            for _ in range(3):
                yield f"  <résumé>{prose.paragraph(rng.randint(1, 6))}</résumé>\n"
            yield "</fiche>\n"
            yield CLOSED

    return '<?xml version="1.0" encoding="ISO-8859-1"?>\n<catalogue>\n', pieces(), "</catalogue>\n"


def utf16(rng):
    prose, russian = Prose(rng, LATIN), Prose(rng, CYRILLIC)

    def pieces():
        for number in itertools.count(1):
            yield f'<article id="a{number % 1000}" title="{prose.title(2, 6)}">\n  <price currency="EUR">{rng.uniform(1, 99):.2f}</price>\n'
            for _ in range(3):
                yield f"  <description>{prose.paragraph(rng.randint(1, 6))}</description>\n"
            yield f'  <описание язык="ru">{russian.paragraph(2)}</описание>\n</article>\n'
            yield CLOSED

    # The mark is part of the head; the codec below writes none.
    return '\ufeff<?xml version="1.0" encoding="UTF-16"?>\n<catalogue>\n', pieces(), "</catalogue>\n"


# name: (generator, size, encoding)
DOCUMENTS = {
    "text": (text, 50 * MB, "utf-8"),
    "attributes": (attributes, 50 * MB, "utf-8"),
    "map": (map_data, 50 * MB, "utf-8"),
    "namespaces": (namespaces, 20 * MB, "utf-8"),
    "records": (records, 50 * MB, "utf-8"),
    "markup": (markup, 50 * MB, "utf-8"),
    "unicode": (unicode_text, 30 * MB, "utf-8"),
    "references": (references, 10 * MB, "utf-8"),
    "utf16le": (utf16, 20 * MB, "utf-16-le"),
    "latin1": (latin1, 20 * MB, "iso-8859-1"),
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


def small_document(rng, prose, number):
    """Returns a document of 1 to 20 KB: an icon, a feed, a settings file or a build description."""
    size = int(1000 * 20 ** rng.random())
    parts, length = [], 0

    def add(piece):
        nonlocal length
        parts.append(piece)
        length += len(piece)

    def path():
        return " ".join(f"{rng.choice('MLHVCSQ')}{rng.uniform(0, 64):.2f} {rng.uniform(0, 64):.2f}" for _ in range(rng.randint(3, 40)))

    kind = number % 4
    if kind == 0:
        add('<svg xmlns="http://www.w3.org/2000/svg" xmlns:xlink="http://www.w3.org/1999/xlink" width="64" height="64" viewBox="0 0 64 64">\n')
        while length < size:
            add(f' <g id="g{rng.randint(1, 999)}" fill="#{rng.getrandbits(24):06x}">\n  <path d="{path()}" stroke="none"/>\n  <use xlink:href="#g{rng.randint(1, 999)}"/>\n </g>\n')
        add("</svg>\n")
    elif kind == 1:
        add('<feed xmlns="http://www.w3.org/2005/Atom">\n <title>News</title>\n')
        while length < size:
            add(f' <entry>\n  <title>{prose.title(3, 8)}</title>\n  <id>urn:uuid:{rng.getrandbits(64):x}</id>\n  <link rel="alternate" href="https://example.org/{rng.randint(1, 9999)}"/>\n  <updated>2026-03-0{rng.randint(1, 9)}T10:00:00Z</updated>\n  <summary type="html">&lt;p&gt;{prose.paragraph(2)}&lt;/p&gt;</summary>\n </entry>\n')
        add("</feed>\n")
    elif kind == 2:
        add("<!-- settings -->\n<configuration>\n")
        while length < size:
            add(f'  <property>\n    <name>{".".join(prose.words(3))}</name>\n    <value>{rng.randint(0, 9999)}</value>\n    <description>{prose.phrase(3, 12)}</description>\n  </property>\n')
        add("</configuration>\n")
    else:
        add('<project xmlns="http://maven.apache.org/POM/4.0.0" xmlns:xsi="http://www.w3.org/2001/XMLSchema-instance" xsi:schemaLocation="http://maven.apache.org/POM/4.0.0 https://maven.apache.org/xsd/maven-4.0.0.xsd">\n  <dependencies>\n')
        while length < size:
            add(f'    <dependency>\n      <groupId>org.{prose.phrase(1, 1)}</groupId>\n      <artifactId>{prose.phrase(1, 1)}-{prose.phrase(1, 1)}</artifactId>\n      <version>{rng.randint(0, 9)}.{rng.randint(0, 20)}</version>\n      <scope>test</scope>\n    </dependency>\n')
        add("  </dependencies>\n</project>\n")
    return (DECLARATION + "".join(parts)).encode()


def write_small(directory, scale):
    rng = random.Random("small")
    prose = Prose(rng, LATIN)
    os.makedirs(directory, exist_ok=True)
    for number in range(max(4, int(1000 * scale))):
        with open(os.path.join(directory, f"{number:04}.xml"), "wb") as output:
            output.write(small_document(rng, prose, number))


def write_all(directory, scale, only):
    os.makedirs(directory, exist_ok=True)
    started = time.monotonic()
    for name, (_, size, _) in DOCUMENTS.items():
        if only and name not in only:
            continue
        path = os.path.join(directory, name + ".xml")
        with open(path + ".part", "wb") as output:
            write_document(name, int(size * scale), output)
        os.replace(path + ".part", path)
    if not only or "deep" in only:
        write_deep(os.path.join(directory, "deep.xml"), scale)
    if not only or "small" in only:
        shutil.rmtree(os.path.join(directory, "small"), ignore_errors=True)
        write_small(os.path.join(directory, "small"), scale)
    for name, source in INSTALLED.items():
        if only and name not in only:
            continue
        if os.path.exists(source):
            shutil.copyfile(source, os.path.join(directory, name))
        else:
            print(f"{source} is not installed; left out", file=sys.stderr)
    print(f"corpus in {os.path.normpath(directory)}, {time.monotonic() - started:.1f} s", file=sys.stderr)


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--directory", default=DEFAULT_DIRECTORY, help="where to write (build/corpus)")
    parser.add_argument("--scale", type=float, default=1.0, help="factor on all sizes (1.0)")
    parser.add_argument("--only", nargs="+", metavar="NAME", help="only these: " + ", ".join([*DOCUMENTS, "deep", "small", *INSTALLED]))
    parser.add_argument("--stdout", choices=DOCUMENTS, metavar="NAME", help="write one document to standard output")
    parser.add_argument("--size", type=int, help="its size in bytes")
    arguments = parser.parse_args()
    unknown = set(arguments.only or ()) - {*DOCUMENTS, "deep", "small", *INSTALLED}
    if unknown:
        parser.error("no document is named " + ", ".join(sorted(unknown)))
    if arguments.stdout:
        write_document(arguments.stdout, arguments.size or DOCUMENTS[arguments.stdout][1], sys.stdout.buffer)
    else:
        write_all(arguments.directory, arguments.scale, arguments.only)


if __name__ == "__main__":
    main()
