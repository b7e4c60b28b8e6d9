"""Densities and both tails of the distributions in arbitrary precision, straight from definitions.

Nothing here is shared with the library: logarithms of gamma functions, continued fractions and
series run at mpmath's working precision, where cancellation and overflow are no concern. Every
function takes a point and the parameters as exact doubles and returns (density or mass, P(X <= x),
P(X > x)); whichever tail is smaller has full relative precision.
"""

from functools import lru_cache

from mpmath import mp, mpf

# Digits to spare: exponents of the prefactors reach 1e9, which costs nine of them.
DIGITS = 50
LOWEST_TAIL_DIGITS = 310


def continued_fraction(first, terms):
    """first + a1 / (b1 + a2 / (b2 + ...)) of terms (a, b), by its convergents."""
    before, numerator = mpf(1), mpf(first)
    below, denominator = mpf(0), mpf(1)
    value = numerator
    for n, (a, b) in enumerate(terms):
        before, numerator = numerator, b * numerator + a * before
        below, denominator = denominator, b * denominator + a * below
        if n % 16 == 15:
            last, value = value, numerator / denominator
            if abs(value - last) <= mp.eps * 16 * abs(value):
                return value
    return numerator / denominator


@lru_cache(maxsize=64)
def log_gamma(x, precision):
    return mp.loggamma(x)


def ln_gamma(x):
    return log_gamma(x, mp.prec)


# --- incomplete gamma and beta functions ---------------------------------------------------------

def gamma_drop(a, x):
    """P(a, x) - P(a + 1, x)."""
    return mp.exp(a * mp.log(x) - x - ln_gamma(a + 1))


def gamma_tails(a, x):
    """P(a, x) and Q(a, x): the series below the mean, Legendre's fraction above it."""
    if x < max(a, mpf(1)):
        term = total = mpf(1)
        n = a
        while term > mp.eps * total:
            n += 1
            term *= x / n
            total += term
        lower = gamma_drop(a, x) * total
        return lower, 1 - lower

    def terms():
        n, b = 0, x + 1 - a
        while n < a or n < 10**6:
            n, b = n + 1, b + 2
            yield n * (a - n), b
    upper = gamma_drop(a, x) * a / continued_fraction(x + 1 - a, terms())
    return 1 - upper, upper


def beta_drop(a, b, x, y):
    """I_x(a, b) - I_x(a + 1, b)."""
    return mp.exp(a * mp.log(x) + b * mp.log(y) + ln_gamma(a + b) - ln_gamma(a + 1) - ln_gamma(b))


def beta_fraction(a, b, x):
    def terms():
        n = a
        m = 0
        while True:
            yield -(a + m) * (a + b + m) * x / (n * (n + 1)), 1
            m += 1
            n += 2
            yield m * (b - m) * x / ((n - 1) * n), 1
    return continued_fraction(1, terms())


def beta_tails(a, b, x, y):
    """I_x(a, b) and its complement, where y = 1 - x is given because it may be tiny."""
    if x * (a + b + 2) < a + 1:
        lower = beta_drop(a, b, x, y) / beta_fraction(a, b, x)
        return lower, 1 - lower
    upper = beta_drop(b, a, y, x) / beta_fraction(b, a, y)
    return 1 - upper, upper


# --- continuous families -------------------------------------------------------------------------

def normal(z):
    root = z / mp.sqrt(2)
    density = mp.exp(-root * root) / mp.sqrt(2 * mp.pi)
    return density, mp.erfc(-root) / 2, mp.erfc(root) / 2


def half_normal(x):
    density, below, above = normal(x)
    return 2 * density, mp.erf(x / mp.sqrt(2)), 2 * above


def log_normal(x, location, scale):
    density, lower, upper = normal((mp.log(x) - location) / scale)
    return density / (scale * x), lower, upper


