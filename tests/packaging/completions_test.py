"""The completions of the three shells offer exactly the options and words that there are."""

import os
import pathlib
import pty
import re
import select
import tempfile
import time
import unittest

from support import COMMANDS, PACKAGING, TARN, PackagingTest, listed_options, program_kinds
from support import program_options, program_words, run

FOLDER = PACKAGING / "completions"

# What bash offers goes to a file, and the line to another with Ctrl-T.
BASH = r"""
source "$SCRIPT"
offer() { "_${1//-/_}"; printf '%s\n' "${COMPREPLY[@]}" > "$MADE/offers"; }
complete -F offer tarn tarn-cli
bind -x '"\C-t": printf "%s" "$READLINE_LINE" > "$MADE/new"; mv "$MADE/new" "$MADE/line"'
PS1='ready '
"""
SECONDS = 60

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


def read_until(terminal, done):
    """What a program writes to its terminal, until `done` of it."""
    seen = b""
    end = time.monotonic() + SECONDS
    while not done(seen):
        if time.monotonic() > end:
            raise TimeoutError(seen)
        if select.select([terminal], [], [], 0.01)[0]:
            seen += os.read(terminal, 4096)


def type_in_bash(line, script=None, folder="/"):
    """What bash offers for a line that ends with Tab, and what becomes of the line."""
    script = script or FOLDER / f"{line.split()[0]}.bash"
    with tempfile.TemporaryDirectory() as name:
        made = pathlib.Path(name)
        (made / "rc").write_text(BASH, encoding="utf-8")
        process, terminal = pty.fork()
        if process == 0:
            os.chdir(folder)
            os.execvpe("bash", ["bash", "--noprofile", "--rcfile", made / "rc", "-i"],
                       {**os.environ, "LC_ALL": "C.UTF-8", "TERM": "dumb", "INPUTRC": "/dev/null",
                        "HOME": str(folder), "HISTFILE": "", "SCRIPT": str(script), "MADE": name})
        read_until(terminal, lambda seen: seen.endswith(b"ready "))
        os.write(terminal, f"{line}\t\x14".encode())
        read_until(terminal, lambda seen: (made / "line").exists())
        os.close(terminal)
        os.waitpid(process, 0)
        offers = (made / "offers").read_text(encoding="utf-8").splitlines()
        return set(offers) - {""}, (made / "line").read_text(encoding="utf-8")


def bash(line, **where):
    return type_in_bash(line, **where)[0]


def bash_line(line, **where):
    return type_in_bash(line, **where)[1]


def fish(line, script=None, folder="/"):
    script = script or FOLDER / f"{line.split()[0]}.fish"
    _, text = run("fish", "--no-config", "-c", f"source {script}; complete -C '{line}'",
                  folder=folder)
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
    return bash(f"tarn-cli {command} -" if command else "tarn-cli -", **script)


def fish_options(command, **script):
    line = f"tarn-cli {command} -" if command else "tarn-cli -"
    # Long ones are offered behind two dashes where there are short ones too.
    return fish(line, **script) | fish(line + "-", **script)


