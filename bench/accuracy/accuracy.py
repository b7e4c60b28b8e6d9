#!/usr/bin/python3
"""Errors of the distributions beside other libraries: writes accuracy.md and accuracy/*.svg.

    accuracy.py EVALUATE_PROGRAM DOCS_DIRECTORY

Needs mpmath (python3-mpmath in Debian). points.py draws the points, references.py knows their
values, the program evaluates them with every library, page.py and plot.py write.
"""

import math
import multiprocessing
import os
import pathlib
import subprocess
import sys
import tempfile
from collections import defaultdict

import page
import plot
import points


def reference_checks():
    """All points, in the same order in every run, however many processors share the work."""
    tasks = points.all_tasks()
    checks = []
    with multiprocessing.Pool(os.cpu_count()) as pool:
        for done, found in enumerate(pool.imap(call, tasks, chunksize=1), 1):
            checks += found
            print(f"\rreference values: {done} of {len(tasks)} draws", end="", flush=True)
    print()
    return checks


def call(task):
    return points.checks_of(*task)


def request(check):
    parameters = (*check.parameters, 0.0, 0.0, 0.0, 0.0)[:4]
    return " ".join([check.function, check.x.hex(), *(p.hex() for p in parameters)])


def evaluate(program, checks):
    """Names and versions of the libraries, and for each check its results, None where missing."""
    with tempfile.TemporaryDirectory() as directory:
        file = pathlib.Path(directory, "results")
        subprocess.run([program, file], input="\n".join(map(request, checks)), text=True,
                       stdout=subprocess.DEVNULL, check=True)
        names, versions, *answers = map(str.split, file.read_text().splitlines())
    results = [[None if word == "-" else float.fromhex(word) for word in words]
               for words in answers]
    return names, versions, results


def errors_by_function(checks, names, results):
    """function -> library -> [(check, error)]."""
    errors = defaultdict(lambda: defaultdict(list))
    for check, row in zip(checks, results, strict=True):
        for name, result in zip(names, row, strict=True):
            if result is not None:
                error = check.error(result) if math.isfinite(result) else math.inf
                errors[check.function][name].append((check, error))
    return errors


def main(program, docs):
    checks = reference_checks()
    names, versions, results = evaluate(program, checks)
    errors = errors_by_function(checks, names, results)
    docs = pathlib.Path(docs)
    (docs / "accuracy").mkdir(exist_ok=True)
    for family in page.PLOTTED:
        text = plot.svg(family, names, [errors[family + suffix] for suffix in ("Cdf", "UpperCdf")])
        (docs / "accuracy" / f"{family}.svg").write_text(text)
    (docs / "accuracy.md").write_text(page.text(errors, names, versions, len(checks)))


if __name__ == "__main__":
    main(*sys.argv[1:])
