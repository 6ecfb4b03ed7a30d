#!/usr/bin/env python3
"""Checks the links, anchors and pictures of the documentation.

    check_links.py ROOT                 *.md in ROOT and below ROOT/docs and examples
    check_links.py ROOT FOLDER...       those, and the HTML pages below each FOLDER

A relative link has to name a file or folder that is there, in the same letters, and within ROOT (of
a page: within its FOLDER); an anchor has to be a heading of the file, or an id or name of the page.
Links to other places (https:, mailto:) are not followed. Text in code is no link. Contents and
index of a help book (*.hhc, *.hhk) count as pages: their "Local" parameters are links.
"""

import html.parser
import os
import pathlib
import re
import sys
import urllib.parse

ELSEWHERE = re.compile(r"[A-Za-z][A-Za-z0-9+.-]+:")
FENCE = re.compile(r"^\s*(```+|~~~+)")
CODE = re.compile(r"(`+)(?!`).*?(?<!`)\1(?!`)")
LINK = re.compile(r"\]\(\s*(<[^>]*>|[^\s)]*)(?:\s+\"[^\"]*\"|\s+'[^']*')?\s*\)")
REFERENCE = re.compile(r"^\s{0,3}\[[^\]]+\]:\s*(\S+)")
USE = re.compile(r"\[([^\]]+)\]\[([^\]]*)\]")
NAME = re.compile(r"^\s{0,3}\[([^\]]+)\]:")
HEADING = re.compile(r"^ {0,3}#{1,6}\s+(.*?)\s*#*\s*$")
PAGES = (".html", ".htm", ".hhc", ".hhk")


class Tags(html.parser.HTMLParser):
    """Links and anchors of HTML, a whole page or tags within Markdown."""

    def __init__(self):
        super().__init__()
        self.links = []  # line, target
        self.anchors = set()

    def handle_starttag(self, tag, attrs):
        values = dict(attrs)
        for name in ("href", "src"):
            if values.get(name):
                self.links.append((self.getpos()[0], values[name]))
        if tag == "param" and (values.get("name") or "").lower() == "local" and values.get("value"):
            self.links.append((self.getpos()[0], values["value"]))
        for name in ("id", "name") if tag != "param" else ():
            if values.get(name):
                self.anchors.add(values[name])


def slug(heading):
    """The anchor of a heading, as web sites that show Markdown make it."""
    text = re.sub(r"!?\[([^\]]*)\]\([^)]*\)", r"\1", heading)
    text = re.sub(r"[^\w\- ]", "", text.strip().lower())
    return text.replace(" ", "-")


def read_markdown(text):
    links, anchors, seen = [], set(), {}
    names, uses = set(), []
    outside = []  # the text without what is in code
    fence = None
    for number, line in enumerate(text.splitlines(), 1):
        mark = FENCE.match(line)
        if mark and (fence is None or mark[1].startswith(fence)):
            fence = mark[1] if fence is None else None
            outside.append("")
            continue
        if fence is not None:
            outside.append("")
            continue
        heading = HEADING.match(line)
        if heading:
            anchor = slug(heading[1])
            seen[anchor] = seen.get(anchor, -1) + 1
            anchors.add(anchor if seen[anchor] == 0 else f"{anchor}-{seen[anchor]}")
        line = CODE.sub("", line)
        outside.append(line)
        links += [(number, target.strip("<>")) for target in LINK.findall(line)]
        links += [(number, target.strip("<>")) for target in REFERENCE.findall(line)]
        names.update(name.lower() for name in NAME.findall(line))
        uses += [(number, (second or first).lower()) for first, second in USE.findall(line)]
    tags = Tags()
    tags.feed("\n".join(outside))
    undefined = [(number, name) for number, name in uses if name not in names]
    return links + tags.links, anchors | tags.anchors, undefined


def read_page(text):
    tags = Tags()
    tags.feed(text)
    return tags.links, tags.anchors, []


class Checker:
    def __init__(self):
        self.errors = []
        self.count = 0
        self._read = {}

    def content(self, path):
        if path not in self._read:
            text = path.read_text(encoding="utf-8")
            self._read[path] = (read_markdown if path.suffix == ".md" else read_page)(text)
        return self._read[path]

    def check(self, path, top):
        """All links of one file; none of them may lead out of `top`."""
        links, _, undefined = self.content(path)
        for line, name in undefined:
            self.errors.append(f"{path}:{line}: [{name}] is not defined")
        for line, target in links:
            if ELSEWHERE.match(target):
                continue
            self.count += 1
            wrong = self._wrong(path, top, target)
            if wrong:
                self.errors.append(f"{path}:{line}: {target or 'an empty link'}: {wrong}")

    def _wrong(self, path, top, target):
        name, _, anchor = target.partition("#")
        name = urllib.parse.unquote(name)
        if not name and not anchor:
            return "leads nowhere"
        if name.startswith("/"):
            return "not a relative link"
        place = pathlib.Path(os.path.normpath(path.parent / name)) if name else path
        if place != top and top not in place.parents:
            return "leads out"
        if not has_these_letters(place, top):
            return "not there"
        if not anchor:
            return ""
        if place.suffix not in (".md",) + PAGES:
            return "anchors are in texts alone"
        known = self.content(place)[1]
        return "" if urllib.parse.unquote(anchor) in known else "no such anchor"


def has_these_letters(place, top):
    """Whether it is there under this very name, also where the system does not tell cases apart."""
    while place != top:
        if not place.parent.is_dir() or place.name not in os.listdir(place.parent):
            return False
        place = place.parent
    return True


def main(arguments):
    if not arguments:
        print(__doc__)
        return 2
    checker = Checker()
    root = pathlib.Path(arguments[0]).resolve()
    files = [(path, root) for pattern in ("*.md", "docs/**/*.md", "examples/**/*.md")
             for path in sorted(root.glob(pattern))]
    for folder in (pathlib.Path(name).resolve() for name in arguments[1:]):
        pages = [path for path in sorted(folder.rglob("*")) if path.suffix in PAGES]
        if not pages:
            checker.errors.append(f"{folder}: no pages")
        files += [(path, folder) for path in pages]
    for path, top in files:
        checker.check(path, top)
    if checker.count == 0:
        checker.errors.append(f"{root}: no links")
    for error in checker.errors:
        print(error)
    print(f"{len(files)} files, {checker.count} links: {len(checker.errors)} wrong")
    return 1 if checker.errors else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
