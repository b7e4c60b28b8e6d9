#include "vela/p_values.hpp"

#include "conventions/call_frame.hpp"
#include "distributions/chi_sq.hpp"
#include "distributions/discrete_p_values.hpp"
#include "distributions/f.hpp"
#include "distributions/normal.hpp"
#include "distributions/t.hpp"

namespace vela {

using conventions::call;
using enum conventions::MissingInput;

double NormalPValue(double z, EAlternative alternative) {
    return call<kGivesMissing>(distributions::normal_p_value, z, alternative);
}

double TPValue(double t, double df, EAlternative alternative) {
    return call<kGivesMissing>(distributions::t_p_value, t, df, alternative);
}

double ChiSqPValue(double x, double df, EAlternative alternative) {
    return call<kGivesMissing>(distributions::chi_sq_p_value, x, df, alternative);
}

double FPValue(double f, double df1, double df2, EAlternative alternative) {
    return call<kGivesMissing>(distributions::f_p_value, f, df1, df2, alternative);
}

double BinomialPValue(double x, int n, double p, EAlternative alternative) {
    return call<kGivesMissing>(distributions::binomial_p_value, x, n, p, alternative);
}

double HypergeometricPValue(int x, int population, int events, int sample,
                            EAlternative alternative) {
    return call<kIsOrdinary>(distributions::hypergeometric_p_value, static_cast<double>(x),
                             population, events, sample, alternative);
}

}  // namespace vela
