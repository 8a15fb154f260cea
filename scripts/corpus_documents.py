# SPDX-License-Identifier: MIT
"""The shapes of the documents that make-corpus.py writes."""

import itertools

MB = 1_000_000

LATIN = (
    "a e i o u an en in on er re te ti at or st al ar ed it is ou to ha ng as es hi le ve co me de"
).split()
ACCENTS = (
    "é è à ç ê ü ö ä ß ñ á í ó ú å ø æ de la ment tion ge sch en er un che que ver"
).split()
CYRILLIC = (
    "о е а и н т с р в л ко на по не то ра ст го ни ре при пре ова ени ние ого ать ски"
).split()
GREEK = "α ο ι ε τ σ ν η υ ρ το και την απο στη μεν ους τικ λογ φων χαρ δια παρ συν".split()
CHINESE = (
    "的一是在不了有和人这中大为上个国我以要他时来用们生到作地于出就分对成会可主发年动同工也能"
    "下过子说产种面而方后多定行学法所民得经十三之进着等部度家电力里如水化高自二理起小物现实加"
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
            yield f'<chapter id="c{chapter % 1000}">\n<title>{prose.title(3, 7)}</title>\n'
            for number in range(30):
                paragraph = prose.paragraph(rng.randint(2, 10))
                if number % 6 == 5:
                    paragraph += f" <em>{prose.phrase(1, 3)}</em> {prose.paragraph(3)}"
                yield f"<p>{paragraph}</p>\n"
            yield "</chapter>\n"
            yield CLOSED

    return DECLARATION + "<book>\n", pieces(), "</book>\n"


def attributes(rng):
    prose = Prose(rng, LATIN)
    states = ("official", "official_regional", "de_facto_official")

    def code(length):
        return "".join(rng.choices("ABCDEFGHIJKLMNOPQRSTUVWXYZ", k=length))

    def population():
        return (
            f'\t\t<languagePopulation type="{code(2).lower()}" '
            f'populationPercent="{rng.randint(1, 99)}" officialStatus="{rng.choice(states)}" '
            f'references="R{rng.randint(1000, 1300)}"/>\n'
        )

    def zone():
        year = rng.randint(1900, 2020)
        return (
            f'\t\t<usesMetazone from="{year}-{rng.randint(1, 12):02}-01 00:00" '
            f'to="{year + 3}-10-28 {rng.randint(0, 23):02}:00" '
            f'mzone="{prose.title(1, 1)}_{prose.title(1, 1)}" draft="contributed"/>\n'
        )

    def currency():
        territories = " ".join(code(2) for _ in range(rng.randint(1, 30)))
        return (
            f'\t<currencyData iso4217="{code(3)}" digits="2" rounding="0" '
            f'cashDigits="{rng.randint(0, 2)}" cashRounding="5" '
            f'displayName="{prose.phrase(1, 4)}" alt="" territories="{territories}"/>\n'
        )

    def pieces():
        while True:
            yield (
                f'\t<territory type="{code(2)}" gdp="{rng.randint(10**6, 10**12)}" '
                f'literacyPercent="{rng.randint(50, 100)}" '
                f'population="{rng.randint(1000, 10**9)}">\n'
            )
            for _ in range(rng.randint(1, 8)):
                yield population()
            yield "\t</territory>\n"
            for _ in range(6):
                yield zone()
            yield currency()
            yield CLOSED

    return DECLARATION + "<supplementalData>\n", pieces(), "</supplementalData>\n"


def map_data(rng):
    prose = Prose(rng, LATIN, LATIN, LATIN, ACCENTS)
    users = [prose.phrase(1, 2) for _ in range(200)]
    keys = (
        "building highway name surface source addr:street addr:city addr:housenumber oneway "
        "maxspeed natural landuse"
    ).split()

    def common(number):
        day = f"20{rng.randint(10, 25)}-{rng.randint(1, 12):02}-{rng.randint(1, 28):02}"
        hour = f"{rng.randint(0, 23):02}:{rng.randint(0, 59):02}:{rng.randint(0, 59):02}"
        return (
            f'id="{number}" visible="true" version="{rng.randint(1, 20)}" '
            f'changeset="{rng.randint(10**6, 10**8)}" timestamp="{day}T{hour}Z" '
            f'user="{users[rng.randrange(200)]}" uid="{rng.randint(1000, 10**7)}"'
        )

    def tags(count):
        return "".join(
            f'  <tag k="{rng.choice(keys)}" v="{prose.phrase(1, 3)}"/>\n' for _ in range(count)
        )

    def node(number):
        place = f'lat="{rng.uniform(45, 55):.7f}" lon="{rng.uniform(5, 15):.7f}"'
        if rng.random() < 0.9:
            return f" <node {common(number)} {place}/>\n"
        return f" <node {common(number)} {place}>\n{tags(rng.randint(1, 5))} </node>\n"

    def way(number):
        references = "".join(
            f'  <nd ref="{rng.randint(10**8, 10**10)}"/>\n' for _ in range(rng.randint(3, 25))
        )
        return f" <way {common(number)}>\n{references}{tags(rng.randint(1, 6))} </way>\n"

    def pieces():
        number = 240_000_000
        while True:
            for _ in range(40):
                number += rng.randint(1, 99)
                yield node(number)
            for _ in range(5):
                number += 1
                yield way(number)
            yield CLOSED

    head = (
        DECLARATION + '<osm version="0.6" generator="make-corpus">\n'
        ' <bounds minlat="45.0" minlon="5.0" maxlat="55.0" maxlon="15.0"/>\n'
    )
    return head, pieces(), "</osm>\n"


def namespaces(rng):
    prose = Prose(rng, LATIN)
    concepts = [
        "".join(word.capitalize() for word in prose.words(rng.randint(2, 5))) for _ in range(300)
    ]
    prefixes = ["us-gaap", "dei", "ifrs-full", "srt", "country", "acme"]
    security = "http://docs.oasis-open.org/wss/2004/01/oasis-200401-wss-wssecurity"

    def envelope(number):
        return (
            '<soap:Envelope xmlns:soap="http://www.w3.org/2003/05/soap-envelope" '
            'xmlns:wsa="http://www.w3.org/2005/08/addressing"><soap:Header>'
            f"<wsa:MessageID>urn:uuid:{rng.getrandbits(64):016x}</wsa:MessageID>"
            '<wsa:To soap:mustUnderstand="1">'
            f"https://example.org/services/{prose.phrase(1, 1)}</wsa:To>"
            f'<wsse:Security xmlns:wsse="{security}-secext-1.0.xsd" soap:mustUnderstand="true">'
            f'<wsu:Timestamp xmlns:wsu="{security}-utility-1.0.xsd" wsu:Id="TS-{number % 1000}">'
            "<wsu:Created>2026-05-04T12:00:00Z</wsu:Created>"
            "<wsu:Expires>2026-05-04T12:05:00Z</wsu:Expires>"
            "</wsu:Timestamp></wsse:Security></soap:Header>"
            '<soap:Body><m:GetPrice xmlns:m="http://example.org/stock">'
            f'<m:Item xsi:type="xsd:string">{prose.phrase(1, 3)}</m:Item>'
            f"<m:Quantity>{rng.randint(1, 500)}</m:Quantity>"
            "</m:GetPrice></soap:Body></soap:Envelope>\n"
        )

    def context(number):
        return (
            f'<xbrli:context id="c{number % 400}"><xbrli:entity>'
            '<xbrli:identifier scheme="http://www.sec.gov/CIK">'
            f"{rng.randint(10**9, 10**10)}</xbrli:identifier><xbrli:segment>"
            f'<xbrldi:explicitMember dimension="us-gaap:{rng.choice(concepts)}Axis">'
            f"acme:{rng.choice(concepts)}Member</xbrldi:explicitMember>"
            "</xbrli:segment></xbrli:entity><xbrli:period>"
            "<xbrli:startDate>2025-01-01</xbrli:startDate><xbrli:endDate>2025-12-31</xbrli:endDate>"
            "</xbrli:period></xbrli:context>\n"
        )

    def fact():
        name = f"{rng.choice(prefixes)}:{rng.choice(concepts)}"
        common = f'<{name} contextRef="c{rng.randint(1, 400)}" unitRef="usd"'
        if rng.random() < 0.1:
            return f'{common} xsi:nil="true"/>\n'
        return f'{common} decimals="-3">{rng.randint(-10**9, 10**9)}</{name}>\n'

    def pieces():
        for number in itertools.count():
            for _ in range(12):
                yield fact()
            yield context(number)
            if number % 2 == 0:
                yield envelope(number)
            yield CLOSED

    declared = "".join(f' xmlns:{prefix}="http://fasb.org/{prefix}/2025"' for prefix in prefixes)
    head = (
        DECLARATION + '<xbrli:xbrl xmlns:xbrli="http://www.xbrl.org/2003/instance"'
        ' xmlns:xbrldi="http://xbrl.org/2006/xbrldi" xmlns:link="http://www.xbrl.org/2003/linkbase"'
        ' xmlns:xlink="http://www.w3.org/1999/xlink" xmlns:xsd="http://www.w3.org/2001/XMLSchema"'
        f' xmlns:xsi="http://www.w3.org/2001/XMLSchema-instance"{declared}>\n'
        '<link:schemaRef xlink:type="simple" xlink:href="acme-2025.xsd"/>\n'
    )
    return head, pieces(), "</xbrli:xbrl>\n"


def records(rng):
    prose = Prose(rng, LATIN)

    def row(number):
        fields = {
            "id": 100_000 + number % 900_000,
            "name": prose.title(2, 2),
            "email": prose.phrase(1, 1) + "@example.org",
            "city": prose.title(1, 2),
            "zip": rng.randint(10000, 99999),
            "amount": f"{rng.uniform(0, 9999):.2f}",
            "currency": "EUR",
            "date": f"2026-{rng.randint(1, 12):02}-{rng.randint(1, 28):02}",
            "active": rng.choice(("true", "false")),
            "note": prose.phrase(0, 6),
        }
        cells = "".join(f"    <{name}>{value}</{name}>\n" for name, value in fields.items())
        return f"  <row>\n{cells}  </row>\n"

    def pieces():
        for number in itertools.count(1):
            yield row(number)
            yield CLOSED

    return DECLARATION + "<table>\n", pieces(), "</table>\n"


def markup(rng):
    prose = Prose(rng, LATIN)
    inline = "literal function varname filename emphasis option command parameter".split()

    def link():
        target = f"https://example.org/{prose.phrase(1, 1)}?a=1&amp;b={rng.randint(1, 9)}"
        return f' <ulink url="{target}">{prose.phrase(1, 3)}</ulink>'

    def running(count):
        parts = []
        for _ in range(count):
            tag = rng.choice(inline)
            parts.append(f"{prose.phrase(2, 9)} <{tag}>{prose.phrase(1, 1)}</{tag}>")
            kind = rng.random()
            if kind < 0.1:
                parts.append(f' <xref linkend="{prose.phrase(1, 1)}-{rng.randint(1, 99)}"/>')
            elif kind < 0.2:
                parts.append(link())
            elif kind < 0.24:
                parts.append(f" {prose.phrase(1, 2)} &lt;{prose.phrase(1, 1)}&gt;")
            parts.append(",\n      " if kind > 0.6 else " ")
        return "".join(parts) + prose.phrase(1, 8) + "."

    def listing():
        code = "".join(
            f"  if ({prose.phrase(1, 1)} < {rng.randint(1, 99)} && !{prose.phrase(1, 1)}) return;\n"
            for _ in range(6)
        )
        return f'    <programlisting language="c"><![CDATA[{code}]]></programlisting>\n'

    def items():
        item = "".join(f"      <listitem><para>{running(2)}</para></listitem>\n" for _ in range(4))
        return f'    <itemizedlist spacing="compact">\n{item}    </itemizedlist>\n'

    def pieces():
        for number in itertools.count(1):
            yield f'  <section id="s{number % 1000}" role="{prose.phrase(1, 1)}">\n'
            yield f"    <title>{prose.title(2, 6)}</title>\n"
            for kind in range(8):
                yield f"    <para>{running(rng.randint(2, 9))}</para>\n"
                if kind == 2:
                    yield items()
                elif kind == 4:
                    yield listing()
                elif kind == 6:
                    yield f'    <!-- {prose.phrase(4, 20)} -->\n    <?dbfo keep-together="auto"?>\n'
            yield "  </section>\n"
            yield CLOSED

    return DECLARATION + '<book lang="en">\n', pieces(), "</book>\n"


def unicode_text(rng):
    russian, greek = Prose(rng, CYRILLIC), Prose(rng, GREEK)
    french = Prose(rng, LATIN, LATIN, LATIN, ACCENTS)

    def chinese(count):
        clauses = ("".join(rng.choices(CHINESE, k=rng.randint(4, 18))) for _ in range(count))
        return "，".join(clauses) + "。"

    def pieces():
        for number in itertools.count(1):
            yield f'<статья номер="{number % 1000}" заголовок="{russian.title(2, 6)}">\n'
            yield f"  <автор>{russian.title(2, 2)}</автор>\n"
            yield f"  <абзац>{russian.paragraph(rng.randint(2, 8))}</абзац>\n"
            marked = f"<выделение>{russian.phrase(1, 3)}</выделение>"
            yield f"  <абзац>{russian.paragraph(4)} {marked}.</абзац>\n"
            yield f'  <p xml:lang="zh">{chinese(rng.randint(3, 30))}</p>\n'
            yield f'  <entry key="{chinese(1)}" value="{chinese(2)}"/>\n'
            greek_text = greek.paragraph(rng.randint(2, 6))
            yield f'  <παράγραφος τίτλος="{greek.title(2, 5)}">{greek_text}</παράγραφος>\n'
            yield f"  <résumé>{french.paragraph(rng.randint(2, 5))}</résumé>\n</статья>\n"
            yield CLOSED

    return DECLARATION + "<собрание>\n", pieces(), "</собрание>\n"


def references(rng):
    prose = Prose(rng, LATIN)
    forms = ["&amp;", "&lt;", "&gt;", "&quot;", "&apos;"]
    forms += ["&#65;", "&#x42;", "&#233;", "&#x20AC;", "&#x1F600;"]

    def dense(count):
        return "".join(f"{prose.phrase(1, 2)}{rng.choice(forms)}" for _ in range(count))

    def pieces():
        while True:
            query = f"q={prose.phrase(1, 1)}&amp;page={rng.randint(1, 9)}&amp;size=20"
            yield f'<item code="{dense(rng.randint(0, 3))}" href="/find?{query}">'
            yield f"{dense(rng.randint(4, 30))}</item>\n"
            yield CLOSED

    return DECLARATION + "<items>\n", pieces(), "</items>\n"


def entities(rng):
    """Text with a general reference about every 40 bytes, to 50 entities that the subset declares.

    Most are text, some refer to others, four are markup and one is empty. The attributes refer to
    those without markup.
    """
    prose = Prose(rng, LATIN)
    simple = {f"{prose.words(1)[0]}{number}": prose.phrase(1, 12) for number in range(37)}
    names = list(simple)
    joined = {}
    for number in range(8):
        first, second = rng.sample(names, 2)
        joined[f"joined{number}"] = f"&{first};, {prose.phrase(1, 4)} &#38;amp; &{second};"
    marked = {}
    for number in range(4):
        inner = rng.choice(names)
        marked[f"marked{number}"] = f"<term id='t{number}'>{prose.phrase(1, 3)} &{inner};</term>"
    texts = {**simple, **joined, "nothing": ""}
    declared = {**texts, **marked}
    in_values, in_content = list(texts), list(declared)

    def dense(count, names):
        return "".join(f"{prose.phrase(3, 8)} &{rng.choice(names)}; " for _ in range(count))

    def pieces():
        for number in itertools.count(1):
            title = f"{prose.title(2, 5)} &{rng.choice(in_values)};"
            yield f'<article number="{number % 1000}" title="{title}">\n'
            for _ in range(rng.randint(1, 5)):
                yield f"  <p>{dense(rng.randint(2, 20), in_content)}</p>\n"
            yield "</article>\n"
            yield CLOSED

    lines = "".join(f'  <!ENTITY {name} "{value}">\n' for name, value in declared.items())
    return f"{DECLARATION}<!DOCTYPE journal [\n{lines}]>\n<journal>\n", pieces(), "</journal>\n"


def latin1(rng):
    # Names are ASCII: in ISO-8859-1 our reader takes no accented letters in them.
    prose = Prose(rng, LATIN, LATIN, LATIN, ACCENTS)

    def pieces():
        for number in itertools.count(1):
            yield f'<fiche numero="{number % 1000}" reference="{prose.phrase(1, 2)}">\n'
            yield f"  <titre>{prose.title(2, 6)}</titre>\n"
            yield f'  <prix devise="EUR">{rng.uniform(1, 99):.2f}</prix>\n'
            for _ in range(3):
                yield f"  <resume>{prose.paragraph(rng.randint(1, 6))}</resume>\n"
            yield "</fiche>\n"
            yield CLOSED

    head = '<?xml version="1.0" encoding="ISO-8859-1"?>\n<catalogue>\n'
    return head, pieces(), "</catalogue>\n"


def windows1251(rng):
    # No character above U+07FF: for these our reader has other text than its peers.
    prose = Prose(rng, CYRILLIC)

    def pieces():
        for number in itertools.count(1):
            yield f'<статья номер="{number % 1000}" заголовок="{prose.title(2, 6)}">\n'
            yield f'  <цена валюта="RUB">{rng.uniform(1, 99):.2f}</цена>\n'
            for _ in range(3):
                yield f"  <абзац>{prose.paragraph(rng.randint(1, 6))}</абзац>\n"
            yield "</статья>\n"
            yield CLOSED

    head = '<?xml version="1.0" encoding="windows-1251"?>\n<каталог>\n'
    return head, pieces(), "</каталог>\n"


def utf16(rng):
    prose, russian = Prose(rng, LATIN), Prose(rng, CYRILLIC)

    def pieces():
        for number in itertools.count(1):
            yield f'<article id="a{number % 1000}" title="{prose.title(2, 6)}">\n'
            yield f'  <price currency="EUR">{rng.uniform(1, 99):.2f}</price>\n'
            for _ in range(3):
                yield f"  <description>{prose.paragraph(rng.randint(1, 6))}</description>\n"
            yield f'  <описание язык="ru">{russian.paragraph(2)}</описание>\n</article>\n'
            yield CLOSED

    # The mark is part of the head; the codec below writes none.
    head = '\ufeff<?xml version="1.0" encoding="UTF-16"?>\n<catalogue>\n'
    return head, pieces(), "</catalogue>\n"


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
    "entities": (entities, 10 * MB, "utf-8"),
    "utf16le": (utf16, 20 * MB, "utf-16-le"),
    "latin1": (latin1, 20 * MB, "iso-8859-1"),
    "windows1251": (windows1251, 20 * MB, "cp1251"),
}


