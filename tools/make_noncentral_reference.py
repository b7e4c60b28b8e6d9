#!/usr/bin/env python3
"""Reference values of the noncentral chi-square and F distributions for tests/data/noncentral.csv.

With N ~ Poisson(noncentrality / 2), a = df1 / 2 and the step g_k from one central lower tail to the
next, P(A) - P(A + 1) at A = a + k,

    P(X <= x) = sum_j P(N = j) P(a + j) = sum_k g_k P(N <= k),

summed over all k that matter with so many digits that the complement still has 30. Where the F sum
would be long (r = df1 x / df2 large), the upper tail is the mixture of incomplete beta functions.

Usage: make_noncentral_reference.py > tests/data/noncentral.csv
       make_noncentral_reference.py COUNT SEED for a random grid of the same form
"""

import random
import sys

import mpmath as mp

DIGITS = 340
INF = float("inf")

# x, df1, df2, noncentrality; df2 infinite: chi-square in x
CASES = [
    # chi-square: centre, then both tails
    (5.0, 4.0, INF, 1.0), (60.0, 4.0, INF, 1.0), (1e-3, 4.0, INF, 1.0), (1.0, 1.0, INF, 50.0),
    (900.0, 1.0, INF, 50.0), (1e4, 10.0, INF, 1e4), (9e3, 10.0, INF, 1e4), (1.2e4, 10.0, INF, 1e4),
    (1.75e4, 10.0, INF, 1e4), (4.3e3, 10.0, INF, 1e4), (1.0, 10.0, INF, 500.0), (1200.0, 3.0, INF, 1e-3),
    (1240.0, 1e-3, INF, 1e-3), (1270.0, 1.5, INF, 1e-6),
    # few degrees of freedom: the upper tail may be the small one far below the mean
    (1e-300, 1e-3, INF, 1e-3), (1e-5, 1e-3, INF, 0.5), (1e-3, 1e-3, INF, 20.0), (30.0, 1e-3, INF, 1e-10),
    (1e-250, 1e-2, INF, 3.0), (0.5, 1e-3, INF, 200.0), (1e-100, 0.5, INF, 1.0),
    # many degrees of freedom, noncentrality small and large against them
    (1e8, 1e8, INF, 3.0), (1.005e8, 1e8, INF, 10.0), (9.951e7, 1e8, INF, 10.0), (1.02e6, 1e6, INF, 1e4),
    (1.045e6, 1e6, INF, 1e4), (1.001e6, 3.0, INF, 1e6), (9.3e5, 3.0, INF, 1e6), (4e6, 2.0, INF, 4e6),
    (4.14e6, 2.5, INF, 4e6),
    # F: centre, tails, shapes below 1, large shapes
    (1.0, 4.0, 10.0, 1.0), (30.0, 4.0, 10.0, 5.0), (1e-4, 4.0, 10.0, 5.0), (5e2, 2.0, 30.0, 100.0),
    (4e3, 2.5, 60.0, 1e4), (6e4, 2.5, 60.0, 1e4), (1.0, 2.0, 5.0, 800.0), (1e-2, 30.0, 7.5, 80.0),
    (1e30, 3.0, 4.0, 20.0), (1e250, 3.0, 0.5, 20.0), (1e-290, 0.5, 3.0, 2.0), (1e300, 1e-3, 1e-3, 1.0),
    (1e-300, 1e-3, 1e-3, 1.0), (0.3, 1e-3, 5.0, 1e-2), (1e3, 1e-3, 1e-3, 30.0), (20.0, 0.3, 0.4, 200.0),
    (1.01, 1e6, 1e6, 10.0), (1.03, 1e6, 1e8, 1e3), (0.95, 1e5, 1e6, 1.0), (12.0, 1e3, 1e5, 1e4),
    (2.0, 1e8, 50.0, 1e4), (0.31, 1e8, 50.0, 1e4), (101.0, 1e2, 1e8, 1e4), (1e-3, 7.0, 1e5, 300.0),
    (1e5, 3.0, 1.0, 1e3), (2.0, 5.0, 1e16, 7.0),
    # a lower tail whose power series would need millions of terms
    (1.41e-3, 1.8e8, 1.75, 2e-5),
]


def log_step(a, b, x, y):
    """ln g at shape a; b None: chi-square with half of x."""
    if b is None:
        return a * mp.log(x) - x - mp.loggamma(a + 1)
    return (a * mp.log(x) + b * mp.log(y) + mp.loggamma(a + b) - mp.loggamma(a + 1)
            - mp.loggamma(b))


