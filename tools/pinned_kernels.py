"""The defining steps of the pinned kernels, written down a second time in another language.

The incomplete gamma and normal kernels are fixed down to their cut-offs and stopping rules, so a
plain, slow transcription can tell whether the library still follows them. Nothing here is taken
from the C++ sources; where the two disagree, the defining steps decide.

Python's math module calls the same C library, so most results agree to the last bit. mpmath serves
for Gamma(a) - 1/a only, whose method is free.
"""

import math

import mpmath

LOG_UNDERFLOW = -662.34472
LOG_OVERFLOW = 709.78271
SMALL = 2.2250738585072014e-288
DBL_MAX = 1.7976931348623157e308
MISSING = 1.23456e30
EXP_OVERFLOW_BOUND = math.nextafter(math.log(DBL_MAX), 0.0)
LN_2PI = math.log(2.0 * math.pi)


class Channel:
    """The report of the last kernel; steps is None where no step defines the count."""

    level = 0
    name = ""
    path = 0
    steps = 0


report = Channel()


def raise_level(level, name):
    if report.level < level:
        report.level = level
        report.name = name


# Stirling family


def correction(x):
    w = 1.0 / (x * x)
    c = 1.0 / 156.0
    for bernoulli in (-691.0 / 360360.0, 1.0 / 1188.0, -1.0 / 1680.0, 1.0 / 1260.0, -1.0 / 360.0,
                      1.0 / 12.0):
        c = c * w + bernoulli
    return c / x


def shift_to_ten(x):
    p = 1.0
    while x < 10.0:
        p *= 1.0 / x
        x += 1.0
    return x, p


def lgamma_stirling(x):
    if x <= 0.0:
        return -DBL_MAX
    x, p = shift_to_ten(x)
    return (x - 0.5) * math.log(x) + math.log(p) - x + 0.5 * LN_2PI + correction(x)


def gamma_stirling(x):
    if x <= 0.0:
        return 0.0
    if x < 2.220446049250313e-16:
        return 1.0 / x
    x, p = shift_to_ten(x)
    c = correction(x)
    if (math.log(p) + (math.log(x) - 1.0) * x + 0.5 * (LN_2PI - math.log(x)) + c) > LOG_OVERFLOW:
        return DBL_MAX
    return math.pow(x / math.e, x) * math.sqrt(2.0 * math.pi / x) * math.exp(c) * p


def stirling_remainder(x):
    if x < 0.0:
        return DBL_MAX
    if x == 0.0:
        return 0.0
    if x <= 1e-5:
        return x * 0.8224670334241132 * x + (0.42278433509846713 - math.log(x)) * x
    if x <= 9.0:
        return lgamma_stirling(x + 1.0) - math.log(math.pow(x / math.e, x))
    return math.log(math.sqrt(2.0 * math.pi * x)) + correction(x)


def expm1_accurate(x):
    if x < LOG_UNDERFLOW or x > LOG_OVERFLOW:
        return -DBL_MAX
    if abs(x) <= 0.01:
        s = 1.0
        for k in range(9, 1, -1):
            s = 1.0 + x / k * s
        return x * s
    return math.exp(x) - 1.0


# Lanczos, digamma, power


def lgamma_lanczos_nan(x):
    if not x > 0.0 or x + 7.0 <= 7.0:
        return math.nan
    if x in (1.0, 2.0):
        return 0.0
    s = (0.9999999999995183 + 676.5203681218835 / x - 1259.139216722289 / (x + 1.0)
         + 771.3234287757674 / (x + 2.0) - 176.6150291498386 / (x + 3.0)
         + 12.50734324009056 / (x + 4.0) - 0.1385710331296526 / (x + 5.0)
         + 9.934937113930748e-6 / (x + 6.0) + 1.659470187408462e-7 / (x + 7.0))
    return math.log(s) + 0.9189385332046727 - (x + 6.5) + (x - 0.5) * math.log(x + 6.5)


