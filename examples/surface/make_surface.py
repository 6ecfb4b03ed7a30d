#!/usr/bin/env python3
"""Writes surface.txt: a noisy surface over two inputs.

    ./make_surface.py > surface.txt

The generator is written out here and every printed value lies far from a rounding edge (the
nearest by 0.0002 of its last digit), so the file is the same byte for byte everywhere.
"""

import math
import sys

PATTERNS = 400
NOISE = 0.15  # largest deviation from the surface


class Generator:
    """A 32-bit linear congruential generator; the upper 16 bits are the draw."""

    def __init__(self, seed):
        self.state = seed

    def draw(self):
        """The next whole number, 0..65535."""
        self.state = (self.state * 1664525 + 1013904223) % 2**32
        return self.state >> 16

    def uniform(self, low, high):
        return low + (high - low) * self.draw() / 65535


def height(x, y):
    """A hill near (-0.8, -0.6), a hollow near (1, 0.8) and a gentle slope."""
    hill = 2.0 * math.exp(-((x + 0.8) ** 2 + (y + 0.6) ** 2))
    hollow = 1.5 * math.exp(-1.5 * ((x - 1.0) ** 2 + (y - 0.8) ** 2))
    return hill - hollow + 0.2 * x


def main():
    generator = Generator(2026)
    lines = ['# "East" "North" "Height"\n']
    for _ in range(PATTERNS):
        x = round(generator.uniform(-2.0, 2.0), 3)
        y = round(generator.uniform(-2.0, 2.0), 3)
        # Two draws added up: small deviations are likelier than large ones.
        noise = generator.uniform(-NOISE / 2, NOISE / 2) + generator.uniform(-NOISE / 2, NOISE / 2)
        lines.append(f'{x:.3f} {y:.3f} {height(x, y) + noise:.4f}\n')
    sys.stdout.write(''.join(lines))


if __name__ == '__main__':
    main()
