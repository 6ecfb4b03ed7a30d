"""What the tests of this folder share."""

import functools
import os
import pathlib
import re
import subprocess
import tempfile
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]
PACKAGING = ROOT / "packaging"
MADE = pathlib.Path(os.environ["TARN_MADE"])
TARN_CLI = os.environ["TARN_CLI"]
TARN = os.environ["TARN"]

COMMANDS = ["new", "set", "train", "recall", "report", "plot", "restore"]


def run(*command, folder=None, **surroundings):
    """Exit status and all that was printed."""
    done = subprocess.run(
        command,
        stdin=subprocess.DEVNULL,
        stdout=subprocess.PIPE,
        stderr=subprocess.STDOUT,
        text=True,
        cwd=folder,
        env={**os.environ, "LC_ALL": "C.UTF-8", **surroundings},
        check=False,
    )
    return done.returncode, done.stdout


@functools.cache
def listed_options(command):
    """The options that the program itself lists, each with the sign of its value, "" of none; of no
    command those of the program."""
    status, text = run(TARN_CLI, *([command] if command else []), "--help")
    assert status == 0, text
    options = {}
    for line in text.splitlines():
        tag = re.match(r"  ((?:-\w,)?--?[\w-]+)(?: (\S*)|$)", line)
        if tag and tag[1].startswith("-"):
            options.update(dict.fromkeys(tag[1].split(","), tag[2] or ""))
    return options


def program_options(command):
    return set(listed_options(command))


def program_commands():
    _, text = run(TARN_CLI, "--help")
    listed = text.partition("\nCommands:\n")[2]
    return re.findall(r"^  (\w+) ", listed, re.MULTILINE)


def program_kinds(command):
    """The kinds that the program names when it is asked for one that there is not."""
    _, text = run(TARN_CLI, command, "nonsense", "nothing.net")
    return set(re.search(r"there are ([\w -]+);", text)[1].split())


def program_words(option):
    """The words that a setup option takes, from its refusal of another."""
    with tempfile.TemporaryDirectory() as folder:
        _, text = run(TARN_CLI, "new", f"{folder}/a.net", option, "nonsense")
    words = re.search(r"takes (.+), not \"nonsense\"", text)[1]
    return set(re.split(r", | or ", words))


class PackagingTest(unittest.TestCase):
    maxDiff = None

    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)

    def spoiled(self, file, old, new):
        """A copy of the file that differs in the text `old`."""
        text = pathlib.Path(file).read_text(encoding="utf-8")
        self.assertIn(old, text)
        copy = self.folder / pathlib.Path(file).name
        copy.write_text(text.replace(old, new, 1), encoding="utf-8")
        return copy

    def passes(self, *command, **surroundings):
        status, text = run(*command, **surroundings)
        self.assertEqual(status, 0, text)
        return text

    def fails(self, message, *command, **surroundings):
        status, text = run(*command, **surroundings)
        self.assertNotEqual(status, 0, text)
        self.assertIn(message, text)
