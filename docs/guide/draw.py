#!/usr/bin/env python3
"""Draws the pictures of the guide anew, with its examples.

    draw.py TARN_CLI EXAMPLES FOLDER            into FOLDER
    draw.py --check TARN_CLI EXAMPLES FOLDER    changes nothing; fails when a picture is another
"""

import filecmp
import math
import pathlib
import shutil
import subprocess
import sys
import tempfile

WIDTH, HEIGHT = 640, 360
LEFT, RIGHT, TOP, BOTTOM = 64, 30, 36, 56
COLOURS = ("#0000ff", "#009600", "#ff0000", "#9a5b00")

TRANSFER_FUNCTIONS = (
    ("Sigmoid", lambda x: 1 / (1 + math.exp(-x))),
    ("Gaussian", lambda x: math.exp(-x * x)),
    ("Tanh", lambda x: (math.tanh(x) + 1) / 2),
    ("Sech", lambda x: 1 / math.cosh(x)),
)
LEARN_RATE_FACTORS = (
    ("worse by more than 0.05 %", 0.8),
    ("worse by up to 0.05 %", 0.995),
    ("better by less than 0.001 %", 1.02),
    ("0.001 % to 0.002 %", 1.008),
    ("0.002 % to 0.005 %", 1.002),
    ("0.005 % to 0.1 %", 1.001),
    ("0.1 % to 0.22 %", 1.0),
    ("better by more than 0.22 %", 0.98),
)


def text(x, y, words, anchor="middle", more=""):
    return (f'<text x="{x:.1f}" y="{y:.1f}" font-family="sans-serif" font-size="13" '
            f'text-anchor="{anchor}"{more}>{words}</text>\n')


def line(x1, y1, x2, y2, colour, width=1):
    return (f'<line x1="{x1:.1f}" y1="{y1:.1f}" x2="{x2:.1f}" y2="{y2:.1f}" '
            f'stroke="{colour}" stroke-width="{width}"/>\n')


def svg(body):
    return (f'<svg xmlns="http://www.w3.org/2000/svg" width="{WIDTH}" height="{HEIGHT}" '
            f'viewBox="0 0 {WIDTH} {HEIGHT}">\n'
            f'<rect width="{WIDTH}" height="{HEIGHT}" fill="#ffffff"/>\n{body}</svg>\n')


def plot(title, labels, ticks, curves, names_at=WIDTH - RIGHT - 150):
    """Curves (name, points) over axes from the first to the last of their ticks."""
    (x_label, y_label), (xs, ys) = labels, ticks

    def at(x, y):
        return (LEFT + (x - xs[0]) / (xs[-1] - xs[0]) * (WIDTH - LEFT - RIGHT),
                HEIGHT - BOTTOM - (y - ys[0]) / (ys[-1] - ys[0]) * (HEIGHT - TOP - BOTTOM))

    body = text(WIDTH / 2, 22, title)
    for x in xs:
        body += line(*at(x, ys[0]), *at(x, ys[-1]), "#dddddd")
        body += text(at(x, 0)[0], HEIGHT - BOTTOM + 18, f"{x:g}")
    for y in ys:
        body += line(*at(xs[0], y), *at(xs[-1], y), "#dddddd")
        body += text(LEFT - 8, at(0, y)[1] + 4, f"{y:g}", "end")
    body += text(WIDTH / 2, HEIGHT - 14, x_label)
    middle = (TOP + HEIGHT - BOTTOM) / 2
    body += text(18, middle, y_label, more=f' transform="rotate(-90 18 {middle:.1f})"')
    for number, (name, points) in enumerate(curves):
        colour = COLOURS[number]
        path = " ".join("{:.1f},{:.1f}".format(*at(x, y)) for x, y in points)
        body += f'<polyline points="{path}" fill="none" stroke="{colour}" stroke-width="2"/>\n'
        y = TOP + 18 + 18 * number
        body += line(names_at, y - 4, names_at + 24, y - 4, colour, 2)
        body += text(names_at + 30, y, name, "start")
    return svg(body)


def transfer_functions():
    steps = [i / 10 for i in range(-50, 51)]
    curves = [(name, [(x, f(x)) for x in steps]) for name, f in TRANSFER_FUNCTIONS]
    return plot("Transfer functions", ("net input", "output"),
                (list(range(-5, 6)), [0, 0.2, 0.4, 0.6, 0.8, 1]), curves, LEFT + 20)


