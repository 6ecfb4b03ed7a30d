"""The desktop is told about the program and its files in forms that it accepts."""

import shutil
import unittest

from support import MADE, PACKAGING, ROOT, PackagingTest, run

DESKTOP_FILE = PACKAGING / "desktop" / "tarn.desktop"
MIME_TYPE = PACKAGING / "desktop" / "tarn-mime.xml"
METAINFO = MADE / "tarn.metainfo.xml"
ICON = ROOT / "resources" / "tarn.svg"

# There is no domain that the name could begin with.
APPSTREAM = ("appstreamcli", "validate", "--no-net", "--no-color",
             "--override=cid-desktopapp-is-not-rdns=info")


class DesktopFile(PackagingTest):
    def test_is_valid(self):
        self.assertEqual(self.passes("desktop-file-validate", DESKTOP_FILE), "")

    def test_is_not_with_a_category_that_there_is_not(self):
        self.fails("Sciences", "desktop-file-validate",
                   self.spoiled(DESKTOP_FILE, "Science;", "Sciences;"))

    def test_opens_files_of_the_type(self):
        text = DESKTOP_FILE.read_text(encoding="utf-8")
        self.assertIn("\nExec=tarn %f\n", text)
        self.assertIn("\nMimeType=application/x-tarn-network;\n", text)


class MimeType(PackagingTest):
    def type_of(self, file, definition=MIME_TYPE):
        """As the desktop would answer where the definition is installed alone."""
        packages = self.folder / "share" / "mime" / "packages"
        packages.mkdir(parents=True)
        shutil.copy(definition, packages / "tarn.xml")
        self.passes("update-mime-database", packages.parent)
        _, text = run("gio", "info", "-a", "standard::content-type", file,
                      XDG_DATA_HOME=str(self.folder / "share"), XDG_DATA_DIRS=str(self.folder))
        return text.partition("standard::content-type: ")[2].strip()

    def test_is_known_by_its_name(self):
        file = self.folder / "begun.net"
        file.write_text("Not much yet\n", encoding="utf-8")
        text = self.passes("xmllint", "--noout", MIME_TYPE)
        self.assertEqual(text, "")
        self.assertEqual(self.type_of(file), "application/x-tarn-network")

    def test_is_known_by_its_first_line(self):
        file = self.folder / "network"
        shutil.copy(ROOT / "examples" / "iris" / "iris.net", file)
        self.assertEqual(self.type_of(file), "application/x-tarn-network")

    def test_is_not_that_of_other_files(self):
        file = self.folder / "notes"
        file.write_text("A text\n", encoding="utf-8")
        self.assertEqual(self.type_of(file), "text/plain")

    def test_is_not_known_when_the_magic_is_spoiled(self):
        file = self.folder / "network"
        shutil.copy(ROOT / "examples" / "iris" / "iris.net", file)
        self.assertEqual(self.type_of(file, self.spoiled(MIME_TYPE, "TARNV", "TABULO")),
                         "text/plain")

    def test_is_refused_when_it_is_no_xml(self):
        spoiled = self.spoiled(MIME_TYPE, "</mime-type>", "")
        self.fails("tag mismatch", "xmllint", "--noout", spoiled)


class Metainfo(PackagingTest):
    def test_is_valid(self):
        self.passes(*APPSTREAM, METAINFO)

    def test_is_not_without_its_summary(self):
        self.fails("summary", *APPSTREAM, self.spoiled(
            METAINFO, "<summary>Train feed-forward neural networks on your own data</summary>", ""))

    def test_is_not_with_a_category_that_there_is_not(self):
        self.fails("category-invalid", *APPSTREAM, self.spoiled(
            METAINFO, "<category>Science<", "<category>Sciences<"))


class Icon(PackagingTest):
    def test_is_a_picture(self):
        self.assertEqual(self.passes("xmllint", "--noout", ICON), "")
        for size in (48, 128):
            data = (MADE / f"tarn-{size}.png").read_bytes()
            self.assertEqual(data[:8], b"\x89PNG\r\n\x1a\n")
            self.assertEqual([int.from_bytes(data[at:at + 4], "big") for at in (16, 20)],
                             [size, size])


if __name__ == "__main__":
    unittest.main()
