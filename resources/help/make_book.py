#!/usr/bin/env python3
"""Makes the help book from its Markdown sources: one zip of HTML pages with contents and index.

The same sources give the same bytes. Pages are plain HTML without style sheets and in ASCII, for
wxHtmlWindow. What stands in docs/help/contents.txt is in the book, in that order; docs/guide.md
follows, a page for each of its chapters.
"""

import argparse
import html
import posixpath
import re
import subprocess
import sys
import zipfile
from dataclasses import dataclass, field
from pathlib import Path
from xml.etree import ElementTree

import markdown
from markdown.extensions import Extension
from markdown.treeprocessors import Treeprocessor

TITLE = "Tarn Help"
FIRST_TIME = (1980, 1, 1, 0, 0, 0)  # of every file: the earliest that a zip can hold
HEADER_COLOUR = "#dde6f0"
CODE_COLOUR = "#f0f0f0"
HEADINGS = ("h1", "h2", "h3", "h4")
# What many topics have: it would tell nothing in the index.
COMMON_HEADINGS = {"Buttons", "Fields", "Messages", "See also", "What to do", "What it shows"}
COMMON_BUTTONS = {"OK", "Cancel", "Help"}
# Stands in messages.md where the messages of all topics go.
MESSAGES_HERE = "<p>[All messages]</p>"


class BookError(Exception):
    pass


@dataclass
class Keyword:
    text: str
    target: str


@dataclass
class Page:
    name: str  # of the HTML file
    source: str  # of the Markdown, relative to docs/
    text: str
    level: int = 1
    contexts: list = field(default_factory=list)
    title: str = ""
    body: str = ""
    keywords: list = field(default_factory=list)
    messages: list = field(default_factory=list)
    anchors: set = field(default_factory=set)


def plain(element):
    return "".join(element.itertext()).strip()


class Book:
    def __init__(self, docs, converter):
        self.docs = docs
        self.converter = converter
        self.pages = []
        self.pictures = {}  # name in the book -> path
        self.guide_page_of = {}  # anchor -> page

    def add_topics(self):
        contents = self.docs / "help" / "contents.txt"
        for line in contents.read_text(encoding="utf-8").splitlines():
            if not line.strip() or line.startswith("#"):
                continue
            name, *contexts = line.split()
            level = 1 + (len(line) - len(line.lstrip())) // 2
            source = f"help/{name}.md"
            text = (self.docs / source).read_text(encoding="utf-8")
            numbers = [int(number) for number in contexts]
            self.pages.append(Page(f"{name}.html", source, text, level, numbers))

    def add_guide(self):
        guide = self.docs / "guide.md"
        if not guide.exists():
            return
        chapters = split_chapters(guide.read_text(encoding="utf-8"))
        used = set()
        for number, chapter in enumerate(chapters):
            # The chapters hang below the first page.
            page = Page(f"guide-{number:02}.html", "guide.md", chapter, 1 if number == 0 else 2)
            for anchor in heading_anchors(chapter, used):
                self.guide_page_of[anchor] = page.name
            self.pages.append(page)

    def render(self):
        for page in self.pages:
            renderer = PageRenderer(self, page)
            converter = markdown.Markdown(
                extensions=["tables", "fenced_code", "sane_lists", renderer], output_format="html"
            )
            page.body = finish_tables(converter.convert(with_wide_lists(page.text)))
            if not page.title:
                raise BookError(f"{page.source}: a page begins with a heading")
        for page in self.pages:
            if MESSAGES_HERE in page.body:
                page.body = page.body.replace(MESSAGES_HERE, self.message_table())

    def message_table(self):
        rows = sorted(
            ((m.text.casefold(), m.text, m.target, p) for p in self.pages for m in p.messages),
            key=lambda row: row[:3],
        )
        cells = [
            f'<tr><td valign="top"><a href="{target}">{html.escape(text)}</a></td>'
            f'<td valign="top">{html.escape(page.title)}</td></tr>'
            for _, text, target, page in rows
        ]
        head = f'<tr bgcolor="{HEADER_COLOUR}"><th align="left">Message</th><th align="left">Topic</th></tr>'
        return finish_tables(table_open() + head + "\n".join(cells) + "</table>")

    # Where a link of a page leads to in the book; None when that is not in it.
    def target_of(self, page, link):
        path, _, anchor = link.partition("#")
        source = posixpath.normpath(posixpath.join(posixpath.dirname(page.source), path))
        if not path:
            source = page.source
        if source == "guide.md":
            target = self.guide_page_of.get(anchor) if anchor else "guide-00.html"
            if target is None and any(p.source == "guide.md" for p in self.pages):
                raise BookError(f"{page.source}: no heading #{anchor} in {source}")
        else:
            target = next((p.name for p in self.pages if p.source == source), None)
        if target is None:
            return None
        return target + ("#" + anchor if anchor else "")

    # The name of a picture in the book.
    def picture(self, page, link):
        source = posixpath.normpath(posixpath.join(posixpath.dirname(page.source), link))
        path = self.docs / source
        if not path.exists():
            raise BookError(f"{page.source}: there is no picture {link}")
        name = f"pictures/{source.replace('/', '-').rpartition('.')[0]}.png"
        if self.pictures.setdefault(name, path) != path:
            raise BookError(f"{page.source}: two pictures would be {name}")
        return name

    def picture_bytes(self, path):
        if path.suffix == ".png":
            return path.read_bytes()
        return subprocess.run(
            [self.converter, "--format=png", str(path)], check=True, stdout=subprocess.PIPE
        ).stdout

    def files(self):
        files = {
            "tarn.hhp": project_file(self.pages[0].name),
            "tarn.hhc": sitemap(contents_entries(self.pages)),
            "tarn.hhk": sitemap(index_entries(self.pages)),
        }
        for page in self.pages:
            files[page.name] = (
                f"<html><head><title>{html.escape(page.title)}</title></head>\n"
                f'<body bgcolor="#ffffff" text="#000000" link="#1a4f9c">\n{page.body}\n</body></html>\n'
            )
        encoded = {n: text.encode("ascii", "xmlcharrefreplace") for n, text in files.items()}
        for name, path in self.pictures.items():
            encoded[name] = self.picture_bytes(path)
        return encoded


