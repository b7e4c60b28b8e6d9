// The runs test. Its P-value needs the smaller of P(R <= runs) and P(R >= runs), whose sum is 1
// more than P(R = runs). Only the tail that leads away from the expected number is added up: there
// the masses fall, and a few standard deviations further nothing is left to add. A million
// observations cost a few thousand masses instead of a million.

#include "vela/v1/runs_test.hpp"

#include "conventions/status.hpp"
#include "hypothesis/normal_reference.hpp"
#include "kernels/lanczos.hpp"

#include <algorithm>
#include <cmath>

namespace vela::v1 {

using conventions::QuietArithmetic;

namespace {

/// The number of runs in random orders of two classes, each of which has a member.
class RunsDistribution {
public:
    RunsDistribution(std::uint32_t below, std::uint32_t above)
        : m_below(below),
          m_above(above),
          m_logOrders(kernels::log_binomial(below + above, above)) {}

    /// P(R = runs), runs >= 2. log_binomial(0, k) is 0 also for k > 0, which makes P(R = 3) too
    /// large where a class has one member.
    double mass(std::uint32_t runs) const {
        const std::uint32_t k = runs / 2;
        return runs % 2 == 0 ? 2.0 * share(k - 1, k - 1) : share(k, k - 1) + share(k - 1, k);
    }

    /// Both classes in turn, as long as the smaller one lasts.
    std::uint32_t most() const {
        return std::min(m_below + m_above, 2 * std::min(m_below, m_above) + 1);
    }

private:
    /// The share of the orders that split the classes at so many places.
    double share(std::uint32_t belowSplits, std::uint32_t aboveSplits) const {
        return std::exp(kernels::log_binomial(m_below - 1, belowSplits) +
                        kernels::log_binomial(m_above - 1, aboveSplits) - m_logOrders);
    }

    std::uint32_t m_below;
    std::uint32_t m_above;
    double m_logOrders;
};

/// What the masses of a tail add after one that is smaller than this part of their sum is lost in
/// rounding, although there may be 1e5 of them and those of the other parity may be 1e9 times as
/// large.
constexpr double kNegligible = 1e-32;

/// P(R >= runs) or P(R <= runs), away from the expected number.
double outward_tail(const RunsDistribution& distribution, std::uint32_t runs, bool isUpper) {
    const std::uint32_t terms = isUpper ? distribution.most() - runs + 1 : runs - 1;
    double sum = 0.0;
    for (std::uint32_t i = 0; i < terms; ++i) {
        const double mass = distribution.mass(isUpper ? runs + i : runs - i);
        sum += mass;
        if (mass <= kNegligible * sum) {
            break;
        }
    }
    return sum;
}

double exact_p_value(const RunsTest& test) {
    if (test.runs < 2) {
        return 0.0;
    }
    const RunsDistribution distribution(test.below, test.above);
    const double outward = outward_tail(distribution, test.runs, test.runs > test.expected);
    const double inward = 1.0 - outward + distribution.mass(test.runs);
    return std::min(1.0, 2.0 * std::min(outward, inward));
}

/// Adds an observation that is not to be dropped.
class RunCounter {
public:
    void add(bool isAbove) {
        m_runs += m_count == 0 || isAbove != m_wasAbove ? 1U : 0U;
        m_above += isAbove ? 1U : 0U;
        ++m_count;
        m_wasAbove = isAbove;
    }

    void write(RunsTest* record) const {
        record->below = m_count - m_above;
        record->above = m_above;
        record->runs = m_runs;
        record->expected = 2.0 * m_above * record->below / m_count + 1.0;
        record->pValue = conventions::kNaN;
    }

private:
    std::uint32_t m_count = 0;
    std::uint32_t m_above = 0;
    std::uint32_t m_runs = 0;
    bool m_wasAbove = false;
};

}  // namespace

int RunRunsTest(RunsTest* record, const double* x, double K, std::uint32_t n) {
    const QuietArithmetic quiet;
    RunCounter counter;
    for (std::uint32_t i = 0; i < n; ++i) {
        if (x[i] != K) {
            counter.add(x[i] > K);
        }
    }
    counter.write(record);
    record->pValue = exact_p_value(*record);
    return conventions::kSuccess;
}

int RunKroRunsTest(RunsTest* record, const double* x, double K, std::uint32_t n) {
    const QuietArithmetic quiet;
    RunCounter counter;
    for (std::uint32_t i = 0; i < n; ++i) {
        counter.add(x[i] > K);
    }
    counter.write(record);
    const double count = n;
    const double mixed = 2.0 * record->above * record->below;
    const double variance = mixed * (mixed - count) / (count * count * (count - 1.0));
    if (variance > 0.0) {
        const double z = (record->runs - record->expected) / std::sqrt(variance);
        record->pValue = hypothesis::NormalReference().p_value(z, AlternativeHypothesis::NotEqual);
    }
    return conventions::kSuccess;
}

}  // namespace vela::v1
