#!/usr/bin/env python3
"""Prints the medians and ratios of a benchmark run: table.py RESULTS.json

Names are KIND/WHO/NETWORK[/GROUP]; figures are connections x patterns per second. A network's
arithmetic is the multiply-plus-add pairs that its kind of work takes; the share of the peak is
that of pairs of separate multiplications and additions in registers, on one thread.
"""

import json
import statistics
import sys


def pairs_per_connection(kind, network):
    """Multiply-plus-add pairs for each connection and pattern, bias weights counted as one."""
    inputs, hidden, outputs = (int(n) for n in network.split('-'))
    connections = (inputs + 1) * hidden + (hidden + 1) * outputs
    if kind == 'recall':
        return 1.0
    return (2 * connections + hidden * outputs) / connections


def main():
    with open(sys.argv[1], encoding='utf-8') as file:
        report = json.load(file)
    rounds = {}
    for run in report['benchmarks']:
        if run['run_type'] == 'iteration':
            rounds.setdefault(run['run_name'].removesuffix('/real_time'), []).append(run['connections'])
    median = {name: statistics.median(values) for name, values in rounds.items()}
    peak = median.get('peak/multiply-plus-add')

    context = report['context']
    count = min(len(values) for values in rounds.values())
    print(f"{context['num_cpus']} processors of {context['mhz_per_cpu']} MHz, medians of {count} rounds,")
    print('millions of connections x patterns a second')
    if peak:
        print(f'peak of multiplications plus additions, one thread: {peak / 1e9:.1f} G pairs/s')
    head = ['work', 'network', 'group', 'plain', 'FANN', 'Tarn', 'to plain', 'to FANN',
            'of peak', 'threads', 'to one thread']
    rows = [head]
    for name, plain in median.items():
        parts = name.split('/')
        if len(parts) < 3 or parts[1] != 'plain':
            continue
        kind, _, network, *group = parts

        def of(who):
            return median.get('/'.join([kind, who, network, *group]))

        tarn, fann, threads = of('tarn'), of('fann'), of('tarn-threads')
        rows.append([
            kind, network, group[0] if group else '', f'{plain / 1e6:.0f}',
            f'{fann / 1e6:.0f}' if fann else '', f'{tarn / 1e6:.0f}', f'{tarn / plain:.2f}',
            f'{tarn / fann:.2f}' if fann else '',
            f'{tarn * pairs_per_connection(kind, network) / peak:.2f}' if peak else '',
            f'{threads / 1e6:.0f}' if threads else '',
            f'{threads / tarn:.2f}' if threads else ''])
    widths = [max(len(row[i]) for row in rows) for i in range(len(head))]
    for row in rows:
        print('  '.join(cell.rjust(width) if i > 2 else cell.ljust(width)
                        for i, (cell, width) in enumerate(zip(row, widths))).rstrip())


if __name__ == '__main__':
    main()