def lower_by_steps(a, b, x, y, mean):
    """sum_k g_k P(N <= k), from the first k at which P(N <= k) is not hopelessly small."""
    k = max(0, int(mean - 60 * mp.sqrt(mean))) if mean > 1e5 else 0
    weight = mp.exp(-mean + k * mp.log(mean) - mp.loggamma(k + 1))
    cumulative, step, total = weight, mp.exp(log_step(a + k, b, x, y)), mp.mpf(0)
    smallest = mp.mpf(10) ** (-DIGITS)
    for _ in range(3_000_000):
        total += step * cumulative
        ratio = x / (a + k + 1) if b is None else x * (a + b + k) / (a + k + 1)
        if ratio < 1 and k > mean and step * ratio < smallest * (1 - ratio):
            return total
        step *= ratio
        k += 1
        weight *= mean / k
        cumulative += weight
    raise RuntimeError("too long")


def upper_by_mixture(a, b, y, mean):
    weight, total, j = mp.exp(-mean), mp.mpf(0), 0
    while True:
        term = weight * mp.betainc(b, a + j, 0, y, regularized=True)
        total += term
        if j > 1.5 * mean + 20 and term < mp.mpf(10) ** (15 - mp.mp.dps) * total:
            return total
        j += 1
        weight *= mean / j


def reference(f, df1, df2, nc):
    """(lower, upper)."""
    with mp.workdps(DIGITS):
        f, a, mean = mp.mpf(f), mp.mpf(df1) / 2, mp.mpf(nc) / 2
        if df2 == INF:
            lower = lower_by_steps(a, None, f / 2, None, mean)
            return lower, 1 - lower
        b = mp.mpf(df2) / 2
        ratio = mp.mpf(df1) * f / mp.mpf(df2)
        x, y = ratio / (1 + ratio), 1 / (1 + ratio)
        if y > 0.02 or y * b > 20:
            lower = lower_by_steps(a, b, x, y, mean)
            return lower, 1 - lower
    for digits in (60, DIGITS):
        with mp.workdps(digits):
            upper = upper_by_mixture(a, b, y, mean)
            if 1 - upper > mp.mpf(10) ** -20:
                break
    with mp.workdps(DIGITS):
        return 1 - upper, upper


def random_cases(count, seed):
    rng = random.Random(seed)
    for _ in range(count):
        is_f = rng.random() < 0.5
        df1 = 10 ** rng.uniform(-3, rng.choice([1, 3, 6]))
        df2 = 10 ** rng.uniform(-3, rng.choice([1, 3, 6])) if is_f else INF
        nc = 10 ** rng.uniform(-6, rng.choice([1.5, 4]))
        mean = df1 + nc
        sd = (2 * (df1 + 2 * nc)) ** 0.5
        kind = rng.random()
        x = mean + sd * (rng.uniform(-3, 3) if kind < 0.4 else rng.uniform(-36, 36))
        if kind > 0.7:
            x = mean * 10 ** rng.uniform(-2, 1.5)
        if x <= 0:
            x = mean * 10 ** rng.uniform(-8, 0)
        if is_f:
            x = x / df1 * 10 ** (rng.gauss(0, 1) * min(1, (2 / df2) ** 0.5))
        rounded = [float(f"{v:.10g}") for v in (x, df1, df2, nc)]
        yield tuple(rounded)


def main():
    is_random = len(sys.argv) > 1
    cases = random_cases(int(sys.argv[1]), int(sys.argv[2])) if is_random else CASES
    print(f"# mpmath {mp.__version__}, {DIGITS} digits; "
          "tools/make_noncentral_reference.py > tests/data/noncentral.csv")
    print("# x,df1,df2,noncentrality,lower,upper: exact doubles in, 25 digits out; df2 inf: chi-square in x")
    for case in cases:
        try:
            lower, upper = reference(*case)
        except (RuntimeError, ValueError, mp.libmp.libhyper.NoConvergence):
            if not is_random:
                raise
            continue  # no sum above serves
        digits = [mp.nstr(v, 25, min_fixed=0, max_fixed=0) for v in (lower, upper)]
        print(",".join([repr(v) for v in case] + digits), flush=True)


if __name__ == "__main__":
    main()