def log_binomial(n, k):
    if n == 0.0:
        return 0.0
    if k > n:
        return -math.inf
    return (lgamma_lanczos_nan(n + 1.0) - lgamma_lanczos_nan(k + 1.0)
            - lgamma_lanczos_nan(n - k + 1.0))


def psi(x):
    if not x >= 1e-12:
        return -1.0 / x if x > 0.0 else math.nan
    acc = 0.0
    while x < 10.0:
        acc += 1.0 / x
        x += 1.0
    w = 1.0 / (x * x)
    s = (((((x / 12.0 - 0.021092796092796094) * w + 0.007575757575757576) * w
           - 0.004166666666666667) * w + 0.003968253968253968) * w
         - 0.008333333333333333) * w + 0.08333333333333333
    return math.log(x) - 0.5 / x - s * w - acc


def fuzzy_compare(a, b, scale):
    if abs(a - b) <= max(abs(a), abs(b)) * 1e-12 + (1e-30 if scale == 0.0 else scale * 1e-14):
        return 0
    return -1 if b > a else 1


def safe_pow(x, y):
    """Only for arguments that do not throw."""
    if x == 0.0:
        return 1.0 if y == 0.0 else 0.0
    r = y
    if x < 0.0:
        r = math.copysign(math.floor(abs(y) + 0.5), y)
        assert fuzzy_compare(y, r, 0.0) == 0
    t = y * math.log(abs(x))
    assert t <= EXP_OVERFLOW_BOUND
    return 0.0 if t < -EXP_OVERFLOW_BOUND else math.pow(x, r)


# Incomplete gamma


def gamma_log_density(a, x):
    if (x < 1.0) != (a < 1.0):
        r = math.log(x) - math.log(a)
    elif x >= a:
        r = math.log1p((x - a) / a)
    else:
        r = -math.log1p((a - x) / x)
    return r * a + (a - x) - stirling_remainder(a) - r


def gamma_Iax(a, x):
    term, n = 1.0, 0
    while term >= 1e-9 and n <= 1000000:
        n += 1
        term *= x / (n + a)
    if n > 1000000:
        raise_level(4, "gamma_Iax")
        return 4, math.nan
    s = 1.0
    for k in range(n, 0, -1):
        s = x * s / (k + a) + 1.0
    report.steps = None
    return 0, s


def gamma_Jax(a, x):
    term, k = 1.0, 0
    report.steps = None
    while k <= a - 1.0 and k <= 1000000:
        k += 1
        term *= (a - k) / x
        if term < 1e-9:
            break
    if k > 1000000:
        raise_level(4, "gamma_Jax")
        return 4, math.nan
    j = 1.0
    if term >= 1e-9:
        k = int(a)
        failed, j = gamma_cf(x, math.fmod(a, 1.0))
        if failed:
            raise_level(4, "gamma_Jax")
            return 4, math.nan
    else:
        report.path = 0
    for i in range(k, 0, -1):
        j = (a - i) * j / x + 1.0
    return 0, j


def gamma_cf(x, b):
    if x < 1.0:
        j = upper_gamma_small(x, b) * math.pow(x, 1.0 - b) * math.exp(x)
        report.path = 2
        return 0, j
    A, B, C, D = 0.0, 1.0, 1.0, 1.0
    for n in range(1, 81):
        A = (n - b) * A + x * B
        D = (n - b) * D + x * C
        r1 = A / D
        B = n * B + A
        C = n * C + D
        r2 = B / C
        if (r2 - r1) / r1 < 1e-9:
            break
    if (r2 - r1) / r1 >= 1e-9:
        return 4, math.nan
    report.path = 1
    report.steps = n
    return 0, (r1 + r2) / 2.0


def gamma_minus_reciprocal(a):
    if a == 0.0:
        return float(-mpmath.euler)
    with mpmath.workdps(700 if a < 1e-100 else 250):
        return float((mpmath.gamma(mpmath.mpf(a) + 1) - 1) / mpmath.mpf(a))


