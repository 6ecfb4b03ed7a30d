#!/usr/bin/env python3
"""What an installation puts where, and that it works from there."""

import pathlib
import subprocess
import sys
import tempfile
import unittest

from support import MADE, ROOT, run

CHECK_LINKS = ROOT / "tests" / "docs" / "check_links.py"
FILES = """
bin/tarn
bin/tarn-cli
share/applications/tarn.desktop
share/bash-completion/completions/tarn
share/bash-completion/completions/tarn-cli
share/doc/tarn/SECURITY.md
share/doc/tarn/changelog.gz
share/doc/tarn/copyright
share/doc/tarn/docs/guide.md
share/doc/tarn/docs/guide/transfer-functions.svg
share/doc/tarn/docs/windows/start-up.png
share/doc/tarn/examples/iris/iris.net
share/doc/tarn/examples/iris/iris.txt
share/doc/tarn/examples/surface/make_surface.py
share/doc/tarn/examples/xor/xor.net
share/fish/vendor_completions.d/tarn-cli.fish
share/fish/vendor_completions.d/tarn.fish
share/icons/hicolor/128x128/apps/tarn.png
share/icons/hicolor/48x48/apps/tarn.png
share/icons/hicolor/scalable/apps/tarn.svg
share/man/man1/tarn-cli.1.gz
share/man/man1/tarn.1.gz
share/metainfo/tarn.metainfo.xml
share/mime/packages/tarn.xml
share/tarn/TARN.HLP
share/zsh/vendor-completions/_tarn
share/zsh/vendor-completions/_tarn-cli
""".split()


class Installation(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = tempfile.TemporaryDirectory()
        cls.prefix = pathlib.Path(cls.folder.name) / "prefix"
        subprocess.run(
            ["cmake", "--install", MADE.parent, "--prefix", cls.prefix],
            check=True,
            stdout=subprocess.DEVNULL,
        )

    @classmethod
    def tearDownClass(cls):
        cls.folder.cleanup()

    def test_holds_every_file(self):
        found = {str(path.relative_to(self.prefix)) for path in self.prefix.rglob("*")}
        self.assertEqual(set(FILES) - found, set())

    def test_holds_nothing_of_the_sources_alone(self):
        names = {path.name for path in self.prefix.rglob("*")}
        self.assertEqual(names & {"draw.py", "performance.md", "__pycache__", "HACKING.md"}, set())

    def test_links_of_its_documentation_lead_somewhere(self):
        status, said = run(sys.executable, str(CHECK_LINKS), str(self.prefix / "share/doc/tarn"))
        self.assertEqual(status, 0, said)

    def test_trains_its_example(self):
        program = self.prefix / "bin" / "tarn-cli"
        iris = self.prefix / "share/doc/tarn/examples/iris/iris.net"
        status, said = run(str(program), "train", str(iris), "--no-save", "--iterations", "10")
        self.assertEqual(status, 0, said)
        self.assertIn("\n10 ", said)


if __name__ == "__main__":
    unittest.main()