def words_of_options(text):
    return set(re.findall(r"(?<![\w-])--?[a-z]+", text))


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
        for offered, name, old in ((bash_options, "tarn-cli.bash", "--autosave --quiet"),
                                   (zsh_options, "_tarn-cli", "'--quiet["),
                                   (fish_options, "tarn-cli.fish", "-l quiet")):
            with self.subTest(name):
                script = self.spoiled(FOLDER / name, old, old.replace("quiet", "silent"))
                self.assertEqual(wanted ^ offered("train", script=script),
                                 {"--quiet", "--silent"})

    def test_offer_every_command(self):
        self.assertEqual(bash("tarn-cli "), set(COMMANDS))
        self.assertEqual(fish("tarn-cli "), set(COMMANDS))
        _, text = run("zsh", "-f", "-c", ZSH + "_tarn_cli_command", "zsh", FOLDER / "_tarn-cli", "")
        self.assertEqual(set(re.findall(r"^command (\w+):", text, re.MULTILINE)), set(COMMANDS))

    def test_offer_every_kind(self):
        for command in ("report", "plot"):
            kinds = program_kinds(command)
            for offers in (bash, fish):
                self.assertEqual(offers(f"tarn-cli {command} "), kinds)
            self.assertEqual(zsh_words(command, "1:kind"), kinds)
        for offers in (bash, fish):
            self.assertEqual(offers("tarn-cli report --seed 1 st"), {"statistics"})

    def test_offer_the_words_that_options_take(self):
        for option in ("--test-method", "--normalize-inputs", "--normalize-targets"):
            words = program_words(option)
            joined = {f"{option}={word}" for word in words}
            self.assertEqual(bash(f"tarn-cli new {option} "), words)
            self.assertEqual(bash(f"tarn-cli new {option}="), words)
            self.assertEqual(fish(f"tarn-cli new {option} "), words)
            self.assertEqual(fish(f"tarn-cli new {option}="), joined)
            self.assertEqual(zsh_words("new", option + "="), words)

    def test_offer_transfer_functions_as_a_list(self):
        words = program_words("--transfer")
        for offers in (bash, fish):
            self.assertEqual(offers("tarn-cli set --transfer "), words)
            self.assertEqual(offers("tarn-cli set --transfer tanh,si"), {"tanh,sigmoid"})
        line = next(line for line in zsh("set") if line.startswith("--transfer"))
        self.assertEqual(set(line.partition("compadd - ")[2].split()), words)

    def make_files(self, *names):
        for name in names:
            (self.folder / name).parent.mkdir(exist_ok=True)
            (self.folder / name).touch()

    def test_offer_network_files_and_folders(self):
        self.make_files("a b.net", "other.txt", "graph.svg", "numbers.csv", "sub/x")
        here = {"folder": self.folder}
        for line in ("tarn ", "tarn-cli train ", "tarn-cli plot rms ",
                     "tarn-cli restore x.store 5 "):
            self.assertEqual(bash(line, **here), {"a b.net", "sub"})
            # fish offers the others behind those with the ending.
            self.assertLessEqual({"a b.net", "sub/"}, fish(line, **here))
        self.assertEqual(bash("tarn-cli plot rms x.net -o ", **here),
                         {"graph.svg", "numbers.csv", "sub"})
        for line in ("tarn-cli recall --inputs ", "tarn-cli restore "):
            self.assertIn("other.txt", bash(line, **here))
            self.assertIn("other.txt", fish(line, **here))
        for line in ("report weights x.net > ", "train 2> ", "recall >> "):
            self.assertIn("other.txt", bash(f"tarn-cli {line}", **here))
        self.assertIn("weights", bash("tarn-cli report > out.txt ", **here))
        self.assertEqual(bash("tarn-cli restore x.store -5 ", **here), {"a b.net", "sub"})
        self.assertIn('1:network file:_files -g "*.net"', zsh("train"))
        self.assertIn('1:network file:_files -g "*.net"', zsh(None, FOLDER / "_tarn"))

    def test_count_the_arguments_behind_options(self):
        self.make_files("a.net", "sub/x")
        for offers in (bash, fish):
            for command in COMMANDS:
                options = listed_options(command)
                spaced = [f"{option} 1" if value else option for option, value in options.items()]
                joined = [f"{option}=1" for option, value in options.items()
                          if value and option.startswith("--")]
                first = offers(f"tarn-cli {command} ", folder=self.folder)
                for words in (spaced, joined):
                    line = " ".join(["tarn-cli", command, *words, ""])
                    with self.subTest(f"{offers.__name__} {line}"):
                        self.assertEqual(offers(line, folder=self.folder), first)

    def test_offer_nothing_where_no_file_and_no_word_stands(self):
        self.make_files("a.net", "sub/x")
        for line in ("tarn-cli restore x.store ", "tarn-cli restore x.store 5 a.net ",
                     "tarn-cli train a.net ", "tarn-cli report weights a.net ",
                     "tarn-cli report --seed ", "tarn-cli nonsense "):
            for offers in (bash, fish):
                with self.subTest(f"{offers.__name__} {line}"):
                    self.assertEqual(offers(line, folder=self.folder), set())

    def test_complete_lines_of_bash(self):
        self.make_files("k=v.net", "col:umn.net", "a b.net", "at@x.net", "iris.txt", "q=r/in.net",
                        "outputs/x")
        for words, begun, completed in (
                # A kind is no folder, though there is one of its name.
                ("plot --inputs iris.txt", "outp", "outputs "),
                ("plot --inputs iris.txt rms", "outp", "outputs/"),
                ("recall", "--inputs=~/ir", f"--inputs={self.folder}/iris.txt "),
                ("recall --inputs", "~/ir", "~/iris.txt "),
                ("recall", "--inputs=ir", "--inputs=iris.txt "),
                ("recall", "--inputs=k=", "--inputs=k=v.net "),
                ("recall --inputs", "k=", "k=v.net "),
                ("train", "k", "k\\=v.net "),
                ("train", "k=", "k=v.net "),
                ("train", "k=v", "k=v.net "),
                ("train", '"k=', '"k=v.net" '),
                ("train", "q=", "q=r/"),
                ("train", "q=r/", "q=r/in.net "),
                ("train", "col:", "col:umn.net "),
                ("train", "col:u", "col:umn.net "),
                ("train", "at@", "at\\@x.net "),
                ("train", "a\\ ", "a\\ b.net "),
                ("restore k=v 5", "k=", "k=v.net "),
                ("report --seed=1", "sta", "statistics "),
                ("new", "--normalize-inputs=of", "--normalize-inputs=off ")):
            with self.subTest(f"{words} {begun}"):
                self.assertEqual(bash_line(f"tarn-cli {words} {begun}", folder=self.folder),
                                 f"tarn-cli {words} {completed}")

    def test_offer_the_options_of_the_program_with_windows(self):
        text = (PACKAGING / "man" / "tarn.1").read_text(encoding="utf-8").replace("\\-", "-")
        options = words_of_options(text.partition("\n.SH OPTIONS\n")[2].partition("\n.SH ")[0])
        status, usage = run(TARN, "--help")
        self.assertEqual(status, 0, usage)
        self.assertEqual(options, words_of_options(usage))
        self.assertEqual(bash("tarn -"), options)
        self.assertEqual(fish("tarn -") | fish("tarn --"), options)
        self.assertEqual(zsh_options(None, FOLDER / "_tarn"), options)


if __name__ == "__main__":
    unittest.main()
