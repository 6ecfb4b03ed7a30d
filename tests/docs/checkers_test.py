#!/usr/bin/env python3
"""What run_guide.py and check_links.py have to find in a guide and in links that are wrong."""

import contextlib
import io
import pathlib
import tempfile
import unittest

import check_links
import run_guide


class Checks(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory(prefix="tarn-docs-")
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)

    def write(self, name, text):
        path = self.folder / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(text, encoding="utf-8")
        return path

    @staticmethod
    def run_script(script, *arguments):
        """Its status and what it prints."""
        output = io.StringIO()
        with contextlib.redirect_stdout(output):
            status = script.main([str(argument) for argument in arguments])
        return status, output.getvalue()


class GuideTest(Checks):
    """A script stands in for the program: only its name matters here."""

    def guide(self, text, *options):
        program = self.write("other-name", '#!/bin/sh\necho "got $*"\n')
        program.chmod(0o755)
        self.write("examples/a/data.txt", "1 2\n")
        guide = self.write("guide.md", text)
        return self.run_script(run_guide, guide, program, self.folder / "examples", *options)

    def assert_refused(self, text, message):
        status, output = self.guide(text)
        self.assertEqual(status, 1, output)
        self.assertIn(message, output)

    def test_runs_commands_in_one_folder_with_program_and_examples(self):
        status, output = self.guide(
            "```sh\ncat examples/a/data.txt > copy\ntarn-cli train x\n```\n\n"
            "```text\ngot train x\n```\n\nWords.\n\n```sh\ncat copy\n```\n```text\n1 2\n```\n")
        self.assertEqual(status, 0, output)
        self.assertIn("2 blocks of commands, 2 with their output: 0 failed", output)

    def test_finds_a_command_that_fails(self):
        self.assert_refused("\n```sh\nfalse\ntrue\n```\n", "line 2: the commands end with status 1")

    def test_finds_a_command_that_fails_in_front_of_a_pipe(self):
        self.assert_refused("```sh\nfalse | cat\n```\n", "status 1")

    def test_finds_a_variable_that_nobody_has_set(self):
        self.assert_refused('```sh\necho "$nobody_has_set_this"\n```\n', "status 1")

    def test_finds_another_output(self):
        self.assert_refused("```sh\necho 1.25\n```\n```text\n1.26\n```\n",
                            "line 4: the output is another")

    def test_finds_output_that_is_longer_or_shorter(self):
        self.assert_refused("```sh\nprintf '1\\n2\\n'\n```\n```text\n1\n```\n", "another")
        self.assert_refused("```sh\necho 1\n```\n```text\n1\n2\n```\n", "another")

    def test_takes_dots_for_any_lines(self):
        for expected in ("...", "1\n...", "...\n4", "1\n...\n4", "1\n2\n...\n3\n4",
                         "1\n...\n3\n..."):
            status, output = self.guide(f"```sh\nseq 4\n```\n```text\n{expected}\n```\n")
            self.assertEqual(status, 0, expected + output)
        for expected in ("2\n...", "...\n3", "1\n...\n5", "...\n2\n...\n2\n..."):
            self.assert_refused(f"```sh\nseq 4\n```\n```text\n{expected}\n```\n", "another")

    def test_refuses_output_without_commands(self):
        self.assert_refused("```sh\ntrue\n```\n\nWords.\n\n```text\n1\n```\n", "line 7")

    def test_refuses_other_blocks(self):
        for kind in ("", "bash", "shell", "`sh"):
            self.assert_refused(f"```sh\ntrue\n```\n```{kind}\nfalse\n```\n", "unknown kind")
        self.assert_refused("- list\n\n  ```sh\n  false\n  ```\n", "margin")

    def test_refuses_commands_that_are_not_run(self):
        self.assert_refused("```sh\ntrue\n```\n```console\ntarn-cli train\n```\n", "console")

    def test_refuses_a_block_without_an_end_and_a_guide_without_commands(self):
        self.assert_refused("```sh\ntrue\n", "without an end")
        self.assert_refused("Words.\n", "no commands")

    def test_fills_in_what_is_printed(self):
        guide = "```sh\nseq 3\n```\n```text\n1\n```\n\n```sh\nseq 3\n```\n```text\n1\n...\n```\n"
        self.assertEqual(self.guide(guide, "--fill")[0], 1)
        filled = (self.folder / "guide.md").read_text(encoding="utf-8")
        self.assertEqual(filled, guide.replace("1\n```\n\n", "1\n2\n3\n```\n\n"))


