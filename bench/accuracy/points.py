"""Random points with reference values: the same points in every run.

Parameters are drawn in three sizes. For each draw the two ends, where a tail has about 1e-280, and
the median are located roughly, and the points lie between median and ends, denser at the median.
Only their reference values, computed at the exact doubles, say which region they belong to.
"""

import math
import random
from dataclasses import dataclass

from mpmath import mp, mpf

import references

SMALLEST_TAIL = 1e-280
SMALLEST_DOUBLE, LARGEST_DOUBLE = 1e-290, 1e290
REGIONS = (("centre", 1e-2), ("tail", 1e-20), ("far tail", SMALLEST_TAIL))
DRAWS, POINTS_PER_DRAW = 12, 18

# Ranges of a parameter in the sizes small, medium and large; drawn uniformly in the logarithm.
SHAPE = ((0.01, 1), (1, 100), (100, 1e6))
SCALE = ((1e-3, 0.1), (0.1, 10), (10, 1e3))
FEW_DF = ((0.1, 2), (2, 50), (50, 1e3))
COUNT = ((2, 20), (20, 1000), (1000, 1e6))
PROBABILITY = ((0.3, 0.9), (0.01, 0.5), (1e-4, 0.3))
NONCENTRALITY = ((0.01, 3), (3, 50), (50, 2000))
T_NONCENTRALITY = ((0.01, 1), (1, 8), (8, 30))
LOCATION_0 = ((0, 0),) * 3
SCALE_1 = ((1, 1),) * 3



def counted(u):
    return float(math.floor(math.expm1(u)))


@dataclass(frozen=True)
class Support:
    """A monotone map of (low, high) to the points of a family."""

    at: object
    low: float
    high: float
    discrete: bool = False


# Not symmetric: 0 itself, where some formulas divide by x, is never met.
LINE = Support(math.sinh, -667.0, 668.0)
LIGHT_LINE = Support(math.sinh, -7.5, 7.6)
POSITIVE = Support(math.exp, -667.0, 667.0)
UNIT = Support(lambda u: 1 / (1 + math.exp(-u)), -667.0, 36.0)
COUNTS = Support(counted, 0.0, 23.0, True)


@dataclass(frozen=True)
class Family:
    name: str
    reference: object
    support: Support
    parameters: tuple
    whole: tuple = ()       # which of the parameters are counts
    draws: int = DRAWS


FAMILIES = (
    Family("Normal", lambda x, *_: references.normal(x), LIGHT_LINE, (LOCATION_0, SCALE_1)),
    Family("HalfNormal", lambda x, _: references.half_normal(x), POSITIVE, (SCALE_1,)),
    Family("LogNormal", references.log_normal, POSITIVE, (LOCATION_0, SCALE)),
    Family("T", references.student_t, LINE, (SHAPE,)),
    Family("NoncentralT", references.noncentral_t, LINE, (FEW_DF, T_NONCENTRALITY), draws=10),
    Family("Cauchy", lambda x, *_: references.cauchy(x), LINE, (LOCATION_0, SCALE_1)),
    Family("Logistic", lambda x, *_: references.logistic(x), LIGHT_LINE, (LOCATION_0, SCALE_1)),
    Family("LogLogistic", references.log_logistic, POSITIVE, (LOCATION_0, SCALE)),
    Family("Laplace", lambda x, *_: references.laplace(x), LIGHT_LINE, (LOCATION_0, SCALE_1)),
    Family("LargestExtremeValue", lambda x, *_: references.largest_extreme_value(x), LIGHT_LINE,
           (LOCATION_0, SCALE_1)),
    Family("SmallestExtremeValue", lambda x, *_: references.smallest_extreme_value(x), LIGHT_LINE,
           (LOCATION_0, SCALE_1)),
    Family("Exponential", lambda x, _: references.exponential(x), POSITIVE, (SCALE_1,)),
    Family("Weibull", references.weibull, POSITIVE, (((0.05, 1), (1, 10), (10, 100)), SCALE)),
    Family("Gamma", references.gamma, POSITIVE, (SHAPE, SCALE)),
    Family("ChiSq", references.chi_sq, POSITIVE, (SHAPE,)),
    Family("NoncentralChiSq", references.noncentral_chi_sq, POSITIVE, (SHAPE, NONCENTRALITY),
           draws=10),
    Family("Beta", references.beta, UNIT, (SHAPE, SHAPE)),
    Family("F", references.f, POSITIVE, (SHAPE, SHAPE)),
    Family("NoncentralF", references.noncentral_f, POSITIVE, (FEW_DF, SHAPE, NONCENTRALITY),
           draws=10),
    Family("Binomial", references.binomial, COUNTS, (COUNT, PROBABILITY), (0,)),
    Family("NegBinomial", references.neg_binomial, COUNTS, (PROBABILITY, SHAPE)),
    Family("Poisson", references.poisson, COUNTS, (SHAPE,)),
    Family("Geometric", references.geometric, COUNTS, (PROBABILITY,)),
    Family("Hypergeometric", references.hypergeometric, COUNTS, (COUNT, COUNT, COUNT), (0, 1, 2)),
)


