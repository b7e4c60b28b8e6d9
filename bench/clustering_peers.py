#!/usr/bin/python3
"""Speed of hierarchical clustering beside fastcluster and SciPy, in one run on the same data.

    clustering_peers.py [--page=FILE] BENCH_PROGRAM [ROWS [REPETITIONS]]

The results are added to the page, unless BENCHMARK_FILTER makes the run a partial one. Needs NumPy, SciPy and fastcluster (python3-scipy, python3-fastcluster in Debian). The rows are
points of 10 normal variables. Both sides get a copy of the same distances, which they may
overwrite, and take turns; the medians of the times are compared, and the trees: the two clusters
of every merge must hold the same rows, at distances equal to 1e-9. Then vela alone at half the
rows and at all of them.
"""

import argparse
import os
import statistics
import subprocess
import sys
import tempfile
import time

import fastcluster
import numpy
from scipy.spatial.distance import pdist

EUCLIDEAN, SQUARED = 2000, 2003
# name here, code of the linkage, name there, kind of distance here. The peer squares by itself.
LINKAGES = [
    ("average", 1000, "average", EUCLIDEAN),
    ("single", 1001, "single", EUCLIDEAN),
    ("complete", 1002, "complete", EUCLIDEAN),
    ("Ward", 1003, "ward", SQUARED),
    ("McQuitty", 1004, "weighted", EUCLIDEAN),
    ("median", 1005, "median", SQUARED),
    ("centroid", 1006, "centroid", SQUARED),
]


class Vela:
    """The bench program, waiting for commands."""

    def __init__(self, program, directory):
        self.directory = directory
        self.process = subprocess.Popen([program], stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True)

    def ask(self, *words):
        print(*words, file=self.process.stdin, flush=True)
        return float(self.process.stdout.readline())

    def load(self, points):
        path = self.directory + "/table"
        points.tofile(path)
        self.ask("table", path, *points.shape)

    def steps(self):
        path = self.directory + "/steps"
        self.ask("steps", path)
        return numpy.fromfile(path).reshape(-1, 4)


def timed(call):
    start = time.perf_counter()
    result = call()
    return time.perf_counter() - start, result


def lowest_rows(tree):
    """The merges of a SciPy tree as (lower row, higher row, distance, size), by distance."""
    rows = len(tree) + 1
    lowest = list(range(rows))
    merges = []
    for a, b, distance, size in tree:
        low, high = sorted((lowest[int(a)], lowest[int(b)]))
        lowest.append(low)
        merges.append((low, high, distance, size))
    return numpy.array(merges)


def same_tree(steps, tree, kind):
    ours = steps.copy()
    if kind == SQUARED:
        ours[:, 2] = numpy.sqrt(ours[:, 2])
    theirs = lowest_rows(tree)
    # Merges of unrelated clusters may stand in another order: compare them by what they merge.
    ours, theirs = (m[numpy.lexsort((m[:, 1], m[:, 0]))] for m in (ours, theirs))
    return bool(numpy.array_equal(ours[:, [0, 1, 3]], theirs[:, [0, 1, 3]])
                and numpy.allclose(ours[:, 2], theirs[:, 2], rtol=1e-9, atol=0))


class Report:
    """Prints its lines at once and keeps them for the page."""

    def __init__(self):
        self.lines = []

    def header(self, title, *columns):
        print(f"\n{title:22}" + "".join(f"{column:>10}" for column in columns))
        self.lines += ["", f"| {title} | {' | '.join(columns)} | |", "|---" + "|--:" * len(columns) + "|---|"]

    def line(self, name, ours, theirs, remark=""):
        ours, theirs = statistics.median(ours), statistics.median(theirs)
        cells = [f"{1e3 * ours:.1f}", f"{1e3 * theirs:.1f}", f"{ours / theirs:.2f}"]
        print(f"{name:22}" + "".join(f"{cell:>10}" for cell in cells) + f"  {remark}", flush=True)
        self.lines.append(f"| {name} | {' | '.join(cells)} | {remark} |")

    def add_to(self, page):
        with open(page, "a", encoding="utf-8") as file:
            print("\n## Clustering\n\nMilliseconds, beside SciPy (distances) and fastcluster (linkages).",
                  *self.lines, sep="\n", file=file)


def measure(program, rows, repetitions):
    points = numpy.random.default_rng(1).standard_normal((rows, 10))
    report = Report()
    report.header(f"{rows} rows, {repetitions} times", "vela ms", "peer ms", "ratio")
    with tempfile.TemporaryDirectory() as directory:
        vela = Vela(program, directory)
        vela.load(points)
        for kind, metric in ((2000, "euclidean"), (2001, "seuclidean"), (2002, "cityblock"), (2003, "sqeuclidean")):
            times = [(vela.ask("distances", kind), timed(lambda: pdist(points, metric))[0])
                     for _ in range(repetitions)]
            report.line("distances, " + metric, *zip(*times))
        distances = pdist(points)
        for name, code, method, kind in LINKAGES:
            vela.ask("distances", kind)
            times = []
            for _ in range(repetitions):
                ours = vela.ask("run", code)
                copy = distances.copy()
                theirs, tree = timed(lambda: fastcluster.linkage(copy, method, preserve_input=False))
                times.append((ours, theirs))
            report.line(name, *zip(*times), "same tree" if same_tree(vela.steps(), tree, kind) else "OTHER TREE")
        report.header("vela alone", "n ms", "n / 2 ms", "ratio")
        for name, code, _, kind in LINKAGES:
            times = {}
            for count in (rows, rows // 2):
                vela.load(points[:count])
                vela.ask("distances", kind)
                times[count] = [vela.ask("run", code) for _ in range(repetitions)]
            report.line(name, times[rows], times[rows // 2])
    return report


def main():
    parser = argparse.ArgumentParser(usage=__doc__)
    parser.add_argument("program")
    parser.add_argument("rows", type=int, nargs="?", default=5000)
    parser.add_argument("repetitions", type=int, nargs="?", default=7)
    parser.add_argument("--page")
    given = parser.parse_args()
    report = measure(given.program, given.rows, given.repetitions)
    if given.page and not os.environ.get("BENCHMARK_FILTER"):
        report.add_to(given.page)


if __name__ == "__main__":
    main()