def icon(rng, _):
    def path():
        return " ".join(
            f"{rng.choice('MLHVCSQ')}{rng.uniform(0, 64):.2f} {rng.uniform(0, 64):.2f}"
            for _ in range(rng.randint(3, 40))
        )

    def pieces():
        while True:
            yield (
                f' <g id="g{rng.randint(1, 999)}" fill="#{rng.getrandbits(24):06x}">\n'
                f'  <path d="{path()}" stroke="none"/>\n'
                f'  <use xlink:href="#g{rng.randint(1, 999)}"/>\n </g>\n'
            )

    head = (
        '<svg xmlns="http://www.w3.org/2000/svg" xmlns:xlink="http://www.w3.org/1999/xlink" '
        'width="64" height="64" viewBox="0 0 64 64">\n'
    )
    return head, pieces(), "</svg>\n"


def feed(rng, prose):
    def pieces():
        while True:
            yield (
                f" <entry>\n  <title>{prose.title(3, 8)}</title>\n"
                f"  <id>urn:uuid:{rng.getrandbits(64):x}</id>\n"
                f'  <link rel="alternate" href="https://example.org/{rng.randint(1, 9999)}"/>\n'
                f"  <updated>2026-03-0{rng.randint(1, 9)}T10:00:00Z</updated>\n"
                f'  <summary type="html">&lt;p&gt;{prose.paragraph(2)}&lt;/p&gt;</summary>\n'
                " </entry>\n"
            )

    head = '<feed xmlns="http://www.w3.org/2005/Atom">\n <title>News</title>\n'
    return head, pieces(), "</feed>\n"


