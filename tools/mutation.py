#!/usr/bin/env python3
"""How many small mistakes in the code would the tests notice?

    mutation.py WORK [--count 200] [--seed 1] [--under src/kernels ...] > survivors.txt

WORK receives a copy of the files and its build, and may be used again. Each mutant changes one
place of one source file: an ordering or its strictness, a sign, a factor, a term, the last digit of
a constant, a condition, a returned value; not what can change no result, as the sign of a truth
value. It is built incrementally and counts as killed when it does not compile (warnings are
errors), when a test fails, when the calls take other work than is on record (the test `work`, which
sees a worse start of a search that still ends at the same place), or when a test takes ten times
its usual time.

The report lists the survivors as changed lines, and the share killed.
"""

import argparse
import os
import pathlib
import random
import re
import shutil
import signal
import subprocess
import sys
import time

ROOT = pathlib.Path(__file__).resolve().parent.parent
FOLDERS = ["src/kernels", "src/descriptive", "src/distributions", "src/hypothesis",
           "src/clustering"]
TESTS = ["vela_internal_tests", "vela_allocation_tests", "vela_api_tests"]
RECORDS = {"fuzz/vela_digest": "fuzz/compare_digest.cmake",
           "work/vela_work": "work/compare_work.cmake"}
PROGRAMS = TESTS + [os.path.basename(program) for program in RECORDS]


def other_digit(match):
    """The last digit, of a whole number the one before the point, or of a long constant the sixth
    that counts: in most series a coefficient is a small part of the sum, and further digits would be
    below the sum's last bit, as all digits are of the tiny coefficients at the end."""
    digits, exponent = match.group(1), match.group(2) or ""
    if int(exponent[1:] or 0) < -9:
        return match.group(0)
    if digits.endswith(".0") and not exponent:
        return digits[:-3] + str((int(digits[-3]) + 1) % 10) + ".0"
    first = re.match(r"[0.]*", digits).end()
    places = [place for place in range(first, len(digits)) if digits[place] != "."]
    place = places[min(len(places), 6) - 1] if places else len(digits) - 1
    return digits[:place] + str((int(digits[place]) + 1) % 10) + digits[place + 1:] + exponent


# Where one method ends and another begins, both give the result: a cut belongs to either.
NO_CUT = r"(?!-?(?!0\.0|0\.5|1\.0)\d+(\.\d|e[-+]?\d))"

# A pattern, and what stands in its place. Operators are recognised by the spaces around them, which
# the formatter guarantees and which templates, pointers and includes do not have.
MUTATIONS = [
    (r" < " + NO_CUT, " <= "), (r" <= " + NO_CUT, " < "),
    (r" > " + NO_CUT, " >= "), (r" >= " + NO_CUT, " > "),
    (r" < ", " > "), (r" > ", " < "), (r" == ", " != "), (r" != ", " == "),
    (r" && ", " || "), (r" \|\| ", " && "),
    (r" \+ ", " - "), (r" - ", " + "), (r" \* ", " / "), (r" / ", " * "),
    (r" \+ 1(\.0)?\b", r" + 2\1"), (r" - 1(\.0)?\b", r" - 2\1"),
    (r" [+-] [\w.]+(?=[;,)])", ""), (r" \* [\w.]+(?=[;,)])", ""),
    (r"\b(\d+\.\d+)(e[-+]?\d+)?\b", other_digit),
    (r"\bif \(([^;{}]*)\) \{$", r"if (!(\1)) {"),
    (r"\bwhile \(([^;{}]*)\) \{$", r"while (!(\1)) {"),
    (r"\+\+", "--"), (r"\+= ", "-= "), (r"-= ", "+= "),
    (r"\btrue\b", "false"), (r"\bfalse\b", "true"),
    (r"\breturn ([^;{}]+);", r"return -(\1);"),
]


# A return value whose sign means nothing, and a variable that is set before it is read.
SIGNLESS = re.compile(r"return (true|false|0|0\.0|conventions::kSuccess|static_cast<bool>.*|"
                      r".* ([=!<>]=|[<>]|&&|\|\|) .*|!?(is|has)_.*);")
PLACEHOLDER = re.compile(r"\s*double \w+ = 0\.0;")


def code_of(line):
    """The line without its comment; empty for a line that holds no code to change."""
    if re.match(r"\s*(#|//|template|static_assert|using |namespace|\})", line) \
            or PLACEHOLDER.match(line):
        return ""
    return line.split("//")[0]


