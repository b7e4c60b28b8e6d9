#!/usr/bin/env python3
"""Reference values of the noncentral t distribution for tests/data/noncentral_t.csv.

T = (Z + delta) / S with S = sqrt(chi2 / df). Tails and density come from

    P(T > t) = E[Phi(delta - t S)],  P(T <= t) = E[Phi(t S - delta)],  f(t) = E[S phi(t S - delta)],

by Gauss-Legendre quadrature with panels around the peak of each integrand, at 40 digits. Where it is
affordable every tail is checked against an independent formula, the mixture of incomplete beta
functions of Benton & Krishnamoorthy (2003) summed with enough digits to survive its cancellation;
elsewhere the two tails, integrated apart, are checked to add up to 1.

Usage: make_noncentral_t_reference.py > tests/data/noncentral_t.csv
"""

import sys

import mpmath as mp

mp.mp.dps = 40

CASES = [
    # centre, small and moderate parameters, all combinations of signs
    (2.0, 10.0, 1.0), (-2.0, 10.0, 1.0), (2.0, 10.0, -1.0), (-2.0, 10.0, -1.0), (1.5, 30.0, 0.5),
    (3.0, 5.0, 2.0), (0.3, 3.0, 0.7), (1.0, 1.0, 1.0), (0.0, 4.0, 1.5), (0.0, 4.0, -35.0),
    (1e-300, 4.0, 1.5), (1e-8, 4.0, -1.5), (-1e-8, 4.0, -1.5), (10.0, 2.5, 1e-9), (1.0, 1e3, 1e-3),
    # far in the tail towards the noncentrality and in the one opposite to it
    (60.0, 20.0, 3.0), (-5.0, 20.0, 5.0), (-30.0, 60.0, 12.0), (-9.0, 1e4, 20.0), (0.5, 8.0, 15.0),
    (1e-3, 50.0, 30.0), (15.0, 5.0, 30.0), (40.0, 500.0, 8.0), (1e6, 9.0, 2.0), (-1e5, 3.0, 9.0),
    (-1e150, 1.5, 4.0), (25.0, 200.0, 0.1), (-3.0, 7.0, 33.0), (1e-2, 1e3, 35.0), (37.0, 1e6, 3.0),
    # few degrees of freedom: flat tail of ln S on the left, step far from the end of S
    (1.0, 1e-3, 2.0), (1e3, 1e-3, 10.0), (1e10, 1e-3, 5.0), (0.1, 1e-3, 10.0), (1e300, 1e-3, -3.0),
    (1e300, 1e-3, 3.0), (-4.0, 1e-2, 1.0), (5.0, 0.05, 6.0), (2.0, 0.3, -20.0), (50.0, 0.3, 25.0),
    (0.9, 0.9, 0.9), (1e3, 1e-3, 1e4), (0.4, 0.2, 3.0),
    # a step that is narrow against the spread of S, either side of the median
    (310.0, 4.0, 300.0), (295.0, 4.0, 300.0), (1e4, 1.5, 1e4), (9e3, 40.0, 1e4), (1.4e4, 40.0, 1e4),
    (1e5, 40.0, 1e4), (2e3, 40.0, 1e4), (30.0, 50.0, 25.0), (1e4, 0.01, 1e4), (55.0, 1e3, 50.0),
    # many degrees of freedom, large noncentrality
    (1.0, 1e8, 0.5), (-30.0, 1e8, 3.0), (1e4, 1e8, 1e4), (1.0005e4, 1e8, 1e4), (9.97e3, 1e8, 1e4),
    (1.003e4, 1e8, 1e4), (-1.003e4, 1e8, -1e4), (33.0, 1e8, 1.0), (105.0, 3e5, 100.0), (5.0, 1e8, 4.0),
    (-0.1, 1e6, 35.0), (9.0e7, 1e5, 9.0e7), (12.5, 1e15, 11.25), (1.0, 1e30, -2.0),
]


def log_normal_tail(y):
    """ln P(Z > y)."""
    if y < 60:
        return mp.log(mp.erfc(y / mp.sqrt(2)) / 2)
    term, total = mp.mpf(1), mp.mpf(1)
    for k in range(1, 60):
        term *= -(2 * k - 1) / (y * y)
        if abs(term) < mp.mpf(10) ** (-45):
            break
        total += term
    return -y * y / 2 - mp.log(y * mp.sqrt(2 * mp.pi)) + mp.log(total)


def peak(log_f):
    """The maximum of a function of ln S with one peak, by golden section."""
    low, high = mp.mpf(-750), mp.mpf(200)
    golden = (mp.sqrt(5) - 1) / 2
    for _ in range(220):
        left, right = high - golden * (high - low), low + golden * (high - low)
        if log_f(left) < log_f(right):
            low = left
        else:
            high = right
    return (low + high) / 2


