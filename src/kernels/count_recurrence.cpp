// Sums of masses from 0 on. All terms are positive, so that nothing is lost but the rounding of a
// few hundred operations. The lower tail is added up, and the upper one is its complement; where
// that would lose digits, the other way round.

#include "kernels/count_recurrence.hpp"

#include "kernels/limits.hpp"

namespace vela::kernels {

bool CountRecurrence::tails(double k, double* lower, double* upper) const {
    if (!(m_first > kSmallestFirst)) {
        return false;
    }
    double term = m_first;
    double sum = m_first;
    for (double j = 0.0; j < k; j += 1.0) {
        term *= ratio(j);
        sum += term;
    }
    constexpr double complementLimit = 0.8;
    if (sum <= complementLimit) {
        *lower = sum;
        *upper = 1.0 - sum;
        return true;
    }
    constexpr double tolerance = 1e-17;
    constexpr double maxTerms = 300.0;
    term *= ratio(k);
    double rest = term;
    for (double j = k + 1.0; term > tolerance * rest; j += 1.0) {
        if (j > k + maxTerms) {
            return false;
        }
        term *= ratio(j);
        rest += term;
    }
    if (rest < kUnderflow) {
        return false;
    }
    *lower = 1.0 - rest;
    *upper = rest;
    return true;
}

double CountRecurrence::mass(double k) const {
    if (!(m_first > kSmallestFirst)) {
        return -1.0;
    }
    double term = m_first;
    for (double j = 0.0; j < k; j += 1.0) {
        term *= ratio(j);
    }
    return term > kUnderflow ? term : -1.0;
}

bool CountRecurrence::quantile(double p, double* k) const {
    // more than the shortfall that counts as reached and the error of the sum together
    constexpr double undecided = 3e-13;
    const double tooLow = p - undecided * p;
    double term = m_first;
    double sum = m_first;
    double j = 0.0;
    for (; sum < tooLow && j < kLongest; j += 1.0) {
        term *= ratio(j);
        sum += term;
    }
    *k = j;
    return m_first > kSmallestFirst && sum > p + undecided * p;
}

}  // namespace vela::kernels