def compiled_lines(path):
    """(number, line) without the other branches of conditional compilation."""
    isElse = False
    for number, line in enumerate(path.read_text().splitlines()):
        if re.match(r"#(else|endif)", line):
            isElse = line.startswith("#else")
        if not isElse:
            yield number, line


def mutants_of(path):
    """Every change of one place: (path, line number, new line)."""
    for number, line in compiled_lines(path):
        code = code_of(line)
        for pattern, replacement in MUTATIONS:
            for match in re.finditer(pattern, code):
                changed = replacement(match) if callable(replacement) \
                    else match.expand(replacement)
                isSign = changed.startswith("return -") and SIGNLESS.match(match.group(0))
                if changed != match.group(0) and not isSign:
                    yield path, number, code[:match.start()] + changed + code[match.end():]


def run(command, cwd, timeout=None):
    """Whether the command succeeds in time."""
    process = subprocess.Popen(command, cwd=cwd, stdout=subprocess.DEVNULL,
                               stderr=subprocess.DEVNULL, start_new_session=True)
    try:
        return process.wait(timeout) == 0
    except subprocess.TimeoutExpired:
        os.killpg(process.pid, signal.SIGKILL)  # with what it has started
        process.wait()
        return False


class Tree:
    """A copy of the project with its build."""

    def __init__(self, place):
        self.source = place / "source"
        self.build = place / "build"
        self.refresh()
        # Compiling is most of the time, and this preset optimises little. The bits are the same.
        if not run(["cmake", "--preset", "work", "-S", self.source, "-B", self.build], place) \
                or not self.compiles():
            sys.exit("the unchanged code does not build")
        records = [["cmake", "-D", f"PROGRAM={self.build}/tests/{program}", "-P",
                    self.source / "tests" / script] for program, script in RECORDS.items()]
        tests = [[self.build / "tests" / program, "--gtest_fail_fast"] for program in TESTS]
        self.checks = [(command, self.usual_time(command)) for command in records + tests]

    def refresh(self):
        """Makes the copy the files of now, also after a campaign that was killed with its mutant."""
        listed = subprocess.check_output(
            ["git", "ls-files", "--cached", "--others", "--exclude-standard"], cwd=ROOT, text=True)
        names = {name for name in listed.split() if (ROOT / name).exists()}
        for name in names:
            target = self.source / name
            target.parent.mkdir(parents=True, exist_ok=True)
            if not target.exists() or target.read_bytes() != (ROOT / name).read_bytes():
                shutil.copy(ROOT / name, target)
        for path in self.source.rglob("*"):
            if path.is_file() and str(path.relative_to(self.source)) not in names:
                path.unlink()

    def compiles(self):
        return run(["cmake", "--build", self.build, "--target", *PROGRAMS], self.source)

    def usual_time(self, command):
        begin = time.monotonic()
        if not run(command, self.build):
            sys.exit("the unchanged code does not pass")
        return time.monotonic() - begin

    def passes(self):
        return all(run(command, self.build, 10 * usual + 10) for command, usual in self.checks)

    def survives(self, path, number, line):
        """Whether the tests pass with the line in place of that one."""
        original = path.read_text()
        lines = original.splitlines()
        lines[number] = line
        path.write_text("\n".join(lines) + "\n")
        try:
            return self.compiles() and self.passes()
        finally:
            path.write_text(original)


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("work", type=pathlib.Path)
    parser.add_argument("--count", type=int, default=200)
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--under", nargs="+", default=FOLDERS, help="folders or files")
    options = parser.parse_args()
    options.work.mkdir(parents=True, exist_ok=True)
    tree = Tree(options.work.resolve())

    paths = sorted(path for under in map(tree.source.joinpath, options.under)
                   for path in ([under] if under.is_file() else under.rglob("*.[ch]pp")))
    if not paths:
        sys.exit("nothing to change under " + " ".join(options.under))
    mutants = [mutant for path in paths for mutant in mutants_of(path)]
    sample = random.Random(options.seed).sample(mutants, min(options.count, len(mutants)))
    survivors = 0
    for tried, (path, number, line) in enumerate(sample):
        print(f"\r{tried - survivors} of {tried} killed", end="", file=sys.stderr, flush=True)
        if tree.survives(path, number, line):
            survivors += 1
            original = path.read_text().splitlines()[number]
            print(f"{path.relative_to(tree.source)}:{number + 1}\n  -{original}\n  +{line}",
                  flush=True)
    killed = len(sample) - survivors
    print(f"{killed} of {len(sample)} mutants killed ({100 * killed / len(sample):.1f}%), "
          f"of {len(mutants)} possible ones")


if __name__ == "__main__":
    main()
