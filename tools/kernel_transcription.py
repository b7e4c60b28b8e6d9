#!/usr/bin/env python3
"""The pinned kernels, by pinned_kernels.py, on both sides of every cut-off and branch.

    kernel_transcription.py > tests/data/kernels.csv
"""

import math
import random
import sys

import mpmath

from pinned_kernels import (DBL_MAX, LOG_OVERFLOW, LOG_UNDERFLOW, SMALL, expm1_accurate, gamma_cf,
                            gamma_Iax, gamma_Jax, gamma_log_density, gamma_newton, gamma_pq,
                            gamma_stirling, inv_normal_df, lgamma_lanczos_nan, lgamma_stirling,
                            log_binomial, normal_df, normal_inv_cdf, normal_root,
                            normal_upper_quant, psi, report, safe_pow, stirling_remainder,
                            switch_point, upper_gamma_small)


def number(v):
    return "" if v is None else str(v) if isinstance(v, int) else float(v).hex()


def emit(kernel, arguments, outputs, channel=True):
    arguments = list(arguments) + [None] * (3 - len(arguments))
    outputs = list(outputs) + [None] * (3 - len(outputs))
    tail = [""] * 4
    if channel:
        gamma = kernel.startswith("gamma")
        tail = [report.level, report.name, report.path if gamma else "",
                "" if report.steps is None or not gamma else report.steps]
    print(",".join([kernel] + [number(v) for v in arguments + outputs] + [str(v) for v in tail]))


def around(x):
    return [math.nextafter(x, 0.0), x, math.nextafter(x, math.inf)]


def threshold(g, low, high):
    """Neighbouring doubles between which g changes its truth value, low and high side."""
    at_low = g(low)
    while math.nextafter(low, high) != high:
        mid = low + (high - low) / 2.0
        low, high = (mid, high) if g(mid) == at_low else (low, mid)
    return [low, high]


def gamma_arguments(rng):
    shapes = [1e-300, 1e-100, 1e-20, 1e-4, 1.1e-3, 0.1, 0.5, *around(0.59)[:2], *around(1.0),
              1.2, 2.0, 2.5, 9.5, 50.0, 1234.5, 1e5, 94906265.0]
    for a in shapes:
        for x in (math.nextafter(SMALL, 0.0), SMALL, 1e-250, 1e-30, 1e-3, math.nextafter(1.0, 0.0),
                  1.0, 3.0, 600.0):
            yield x, a
        t = switch_point(a)
        if t > 0.0:
            yield from ((x, a) for x in around(t))
        if a > 1e-3:
            yield from ((a * c, a) for c in (0.5, 0.99, 1.01, 2.0))
        # Both sides of every cut of the two underflow ladders.
        def code_changes(low, high):
            gamma_pq(low, a)
            first = report.path
            def same(x):
                gamma_pq(x, a)
                return report.path == first
            return threshold(same, low, high)
        if gamma_pq(189812530.0, a)[1] == 0.0:
            x = 189812530.0
            for _ in range(3):
                x, _unused = sorted(code_changes(x, max(t, 1.0)))
                yield x, a
                yield math.nextafter(x, math.inf), a
                x = math.nextafter(x, 0.0)
                gamma_pq(x, a)
                if report.path in (60, 61, 62, 100, 101):
                    break
        if t > 1e-200 and gamma_pq(SMALL, a)[0] == 0.0:
            x = SMALL
            for _ in range(3):
                low, x = code_changes(x, t)
                yield low, a
                yield x, a
                gamma_pq(x, a)
                if report.path in (10, 40):
                    break
    for x in (0.0, 189812530.0, math.nextafter(189812530.0, math.inf), math.inf):
        yield x, 0.5
    for a in (0.0, -1.0, math.nan, 94906266.0, math.inf, 5e-324):
        yield 1.0, a
    yield -1.0, 0.5
    yield math.nan, 0.5
    for _ in range(60):
        a = 10.0 ** rng.uniform(-4.0, 7.9)
        yield a * math.exp(rng.gauss(0.0, 3.0 / math.sqrt(a))), a


