"""The desktop is told about the program and its files in forms that it accepts."""

import re
import shutil
import unittest
import zlib

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


def png_pixels(data):
    """The pixels of a PNG of 8 bits for each of red, green, blue and, in some, opacity."""
    header, packed, at = None, b"", 8
    while at < len(data):
        length, kind = int.from_bytes(data[at:at + 4], "big"), data[at + 4:at + 8]
        content = data[at + 8:at + 8 + length]
        header = content if kind == b"IHDR" else header
        packed += content if kind == b"IDAT" else b""
        at += 12 + length
    size = {bytes([8, 2, 0, 0, 0]): 3, bytes([8, 6, 0, 0, 0]): 4}[header[8:]]
    stride = size * int.from_bytes(header[:4], "big")
    raw, above = zlib.decompress(packed), bytes(stride)
    for start in range(0, len(raw), 1 + stride):
        row = bytearray(raw[start + 1:start + 1 + stride])
        for i in range(stride):
            left, corner = (row[i - size], above[i - size]) if i >= size else (0, 0)
            # The neighbour nearest to what all three make of it.
            paeth = min((left, above[i], corner), key=lambda x: abs(left + above[i] - corner - x))
            guess = [0, left, above[i], (left + above[i]) // 2, paeth][raw[start]]
            row[i] = (row[i] + guess) % 256
        yield from (bytes(row[i:i + size]) for i in range(0, stride, size))
        above = row


def png_colours(data):
    """The colours of the pixels that nothing shines through."""
    return {pixel[:3] for pixel in png_pixels(data) if pixel[3:] in (b"", b"\xff")}


class Icon(PackagingTest):
    def picture_of(self, drawing):
        """The picture of the icon when this is all that it draws."""
        icon = self.folder / "icon.svg"
        icon.write_text(re.sub(r"(<svg[^>]*>).*(</svg>)", rf"\1{drawing}\2",
                               ICON.read_text(encoding="utf-8"), flags=re.DOTALL), encoding="utf-8")
        self.assertEqual(self.passes("xmllint", "--noout", icon), "")
        picture = self.folder / "icon.png"
        self.passes("rsvg-convert", "-w", "48", "-h", "48", "-o", picture, icon)
        return picture.read_bytes()

    def test_is_a_picture(self):
        self.assertEqual(self.passes("xmllint", "--noout", ICON), "")
        for size in (48, 128):
            data = (MADE / f"tarn-{size}.png").read_bytes()
            self.assertEqual(data[:8], b"\x89PNG\r\n\x1a\n")
            self.assertEqual([int.from_bytes(data[at:at + 4], "big") for at in (16, 20)],
                             [size, size])
            self.assertGreater(len(png_colours(data)), 1)

    def test_is_not_without_its_drawing(self):
        self.assertEqual(png_colours(self.picture_of("")), set())
        self.assertEqual(png_colours(self.picture_of('<path fill="#16425b" d="M0 0h64v64H0z"/>')),
                         {bytes.fromhex("16425b")})


if __name__ == "__main__":
    unittest.main()
