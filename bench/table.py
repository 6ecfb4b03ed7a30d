#!/usr/bin/env python3
"""Prints the medians and ratios of a benchmark run: table.py RESULTS.json

Training and recall are in millions of connections x patterns per second. Shares of the peak are
those of the multiply-plus-add pairs that the work takes, in all the pairs of separate
multiplications and additions that one thread does in registers. Bytes are what has to pass
between the processor and what holds the network and its patterns, for each connection and
pattern: in groups of one every weight and weight change, there and back; always the pattern's
inputs and targets, and the outputs of its nodes back. Shares of the sweep are those of weights
updated in all that one thread could read and write of so many.
"""

import sys

from results import Results, connections_of, number, table, training_pairs

MILLION = 1e6


def ratio(value, base, digits=2):
    return '' if value is None or base is None else f'{value / base:.{digits}f}'


def bytes_per_connection(kind, network, group):
    inputs, hidden, outputs = (int(n) for n in network.split('-'))
    values = inputs + hidden + outputs + (outputs if kind == 'training' else 0)
    moved = 4 * values / connections_of(network)
    return moved + 16 if group == '1' else moved


def by_size(name):
    """Sorts names KIND/WHO/NETWORK[/GROUP] by the network."""
    _, _, network, *group = name.split('/')
    return connections_of(network), group


def speed_rows(results):
    peak = results.median('peak/multiply-plus-add')
    rows = [['work', 'network', 'group', 'plain', 'FANN', 'Tarn', 'to plain', 'to FANN', 'of peak',
             'bytes', 'of sweep', 'threads', 'to one thread']]
    names = [name for kind in ('training', 'recall')
             for name in sorted(results.names(kind + '/plain'), key=by_size)]
    for name in names:
        kind, _, network, *group = name.split('/')

        def of(who):
            return results.median('/'.join([kind, who, network, *group]))

        plain, fann, tarn, threads = of('plain'), of('fann'), of('tarn'), of('tarn-threads')
        group = group[0] if group else ''
        pairs = training_pairs(network) if kind == 'training' else 1
        sweep = results.median(f'peak/sweep/{connections_of(network)}') if group == '1' else None
        rows.append([kind, network, group, number(plain / MILLION),
                     number(fann / MILLION) if fann else '', number(tarn / MILLION),
                     ratio(tarn, plain), ratio(tarn, fann), ratio(tarn * pairs, peak),
                     number(bytes_per_connection(kind, network, group), 2), ratio(tarn, sweep),
                     number(threads / MILLION), ratio(threads, tarn)])
    return rows


def slice_rows(results):
    rows = [['longest slice of 10 ms', 'group', 'one thread', 'threads']]
    for name in sorted(results.names('slices/tarn'), key=by_size):
        _, _, network, group = name.split('/')
        alone = results.largest(name, 'longest_ms')
        threads = results.largest(f'slices/tarn-threads/{network}/{group}', 'longest_ms')
        rows.append([network, group, number(alone, 1) + ' ms', number(threads, 1) + ' ms'])
    return rows


def main():
    results = Results(sys.argv[1])
    peak = results.median('peak/multiply-plus-add')
    print(f'{results.machine}, medians of {results.count()} rounds')
    print(f'peak of multiplications plus additions, one thread: {peak / 1e9:.1f} G pairs/s\n')
    print(table(speed_rows(results), 3))
    print()
    print(table(slice_rows(results), 2))


if __name__ == '__main__':
    main()
