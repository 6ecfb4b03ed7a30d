#!/usr/bin/env python3
"""Tests the help book as it was built: book_test.py BOOK SOURCES BUILDER, with unittest's options."""

import html
import html.parser
import re
import subprocess
import sys
import tempfile
import unittest
import zipfile
from pathlib import Path


class Reader(html.parser.HTMLParser):
    def __init__(self, text):
        super().__init__()
        self.links, self.pictures, self.anchors, self.tags, self.words = [], [], [], set(), []
        self.feed(text)

    def handle_starttag(self, tag, attrs):
        attributes = dict(attrs)
        self.tags.add(tag)
        if tag == "a" and "name" in attributes:
            self.anchors.append(attributes["name"])
        if tag == "a" and "href" in attributes:
            self.links.append(attributes["href"])
        if tag == "img":
            self.pictures.append(attributes["src"])

    def handle_data(self, data):
        self.words.append(data)

    @property
    def text(self):
        return re.sub(r"\s+", " ", "".join(self.words))


# The entries of a contents or index file: name, page and number, which may be None.
def entries_of(text):
    entries = []
    for entry in re.findall(r"<object.*?</object>", text, re.DOTALL):
        parameters = dict(re.findall(r'<param name="(\w+)" value="([^"]*)">', entry))
        number = int(parameters["ID"]) if "ID" in parameters else None
        entries.append((html.unescape(parameters["Name"]), parameters["Local"], number))
    return entries


# The texts of a messages.h.
def messages_in(header):
    pattern = r"string_view k\w+ =\s*((?:\"(?:[^\"\\]|\\.)*\"\s*)+);"
    return [
        "".join(re.findall(r'"((?:[^"\\]|\\.)*)"', quoted)).replace('\\"', '"')
        for quoted in re.findall(pattern, header)
    ]


class BookTest(unittest.TestCase):
    maxDiff = None

    @classmethod
    def setUpClass(cls):
        cls.archive = zipfile.ZipFile(cls.book)
        cls.names = cls.archive.namelist()
        cls.pages = {n: Reader(cls.read(n)) for n in cls.names if n.endswith(".html")}
        cls.contents = entries_of(cls.read("tarn.hhc"))
        cls.index = entries_of(cls.read("tarn.hhk"))

    @classmethod
    def read(cls, name):
        return cls.archive.read(name).decode("ascii")

    def exists(self, target):
        page, _, anchor = target.partition("#")
        return page in self.pages and (not anchor or anchor in self.pages[page].anchors)

    def test_every_context_number_has_one_topic(self):
        header = (self.sources / "src/app/dialogs.h").read_text(encoding="utf-8")
        topics = re.search(r"enum class HelpTopic : int \{(.*?)\}", header, re.DOTALL)[1]
        wanted = {int(number) for number in re.findall(r"= (\d+)", topics)}
        self.assertEqual(len(wanted), 12)
        numbers = [number for _, _, number in self.contents if number is not None]
        self.assertEqual(sorted(numbers), sorted(wanted))

    def test_the_project_names_files_that_are_there(self):
        project = dict(line.split("=", 1) for line in self.read("tarn.hhp").splitlines()[1:])
        for key in ("Contents file", "Index file", "Default topic"):
            self.assertIn(project[key], self.names)

    def test_every_page_is_in_the_contents_and_every_entry_has_its_page(self):
        self.assertEqual(sorted({page for _, page, _ in self.contents}), sorted(self.pages))
        for name, target, _ in self.index:
            self.assertTrue(self.exists(target), f"{name}: {target}")
        self.assertGreater(len(self.index), 100)

    def test_every_link_leads_to_a_place_of_the_book(self):
        links = [(name, link) for name, page in self.pages.items() for link in page.links]
        self.assertGreater(len(links), 100)
        for name, link in links:
            target = name + link if link.startswith("#") else link
            self.assertTrue(self.exists(target), f"{name}: {link}")

    def test_every_picture_is_there_as_png_and_is_shown(self):
        shown = {picture for page in self.pages.values() for picture in page.pictures}
        held = {name for name in self.names if name.startswith("pictures/")}
        self.assertEqual(shown, held)
        for name in held:
            self.assertTrue(self.archive.read(name).startswith(b"\x89PNG\r\n"), name)

    def test_every_topic_with_a_number_has_a_picture(self):
        for name, page, number in self.contents:
            if number is not None:
                self.assertTrue(self.pages[page].pictures, name)

    def test_anchors_are_unique_within_a_page(self):
        for name, page in self.pages.items():
            self.assertEqual(len(page.anchors), len(set(page.anchors)), name)

    def test_pages_have_no_tags_that_the_window_does_not_show(self):
        known = set(
            "html head title body h1 h2 h3 h4 p br hr a img ul ol li table thead tbody tr th td "
            "strong em b i code pre span blockquote".split()
        )
        for name, page in self.pages.items():
            self.assertLessEqual(page.tags, known, name)

    # Where a message is completed by the program, anything may stand.
    def test_every_message_of_the_program_is_explained(self):
        text = " ".join(page.text for page in self.pages.values())
        headers = sorted((self.sources / "src").glob("**/messages.h"))
        self.assertGreaterEqual(len(headers), 8)
        missing, checked = [], 0
        for header in headers:
            for message in messages_in(header.read_text(encoding="utf-8")):
                words = [re.escape(part) for part in re.split(r"%[ds](?:%%)?", message.strip())]
                checked += 1
                if not re.search(r".{1,40}?".join(words), text):
                    missing.append(f"{header.parent.name}: {message}")
        self.assertGreater(checked, 100)
        self.assertEqual(missing, [])

    def test_the_same_sources_make_the_same_bytes(self):
        with tempfile.TemporaryDirectory() as folder:
            again = Path(folder) / "again.hlp"
            docs = ["--docs", self.sources / "docs"]
            subprocess.run([sys.executable, self.builder, *docs, again], check=True)
            self.assertEqual(again.read_bytes(), Path(self.book).read_bytes())


if __name__ == "__main__":
    BookTest.book, sources, BookTest.builder = sys.argv[1:4]
    BookTest.sources = Path(sources)
    unittest.main(argv=[sys.argv[0], *sys.argv[4:]])