class LinksTest(Checks):
    def assert_status(self, status, message, *folders):
        got, output = self.run_script(check_links, self.folder, *folders)
        self.assertEqual(got, status, output)
        self.assertIn(message, output)

    def test_follows_links_anchors_and_pictures(self):
        self.write("README.md", "[a](docs/a.md) [b](docs/a.md#some-words-1) ![c](docs/p.svg)\n"
                   "[d](#here--there) [e][ref] [web](https://example.com/x.md#y)\n"
                   "<img src='docs/p.svg'>\n\n"
                   "# Here & `there`\n\n[ref]: docs/\n")
        self.write("docs/a.md", "# Some *words*\n# Some words\n[up](../README.md \"title\")\n"
                   "`[code](nowhere)`\n```\n[code](nowhere)\n# no heading\n```\n")
        self.write("docs/p.svg", "")
        self.assert_status(0, "2 files, 7 links: 0 wrong")

    def test_finds_what_is_wrong(self):
        self.write("docs/p.svg", "")
        self.write("docs/a.md", "# Words\n")
        for link, message in (
                ("[a](docs/b.md)", "docs/b.md: not there"),
                ("![a](docs/q.svg)", "docs/q.svg: not there"),
                ("![a](docs/P.svg)", "docs/P.svg: not there"),
                ("<img src='docs/q.svg'>", "docs/q.svg: not there"),
                ("[a](docs/a.md#word)", "docs/a.md#word: no such anchor"),
                ("[a](#word)", "#word: no such anchor"),
                ("[a](docs/p.svg#word)", "anchors are in texts alone"),
                ("[a](../other.md)", "../other.md: leads out"),
                ("[a](/etc/passwd)", "not a relative link"),
                ("[a]()", "leads nowhere"),
                ("[a][b]", "[b] is not defined"),
                ("[b]: docs/b.md", "docs/b.md: not there"),
                ("[a\nb](docs/b.md)", "README.md:2: docs/b.md: not there")):
            with self.subTest(link):
                self.write("README.md", link + "\n")
                self.assert_status(1, message)

    def test_refuses_a_tree_without_links(self):
        self.assert_status(1, "no links")

    def test_checks_pages(self):
        self.write("README.md", "[a](help/index.html#top)\n")
        self.write("help/index.html", "<h1 id='top'>x</h1><a href='#top'>x</a><img src='p.png'>"
                   "<a href='two.html#in'>x</a>")
        self.write("help/two.html", "<a name='in'>x</a>")
        self.write("help/p.png", "")
        self.write("help/book.hhc", "<object><param name='Local' value='two.html#in'></object>")
        self.assert_status(0, "4 files, 5 links: 0 wrong", self.folder / "help")
        self.write("help/book.hhc", "<object><param name='Local' value='two.html#out'></object>")
        self.assert_status(1, "two.html#out: no such anchor", self.folder / "help")
        self.write("help/book.hhc", "<a href='../README.md'>x</a>")
        self.assert_status(1, "leads out", self.folder / "help")

    def test_refuses_a_folder_without_pages(self):
        self.write("README.md", "[a](README.md)\n")
        (self.folder / "help").mkdir()
        self.assert_status(1, "no pages", self.folder / "help")


if __name__ == "__main__":
    unittest.main()
