"""Medians of a benchmark run, and tables of them."""

import json
import statistics


class Results:
    """The rounds of every benchmark by its name."""

    def __init__(self, path):
        with open(path, encoding='utf-8') as file:
            report = json.load(file)
        context = report['context']
        self.machine = f"{context['num_cpus']} processors of {context['mhz_per_cpu']} MHz"
        self._rounds = {}
        for run in report['benchmarks']:
            if run['run_type'] == 'iteration':
                name = run['run_name'].removesuffix('/real_time').removesuffix('/manual_time')
                self._rounds.setdefault(name, []).append(run)

    def names(self, kind):
        return [name for name in self._rounds if name.startswith(kind + '/')]

    def count(self):
        return min(len(rounds) for rounds in self._rounds.values())

    def largest(self, name, counter):
        """Of all rounds."""
        return max(run[counter] for run in self._rounds[name])

    def median(self, name, counter='connections'):
        """None where nothing was measured."""
        if name not in self._rounds:
            return None
        return statistics.median(run[counter] for run in self._rounds[name])


def connections_of(network):
    """Weights of a network of the form inputs-hidden-outputs, those of the bias among them."""
    inputs, hidden, outputs = (int(n) for n in network.split('-'))
    return (inputs + 1) * hidden + (hidden + 1) * outputs


def training_pairs(network):
    """Multiply-plus-add pairs of training for each connection and pattern: forward pass and
    gradients, and the deltas of the hidden layer."""
    _, hidden, outputs = (int(n) for n in network.split('-'))
    return 2 + hidden * outputs / connections_of(network)


def number(value, digits=0):
    return '' if value is None else f'{value:.{digits}f}'


def table(rows, left):
    """Lines of text columns, the first `left` of them left-justified; the first row is the head."""
    widths = [max(len(row[i]) for row in rows) for i in range(len(rows[0]))]
    lines = []
    for row in rows:
        cells = [cell.ljust(width) if i < left else cell.rjust(width)
                 for i, (cell, width) in enumerate(zip(row, widths))]
        lines.append('  '.join(cells).rstrip())
    return '\n'.join(lines)