def settings(rng, prose):
    def pieces():
        while True:
            yield (
                f"  <property>\n    <name>{'.'.join(prose.words(3))}</name>\n"
                f"    <value>{rng.randint(0, 9999)}</value>\n"
                f"    <description>{prose.phrase(3, 12)}</description>\n  </property>\n"
            )

    return "<!-- settings -->\n<configuration>\n", pieces(), "</configuration>\n"


def build_description(rng, prose):
    def pieces():
        while True:
            yield (
                f"    <dependency>\n      <groupId>org.{prose.phrase(1, 1)}</groupId>\n"
                f"      <artifactId>{prose.phrase(1, 1)}-{prose.phrase(1, 1)}</artifactId>\n"
                f"      <version>{rng.randint(0, 9)}.{rng.randint(0, 20)}</version>\n"
                "      <scope>test</scope>\n    </dependency>\n"
            )

    head = (
        '<project xmlns="http://maven.apache.org/POM/4.0.0" '
        'xmlns:xsi="http://www.w3.org/2001/XMLSchema-instance" xsi:schemaLocation="'
        'http://maven.apache.org/POM/4.0.0 https://maven.apache.org/xsd/maven-4.0.0.xsd">\n'
        "  <dependencies>\n"
    )
    return head, pieces(), "  </dependencies>\n</project>\n"


# Each of the small documents is of one of these; they take a generator and prose.
SMALL_DOCUMENTS = (icon, feed, settings, build_description)


def small_document(rng, prose, number):
    """Returns a document of 1 to 20 KB, more often a short one."""
    size = int(1000 * 20 ** rng.random())
    head, pieces, foot = SMALL_DOCUMENTS[number % len(SMALL_DOCUMENTS)](rng, prose)
    parts, length = [DECLARATION, head], len(head)
    while length < size:
        parts.append(next(pieces))
        length += len(parts[-1])
    return "".join([*parts, foot]).encode()