def logistic(z):
    lower, upper = 1 / (1 + mp.exp(-z)), 1 / (1 + mp.exp(z))
    return lower * upper, lower, upper


def log_logistic(x, location, scale):
    density, lower, upper = logistic((mp.log(x) - location) / scale)
    return density / (scale * x), lower, upper


def laplace(z):
    tail = mp.exp(-abs(z)) / 2
    return (tail, tail, 1 - tail) if z < 0 else (tail, 1 - tail, tail)


def cauchy(z):
    density = 1 / (mp.pi * (1 + z * z))
    tail = mp.atan(1 / abs(z)) / mp.pi
    return (density, tail, 1 - tail) if z < 0 else (density, 1 - tail, tail)


def largest_extreme_value(z):
    power = mp.exp(-z)
    return power * mp.exp(-power), mp.exp(-power), -mp.expm1(-power)


def smallest_extreme_value(z):
    density, lower, upper = largest_extreme_value(-z)
    return density, upper, lower


def weibull(x, shape, scale):
    power = (x / scale) ** shape
    upper = mp.exp(-power)
    return shape / x * power * upper, -mp.expm1(-power), upper


def exponential(x):
    return weibull(x, mpf(1), mpf(1))


def gamma(x, shape, scale):
    return (shape * gamma_drop(shape, x / scale) / x, *gamma_tails(shape, x / scale))


def chi_sq(x, df):
    return gamma(x, df / 2, mpf(2))


def beta(x, a, b):
    y = 1 - x
    return (a * beta_drop(a, b, x, y) / (x * y), *beta_tails(a, b, x, y))


def f(x, df1, df2):
    total = df1 * x + df2
    a, b, u, v = df1 / 2, df2 / 2, df1 * x / total, df2 / total
    return (a * beta_drop(a, b, u, v) / x, *beta_tails(a, b, u, v))


def student_t(t, df):
    total = t * t + df
    b, u, v = df / 2, t * t / total, df / total
    density = beta_drop(mpf(0.5), b, u, v) / (2 * abs(t))
    tail = beta_tails(mpf(0.5), b, u, v)[1] / 2
    return (density, tail, 1 - tail) if t < 0 else (density, 1 - tail, tail)


# --- noncentral families: mixtures of central ones -----------------------------------------------

def ladder(first, count, drop, ratio, tails):
    """The tails at shapes first, first + 1, ..., and the drop from each to the next.

    Each tail is added up in the direction in which it grows, so nothing cancels.
    """
    drops = [drop(first)]
    for j in range(count):
        drops.append(drops[-1] * ratio(first + j))
    lower, upper = [tails(first + count)[0]], [tails(first)[1]]
    for j in range(count):
        lower.append(lower[-1] + drops[count - 1 - j])
        upper.append(upper[-1] + drops[j])
    return drops, lower[::-1], upper


def beta_ladder(first, count, b, x, y):
    return ladder(first, count, lambda a: beta_drop(a, b, x, y), lambda a: x * (a + b) / (a + 1),
                  lambda a: beta_tails(a, b, x, y))


def poisson_weights(mean, offset=0):
    """mean^(j + offset) exp(-mean) / Gamma(j + 1 + offset) until nothing is left to add."""
    offset = mpf(offset)
    weights = [mp.exp(offset * mp.log(mean) - mean - ln_gamma(1 + offset))]
    smallest = mpf(10) ** (-LOWEST_TAIL_DIGITS - 40)
    while weights[-1] > smallest or len(weights) < mean:
        weights.append(weights[-1] * mean / (len(weights) + offset))
    return weights


def mixture(weights, first, rungs):
    """Sum of weight * shape * drop (for the density), and of both tails."""
    drops, lower, upper = rungs
    density = mp.fsum(w * (first + j) * d for j, (w, d) in enumerate(zip(weights, drops)))
    return density, mp.fdot(weights, lower), mp.fdot(weights, upper)


