"""The man pages are well formed, and tell exactly the options that there are."""

import re
import subprocess
import unittest

from support import COMMANDS, PACKAGING, TARN_CLI, PackagingTest, program_commands
from support import program_kinds, program_options, program_words, run

PAGES = [PACKAGING / "man" / name for name in ("tarn.1", "tarn-cli.1")]
CLI_PAGE = PAGES[1]

# Sections that more than one command shares.
SHARED = {
    "new": ["Setup options"],
    "set": ["Setup options"],
    "recall": ["Data options"],
    "report": ["Data options"],
    "plot": ["Data options"],
}


def groff_warnings(page):
    """man itself ends well whatever it finds."""
    done = subprocess.run(
        ["man", "--warnings", "-E", "UTF-8", "-l", "-Tutf8", "-Z", page],
        stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.PIPE, text=True,
        check=False)
    return done.stderr


def sections(page):
    """The text of each section and of each subsection, by its heading."""
    parts = re.split(r"^\.S[HS] (.+)$", page.read_text(encoding="utf-8"), flags=re.MULTILINE)
    return dict(zip(parts[1::2], parts[2::2]))


def tagged_options(text):
    options = set()
    for tag in re.findall(r"^\.TP\n(.+)$", text, re.MULTILINE):
        options.update(re.findall(r"(?<![\w-])--?[a-z][a-z-]*", tag.replace("\\-", "-")))
    return options


def page_options(page, command):
    parts = sections(page)
    options = tagged_options(parts["OPTIONS"])
    if not command:
        return options
    options.discard("--version")
    for heading in [command, *SHARED.get(command, [])]:
        options |= tagged_options(parts[heading])
    return options


class ManPages(PackagingTest):
    def test_are_well_formed(self):
        for page in PAGES:
            with self.subTest(page.name):
                self.assertEqual(self.passes("mandoc", "-T", "lint", page), "")
                self.assertEqual(groff_warnings(page), "")

    def test_are_not_when_a_macro_is_misspelled(self):
        page = self.spoiled(CLI_PAGE, ".SH DESCRIPTION", ".SHH DESCRIPTION")
        self.fails("skipping unknown macro: .SHH", "mandoc", "-T", "lint", page)
        self.assertIn("SHH", groff_warnings(page))

    def test_tell_every_option_of_every_command_and_no_other(self):
        self.assertEqual(program_commands(), COMMANDS)
        for command in [None, *COMMANDS]:
            with self.subTest(command):
                self.assertEqual(page_options(CLI_PAGE, command), program_options(command))

    def test_do_not_when_one_is_missing_or_too_many(self):
        missing = self.spoiled(CLI_PAGE, r".BI \-\-upper= X", ".B upper")
        self.assertEqual(program_options("report") - page_options(missing, "report"), {"--upper"})
        more = self.spoiled(CLI_PAGE, r".B \-\-quiet", r".B \-\-silent")
        self.assertEqual(page_options(more, "train") - program_options("train"), {"--silent"})

    def test_tell_every_kind_and_word(self):
        parts = sections(CLI_PAGE)
        for command in ("report", "plot"):
            words = set(re.findall(r"[\w-]+", parts[command].replace("\\-", "-")))
            self.assertLessEqual(program_kinds(command), words)
        words = set(re.findall(r"\w+", parts["Setup options"]))
        for option in ("--transfer", "--test-method", "--normalize-inputs"):
            self.assertLessEqual(program_words(option), words)

    def test_tell_the_ranges_that_the_program_keeps(self):
        text = sections(CLI_PAGE)
        for option, section in (("--width", "plot"), ("--height", "plot"), ("--seed", "train"),
                                ("--iterations", "train")):
            _, refusal = run(TARN_CLI, section, *(["scatter"] if section == "plot" else []), "x.net",
                             option, "-1", "-o", "x.svg")
            low, high = re.search(r"not in range (\d+) to (\d+)", refusal).groups()
            lines = text[section].replace("\\-", "-").partition(f".BI {option}=")[2].split(".TP")[0]
            self.assertIn(f"{low} to {high}", " ".join(lines.split()), option)


if __name__ == "__main__":
    unittest.main()
