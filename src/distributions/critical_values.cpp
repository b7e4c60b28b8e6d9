#include "vela/critical_values.hpp"

#include "conventions/call_frame.hpp"
#include "distributions/chi_sq.hpp"
#include "distributions/f.hpp"
#include "distributions/normal.hpp"
#include "distributions/t.hpp"
#include "kernels/guarded.hpp"

namespace vela {
namespace distributions {
namespace {

/// Lower-tail probability of the critical value of a symmetric distribution at level alpha.
double symmetric_probability(double alpha, EAlternative alternative) {
    switch (alternative) {
        case EAlternative::LowerTailed:
        case EAlternative::UpperTailed: return 1.0 - alpha;
        case EAlternative::TwoSided: return 1.0 - alpha / 2.0;
    }
    return 0.0;
}

double normal_crit_value(double alpha, EAlternative alternative) {
    return normal_inv_cdf(symmetric_probability(alpha, alternative), 0.0, 1.0);
}

double t_crit_value(double alpha, double df, EAlternative alternative, int k) {
    const double level = alpha / static_cast<double>(k);
    return t_inv_cdf(symmetric_probability(level, alternative), df, 0.0);
}

double t_sidak_crit_value(double alpha, double df, EAlternative alternative, int k) {
    const double level = 1.0 - kernels::safe_pow(1.0 - alpha, 1.0 / static_cast<double>(k));
    return t_inv_cdf(symmetric_probability(level, alternative), df, 0.0);
}

/// Of a distribution on the positive half-line: the quantile at either end, 0 for any other
/// alternative.
template <class Quantile>
double one_sided_crit_value(double alpha, EAlternative alternative, Quantile quantile) {
    switch (alternative) {
        case EAlternative::LowerTailed: return quantile(alpha);
        case EAlternative::UpperTailed: return quantile(1.0 - alpha);
        case EAlternative::TwoSided: break;
    }
    return 0.0;
}

double chi_sq_crit_value(double alpha, double df, EAlternative alternative) {
    return one_sided_crit_value(alpha, alternative,
                                [=](double p) { return central_chi_sq_inv_cdf(p, df); });
}

double f_crit_value(double alpha, double df1, double df2, EAlternative alternative) {
    return one_sided_crit_value(alpha, alternative,
                                [=](double p) { return f_inv_cdf(p, df1, df2, 0.0); });
}

}  // namespace
}  // namespace distributions

// A level is an argument of the formulas like any other; only a quantile knows a missing one.
using conventions::call;
using enum conventions::MissingInput;

double NormalCritValue(double alpha, EAlternative alternative) {
    return call<kIsOrdinary>(distributions::normal_crit_value, alpha, alternative);
}

double TCritValue(double alpha, double df, EAlternative alternative, int k) {
    return call<kIsOrdinary>(distributions::t_crit_value, alpha, df, alternative, k);
}

double TSidakCritValue(double alpha, double df, EAlternative alternative, int k) {
    return call<kIsOrdinary>(distributions::t_sidak_crit_value, alpha, df, alternative, k);
}

double ChiSqCritValue(double alpha, double df, EAlternative alternative) {
    return call<kIsOrdinary>(distributions::chi_sq_crit_value, alpha, df, alternative);
}

double FCritValue(double alpha, double df1, double df2, EAlternative alternative) {
    return call<kIsOrdinary>(distributions::f_crit_value, alpha, df1, df2, alternative);
}

}  // namespace vela