def upper_gamma_small(x, a):
    log_x = math.log(x)
    if a == 0.0 or abs(log_x) < SMALL / a:
        power_part = -log_x
    else:
        power_part = -expm1_accurate(a * log_x) / a
    term = math.pow(x, a + 1.0) / (a + 1.0)
    total = term
    n = 1
    while abs(term) > 1e-9 and n < 42:
        n += 1
        term *= -x / n * (n + a - 1.0) / (n + a)
        total += term
    report.steps = n
    return gamma_minus_reciprocal(a) + power_part + total


def switch_point(a):
    if a >= 0.59:
        return a - 1.0 / 3.0
    exponent = (lgamma_stirling(a + 1.0) - math.log(2.0)) / a
    return math.exp(exponent) if exponent >= LOG_UNDERFLOW else 0.0


def gamma_pq(x, a):
    """P, Q, f; None for what level 2 leaves unwritten."""
    report.level, report.name, report.path, report.steps = 0, "gamma_df", 0, 0
    if not (a > 0.0 and x >= 0.0 and a <= 94906265.0 and a * DBL_MAX >= 1.0):
        report.level = 2
        return None, None, None
    if x < SMALL:
        report.path = 1
        return 0.0, 1.0, 0.0
    if x > 189812530.0:
        report.path = 2
        return 1.0, 0.0, 0.0
    log_f = gamma_log_density(a, x)
    f = 0.0 if log_f < LOG_UNDERFLOW else math.exp(log_f)
    side = lower_series if x <= switch_point(a) else upper_function
    P, Q = side(x, a, log_f, f)
    report.name = "gamma_df"
    return P, Q, f


def lower_series(x, a, log_f, _):
    L = math.log(x / a) + log_f
    if L >= LOG_UNDERFLOW:
        failed, S = gamma_Iax(a, x)
        P, report.path = math.exp(L) * S, 10
        report.level = 4 if failed else 0
        return P, 1.0 - P
    report.level = 1
    if L - math.log(1.0 - x / (a + 1.0)) < LOG_UNDERFLOW:
        report.path = 20
        return 0.0, 1.0
    failed, S = gamma_Iax(a, x)
    L2 = math.log(S) + L
    if L2 < LOG_UNDERFLOW:
        report.path = 30
        return 0.0, 1.0
    P, report.path = math.exp(L2), 40
    report.level = 4 if failed else 0
    return P, 1.0 - P


def upper_function(x, a, log_f, f):
    if a < 1.0 and x < 1.0:
        g = upper_gamma_small(x, a)
        Q = 0.0 if math.log(g) - lgamma_stirling(a) < LOG_UNDERFLOW else g / gamma_stirling(a)
        report.path = 50
        return 1.0 - Q, Q
    if log_f >= LOG_UNDERFLOW:
        failed, J = gamma_Jax(a, x)
        Q = J * f
        report.path += 60
        report.level = 4 if failed else 0
        return 1.0 - Q, Q
    report.level = 1
    if a <= 1.0:
        report.path = 70
        return 1.0, 0.0
    if log_f - math.log(1.0 - (a - 1.0) / x) < LOG_UNDERFLOW:
        report.path = 80
        return 1.0, 0.0
    failed, J = gamma_Jax(a, x)
    L2 = math.log(J) + log_f
    if L2 < LOG_UNDERFLOW:
        report.path += 90
        return 1.0, 0.0
    Q = math.exp(L2)
    report.path += 100
    report.level = 4 if failed else 0
    return 1.0 - Q, Q


def gamma_newton(target, a, x, tail):
    step, scale, counter = 0.0, -1.0, 1
    while True:
        if abs(step) < scale * 1e-9:
            return x
        x += step
        P, Q, f = gamma_pq(x, a)
        if report.level > 1 or f == 0.0:
            break
        step, r = ((target - P) / f, P / f) if tail == "L" else ((Q - target) / f, Q / f)
        scale = max(x, r)
        counter += 1
        if counter >= 36:
            break
    if report.level <= 1 and f != 0.0 and abs(step) < scale * 1e-9:
        return x
    report.level, report.name = 4, "gamma_newton"
    return x