def gamma_rows(rng):
    seen = set()
    for x, a in gamma_arguments(rng):
        if (x, a) not in seen:
            seen.add((x, a))
            emit("gamma_pq", (x, a), gamma_pq(x, a))
    for x in (1e-300, 1e-16, 2.220446049250313e-16, 1e-9, 0.3, 0.5, 1.0, 2.0, 5.5, 9.5, 10.0, 50.0,
              170.0, 171.2, 171.7, 1e9, -1.0, 0.0):
        emit("gamma_stirling", (x,), (gamma_stirling(x),), False)
        emit("lgamma_stirling", (x,), (lgamma_stirling(x),), False)
    for x in (-1.0, 0.0, 1e-300, *around(1e-5), 1e-3, 0.5, 1.0, 3.7, *around(9.0), 77.0, 1e8):
        emit("stirling_remainder", (x,), (stirling_remainder(x),), False)
    for x in (-700.0, *around(LOG_UNDERFLOW), -40.0, -1.0, -0.011, -0.01, -1e-300, 0.0, 1e-9, 0.01,
              math.nextafter(0.01, 1.0), 3.0, *around(LOG_OVERFLOW), 800.0):
        emit("expm1_accurate", (x,), (expm1_accurate(x),), False)
    for a, x in ((0.5, 0.5), (0.5, 0.7), (0.7, 0.5), (0.5, 1.0), (1.0, 0.5), (1.0, 1.0), (1.0, 3.0),
                 (3.0, 1.0), (1e-300, 0.9), (1e-300, 1e8), (1e7, 1e-280), (1e8, 1.0001e8),
                 (12.0, 300.0)):
        emit("gamma_log_density", (a, x), (gamma_log_density(a, x),), False)
    for a, x in ((0.5, 0.1), (2.0, 1.5), (1e5, 99999.0), (9e7, 9e7), (1e12, 1e12)):
        report.level, report.name, report.path, report.steps = 0, "", 0, 0
        failed, s = gamma_Iax(a, x)
        emit("gamma_Iax", (a, x), (None if failed else s, float(failed)))
    for a, x in ((0.5, 1.5), (0.5, 0.5), (1.25, 0.95), (2.0, 3.0), (7.75, 20.0), (1e5, 1.01e5),
                 (9e7, 9.001e7), (1e12, 1e12)):
        report.level, report.name, report.path, report.steps = 0, "", 0, 0
        failed, j = gamma_Jax(a, x)
        emit("gamma_Jax", (a, x), (None if failed else j, float(failed)))
    for x, b in ((0.5, 0.0), (0.5, 0.3), (0.999, 0.999), (1e-200, 0.25), (1.0, 0.0), (1.0, 0.5),
                 (1.0, 0.999), (2.0, 0.3), (40.0, 0.0), (700.0, 0.75)):
        report.level, report.name, report.path, report.steps = 0, "", 0, 0
        failed, j = gamma_cf(x, b)
        emit("gamma_cf", (x, b), (j, float(failed)))
    for x, a in ((0.9999, 0.999), (0.9999, 0.0), (0.5, 1e-300), (1e-9, 0.2), (1e-250, 0.01),
                 (1e-4, 1e-8), (0.3, 0.5), (0.02, 1e-3), (0.7, 1e-290)):
        report.level, report.name, report.path, report.steps = 0, "", 0, 0
        emit("gamma_upper_small", (x, a), (upper_gamma_small(x, a),))


def newton_rows():
    for tail in "LU":
        for target, a, start in ((0.5, 0.5, 0.2), (0.9, 3.0, 5.0), (0.1, 40.0, 39.0),
                                 (0.01, 0.5, 3.0), (1e-30, 0.5, 66.0), (0.3, 2.0, 1e9),
                                 (0.999, 0.5, 30.0), (0.5, 0.5, -1.0), (0.5, -1.0, 1.0),
                                 (0.25, 5.0, 0.0)):
            report.level, report.name = 0, ""
            root = gamma_newton(target, a, start, tail)
            # A failed search leaves an iterate that nobody may use.
            emit("gamma_newton_" + tail, (target, a, start),
                 (None if report.level > 1 else root,))