def learn_rate_factors():
    """Bars from the factor 1, which leaves the learn rate as it is, to the left or to the right."""
    one, height = 430, 34
    body = text(WIDTH / 2, 22, "What one iteration does to the learn rate")
    for row, (name, factor) in enumerate(LEARN_RATE_FACTORS):
        y = 44 + row * height
        end = one + (factor - 1) * (700 if factor < 1 else 2500)
        left, right = min(one, end), max(one, end)
        body += text(224, y + 17, name, "end")
        body += (f'<rect x="{left:.1f}" y="{y:.1f}" width="{right - left:.1f}" height="24" '
                 f'fill="{"#ff0000" if factor < 1 else "#009600"}"/>\n')
        body += text(right + 8, y + 17, f"x {factor:g}", "start")
    body += line(one, 40, one, 40 + height * len(LEARN_RATE_FACTORS), "#000000")
    body += text(WIDTH / 2, HEIGHT - 14, "the two sides are not drawn to the same scale")
    return svg(body)


class Runs:
    """Training runs of the examples, in a folder of their own."""

    def __init__(self, tarn_cli, examples, folder):
        self._program = str(pathlib.Path(tarn_cli).resolve(strict=True))
        self._folder = pathlib.Path(folder)
        for files in pathlib.Path(examples).glob("*/*.*"):
            shutil.copy(files, folder)

    def tarn(self, *arguments):
        subprocess.run([self._program, *arguments], cwd=self._folder, check=True)

    def history(self, net, *options):
        """The columns of the error history of a run with the seed 1."""
        self.tarn("set", net, "-o", "run.net", *options)
        self.tarn("train", "run.net", "--seed", "1", "--quiet", "--error-history", "run.err",
                  "--history", "run.his")
        lines = (self._folder / "run.err").read_text(encoding="utf-8").splitlines()
        return list(zip(*[[float(value) for value in entry.split(",")] for entry in lines]))

    def graph(self, kind, path):
        """Of the last run."""
        self.tarn("plot", kind, "run.net", "--history", "run.his", "-o", str(path),
                  "--width", str(WIDTH), "--height", str(HEIGHT))


def fast_prop(runs):
    curves = []
    for coefficient in ("0", "0.5", "1"):
        columns = runs.history("xor.net", "--fast-prop", coefficient, "--update-rate", "4",
                               "--iterations", "600")
        curves.append((f"coefficient {coefficient}", list(zip(columns[0], columns[1]))))
    return plot("The xor example with FAST-Prop", ("iteration", "RMS error, training"),
                (list(range(0, 601, 100)), [0, 0.1, 0.2, 0.3, 0.4]), curves)


def overtraining(runs):
    columns = runs.history("iris.net", "--iterations", "20000", "--update-rate", "200")
    curves = [("training set", list(zip(columns[0], columns[1]))),
              ("test set", list(zip(columns[0], columns[2])))]
    return plot("Overtraining: the iris example, 20000 iterations", ("iteration", "RMS error"),
                (list(range(0, 20001, 4000)), [0, 0.1, 0.2, 0.3, 0.4]), curves)


def draw(tarn_cli, examples, folder):
    with tempfile.TemporaryDirectory(prefix="tarn-guide-") as work:
        runs = Runs(tarn_cli, examples, work)
        pictures = {
            "transfer-functions.svg": transfer_functions(),
            "learn-rate-factors.svg": learn_rate_factors(),
            "fast-prop.svg": fast_prop(runs),
            "overtraining.svg": overtraining(runs),
        }
        runs.history("surface.net")
        runs.graph("rms", folder / "surface-rms.svg")
        runs.graph("learn-rate", folder / "surface-learn-rate.svg")
    for name, picture in pictures.items():
        (folder / name).write_text(picture, encoding="utf-8")


def check(tarn_cli, examples, folder):
    """The pictures that are not what is drawn now, or that nothing draws."""
    with tempfile.TemporaryDirectory(prefix="tarn-guide-") as drawn:
        drawn = pathlib.Path(drawn)
        draw(tarn_cli, examples, drawn)
        names = {path.name for place in (drawn, folder) for path in place.glob("*.svg")}
        _, other, missing = filecmp.cmpfiles(drawn, folder, sorted(names), shallow=False)
    return other + missing


def main(arguments):
    checks = arguments[:1] == ["--check"]
    if len(arguments) != (4 if checks else 3):
        sys.exit(__doc__)
    tarn_cli, examples = arguments[-3:-1]
    folder = pathlib.Path(arguments[-1]).resolve()
    if not checks:
        draw(tarn_cli, examples, folder)
        return 0
    wrong = check(tarn_cli, examples, folder)
    for name in wrong:
        print(f"{folder / name}: not what is drawn now")
    return 1 if wrong else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
