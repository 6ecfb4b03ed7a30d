"""The completions of the three shells offer exactly the options and words that there are."""

import re
import unittest

from support import COMMANDS, PACKAGING, PackagingTest, program_kinds, program_options
from support import program_words, run

FOLDER = PACKAGING / "completions"

# What bash would do for the words given: the last of them is the one that is completed.
BASH = """
source "$0"
compopt() { :; }
COMP_WORDS=("$@")
COMP_CWORD=$(($# - 1))
"_${1//-/_}"
printf '%s\\n' "${COMPREPLY[@]}"
"""

# The entries that the functions of zsh are given, which make of them what it offers.
ZSH = """
state_wanted=$2
_arguments() {
  print -rl -- "$@"
  [[ $1 == -C ]] || return 0
  if [[ -z $state_wanted ]]; then return 0; fi
  state=arguments
  line=($state_wanted)
  return 1
}
_describe() { print -rl -- "command "${(P)^4}; }
source $1
"""


def bash(*words, program="tarn-cli", script=None):
    _, text = run("bash", "-c", BASH, script or FOLDER / f"{program}.bash", program, *words)
    return set(text.split())


def fish(line, script=None):
    script = script or FOLDER / f"{line.split()[0]}.fish"
    _, text = run("fish", "--no-config", "-c", f"source {script}; complete -C '{line}'")
    return {offer.partition("\t")[0] for offer in text.splitlines()}


def zsh(command, script=FOLDER / "_tarn-cli"):
    _, text = run("zsh", "-f", "-c", ZSH, "zsh", script, command or "")
    entries = text.split("*:: :->arguments\n")[-1 if command else 0]
    return entries.splitlines()


def zsh_options(command, script=FOLDER / "_tarn-cli"):
    found = (re.match(r"(?:\([^)]*\))?(--?[a-z][a-z-]*)[=+]*\[", line)
             for line in zsh(command, script))
    return {option[1] for option in found if option}


def zsh_words(command, option):
    """The words of the entry of an option or an argument."""
    text = "\n".join(zsh(command))
    start = text.index(option)
    return set(re.search(r":[\w ]+:\(([^)]+)\)", text[start:])[1].split())


def bash_options(command, **script):
    return bash(*([command] if command else []), "-", **script)


def fish_options(command, **script):
    line = f"tarn-cli {command} -" if command else "tarn-cli -"
    # Long ones are offered behind two dashes where there are short ones too.
    return fish(line, **script) | fish(line + "-", **script)


class Completions(PackagingTest):
    def test_can_be_read_by_their_shells(self):
        for program in ("tarn", "tarn-cli"):
            for shell, name in (("bash", f"{program}.bash"), ("zsh", f"_{program}"),
                                ("fish", f"{program}.fish")):
                with self.subTest(name):
                    self.passes(shell, "-n", FOLDER / name)

    def test_cannot_when_one_word_is_missing(self):
        self.fails("syntax error", "bash", "-n",
                   self.spoiled(FOLDER / "tarn-cli.bash", "esac", ""))
        self.fails("parse error", "zsh", "-n", self.spoiled(FOLDER / "_tarn-cli", "esac", ""))
        self.fails("Missing end", "fish", "-n",
                   self.spoiled(FOLDER / "tarn-cli.fish", "\nend", "\n"))

    def test_offer_every_option_of_every_command_and_no_other(self):
        for command in [None, *COMMANDS]:
            for offered in (bash_options, zsh_options, fish_options):
                with self.subTest(f"{offered.__name__} {command}"):
                    self.assertEqual(offered(command), program_options(command))

    def test_do_not_when_one_is_missing(self):
        wanted = program_options("train")
        for offered, name, old in ((bash_options, "tarn-cli.bash", "--quiet"),
                                   (zsh_options, "_tarn-cli", "'--quiet["),
                                   (fish_options, "tarn-cli.fish", "-l quiet")):
            with self.subTest(name):
                script = self.spoiled(FOLDER / name, old, old.replace("quiet", "silent"))
                self.assertEqual(wanted ^ offered("train", script=script),
                                 {"--quiet", "--silent"})

    def test_offer_every_command(self):
        self.assertEqual(bash(""), set(COMMANDS))
        self.assertEqual(fish("tarn-cli "), set(COMMANDS))
        _, text = run("zsh", "-f", "-c", ZSH + "_tarn_cli_command", "zsh", FOLDER / "_tarn-cli", "")
        self.assertEqual(set(re.findall(r"^command (\w+):", text, re.MULTILINE)), set(COMMANDS))

    def test_offer_every_kind(self):
        for command in ("report", "plot"):
            kinds = program_kinds(command)
            self.assertEqual(bash(command, ""), kinds)
            self.assertEqual(fish(f"tarn-cli {command} "), kinds)
            self.assertEqual(zsh_words(command, "1:kind"), kinds)

    def test_offer_the_words_that_options_take(self):
        for option in ("--test-method", "--normalize-inputs", "--normalize-targets"):
            words = program_words(option)
            self.assertEqual(bash("new", option, ""), words)
            self.assertEqual(bash("new", option, "=", ""), words)
            self.assertEqual(fish(f"tarn-cli new {option} "), words)
            self.assertEqual(zsh_words("new", option + "="), words)

    def test_offer_transfer_functions_as_a_list(self):
        words = program_words("--transfer")
        self.assertEqual(bash("set", "--transfer", ""), words)
        self.assertEqual(bash("set", "--transfer", "tanh,si"), {"tanh,sigmoid"})
        self.assertEqual(fish("tarn-cli set --transfer "), words)
        self.assertEqual(fish("tarn-cli set --transfer tanh,si"), {"tanh,sigmoid"})
        line = next(line for line in zsh("set") if line.startswith("--transfer"))
        self.assertEqual(set(line.partition("compadd - ")[2].split()), words)

    def test_offer_network_files_and_folders(self):
        (self.folder / "sub").mkdir()
        for name in ("a b.net", "other.txt", "graph.svg", "numbers.csv"):
            (self.folder / name).touch()
        head = f"{self.folder}/"
        offered = bash("train", head)
        self.assertEqual(offered, {head + "a", "b.net", head + "sub"})
        self.assertEqual(bash("plot", "rms", head), offered)
        self.assertEqual(bash("plot", "rms", "x.net", "-o", head),
                         {head + "graph.svg", head + "numbers.csv", head + "sub"})
        self.assertIn(head + "other.txt", bash("recall", "--inputs", head))
        # fish offers the others behind those with the ending.
        self.assertLessEqual({head + "a b.net", head + "sub/"}, fish(f"tarn-cli train {head}"))
        self.assertIn('1:network file:_files -g "*.net"', zsh("train"))
        self.assertEqual(bash(head, program="tarn"), offered)
        self.assertLessEqual({head + "a b.net", head + "sub/"}, fish(f"tarn {head}"))
        self.assertIn('1:network file:_files -g "*.net"', zsh(None, FOLDER / "_tarn"))

    def test_offer_the_options_of_the_program_with_windows(self):
        text = (PACKAGING / "man" / "tarn.1").read_text(encoding="utf-8").replace("\\-", "-")
        options = set(re.findall(r"(?<![\w-])--?[a-z]+", text.partition("\n.SH OPTIONS\n")[2]
                                 .partition("\n.SH ")[0]))
        self.assertEqual(options, {"-h", "--help", "--verbose"})
        self.assertEqual(bash("-", program="tarn"), options)
        self.assertEqual(fish("tarn -") | fish("tarn --"), options)
        self.assertEqual(zsh_options(None, FOLDER / "_tarn"), options)


if __name__ == "__main__":
    unittest.main()