# The lines of a text, each with whether it is code between fences.
def marked_lines(text):
    in_code = False
    for line in text.splitlines():
        is_fence = line.startswith("```")
        yield line, in_code or is_fence
        in_code ^= is_fence


# The text up to the first "## ", with its list of contents, and from each to the next.
def split_chapters(text):
    chapters = [[]]
    for line, is_code in marked_lines(text):
        if line.startswith("## ") and line != "## Contents" and not is_code:
            chapters.append([])
        chapters[-1].append(line)
    return ["\n".join(chapter) for chapter in chapters]


# What continues an item of a numbered list is indented by three blanks; python-markdown wants four.
def with_wide_lists(text):
    return "\n".join(
        " " + line if re.match(" {3}[^ ]", line) and not is_code else line
        for line, is_code in marked_lines(text)
    )


# The anchors of the headings of a text, as a page on the web has them.
def heading_anchors(text, used):
    for line, is_code in marked_lines(text):
        heading = re.match(r"#{1,4} +(.+?)\s*#*$", line)
        if heading and not is_code:
            words = re.sub(r"\[([^]]*)\]\([^)]*\)", r"\1", heading[1])
            yield unique(slug(re.sub(r"[`*]", "", words)), used)


def slug(text):
    return re.sub(r"[^\w\- ]", "", text.lower()).replace(" ", "-")


def unique(name, used):
    number, free = 0, name
    while free in used:
        number += 1
        free = f"{name}-{number}"
    used.add(free)
    return free


def table_open():
    return '<table border="1" cellspacing="0" cellpadding="5">\n'


# Code in a box of its own, and room before every table.
def finish_tables(body):
    box = f'<table bgcolor="{CODE_COLOUR}" width="100%" cellpadding="6"><tr><td><pre>'
    body = re.sub(r"<pre><code[^>]*>", box, body)
    body = body.replace("\n</code></pre>", "</code></pre>").replace(
        "</code></pre>", "</pre></td></tr></table>"
    )
    # Else a table stands close to the text before it.
    return body.replace("<table", "<p></p><table")