# Normal


def kernel_erfc(t):
    if t > 26.5694:
        return 0.0
    if t < -5.625:
        return 2.0
    if abs(t) < 1e-14:
        return 1.0
    P, Q, _ = gamma_pq(t * t, 0.5)
    if report.level > 1:
        return math.nan
    return Q if t >= 0.0 else 1.0 + P


def normal_df(x):
    report.level, report.name = 0, "normal_df"
    t = x / math.sqrt(2.0)
    if x >= 0.0:
        e = kernel_erfc(t)
        upper, lower = 0.5 * e, 1.0 - 0.5 * e
    else:
        e = kernel_erfc(-t)
        lower, upper = 0.5 * e, 1.0 - 0.5 * e
    if report.level >= 2:
        return DBL_MAX, DBL_MAX
    return lower, upper


def start_value(p):
    q = p - 0.5
    if abs(q) <= 0.42:
        r = q * q
        return (q * (((-25.44106049637 * r + 41.39119773534) * r - 18.61500062529) * r
                     + 2.50662823884)
                / ((((3.13082909833 * r - 21.06224101826) * r + 23.08336743743) * r
                    - 8.4735109309) * r + 1.0))
    r = math.sqrt(-math.log(p if q <= 0.0 else 1.0 - p))
    z = ((((2.32121276858 * r + 4.85014127135) * r - 2.29796479134) * r - 2.78718931138)
         / ((1.63706781897 * r + 3.54388924762) * r + 1.0))
    return -z if q < 0.0 else z


def normal_upper_quant(p):
    report.level, report.name = 0, "normal_upper_quant"
    if not 1e-100 <= p <= 0.5:
        report.level = 2
        return -DBL_MAX
    d = 1.0 - 2.0 * p
    if d <= 1e-5:
        return d * 1.2533141373155003
    x = math.pow(start_value(p), 2.0) * 0.5
    x = gamma_newton(d, 0.5, x, "L") if p > 0.25 else gamma_newton(2.0 * p, 0.5, x, "U")
    return math.sqrt(2.0 * x)


def inv_normal_df(p):
    report.level, report.name = 0, "inv_normal_df"
    if not 1e-100 <= p <= 1.0:
        report.level = 2
        return -DBL_MAX
    return -normal_upper_quant(p) if p < 0.5 else normal_upper_quant(1.0 - p)


def normal_root(a, b, target):
    """Illinois regula falsi on P(Z <= x) - target; the root and its status."""

    def f(x):
        if x == 0.0:
            return 0.5 - target
        lower, _ = normal_df(x)
        return (MISSING if report.level >= 2 else lower) - target

    def value_converged(y):
        return abs(y) <= 0.0 or abs(y) <= abs(target) * 1e-12

    def interval_converged(left, right):
        d = abs(left - right)
        return d < 1e-30 or d < 1e-12 * max(abs(left), abs(right))

    fa, fb = f(a), f(b)
    if not (fa < 0.0 < fb or fb < 0.0 < fa):
        if value_converged(fa):
            return a, 0
        return (b, 0) if value_converged(fb) else (MISSING, 30021)
    for _ in range(10000):
        x = a - fa / (fb - fa) * (b - a)
        fx = f(x)
        if value_converged(fx) or interval_converged(a, b):
            return x, 0
        if (fa > 0.0) == (fx > 0.0):
            a, fa, fb = x, fx, fb / 2.0
        else:
            b, fb, fa = x, fx, fa / 2.0
    return MISSING, 30021


def normal_inv_cdf(p, mean, sd):
    z = inv_normal_df(p)
    if report.level <= 1:
        return z * sd + mean
    F, _ = normal_df(-36.0)
    if not F <= p <= 0.5:
        return MISSING
    x, _ = normal_root(-36.0, 0.0, p)
    return MISSING if x == MISSING else x * sd + mean
