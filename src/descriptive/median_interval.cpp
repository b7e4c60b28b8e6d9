#include "descriptive/median_interval.hpp"

#include "conventions/call_frame.hpp"
#include "conventions/error_channel.hpp"
#include "distributions/normal.hpp"
#include "kernels/beta.hpp"

#include <cmath>

namespace vela::descriptive {
namespace {

using conventions::kNaN;
using conventions::quiet_value;

// The exact tail and the wanted one may be the same fraction, as 1/32 for n = 5 and 0.9375, of
// which either may have been rounded; falling short by this much counts as reached.
constexpr double kShortfall = 1e-13;

/// P(B <= k), B binomial(n, 1/2), for 0 <= k < n; MissingValue where the kernel fails.
double binomial_cdf(double k, double n) {
    double lower = 0.0;
    double upper = 0.0;
    kernels::beta_df(0.5, 0.5, n - k, k + 1.0, &lower, &upper);
    return conventions::kernel_failed() ? MissingValue : lower;
}

/// The number of observations below the median, or its normal approximation.
class SignCount {
public:
    SignCount(std::uint32_t n, SignDistribution distribution)
        : m_n(n), m_distribution(distribution) {}

    /// P(at most k); k is an integer.
    double at_most(double k) const {
        if (m_distribution == SignDistribution::kBinomial && (k < 0.0 || k >= m_n)) {
            return k < 0.0 ? 0.0 : 1.0;
        }
        if (2.0 * k + 1.0 == m_n) {
            return 0.5;  // by symmetry, which the kernels reproduce to rounding only
        }
        if (m_distribution == SignDistribution::kBinomial) {
            return quiet_value(binomial_cdf, k, m_n);
        }
        return quiet_value(distributions::normal_cdf, (k + 0.5 - m_n / 2.0) / deviation(), 0.0, 1.0,
                           false);
    }

    /// The smallest count whose probability of not being exceeded reaches p, before it is cut to
    /// [0, n]; NaN where there is none.
    double quantile(double p) const {
        if (p != p || p < 0.0 || p > 1.0) {
            return kNaN;
        }
        if (m_distribution == SignDistribution::kBinomial) {
            return binomial_quantile(p);
        }
        const double z = quiet_value(distributions::normal_inv_cdf, p, 0.0, 1.0);
        return std::floor(z * deviation() + m_n / 2.0 + 0.5);
    }

private:
    double deviation() const { return std::sqrt(m_n) / 2.0; }

    double binomial_quantile(double p) const {
        const double wanted = p * (1.0 - kShortfall);
        double reached = m_n;
        double missed = -1.0;
        while (reached - missed > 1.0) {  // 33 times at most
            const double middle = std::floor((reached + missed) / 2.0);
            const double probability = at_most(middle);
            if (probability != probability) {
                return kNaN;
            }
            (probability >= wanted ? reached : missed) = middle;
        }
        return reached;
    }

    double m_n;
    SignDistribution m_distribution;
};

/// How far inward from the outer interval the interpolated one lies: 0 at the outer coverage, 1 at
/// the inner one, bent so that it is right for symmetric distributions near the normal.
///
/// The tails are (1 - coverage) / 2; their differences do not cancel as those of coverages near 1.
double interpolated_fraction(double n, double d, double wantedTail, double outerTail,
                             double innerTail) {
    const double linear = (wantedTail - outerTail) / (innerTail - outerTail);
    return (n - d) * linear / ((n - 2.0 * d) * linear + d);
}

}  // namespace

MedianInterval make_median_interval(std::uint32_t n, double confidence,
                                    SignDistribution distribution) {
    MedianInterval interval;
    interval.count = n;
    const SignCount below(n, distribution);
    const double wantedTail = (1.0 - confidence) / 2.0;
    const double depth = n == 0 ? kNaN : below.quantile(wantedTail);
    if (depth != depth || depth > n) {
        return interval;
    }
    const double d = depth < 0.0 ? 0.0 : depth;
    interval.depth = static_cast<std::uint32_t>(d);
    if (interval.depth == 0) {
        interval.intervals = MedianIntervals::kInnerOnly;
        interval.innerConfidence = 1.0 - 2.0 * below.at_most(0.0);
        return interval;
    }
    const double outerTail = below.at_most(d - 1.0);
    interval.outerConfidence = 1.0 - 2.0 * outerTail;
    double innerTail = 0.5;
    if (interval.depth < n / 2) {
        interval.intervals = MedianIntervals::kBoth;
        innerTail = below.at_most(d);
        interval.innerConfidence = 1.0 - 2.0 * innerTail;
    } else {
        interval.intervals = MedianIntervals::kOuterOnly;
    }
    interval.fraction = interpolated_fraction(n, d, wantedTail, outerTail, innerTail);
    return interval;
}

}  // namespace vela::descriptive