@dataclass(frozen=True)
class Check:
    """One call with what it should give: |result - (value + rest)| * weight is the error, less
    what no double can avoid."""

    function: str
    x: float
    parameters: tuple
    region: str
    tail: float
    value: float
    rest: float
    weight: float
    unavoidable: float = 0.0

    def error(self, result):
        error = abs((result - self.value) - self.rest) * self.weight - self.unavoidable
        return max(0.0, error) if math.isfinite(error) else math.inf


def region_of(tail):
    return next(name for name, least in REGIONS if tail >= least)


def draw_parameters(family, size, source):
    drawn = []
    for i, ranges in enumerate(family.parameters):
        low, high = ranges[size]
        value = low * (high / low) ** source.random() if low < high else float(low)
        drawn.append(float(round(value)) if i in family.whole else value)
    if family.name == "Hypergeometric":  # events and sample out of the largest
        drawn.sort(reverse=True)
    if family.name == "NoncentralT" and source.random() < 0.5:
        drawn[1] = -drawn[1]
    return tuple(drawn)


def bisect(low, high, judge):
    """A place where judge gives 0, or nearly: it is negative on the side of low."""
    for _ in range(40):
        middle = 0.5 * (low + high)
        verdict = judge(middle)
        if verdict == 0:
            return middle
        low, high = (middle, high) if verdict < 0 else (low, middle)
    return 0.5 * (low + high)


def log10(tail):
    return float(mp.log10(tail)) if tail > 0 else -math.inf


def landmarks(family, evaluate):
    """Roughly the end of the lower tail, the median, and the end of the upper tail."""
    def far(tail):
        """Beyond 1e-280, short of it, or near enough."""
        digits = log10(tail)
        return -1 if digits < -279 else 1 if digits > -220 else 0

    def compare(u):
        _, lower, upper = evaluate(u)
        return 0 if min(lower, upper) > 0.2 else -1 if lower < upper else 1

    support = family.support
    with mp.workdps(20):
        median = bisect(support.low, support.high, compare)
        low = bisect(support.low, median, lambda u: far(evaluate(u)[1]))
        high = bisect(median, support.high, lambda u: -far(evaluate(u)[2]))
    return low, median, high


def quantile_check(family, x, parameters, density, lower):
    """The quantile of a double p near P(X <= x), which lies beside x: by two steps of Newton's
    iteration, because p may differ from P(X <= x) in the fourth digit of an upper tail."""
    p = float(lower)
    if not SMALLEST_TAIL < p < 1 - 1e-13 or density == 0:
        return None
    rest = (p - lower) / density
    if p > 0.99:
        density, lower, _ = family.reference(x + rest, *map(mpf, parameters))
        rest += (p - lower) / density
    tail = min(mpf(p), 1 - mpf(p))
    weight = float(density / tail)
    if not math.isfinite(weight * x):
        return None
    return Check(family.name + "InvCdf", p, parameters, region_of(tail), float(tail), x, float(rest),
                 weight, math.ulp(x) / 2 * weight)


def count_quantile_check(family, k, parameters, mass, lower):
    """The quantile of a probability in the middle of a step, so that k and nothing else is right."""
    p = float(lower - mass / 2)
    if not SMALLEST_TAIL < p < 1 - 1e-13:
        return None
    tail = min(mpf(p), 1 - mpf(p))
    if mass < 1e-10 * tail or mass < 1e-14 * p:  # no middle among the doubles, or as good as reached
        return None
    return Check(family.name + "InvCdf", p, parameters, region_of(tail), float(tail), k, 0.0,
                 float(mass / tail))


def checks_at(family, x, parameters):
    density, lower, upper = family.reference(mpf(x), *map(mpf, parameters))
    tail = min(lower, upper)
    if tail < SMALLEST_TAIL:
        return []
    region = region_of(tail)

    def value_check(suffix, exact):
        value = float(exact)
        return Check(family.name + suffix, x, parameters, region, float(tail), value,
                     float(exact - value), 1 / value)

    quantile = count_quantile_check if family.support.discrete else quantile_check
    checks = [quantile(family, x, parameters, density, lower)]
    if SMALLEST_DOUBLE < density < LARGEST_DOUBLE:
        checks.append(value_check("Pdf", density))
    if region == "centre" or lower < upper:
        checks.append(value_check("Cdf", lower))
    if region == "centre" or upper < lower:
        checks.append(value_check("UpperCdf", upper))
    return [check for check in checks if check]


def checks_of(family_index, size, draw):
    """All checks for one draw of parameters."""
    mp.dps = references.DIGITS
    family = FAMILIES[family_index]
    source = random.Random(f"{family.name} {size} {draw}")
    parameters = draw_parameters(family, size, source)
    exact = tuple(map(mpf, parameters))
    low, median, high = landmarks(
        family, lambda u: family.reference(mpf(family.support.at(u)), *exact))
    checks, seen = [], set()
    for i in range(POINTS_PER_DRAW):
        end = low if i % 2 == 0 else high
        x = family.support.at(median + (end - median) * source.random() ** source.choice((1, 3)))
        if x not in seen and (x == 0 or SMALLEST_DOUBLE < abs(x) < LARGEST_DOUBLE):
            seen.add(x)
            checks += checks_at(family, x, parameters)
    return checks


def all_tasks():
    return [(i, size, draw) for i, family in enumerate(FAMILIES)
            for size in range(3) for draw in range(family.draws)]
