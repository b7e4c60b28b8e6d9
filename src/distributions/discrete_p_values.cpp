// P-values of counts. The two-sided one is the total probability of all outcomes that are not more
// probable than the observed one. On either side of the mode these are one tail, whose end is found
// by halving, so that a million trials cost no more than a few dozen masses.

#include "distributions/discrete_p_values.hpp"

#include "distributions/tails.hpp"
#include "kernels/binomial.hpp"
#include "kernels/hypergeometric.hpp"

#include <algorithm>
#include <cmath>
#include <limits>

namespace vela::distributions {
namespace {

/// A mass larger than the observed one by less than this counts as equal: masses that are equal in
/// mathematics differ in their last digits.
constexpr double kTie = 1.0 + 1e-7;

/// The last k of first..last with predicate(k), which holds at `first` and nowhere behind the place
/// where it fails once.
template <class Predicate>
double last_where(double first, double last, Predicate predicate) {
    while (first < last) {
        const double middle = first + std::ceil(0.5 * (last - first));
        if (predicate(middle)) {
            first = middle;
        } else {
            last = middle - 1.0;
        }
    }
    return first;
}

/// tailsAt(k) and massAt(k) describe a distribution on smallest..largest whose masses rise up to
/// the mode and fall from there.
template <class TailsAt, class MassAt>
double count_p_value(double x, double smallest, double mode, double largest, TailsAt tailsAt,
                     MassAt massAt, EAlternative alternative) {
    switch (alternative) {
        case EAlternative::LowerTailed: return tailsAt(x).lower;
        case EAlternative::UpperTailed: return tailsAt(x - 1.0).upper;
        case EAlternative::TwoSided: break;
        default: return 0.0;
    }
    if (x < smallest || x > largest) {
        return 0.0;
    }
    const double limit = massAt(x) * kTie;
    if (massAt(mode) <= limit) {
        return 1.0;
    }
    const auto isCounted = [=](double k) { return massAt(k) <= limit; };
    const auto isNotCounted = [=](double k) { return massAt(k) > limit; };
    // one before the support and one behind it belong to the tails as well
    const double below = last_where(x < mode ? x : smallest - 1.0, mode, isCounted);
    const double above = last_where(mode, x > mode ? x - 1.0 : largest, isNotCounted);
    return std::min(1.0, tailsAt(below).lower + tailsAt(above).upper);
}

/// With equal probabilities of event and non-event both tails are the same.
double symmetric_p_value(double x, int trials) {
    const int half = trials / 2;
    if (x == half) {
        return 1.0;
    }
    const double k = std::min(x, trials - x);
    return std::min(1.0, 2.0 * tails_of(kernels::binomial_df, k, double(trials), 0.5).lower);
}

}  // namespace

double binomial_p_value(double x, int trials, double probability, EAlternative alternative) {
    if (x != x) {
        return MissingValue;
    }
    const double n = trials;
    const auto tailsAt = [=](double k) {
        return tails_of(kernels::binomial_df, k, n, probability);
    };
    if (tailsAt(0.0).lower == MissingValue) {
        return MissingValue;
    }
    const double k = std::trunc(std::clamp(x, double(std::numeric_limits<int>::min()),
                                           double(std::numeric_limits<int>::max())));
    if (alternative == EAlternative::TwoSided && probability == 0.5) {
        return symmetric_p_value(k, trials);
    }
    const double mode = std::min(std::floor((n + 1.0) * probability), n);
    const auto massAt = [=](double at) { return kernels::binomial_pdf(at, n, probability); };
    return count_p_value(k, 0.0, mode, n, tailsAt, massAt, alternative);
}

double hypergeometric_p_value(double x, int population, int events, int sample,
                              EAlternative alternative) {
    const kernels::Urn urn{population, events, sample};
    if (!urn.is_valid()) {
        return MissingValue;
    }
    const auto tailsAt = [=](double k) { return tails_of(kernels::hypergeo_df, k, urn); };
    const auto massAt = [=](double k) { return kernels::hypergeo_pdf(k, urn); };
    return count_p_value(x, urn.smallest(), urn.mode(), urn.largest(), tailsAt, massAt,
                         alternative);
}

}  // namespace vela::distributions
