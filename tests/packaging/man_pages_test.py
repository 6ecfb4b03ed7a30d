"""The man pages are well formed, and tell exactly the options that there are."""

import re
import shutil
import subprocess
import unittest

from support import COMMANDS, PACKAGING, ROOT, TARN_CLI, PackagingTest, program_commands
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


def plain(text):
    """Without macros, as one line."""
    text = re.sub(r"^\.[A-Z]+ ", "", text, flags=re.MULTILINE)
    return " ".join(text.replace("\\-", "-").replace('"', "").split())


def item(text, tag):
    """What a section says behind a tag."""
    return plain(text.partition(f"\n.TP\n{tag}\n")[2].partition("\n.TP\n")[0])


def kinds_needing_targets():
    """The reports and plots that are refused without, as they are typed."""
    kinds = set()
    for command, more in (("report", []), ("plot", ["-o", "x.svg"])):
        for kind in program_kinds(command):
            words = [*more, *(["--upper", "1"] if kind == "threshold" else [])]
            status, text = run(TARN_CLI, command, kind, "x.net", "--inputs", "x.txt", *words)
            if "--targets is missing" in text:
                assert status == 2, text
                kinds.add(f"{command} {kind}")
    return kinds


def told_kinds(text):
    return set(re.findall(r"(?:report|plot) \w+", item(text, r".BI \-\-targets= FILE")))


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
            kind = ["scatter"] if section == "plot" else []
            _, refusal = run(TARN_CLI, section, *kind, "x.net", option, "-1", "-o", "x.svg")
            low, high = re.search(r"not in range (\d+) to (\d+)", refusal).groups()
            lines = text[section].replace("\\-", "-").partition(f".BI {option}=")[2].split(".TP")[0]
            self.assertIn(f"{low} to {high}", " ".join(lines.split()), option)

    def test_tell_which_kinds_need_targets(self):
        wanted = kinds_needing_targets()
        self.assertIn("plot error", wanted)
        self.assertEqual(told_kinds(sections(CLI_PAGE)["Data options"]), wanted)
        page = self.spoiled(CLI_PAGE, ".B plot scatter", ".B plot outputs")
        self.assertEqual(told_kinds(sections(page)["Data options"]) ^ wanted,
                         {"plot scatter", "plot outputs"})

    def copy_iris(self):
        for name in ("iris.net", "iris.txt"):
            shutil.copy(ROOT / "examples" / "iris" / name, self.folder)

    def test_tell_the_status_of_values_that_are_refused(self):
        self.copy_iris()
        text = sections(CLI_PAGE)["EXIT STATUS"]
        for told in (1, 2):
            examples = re.findall(r"\( (--\S+ \S+) \)", item(text, f".B {told}"))
            self.assertEqual(len(examples), 1, told)
            status, _ = run(TARN_CLI, "set", "iris.net", *examples[0].split(), folder=self.folder)
            self.assertEqual(status, told, examples)

    def test_quote_the_refusal_of_one_input_twice(self):
        self.copy_iris()
        quoted = re.search(r"Twice the same input fails: (.*?!)",
                           plain(sections(CLI_PAGE)["plot"]))[1]
        status, text = run(TARN_CLI, "plot", "contour", "iris.net", "--seed", "1",
                           "--first-input", "4", "-o", "x.svg", folder=self.folder)
        self.assertEqual((status, text.splitlines()[-1]), (1, f"tarn-cli: {quoted}"))


if __name__ == "__main__":
    unittest.main()