class PageRenderer(Extension, Treeprocessor):
    """Gives a page the tags that wxHtmlWindow knows, and takes its title and keywords from it."""

    def __init__(self, book, page):
        Extension.__init__(self)
        self.book = book
        self.page = page

    def extendMarkdown(self, md):
        Treeprocessor.__init__(self, md)
        # After the inline patterns, which put the links and pictures into the tree.
        md.treeprocessors.register(self, "book", 0)

    def run(self, root):
        self.take_headings(root)
        for table in root.iter("table"):
            self.take_table(table)
        self.replace_links(root)
        for picture in root.iter("img"):
            picture.attrib = {"src": self.book.picture(self.page, picture.get("src"))}

    def take_headings(self, root):
        for element in list(root.iter()):
            if element.tag not in HEADINGS:
                continue
            text = plain(element)
            name = self.anchor(element, text)
            if not self.page.title:
                self.page.title = text
                element.tag = "h1"
                self.page.keywords.append(Keyword(text, self.page.name))
            elif text not in COMMON_HEADINGS:
                self.page.keywords.append(Keyword(text, f"{self.page.name}#{name}"))

    # Puts an anchor before what the element holds.
    def anchor(self, element, text):
        name = unique(slug(text), self.page.anchors)
        mark = ElementTree.Element("a", {"name": name})
        mark.tail, element.text = element.text, None
        element.insert(0, mark)
        return name

    def take_table(self, table):
        table.attrib = {"border": "1", "cellspacing": "0", "cellpadding": "5"}
        head = table.find("thead/tr")
        head.set("bgcolor", HEADER_COLOUR)
        is_messages = plain(head[0]) == "Message"
        for cell in table.iter("th"):
            cell.attrib = {"align": "left"}
        for row in table.iterfind("tbody/tr"):
            for cell in row:
                cell.attrib = {"valign": "top"}
                # An empty cell has no border.
                if not plain(cell) and len(cell) == 0:
                    cell.text = "\u00a0"
            self.take_first_cell(row[0], is_messages)

    def take_first_cell(self, cell, is_messages):
        text = plain(cell)
        is_term = len(cell) > 0 and cell[0].tag == "strong" and plain(cell[0]) == text
        if is_messages:
            text = text.strip('"')
            target = f"{self.page.name}#{self.anchor(cell, text)}"
            self.page.messages.append(Keyword(text, target))
        elif is_term and text not in COMMON_BUTTONS:
            target = f"{self.page.name}#{self.anchor(cell, text)}"
            self.page.keywords.append(Keyword(text.rstrip(":."), target))

    # A link to what is not in the book leaves its text.
    def replace_links(self, root):
        for link in root.iter("a"):
            href = link.get("href")
            if href is None:
                continue
            if re.match(r"[a-z]+:", href):
                if plain(link) != href:
                    link.tail = f" ({href})" + (link.tail or "")
                target = None
            else:
                target = self.book.target_of(self.page, href)
            if target is None:
                link.tag = "span"
                link.attrib = {}
            else:
                link.attrib = {"href": target}


def project_file(first_page):
    return (
        f"[OPTIONS]\nTitle={TITLE}\nDefault topic={first_page}\n"
        "Contents file=tarn.hhc\nIndex file=tarn.hhk\n"
    )


def entry(name, target, context=None):
    number = "" if context is None else f'<param name="ID" value="{context}">'
    return (
        '<li><object type="text/sitemap">'
        f'<param name="Name" value="{html.escape(name)}">'
        f'<param name="Local" value="{target}">{number}</object>'
    )


# Pairs of a level and an entry. A page of several numbers has an entry for each.
def contents_entries(pages):
    for page in pages:
        for context in page.contexts or [None]:
            yield page.level, entry(page.title, page.name, context)


def index_entries(pages):
    words = {(k.text, k.target) for page in pages for k in page.keywords}
    titles = {page.name: page.title for page in pages}
    counts = {}
    for text, _ in words:
        counts[text] = counts.get(text, 0) + 1
    for text, target in sorted(words, key=lambda word: (word[0].casefold(), word)):
        page = target.partition("#")[0]
        is_shared = counts[text] > 1 and titles[page] != text
        yield 1, entry(f"{text} ({titles[page]})" if is_shared else text, target)


def sitemap(entries):
    lines, depth = ["<html><body>"], 0
    for level, text in entries:
        lines += ["<ul>"] * (level - depth) + ["</ul>"] * (depth - level) + [text]
        depth = level
    return "\n".join(lines + ["</ul>"] * depth + ["</body></html>", ""])


def write_zip(files, output):
    with zipfile.ZipFile(output, "w") as book:
        for name in sorted(files):
            info = zipfile.ZipInfo(name, FIRST_TIME)
            info.compress_type = zipfile.ZIP_DEFLATED
            info.create_system = 3
            info.external_attr = 0o100644 << 16
            book.writestr(info, files[name], compresslevel=9)


def main():
    parser = argparse.ArgumentParser(description="Makes the help book.")
    parser.add_argument("--docs", type=Path, required=True, help="the folder docs/")
    parser.add_argument("--rsvg-convert", default="rsvg-convert", help="turns SVG into PNG")
    parser.add_argument("output", type=Path)
    arguments = parser.parse_args()
    book = Book(arguments.docs, arguments.rsvg_convert)
    book.add_topics()
    book.add_guide()
    book.render()
    write_zip(book.files(), arguments.output)


if __name__ == "__main__":
    try:
        main()
    except BookError as error:
        sys.exit(f"make_book.py: {error}")
