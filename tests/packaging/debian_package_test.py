"""The Debian package of this build: what the packing makes of an installation."""

import pathlib
import re
import subprocess
import tempfile
import unittest

from support import MADE, PackagingTest, run


class DebianPackage(PackagingTest):
    @classmethod
    def setUpClass(cls):
        cls.packed = tempfile.TemporaryDirectory()
        folder = pathlib.Path(cls.packed.name)
        subprocess.run(
            ["cpack", "-G", "DEB", "-B", folder],
            cwd=MADE.parent,
            check=True,
            stdout=subprocess.DEVNULL,
        )
        (cls.package,) = folder.glob("tarn_*.deb")
        cls.tree = folder / "tree"
        subprocess.run(["dpkg-deb", "--raw-extract", cls.package, cls.tree], check=True)

    @classmethod
    def tearDownClass(cls):
        cls.packed.cleanup()

    def test_lintian_is_content(self):
        self.passes("lintian", "--fail-on", "error,warning", str(self.package))

    def test_lintian_finds_a_mistake(self):
        tree = self.folder / "tree"
        subprocess.run(["cp", "-a", self.tree, tree], check=True)
        (tree / "usr/share/doc/tarn/copyright").unlink()
        spoiled = self.folder / self.package.name
        subprocess.run(["dpkg-deb", "--build", "--root-owner-group", tree, spoiled], check=True,
                       stdout=subprocess.DEVNULL)
        self.fails("no-copyright-file", "lintian", "--fail-on", "error,warning", str(spoiled))

    def test_sums_are_those_of_its_files(self):
        sums = (self.tree / "DEBIAN" / "md5sums").read_text(encoding="utf-8")
        files = {path.relative_to(self.tree).as_posix() for path in (self.tree / "usr").rglob("*")
                 if path.is_file()}
        self.assertEqual({line.split("  ", 1)[1] for line in sums.splitlines()}, files)
        self.passes("md5sum", "--check", "--quiet", "DEBIAN/md5sums", folder=self.tree)

    def test_depends_on_the_libraries_of_its_programs(self):
        control = (self.tree / "DEBIAN" / "control").read_text(encoding="utf-8")
        depends = re.search("^Depends: (.+)$", control, re.MULTILINE)[1]
        for library in ("libc6", "libfmt", "libwxgtk3.2"):
            self.assertIn(library, depends)

    def test_holds_programs_that_run(self):
        version = re.search(r"_(.+)_", self.package.name)[1]
        for program in ("tarn", "tarn-cli"):
            status, said = run(str(self.tree / "usr" / "bin" / program), "--version")
            self.assertEqual((status, said), (0, f"{program} {version}\n"))


if __name__ == "__main__":
    unittest.main()
