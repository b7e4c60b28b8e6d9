#!/usr/bin/env python3
"""Reference values of the incomplete beta function for tests/data/beta.csv.

    make_beta_reference.py > tests/data/beta.csv

The power series of positive terms is summed with 340 decimal digits in whichever of x and 1 - x is
the smaller one; the complement then still carries 50 digits of a tail of 1e-290. No step is shared
with the library, which never sums that many terms.
"""

import math
import random
import sys

import mpmath
from mpmath import mpf

mpmath.mp.dps = 340
SMALLEST_LOG = -662  # smaller tails count as 0 in the library


def series_tail(x, y, a, b):
    """I_x(a, b) = x^a y^b / (a B(a, b)) (1 + x (a + b) / (a + 1) + ...)."""
    term = total = mpf(1)
    k = 0
    while term > total * mpf(10) ** -338:
        term *= x * (a + b + k) / (a + 1 + k)
        total += term
        k += 1
    log_beta = mpmath.loggamma(a) + mpmath.loggamma(b) - mpmath.loggamma(a + b)
    return total * mpmath.exp(a * mpmath.log(x) + b * mpmath.log(y) - log_beta) / a


def tails(x, y, a, b):
    """Lower and upper tail; the smaller of the doubles x and y is exact, the other its complement."""
    a, b = mpf(a), mpf(b)
    if x <= y:
        lower = series_tail(mpf(x), 1 - mpf(x), a, b)
        return lower, 1 - lower
    upper = series_tail(mpf(y), 1 - mpf(y), b, a)
    return 1 - upper, upper


def points(rng, a, b):
    """Points about the mean, in both tails, and next to 0 and 1: pairs of doubles (x, 1 - x)."""
    mean = a / (a + b)
    deviation = math.sqrt(mean * (1 - mean) / (a + b + 1))
    for z in (0, rng.uniform(-1, 1), rng.uniform(2, 6), -rng.uniform(2, 6), rng.uniform(6, 35),
              -rng.uniform(6, 35)):
        x = mean + z * deviation
        if 0 < x < 1:
            yield (x, 1 - x)
    small = math.exp(-rng.uniform(1, 40))
    if a < 100:
        yield (mean * small, 1 - mean * small)
    if b < 100:
        y = (1 - mean) * small
        yield (1 - y, y)


def shapes(rng):
    yield from [(0.5, 0.5), (1.0, 1.0), (2.0, 3.0), (1e-3, 1e-3), (1e-3, 1e6), (1e6, 1e6), (1e6, 0.5),
                (1e5, 39.9), (40.1, 41.0), (1.0, 50.0), (1.0001, 30.0), (14.9, 0.7), (15.1, 0.7)]
    for low, high, count in ((-3, 0, 4), (0, 2, 6), (2, 6, 5), (-3, 6, 14)):
        for _ in range(count):
            yield (10 ** rng.uniform(low, high), 10 ** rng.uniform(low, high))
    # whole and half shapes below and above a total of 60, and either side of a b / (a + b) = 100
    yield from [(3.5, 27.0), (45.5, 14.5), (22.0, 38.5), (7.0, 0.2), (130.0, 300.0), (150.0, 320.0)]


def print_row(x, y, a, b):
    lower, upper = tails(x, y, a, b)
    if min(mpmath.log(lower), mpmath.log(upper)) > SMALLEST_LOG:
        print(f"{x!r},{y!r},{a!r},{b!r},{mpmath.nstr(lower, 20)},{mpmath.nstr(upper, 20)}")


def main():
    print(f"# mpmath {mpmath.__version__} at {mpmath.mp.dps} digits: {sys.argv[0].split('/')[-1]}")
    print("# x,y,a,b,lower,upper (the smaller of x and y is exact, the other 1 minus it)")
    rng = random.Random(1992)
    for a, b in shapes(rng):
        for x, y in points(rng, a, b):
            if 0 < x < 1 and 0 < y < 1:
                print_row(x, y, a, b)
    print_row(4.185e-321, 1.0, 0.366, 76.0)  # a denormal product would lose digits here


if __name__ == "__main__":
    main()
