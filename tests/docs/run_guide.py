#!/usr/bin/env python3
"""Runs every command of a guide from the text of the guide.

    run_guide.py GUIDE TARN_CLI EXAMPLES [--fill]

Fenced blocks, which begin at the left margin, are told apart by the word behind their fence:

    sh       commands: run in order, each block by a bash of its own that stops at the first
             failure, all in one fresh folder that holds a copy of EXAMPLES as "examples", with
             TARN_CLI on the PATH as "tarn-cli"
    text     what the commands just above print to stdout, line by line; a line "..." stands for
             any lines, or none
    console  how the window program is started; not run
    plain    the text of a file, or a formula; not run

Any other word is an error, as is a text block that does not follow an sh block. The status is 0
when all is as the guide says. With --fill the text blocks that are not are replaced in GUIDE by
what was printed; read them before you believe them.
"""

import argparse
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile

SECONDS = 120
KINDS = ("sh", "text", "console", "plain")
FENCE = re.compile(r"(\s*)```(.*)$")


class GuideError(Exception):
    pass


class Block:
    def __init__(self, kind, line):
        self.kind = kind
        self.line = line  # of its opening fence, from 1
        self.text = []
        self.expected = None  # of commands: their text block


def read_blocks(lines):
    """The fenced blocks in their order, text blocks with their commands."""
    blocks = []
    block = None
    last = None  # the commands that only blank lines part from here
    for number, line in enumerate(lines, 1):
        fence = FENCE.match(line)
        if block is None and fence:
            if fence[1]:
                raise GuideError(f"line {number}: a fence that does not begin at the margin")
            block = Block(fence[2].strip(), number)
            check_kind(block, last)
        elif block is not None and line.rstrip() == "```":
            if block.kind == "text":
                last.expected = block
            blocks.append(block)
            last = block if block.kind == "sh" else None
            block = None
        elif block is not None:
            block.text.append(line)
        elif line.strip():
            last = None
    if block is not None:
        raise GuideError(f"line {block.line}: a block without an end")
    for block in blocks:
        check_console(block)
    if not any(block.kind == "sh" for block in blocks):
        raise GuideError("no commands at all")
    return blocks


def check_kind(block, commands):
    if block.kind not in KINDS:
        raise GuideError(f'line {block.line}: a block of the unknown kind "{block.kind}"')
    if block.kind == "text" and commands is None:
        raise GuideError(f"line {block.line}: a text block that follows no commands")


def check_console(block):
    if block.kind == "console" and any("tarn-cli" in line for line in block.text):
        raise GuideError(f"line {block.line}: commands in a console block, which is not run")


def matches(expected, printed):
    """Whether the lines are those expected, where "..." is any number of lines."""
    reachable = {0}  # lines printed that the expected ones so far can stand for
    for line in expected:
        if line == "...":
            reachable = set(range(min(reachable, default=len(printed) + 1), len(printed) + 1))
        else:
            reachable = {i + 1 for i in reachable if i < len(printed) and printed[i] == line}
    return len(printed) in reachable


def run(block, folder, path):
    environment = dict(os.environ, LC_ALL="C", PATH=path + os.pathsep + os.environ["PATH"])
    return subprocess.run(
        ["bash", "-euo", "pipefail", "-c", "\n".join(block.text)],
        cwd=folder, env=environment, stdin=subprocess.DEVNULL, capture_output=True,
        encoding="utf-8", errors="replace", timeout=SECONDS, check=False)


def failure_of(block, result):
    """What is not as the guide says; empty when all is."""
    if result.returncode != 0:
        return f"line {block.line}: the commands end with status {result.returncode}"
    if block.expected is not None and not matches(block.expected.text, result.stdout.splitlines()):
        return f"line {block.expected.line}: the output is another"
    return ""


def indented(name, text):
    return "".join(f"  {name} {line}\n" for line in text.splitlines())


def fill(lines, blocks, printed):
    for block in reversed(blocks):
        if block.expected is not None and not matches(block.expected.text, printed[block.line]):
            begin = block.expected.line
            lines[begin:begin + len(block.expected.text)] = printed[block.line]


def main(words):
    parser = argparse.ArgumentParser(description="Runs every command of a guide.")
    parser.add_argument("guide", type=pathlib.Path)
    parser.add_argument("tarn_cli", type=pathlib.Path)
    parser.add_argument("examples", type=pathlib.Path)
    parser.add_argument("--fill", action="store_true")
    arguments = parser.parse_args(words)
    lines = arguments.guide.read_text(encoding="utf-8").splitlines()
    try:
        blocks = read_blocks(lines)
    except GuideError as error:
        print(f"{arguments.guide}: {error}")
        return 1
    commands = [block for block in blocks if block.kind == "sh"]
    failures = 0
    printed = {}
    with tempfile.TemporaryDirectory(prefix="tarn-guide-") as top:
        bin_folder = pathlib.Path(top, "bin")
        folder = pathlib.Path(top, "work")
        bin_folder.mkdir()
        folder.mkdir()
        os.symlink(arguments.tarn_cli.resolve(strict=True), bin_folder / "tarn-cli")
        shutil.copytree(arguments.examples, folder / "examples")
        for block in commands:
            result = run(block, folder, str(bin_folder))
            printed[block.line] = result.stdout.splitlines()
            failure = failure_of(block, result)
            if failure:
                failures += 1
                print(f"{arguments.guide}: {failure}")
                print(indented("$", "\n".join(block.text)) + indented(">", result.stdout) +
                      indented("!", result.stderr), end="")
    if arguments.fill:
        fill(lines, commands, printed)
        arguments.guide.write_text("\n".join(lines) + "\n", encoding="utf-8")
    compared = sum(block.expected is not None for block in commands)
    print(f"{len(commands)} blocks of commands, {compared} with their output: {failures} failed")
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