def noncentral_chi_sq(x, df, noncentrality):
    a, y = df / 2, x / 2
    weights = poisson_weights(noncentrality / 2)
    rungs = ladder(a, len(weights) - 1, lambda s: gamma_drop(s, y), lambda s: y / (s + 1),
                   lambda s: gamma_tails(s, y))
    density, lower, upper = mixture(weights, a, rungs)
    return density / x, lower, upper


def noncentral_f(x, df1, df2, noncentrality):
    total = df1 * x + df2
    a = df1 / 2
    weights = poisson_weights(noncentrality / 2)
    rungs = beta_ladder(a, len(weights) - 1, df2 / 2, df1 * x / total, df2 / total)
    density, lower, upper = mixture(weights, a, rungs)
    return density / x, lower, upper


def noncentral_t(t, df, noncentrality):
    """Even and odd mixtures of beta tails. Where they cancel, all terms are at most 1 and the
    digits of the smallest tail are added to the working precision."""
    if t < 0:
        density, lower, upper = noncentral_t(-t, df, -noncentrality)
        return density, upper, lower
    with mp.workdps(mp.dps if noncentrality > 0 else mp.dps + LOWEST_TAIL_DIGITS):
        half, total = noncentrality**2 / 2, t * t + df
        b, x, y = df / 2, t * t / total, df / total
        even = poisson_weights(half)
        odd = poisson_weights(half, 0.5)
        parts = [mixture(weights, first, beta_ladder(first, len(weights) - 1, b, x, y))
                 for weights, first in ((even, mpf(0.5)), (odd, mpf(1)))]
        sign = 1 if noncentrality > 0 else -1
        density, lower, upper = ((e + sign * o) / 2 for e, o in zip(*parts))
        return 2 * density / t, normal(-noncentrality)[1] + lower, upper


# --- discrete families ---------------------------------------------------------------------------

def binomial(k, n, p):
    if k >= n:
        return p**n, mpf(1), mpf(0)
    mass = mp.exp(ln_gamma(n + 1) - ln_gamma(k + 1) - ln_gamma(n - k + 1)
                  + k * mp.log(p) + (n - k) * mp.log1p(-p))
    upper, lower = beta_tails(k + 1, n - k, p, 1 - p)
    return mass, lower, upper


def neg_binomial(k, p, events):
    mass = mp.exp(ln_gamma(k + events) - ln_gamma(k + 1) - ln_gamma(events)
                  + events * mp.log(p) + k * mp.log1p(-p))
    return (mass, *beta_tails(events, k + 1, p, 1 - p))


def poisson(k, mean):
    upper, lower = gamma_tails(k + 1, mean)
    return gamma_drop(k, mean), lower, upper


def geometric(k, p):
    mass = p * mp.exp(k * mp.log1p(-p))
    return mass, -mp.expm1((k + 1) * mp.log1p(-p)), mass * (1 - p) / p


def hypergeometric(k, population, events, sample):
    """Masses added up from k outwards, on the side where they fall."""
    low, high = max(mpf(0), sample + events - population), min(sample, events)
    if k < low or k >= high:
        return mpf(0), mpf(k >= high), mpf(k < low)
    choose = [ln_gamma(n + 1) - ln_gamma(i + 1) - ln_gamma(n - i + 1)
              for n, i in ((events, k), (population - events, sample - k), (population, sample))]
    mass = mp.exp(choose[0] + choose[1] - choose[2])
    others = population - events - sample
    downward = k * population < sample * events
    total, term, i = mpf(0), mass, k
    while low <= i <= high and term > mp.eps * total:
        if downward:
            total += term
            term *= i * (others + i) / ((events - i + 1) * (sample - i + 1))
            i -= 1
        else:
            term *= (events - i) * (sample - i) / ((i + 1) * (others + i + 1))
            total += term
            i += 1
    return (mass, total, 1 - total) if downward else (mass, 1 - total, total)
