# SPDX-License-Identifier: MIT
"""What scripts/check-docs adds to Doxygen's settings, and how it checks the pages that come of it.

The navigation is that of docs/mainpage.md: a group for each heading with links to pages below it, in
their order. The look is that of the Debian package doxygen-awesome-css where that is installed.
"""

import html
import os
import re
import subprocess
from html.parser import HTMLParser
from pathlib import Path
from urllib.parse import unquote, urlsplit
from xml.sax.saxutils import quoteattr

STYLE = Path(os.environ.get("ESPALIER_DOXYGEN_STYLE", "/usr/share/doxygen-awesome-css"))
SHEETS = ("doxygen-awesome.css", "doxygen-awesome-sidebar-only.css",
          "doxygen-awesome-sidebar-only-darkmode-toggle.css")
SCRIPTS = {"doxygen-awesome-darkmode-toggle.js": "DoxygenAwesomeDarkModeToggle",
           "doxygen-awesome-fragment-copy-button.js": "DoxygenAwesomeFragmentCopyButton",
           "doxygen-awesome-paragraph-link.js": "DoxygenAwesomeParagraphLink",
           "doxygen-awesome-interactive-toc.js": "DoxygenAwesomeInteractiveToc"}
LINK = re.compile(r"^\| *\[([^\]]+)\]\(([^)]+\.md)\)")


def page_id(root, path):
    """Returns what Doxygen calls the page that it makes of a file."""
    name = path.resolve().relative_to(root).with_suffix("").as_posix()
    return "md_" + re.sub("[^A-Za-z0-9]", "_", name)


def groups_of_main_page(root):
    """Returns the headings of docs/mainpage.md, each with the titles and files of its links."""
    groups = []
    for line in (root / "docs/mainpage.md").read_text(encoding="utf-8").splitlines():
        if line.startswith("## "):
            groups.append((line[3:], []))
        match = LINK.match(line)
        if match and groups:
            groups[-1][1].append((match[1], root / "docs" / match[2]))
    return [group for group in groups if group[1]]


def pages_not_listed(root):
    """Returns a problem for each page of the guide to which docs/mainpage.md has no link."""
    listed = {path.resolve() for _, links in groups_of_main_page(root) for _, path in links}
    pages = {path.resolve() for path in root.glob("docs/*.md") if path.name != "mainpage.md"}
    return [f"docs/mainpage.md: no link to {page.relative_to(root)}"
            for page in sorted(pages - listed)]


def layout(root):
    """Returns a layout file of Doxygen with the groups of the main page and the interface."""
    tabs = ['<tab type="mainpage" visible="yes" title="Espalier"/>']
    for heading, links in groups_of_main_page(root):
        tabs.append(f'<tab type="usergroup" visible="yes" title={quoteattr(heading)}>')
        tabs += [f'<tab type="user" visible="yes" title={quoteattr(title)} '
                 f'url="@ref {page_id(root, path)}"/>' for title, path in links]
        tabs.append("</tab>")
    tabs += ['<tab type="pages" visible="no"/>',
             '<tab type="namespaces" visible="yes" title="The interface">',
             '<tab type="namespacelist" visible="yes" title="By namespace"/>',
             '<tab type="namespacemembers" visible="yes" title="Functions and constants"/>',
             "</tab>",
             '<tab type="classes" visible="yes" title="Classes">',
             '<tab type="classlist" visible="yes" title="All of them"/>',
             '<tab type="hierarchy" visible="yes" title="Bases"/>',
             '<tab type="classmembers" visible="yes" title="Members"/>',
             "</tab>",
             '<tab type="files" visible="yes" title="Headers">',
             '<tab type="filelist" visible="yes" title="All of them"/>',
             "</tab>"]
    return ('<doxygenlayout version="1.0">\n<navindex>\n' + "\n".join(tabs)
            + "\n</navindex>\n</doxygenlayout>\n")


def styled_header(out):
    """Returns the header of Doxygen's pages, with the scripts of the style in it."""
    names = [out / name for name in ("header.html", "footer.html", "doxygen.css")]
    subprocess.run(["doxygen", "-w", "html", *names], check=True, capture_output=True, cwd=out)
    lines = []
    for file, name in SCRIPTS.items():
        lines.append(f'<script type="text/javascript" src="$relpath^{file}"></script>')
        lines.append(f'<script type="text/javascript">{name}.init()</script>')
    header = names[0].read_text(encoding="utf-8")
    return header.replace("</head>", "\n".join(lines) + "\n</head>")


def settings(root, out):
    """Writes what the settings name into `out` and returns the settings."""
    (out / "layout.xml").write_text(layout(root), encoding="utf-8")
    lines = [f"LAYOUT_FILE = {out / 'layout.xml'}", f"STRIP_FROM_PATH += {root}"]
    if all((STYLE / file).is_file() for file in (*SHEETS, *SCRIPTS)):
        (out / "header.html").write_text(styled_header(out), encoding="utf-8")
        lines.append(f"HTML_HEADER = {out / 'header.html'}")
        lines += [f"HTML_EXTRA_STYLESHEET += {STYLE / file}" for file in SHEETS]
        lines.append(f"HTML_EXTRA_STYLESHEET += {root / 'docs/site.css'}")
        lines += [f"HTML_EXTRA_FILES += {STYLE / file}" for file in SCRIPTS]
    else:
        print(f"{STYLE}: no doxygen-awesome-css there, so the pages look plain")
    return "\n".join(lines) + "\n"


class Links(HTMLParser):
    """What a page links to, and what can be linked to in it."""

    def __init__(self, text):
        super().__init__()
        self.targets = set()
        self.links = []
        self.feed(text)

    def handle_starttag(self, tag, attributes):
        for name, value in attributes:
            if name == "id" or name == "name" and tag == "a":
                self.targets.add(value)
            elif name in ("href", "src") and value:
                self.links.append((self.getpos()[0], value))


def drop_links_to_private_classes(directory):
    """Doxygen links to the nested classes of a class also when these are private and not shown."""
    for path in directory.glob("*.html"):
        text = path.read_text(encoding="utf-8")
        if 'id="nested-classes"' not in text:
            dropped = re.sub(r'<a href="#nested-classes">.*\n', "", text)
            if dropped != text:
                path.write_text(dropped, encoding="utf-8")


def broken_links(directory):
    """Returns a problem for each link of the pages in `directory` that leads nowhere, and the number
    of links to files."""
    pages = {path.resolve(): Links(path.read_text(encoding="utf-8"))
             for path in sorted(directory.glob("**/*.html"))}
    count = 0
    problems = []
    for path, page in pages.items():
        shown = path.relative_to(directory.resolve())
        for line, link in page.links:
            parts = urlsplit(html.unescape(link))
            if parts.scheme or parts.netloc:
                continue
            count += 1
            target = (path.parent / unquote(parts.path)).resolve() if parts.path else path
            anchor = unquote(parts.fragment)
            if not target.exists():
                problems.append(f"{shown}:{line}: no such file: {link}")
            elif anchor and target in pages and anchor not in pages[target].targets:
                problems.append(f"{shown}:{line}: no such place: {link}")
    return problems, count
