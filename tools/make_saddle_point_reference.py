#!/usr/bin/env python3
"""Reference values of the mass functions for tests/data/saddle_point.csv.

    make_saddle_point_reference.py > tests/data/saddle_point.csv

Logarithms of gamma functions are subtracted with 80 decimal digits, of which shapes of 1e15 use up
20; the library never subtracts them.
"""

import math
import random
import sys

import mpmath
from mpmath import mpf

mpmath.mp.dps = 80
SMALLEST = mpf(10) ** -290


def stirling(n):
    n = mpf(n)
    return mpmath.loggamma(n + 1) - ((n + 0.5) * mpmath.log(n) - n + mpmath.log(2 * mpmath.pi) / 2)


def poisson(x, mean):
    x, mean = mpf(x), mpf(mean)
    return mpmath.exp(x * mpmath.log(mean) - mean - mpmath.loggamma(x + 1))


def binomial(x, n, p, q):
    """The smaller of the doubles p and q is exact, the other its complement."""
    exact_p = mpf(p) if p <= q else 1 - mpf(q)
    exact_q = 1 - mpf(p) if p <= q else mpf(q)
    x, n = mpf(x), mpf(n)
    return mpmath.exp(mpmath.loggamma(n + 1) - mpmath.loggamma(x + 1) - mpmath.loggamma(n - x + 1)
                      + x * mpmath.log(exact_p) + (n - x) * mpmath.log(exact_q))


def print_row(kind, arguments, value):
    if value > SMALLEST:
        fields = [repr(a) for a in arguments] + [""] * (4 - len(arguments))
        print(",".join([kind] + fields + [mpmath.nstr(value, 20)]))


def print_poisson_rows(rng, x):
    for z in (0, rng.uniform(-1, 1), rng.uniform(2, 8), -rng.uniform(2, 8), rng.uniform(8, 35),
              -rng.uniform(8, 35)):
        mean = x + z * math.sqrt(x)
        if mean > 0:
            print_row("poisson", (x, mean), poisson(x, mean))
    for mean in (x * math.exp(-rng.uniform(1, 300 / (x + 1))), rng.uniform(100, 600)):
        print_row("poisson", (x, mean), poisson(x, mean))


def print_binomial_rows(rng, x, n):
    for z in (0, rng.uniform(1, 8), -rng.uniform(1, 8), rng.uniform(8, 35), -rng.uniform(8, 35)):
        p = x / n + z * math.sqrt(x / n * (1 - x / n) / n)
        if 0 < p < 1:
            print_row("binomial", (x, n, p, 1 - p), binomial(x, n, p, 1 - p))
    for small in (math.exp(-rng.uniform(1, 400 / (x + 1))), math.exp(-rng.uniform(1, 40))):
        print_row("binomial", (x, n, small, 1 - small), binomial(x, n, small, 1 - small))


def main():
    print(f"# mpmath {mpmath.__version__} at {mpmath.mp.dps} digits: {sys.argv[0].split('/')[-1]}")
    print("# kind,arguments (4 fields),expected: stirling n; poisson x,mean; binomial x,n,p,q with")
    print("# the smaller of p and q exact, the other 1 minus it")
    rng = random.Random(2000)
    for n in (1e-3, 0.37, 1.0, 1.5, 9.75, 10.0, 31.0, 1e6, 1e15):
        print_row("stirling", (n,), stirling(n))
    for x in (1e-3, 0.5, 3.0, 11.9, 12.0, 150.0, 6543.25, 1e8, 1e15):
        print_poisson_rows(rng, x)
    for x, n in ((1.0, 3.0), (0.001, 11.9), (4.0, 12.0), (0.001, 1e6), (1e6 - 0.5, 1e6), (70.0, 200.0),
                 (12345.0, 1e6), (3.25, 1e9), (5e14, 1e15), (0.0, 40.0), (1e5, 1e5)):
        print_binomial_rows(rng, x, n)


if __name__ == "__main__":
    main()
