#!/usr/bin/env python3
"""Runs the command line on much data: load.py TARN_CLI patterns|snapshots [COUNT]

patterns   COUNT patterns of 100 inputs, loaded and trained for two iterations: the time of the
           load, and the most memory that was held, beside the numbers that have to be kept.
snapshots  an AutoSave store of COUNT snapshots, and what it takes to restore the first, the middle
           and the last of them.

Ends with status 1 when more memory is held than the work can account for.
"""

import itertools
import os
import pathlib
import random
import shutil
import subprocess
import sys
import tempfile
import time

INPUTS, HIDDEN, OUTPUTS = 100, 10, 1
ITERATIONS = 2
# Records that differ; a file repeats them.
DIFFERENT_RECORDS = 20000
# The program itself with its libraries, its threads and what belongs to a batch of patterns.
PROGRAM_BYTES = 16 << 20
# How much more than what is kept may be held for a while.
MOST_OF_KEPT = 1.3

ROOT = pathlib.Path(__file__).resolve().parents[2]


class Run:
    """A run of the program: its time, the time to its first output, and the most memory it held.

    Less than what this script itself holds cannot be told: the system counts it in.
    """

    def __init__(self, *arguments):
        begun = time.monotonic()
        process = subprocess.Popen(arguments, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)
        process.stdout.readline()
        self.first_output = time.monotonic() - begun
        process.stdout.read()
        _, status, usage = os.wait4(process.pid, 0)
        self.seconds = time.monotonic() - begun
        self.processor_seconds = usage.ru_utime + usage.ru_stime
        self.peak_bytes = usage.ru_maxrss * 1024
        process.stdout.close()
        process.returncode = os.waitstatus_to_exitcode(status)
        if process.returncode != 0:
            sys.exit(f'{arguments}: status {process.returncode}')


def megabytes(count):
    return f'{count / (1 << 20):.1f} MB'


def hold(name, used, most):
    if used > most:
        sys.exit(f'{name}: {megabytes(used)} were held at once, {megabytes(most)} ought to do')


def write_records(path, count):
    draw = random.Random(1)
    columns = INPUTS + OUTPUTS
    records = [' '.join(draw.choices('0123456789', k=columns)) + '\n'
               for _ in range(min(count, DIFFERENT_RECORDS))]
    with open(path, 'w', encoding='ascii') as file:
        file.writelines(itertools.islice(itertools.cycle(records), count))


def measure_patterns(cli, count):
    begun = time.monotonic()
    write_records('data.txt', count)
    size = os.path.getsize('data.txt')
    print(f'{count} patterns of {INPUTS} inputs, {megabytes(size)} of text, '
          f'made in {time.monotonic() - begun:.1f} s')
    subprocess.run([cli, 'new', 'load.net', '--layers', f'{INPUTS},{HIDDEN},{OUTPUTS}',
                    '--inputs', 'data.txt', '--targets', 'data.txt',
                    '--targets-column', str(INPUTS + 1), '--eta', '0.000001'], check=True)
    run = Run(cli, 'train', 'load.net', '--seed', '1', '--iterations', str(ITERATIONS))
    # The values of all nodes, the targets, and the number of the pattern in the training list.
    of_pattern = 4 * (INPUTS + HIDDEN + OUTPUTS + OUTPUTS + 1)
    kept = count * of_pattern
    nodes = INPUTS + HIDDEN + OUTPUTS
    print(f'loaded in {run.first_output:.1f} s ({size / run.first_output / 1e6:.0f} MB of text a '
          f'second), {ITERATIONS} iterations and saved in {run.seconds - run.first_output:.1f} s; '
          f'processor time {run.processor_seconds:.1f} s')
    print(f'kept: {of_pattern} bytes a pattern, {of_pattern / nodes:.2f} a pattern and node, '
          f'{megabytes(kept)} in all')
    print(f'held at most: {megabytes(run.peak_bytes)}, {run.peak_bytes / kept:.3f} of that')
    hold('patterns', run.peak_bytes, kept * MOST_OF_KEPT + PROGRAM_BYTES)


def snapshot_of(path, iteration):
    """Read by lines: what this script holds would be counted as the program's."""
    lines = []
    with open(path, 'rb') as store:
        for line in store:
            if lines and line.startswith(b'ITERATION '):
                break
            if lines or line == b'ITERATION %d\n' % iteration:
                lines.append(line)
    return b''.join(lines[1:])


def measure_snapshots(cli, count):
    for name in ('iris.net', 'iris.txt'):
        shutil.copy(ROOT / 'examples' / 'iris' / name, name)
    subprocess.run([cli, 'set', 'iris.net', '--autosave-rate', '1', '--update-rate', str(count),
                    '--iterations', str(count)], check=True)
    run = Run(cli, 'train', 'iris.net', '--seed', '1', '--quiet', '--autosave', 'iris.store')
    size = os.path.getsize('iris.store')
    print(f'{count} snapshots, {megabytes(size)}, kept in {run.seconds:.2f} s')
    hold('training', run.peak_bytes, PROGRAM_BYTES)
    for iteration in (1, count // 2, count):
        run = Run(cli, 'restore', 'iris.store', str(iteration), 'restored.net')
        print(f'snapshot {iteration} restored in {run.seconds * 1000:.0f} ms, '
              f'{megabytes(run.peak_bytes)} held at most')
        hold('restore', run.peak_bytes, PROGRAM_BYTES)
        # Those whose numbers begin alike follow it.
        if not pathlib.Path('restored.net').read_bytes().startswith(snapshot_of('iris.store', iteration)):
            sys.exit(f'snapshot {iteration} is not what was stored')
        subprocess.run([cli, 'train', 'restored.net', '--no-save', '--quiet'], check=True)


def main():
    cli, work = os.path.abspath(sys.argv[1]), sys.argv[2]
    measure, standard = {'patterns': (measure_patterns, 1000000),
                         'snapshots': (measure_snapshots, 10000)}[work]
    count = int(sys.argv[3]) if len(sys.argv) > 3 else standard
    with tempfile.TemporaryDirectory() as folder:
        os.chdir(folder)
        measure(cli, count)
        os.chdir('/')


if __name__ == '__main__':
    main()
