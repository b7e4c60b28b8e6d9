#!/usr/bin/env python3
"""Reference values of Student's t for tests/data/student_t.csv.

    make_student_t_reference.py > tests/data/student_t.csv

Upper tails are half an incomplete beta function, summed by make_beta_reference.py's series with 340
digits in whichever of t^2 / (df + t^2) and its complement is the smaller one.
"""

import math
import random
import sys

import mpmath
from mpmath import mpf

from make_beta_reference import SMALLEST_LOG, series_tail


def upper_tail(t, df):
    t, df = mpf(t), mpf(df)
    x, y = df / (df + t * t), t * t / (df + t * t)
    if x <= y:
        return series_tail(x, y, df / 2, mpf(1) / 2) / 2
    return (1 - series_tail(y, x, mpf(1) / 2, df / 2)) / 2


def density(t, df):
    t, df = mpf(t), mpf(df)
    log_scale = (mpmath.loggamma((df + 1) / 2) - mpmath.loggamma(df / 2)
                 - mpmath.log(df * mpmath.pi) / 2)
    return mpmath.exp(log_scale - (df + 1) / 2 * mpmath.log1p(t * t / df))


def degrees_of_freedom(rng):
    # 20 is where the expansion for many degrees of freedom begins
    yield from [0.001, 0.01, 0.5, 1.0, 2.0, 3.0, 10.0, 19.9999, 20.0, 30.0, 100.0, 1e4, 1e6, 1e8]
    for _ in range(16):
        yield 10 ** rng.uniform(-2, 8)


def arguments(rng, df):
    """Arguments at given normal-like distances, so that every tail down to 1e-280 is met."""
    for z in (rng.uniform(0.001, 0.3), rng.uniform(0.3, 1), rng.uniform(1, 2), rng.uniform(2, 4),
              rng.uniform(4, 8), rng.uniform(8, 20), rng.uniform(20, 35.9)):
        yield math.sqrt(df * math.expm1(min(z * z / df, 150)))
    yield 1e-200
    if df < 2:
        yield 1e120


def main():
    print(f"# mpmath {mpmath.__version__} at {mpmath.mp.dps} digits: {sys.argv[0].split('/')[-1]}")
    print("# t,df,lower,upper,density")
    rng = random.Random(1908)
    for df in degrees_of_freedom(rng):
        for t in arguments(rng, df):
            upper = upper_tail(t, df)
            if mpmath.log(upper) > SMALLEST_LOG:
                values = (1 - upper, upper, density(t, df))
                print(f"{t!r},{df!r}," + ",".join(mpmath.nstr(v, 20) for v in values))


if __name__ == "__main__":
    main()
