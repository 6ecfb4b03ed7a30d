#!/usr/bin/env python3
"""How the cost of a training iteration grows: growth.py RESULTS.json PICTURE.svg

Prints Markdown tables and draws the time of an iteration against the size on logarithmic axes.
"""

import math
import sys

from results import Results, connections_of, number, training_pairs

# What is measured, its axis label, whether equal steps of the size are drawn equally long.
KINDS = [
    ('patterns', 'patterns of a 16-32-8 network', False),
    ('nodes', 'N of an N-N-10 network, 300 patterns', False),
    ('layers', 'layers of 64 nodes, 1000 patterns', True),
]
GROUPS = [('1', 'update after each pattern', '#b5402a'),
          ('all', 'one update an iteration', '#22607f')]


def work(kind, size):
    """Connections and patterns."""
    if kind == 'patterns':
        return connections_of('16-32-8'), size
    if kind == 'nodes':
        return connections_of(f'{size}-{size}-10'), 300
    return (size - 1) * 65 * 64, 1000


def pairs(kind, size):
    """Multiply-plus-add pairs for each connection and pattern."""
    if kind == 'patterns':
        return training_pairs('16-32-8')
    if kind == 'nodes':
        return training_pairs(f'{size}-{size}-10')
    return 2 + (size - 2) * 64 * 64 / work(kind, size)[0]


def points(results, kind, group):
    """(size, seconds of an iteration, connections x patterns per second), ascending."""
    found = []
    for name in results.names(f'growth/{kind}/{group}'):
        size = int(name.rsplit('/', 1)[1])
        connections, patterns = work(kind, size)
        speed = results.median(name)
        found.append((size, connections * patterns / speed, speed))
    return sorted(found)


def seconds(value):
    for factor, unit in ((1, 's'), (1e3, 'ms'), (1e6, 'us')):
        if value * factor >= 1:
            return f'{value * factor:.3g} {unit}'
    return f'{value * 1e6:.2g} us'


def print_tables(results):
    peak = results.median('peak/multiply-plus-add')
    for kind, label, _ in KINDS:
        print(f'| {label} | connections | one by one: iteration | G/s | of sweep '
              '| all: iteration | G/s | of peak |')
        print('|--:' * 8 + '|')
        alone = points(results, kind, '1')
        together = {size: (time, speed) for size, time, speed in points(results, kind, 'all')}
        for size, time, speed in alone:
            connections = work(kind, size)[0]
            sweep = results.median(f'peak/sweep/{connections}')
            all_time, all_speed = together[size]
            share = number(speed / sweep, 2) if sweep else ''
            print(f'| {size} | {connections} | {seconds(time)} | {speed / 1e9:.2f} | {share} '
                  f'| {seconds(all_time)} | {all_speed / 1e9:.1f} '
                  f'| {all_speed * pairs(kind, size) / peak:.2f} |')
        print()


class Panel:
    """One diagram: its place in the picture and the logarithms that its axes span."""

    WIDTH, HEIGHT = 270, 250

    def __init__(self, left, top, sizes, times, linear):
        self.left, self.top, self.linear = left, top, linear
        place = [self._scale(size) for size in sizes]
        self._x = (min(place), max(place))
        self._y = (math.floor(math.log10(min(times))), math.ceil(math.log10(max(times))))

    def _scale(self, size):
        return size if self.linear else math.log10(size)

    def x(self, size):
        low, high = self._x
        return self.left + (self._scale(size) - low) / (high - low) * self.WIDTH

    def y(self, time):
        low, high = self._y
        return self.top + (high - math.log10(time)) / (high - low) * self.HEIGHT

    def decades(self):
        return [10.0 ** power for power in range(self._y[0], self._y[1] + 1)]


def panel_svg(results, kind, label, linear, left, top):
    curves = [(group, points(results, kind, group)) for group, _, _ in GROUPS]
    everything = [point for _, curve in curves for point in curve]
    panel = Panel(left, top, [p[0] for p in everything], [p[1] for p in everything], linear)
    bottom = top + Panel.HEIGHT
    out = [f'<rect x="{left}" y="{top}" width="{Panel.WIDTH}" height="{Panel.HEIGHT}" '
           'fill="none" stroke="#444"/>']
    for time in panel.decades():
        y = panel.y(time)
        out.append(f'<line x1="{left}" x2="{left + Panel.WIDTH}" y1="{y:.1f}" y2="{y:.1f}" '
                   'stroke="#ddd"/>')
        out.append(f'<text x="{left - 6}" y="{y + 4:.1f}" text-anchor="end">{seconds(time)}</text>')
    for size, _, _ in curves[0][1]:
        x = panel.x(size)
        out.append(f'<text x="{x:.1f}" y="{bottom + 16}" text-anchor="middle">{size:,}</text>'
                   .replace(',', '\u2009'))
    out.append(f'<text x="{left + Panel.WIDTH / 2}" y="{bottom + 36}" '
               f'text-anchor="middle">{label}</text>')
    for (_, curve), (_, _, colour) in zip(curves, GROUPS):
        path = ' '.join(f'{panel.x(size):.1f},{panel.y(time):.1f}' for size, time, _ in curve)
        out.append(f'<polyline points="{path}" fill="none" stroke="{colour}" stroke-width="2"/>')
        out += [f'<circle cx="{panel.x(size):.1f}" cy="{panel.y(time):.1f}" r="3" '
                f'fill="{colour}"/>' for size, time, _ in curve]
    return out


def write_picture(results, path):
    step = Panel.WIDTH + 80
    width, height = step * len(KINDS) + 10, Panel.HEIGHT + 110
    out = [f'<svg xmlns="http://www.w3.org/2000/svg" width="{width}" height="{height}" '
           f'viewBox="0 0 {width} {height}" font-family="sans-serif" font-size="11">',
           f'<rect width="{width}" height="{height}" fill="white"/>',
           '<text x="70" y="22" font-size="14">Time of a training iteration, one thread</text>']
    for i, (_, name, colour) in enumerate(GROUPS):
        x = 420 + 230 * i
        out.append(f'<line x1="{x}" x2="{x + 24}" y1="18" y2="18" stroke="{colour}" '
                   'stroke-width="2"/>')
        out.append(f'<text x="{x + 30}" y="22">{name}</text>')
    for i, (kind, label, linear) in enumerate(KINDS):
        out += panel_svg(results, kind, label, linear, 70 + step * i, 50)
    out.append('</svg>')
    with open(path, 'w', encoding='utf-8') as file:
        file.write('\n'.join(out) + '\n')


def main():
    results = Results(sys.argv[1])
    print_tables(results)
    write_picture(results, sys.argv[2])


if __name__ == '__main__':
    main()
