"""The texts that packaging/texts makes say what CHANGELOG.md and LICENSE say."""

import re
import shutil
import unittest

from support import MADE, PACKAGING, ROOT, PackagingTest

MAINTAINER = "Tarn contributors"
NEW_YEAR = "1767225600"  # 2026

CHANGES = """# Changelog

Words before.

## [Unreleased]

### Added
- A thing with `code`,
  in two lines.

## [1.0.0] - 2025-02-03

- The first & the last.
"""


class Texts(PackagingTest):
    def made(self, kind, changes=CHANGES, version="1.1.0"):
        """The text out of another changelog."""
        tree = self.folder / "tree"
        shutil.copytree(PACKAGING, tree / "packaging")
        shutil.copy(ROOT / "LICENSE", tree)
        (tree / "CHANGELOG.md").write_text(changes, encoding="utf-8")
        return (tree / "packaging" / "texts", kind, version, NEW_YEAR, MAINTAINER)

    def test_changelog_holds_every_release(self):
        self.assertEqual(self.passes(*self.made("changelog")), (
            "tarn (1.1.0) stable; urgency=medium\n\n"
            "  * A thing with code, in two lines.\n\n"
            " -- Tarn contributors  Thu, 01 Jan 2026 00:00:00 +0000\n\n"
            "tarn (1.0.0) stable; urgency=medium\n\n"
            "  * The first & the last.\n\n"
            " -- Tarn contributors  Mon, 03 Feb 2025 00:00:00 +0000\n"))

    def test_metainfo_holds_every_release(self):
        text = self.passes(*self.made("metainfo"))
        self.assertEqual(re.findall(r'<release version="(.+)" date="(.+)">', text),
                         [("1.1.0", "2026-01-01"), ("1.0.0", "2025-02-03")])
        self.assertEqual(re.findall("<li>(.+)</li>", text.partition("<releases>")[2]),
                         ["A thing with code, in two lines.", "The first &amp; the last."])

    def test_are_refused_for_a_version_that_has_been_released(self):
        self.fails("the newest release is not 1.0.0", *self.made("changelog", version="1.0.0"))

    def test_are_refused_for_a_heading_that_is_no_release(self):
        changes = CHANGES.replace(" - 2025-02-03", "")
        self.fails("'## [1.0.0]' is none of", *self.made("metainfo", changes))

    def test_copyright_holds_the_licence(self):
        text = self.passes(*self.made("copyright"))
        self.assertIn("\nCopyright: 2026 Tarn contributors\nLicense: Expat\n Permission", text)
        words = (ROOT / "LICENSE").read_text(encoding="utf-8").partition("contributors")[2].split()
        license, _, others = text.partition("Expat\n")[2].partition("\n\n")
        self.assertEqual(license.replace("\n .\n", "\n").split(), words)
        self.assertEqual(re.findall("^License: (.+)$", others, re.MULTILINE),
                         ["BSD-3-Clause", "Apache-2.0"])

    def test_copyright_names_the_libraries_that_are_compiled_in(self):
        head = self.passes(*self.made("copyright")).partition("\n\n")[0]
        sources = [path.read_text(encoding="utf-8") for path in (ROOT / "src").rglob("*.[ch]*")]
        for name, include in (("CLI11", "#include <CLI/"), ("Highway", "#include <hwy/")):
            self.assertTrue(any(include in text for text in sources), name)
            self.assertIn(f"\n {name}, under the license", head)

    def test_of_this_tree_hold_its_changes(self):
        changes = re.findall(r"^- (.+)$", (ROOT / "CHANGELOG.md").read_text(encoding="utf-8"),
                             re.MULTILINE)
        text = (MADE / "changelog").read_text(encoding="utf-8")
        self.assertEqual(len(re.findall(r"^  \* ", text, re.MULTILINE)), len(changes))
        metainfo = (MADE / "tarn.metainfo.xml").read_text(encoding="utf-8")
        self.assertEqual(len(re.findall("<li>", metainfo.partition("<releases>")[2])), len(changes))


if __name__ == "__main__":
    unittest.main()