def integrate(log_f, features):
    """(ln scale, integral / scale): panels grow geometrically away from every feature (place, width)."""
    top = max(log_f(place) for place, _ in features)
    points = set()
    for place, width in features:
        points.add(place)
        for direction in (-1, 1):
            distance = width
            while distance < mp.mpf(10) ** 6:
                u = place + direction * distance
                if u > 300:
                    break
                points.add(u)
                distance *= mp.mpf("1.4") if distance > 3 * width else 2
    points = sorted(points)
    kept = [u for u in points if log_f(u) > top - 110]
    first = points[max(points.index(kept[0]) - 1, 0)]
    last = points[min(points.index(kept[-1]) + 1, len(points) - 1)]
    inside = [u for u in points if first <= u <= last]
    return top, mp.quad(lambda u: mp.exp(log_f(u) - top), inside, method="gauss-legendre", maxdegree=5)


def by_quadrature(t, df, delta, part):
    """P(T > t), P(T <= t) or the density at t >= 0."""
    t, df, delta = mp.mpf(t), mp.mpf(df), mp.mpf(delta)
    constant = mp.log(2) + df / 2 * mp.log(df / 2) - mp.loggamma(df / 2)

    def log_f(u, power=df):
        s = mp.exp(u)
        y = t * s - delta
        chi = power * u - df * s * s / 2
        if part == "density":
            return chi + u - y * y / 2 - mp.log(2 * mp.pi) / 2
        return chi + log_normal_tail(y if part == "upper" else -y)

    places = [peak(log_f), mp.mpf(0)]
    if df < 1:
        places.append(peak(lambda u: log_f(u, mp.mpf(1))))
        places.append(-mp.log(df) / 2)
    if t > mp.mpf(10) ** -20:
        places.append(-mp.log(t))
    if t > 0 and delta > 0:
        places.append(mp.log(delta / t))
    features = []
    for u in places:
        s = mp.exp(u)
        features.append((u, 1 / mp.sqrt(1 + df * (1 + s * s) + (t * s) ** 2 * (1 if u < 100 else 0))))
    top, value = integrate(log_f, features)
    return mp.exp(constant + top) * value


def by_mixture(t, df, delta):
    """P(T <= t) and P(T > t) for t > 0: mixture of incomplete beta functions."""
    t, df, delta = mp.mpf(t), mp.mpf(df), mp.mpf(delta)
    half = delta * delta / 2
    with mp.workdps(60 + int(half * 2 / mp.log(10)) + 130):
        complement = df / (df + t * t)
        x = 1 - complement
        b = df / 2
        # 1 - I_x(a, b), raised by a -> a + 1 one term at a time
        def tail(a):
            return mp.betainc(b, a, 0, complement, regularized=True)
        upper = mp.mpf(0)
        for offset, weight in ((mp.mpf("0.5"), mp.exp(-half)),
                               (mp.mpf(1), mp.exp(-half) * delta / mp.sqrt(2) / mp.gamma(mp.mpf("1.5")))):
            a = offset
            q = tail(a)
            step = mp.exp(a * mp.log(x) + b * mp.log(complement) - mp.log(a) - mp.log(mp.beta(a, b)))
            for j in range(100000):
                upper += weight * q / 2
                if j > half and abs(weight) < mp.mpf(10) ** (-mp.mp.dps):
                    break
                weight *= half / (j + 1 if offset != 1 else j + mp.mpf("1.5"))
                q += step
                step *= x * (a + b) / (a + 1)
                a += 1
        return +(1 - upper), +upper


def reference(t, df, delta):
    """(lower, upper, density) of any t."""
    if t < 0:
        lower, upper, density = reference(-t, df, -delta)
        return upper, lower, density
    # The terms of the log-density of S are of the size of df and cancel.
    with mp.workdps(mp.mp.dps + max(0, int(mp.log10(df)))):
        lower = by_quadrature(t, df, delta, "lower")
        upper = by_quadrature(t, df, delta, "upper")
        assert abs(lower + upper - 1) < mp.mpf(10) ** -25, (t, df, delta)
        return lower, upper, by_quadrature(t, df, delta, "density")


def check_by_mixture(t, df, delta, lower, upper):
    if t < 0:
        t, delta, lower, upper = -t, -delta, upper, lower
    if t < 1e-3 or t > 1e7 or abs(delta) > 60 or not 1e-3 <= df <= 1e4:
        return False
    for mine, other in zip((lower, upper), by_mixture(t, df, delta)):
        assert abs(other / mine - 1) < mp.mpf(10) ** -25, (t, df, delta, mine, other)
    return True


def main():
    print(f"# mpmath {mp.__version__}, 40 digits; tools/make_noncentral_t_reference.py > tests/data/noncentral_t.csv")
    print("# t,df,delta,lower,upper,density: exact doubles in, 25 digits out")
    checked = 0
    for t, df, delta in CASES:
        lower, upper, density = reference(t, df, delta)
        checked += check_by_mixture(t, df, delta, lower, upper)
        digits = [mp.nstr(v, 25, min_fixed=0, max_fixed=0) for v in (lower, upper, density)]
        print(",".join([repr(t), repr(df), repr(delta)] + digits), flush=True)
    print(f"{len(CASES)} rows, {checked} checked by the mixture", file=sys.stderr)


if __name__ == "__main__":
    main()