def normal_rows(rng):
    for x in (0.0, 1e-300, 1e-14, 1.4142135623730952e-14, 1.5e-14, 1e-8, 0.1, 0.5, 1.0, 1.2, 1.96,
              2.0, 3.0, 5.0, 7.9549512883486, 8.3, 12.0, 20.0, 30.0, 36.0, 36.2911, 36.2913, 37.0,
              37.5747, 37.575, 38.0, 40.0, 1e300, math.inf):
        for y in (x, -x):
            emit("normal_df", (y,), normal_df(y))
    emit("normal_df", (math.nan,), (DBL_MAX, DBL_MAX), False)
    for _ in range(20):
        x = rng.uniform(-37.0, 37.0)
        emit("normal_df", (x,), normal_df(x))
    probabilities = [1e-100, math.nextafter(1e-100, 0.0), 1e-99, 1e-50, 1e-20, 1e-10, 1e-5, 0.001,
                     0.025, *around(0.08), 0.1, 0.2, *around(0.25), 0.3, 0.4, 0.49, 0.499994,
                     0.499995, 0.4999999, *around(0.5), 0.5000001]
    for p in (0.0, -1.0, *probabilities, 1.0, math.nan):
        emit("normal_upper_quant", (p,), (normal_upper_quant(p),))
    for p in (0.0, *probabilities, 0.6, 0.75, 0.92, 0.975, 0.999, 1.0 - 1e-10,
              math.nextafter(1.0, 0.0), 1.0, math.nextafter(1.0, 2.0), math.nan,
              *(rng.uniform(0.0, 1.0) for _ in range(15))):
        emit("inv_normal_df", (p,), (inv_normal_df(p),))
    lowest, _ = normal_df(-36.0)
    for p, mean, sd in ((0.025, 0.0, 1.0), (0.3, 10.0, 2.0), (0.5, -3.0, 7.0), (0.9, 1e10, 1e-3),
                        (0.7, 0.0, -1.0), (1e-100, 0.0, 1.0), (1e-101, 0.0, 1.0),
                        (1e-101, 3.0, 2.0), (3e-150, 0.0, 1.0), (1e-200, 5.0, 1.0),
                        (1e-250, 0.0, 1.0), (1e-283, 0.0, 1.0), (lowest, 0.0, 1.0),
                        (math.nextafter(lowest, 0.0), 0.0, 1.0), (1e-300, 0.0, 1.0),
                        (0.0, 0.0, 1.0), (1.0 - 2.0 ** -53, 0.0, 1.0), (1.0, 0.0, 1.0),
                        (-0.5, 0.0, 1.0), (1.5, 0.0, 1.0)):
        emit("normal_inv_cdf", (p, mean, sd), (normal_inv_cdf(p, mean, sd),), False)
    for a, b, p in ((-36.0, 0.0, 1e-101), (-3.0, 3.0, 0.5), (0.0, -5.0, 0.2), (0.0, 1.0, 0.5),
                    (-1.0, 0.0, 0.5), (1.0, 2.0, 0.5), (-1.0, 1.0, 0.75), (-36.0, 36.0, 1e-290)):
        root, status = normal_root(a, b, p)
        emit("normal_root", (a, b, p), (root, float(status)), False)


def main():
    rng = random.Random(20240607)
    print("# Inputs are exact. Python", sys.version.split()[0], "mpmath", mpmath.__version__,
          "tools/kernel_transcription.py > tests/data/kernels.csv")
    print("# kernel,argument,argument,argument,output,output,output,level,routine name,path code,"
          "iterations; an empty field is not compared")
    gamma_rows(rng)
    newton_rows()
    normal_rows(rng)
    for x in (1e-300, 1e-16, 1e-15, 0.3, 1.0, 1.5, 2.0, 3.0, 10.0, 171.0, 1e10, 1e300, 0.0, -1.0):
        emit("lgamma_lanczos_nan", (x,), (lgamma_lanczos_nan(x),), False)
    for n, k in ((0, 0), (0, 3), (1, 0), (5, 2), (5, 5), (5, 6), (100, 50), (4294967295, 1),
                 (4294967295, 4294967295), (4294967295, 2147483647)):
        emit("log_binomial", (float(n), float(k)), (log_binomial(n, k),), False)
    for x in (math.nan, -1.0, 0.0, 1e-300, *around(1e-12), 1e-6, 0.5, 1.0, 1.4616321449683622, 2.0,
              9.999, 10.0, 11.0, 1e3, 1e10):
        emit("psi", (x,), (psi(x),), False)
    for x, y in ((-8.0, 3.0), (-2.0, 3.0000000000001), (-2.0, 0.0), (-1e200, -2.0), (-0.5, 1e4),
                 (0.0, 2.0), (0.0, 0.0), (2.0, 0.5), (2.0, -1024.5), (2.0, 1023.9), (0.1, 400.0)):
        emit("safe_pow", (x, y), (safe_pow(x, y),), False)


if __name__ == "__main__":
    main()
