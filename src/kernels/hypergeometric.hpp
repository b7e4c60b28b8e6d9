#ifndef VELA_KERNELS_HYPERGEOMETRIC_HPP
#define VELA_KERNELS_HYPERGEOMETRIC_HPP

/// The hypergeometric distribution of the number of events in a sample drawn without replacement
/// from a finite population.
namespace vela::kernels {

/// The population size, the number of events in it, and the sample size; each of the latter two
/// lies between 0 and the first.
struct Urn {
    int population;
    int events;
    int sample;

    bool is_valid() const {
        return events >= 0 && sample >= 0 && events <= population && sample <= population;
    }
    double smallest() const;  // of the support
    double largest() const;
    double mode() const;
};

/// *lower = P(X <= k), *upper = P(X > k) for a whole k of any size or sign. Routine name
/// "hypergeo_df". Level 1: a tail below exp(-662.34472) was set to 0. Level 2 with DBL_MAX in both
/// outputs: an invalid urn, or NaN.
///
/// @accuracy 5e-15 relative in either tail down to 1e-280, measured over populations to 2e9
void hypergeo_df(double k, const Urn& urn, double* lower, double* upper);

/// P(X = k) for a whole k. Routine name "hypergeo_pdf". Level 2 and DBL_MAX as above.
double hypergeo_pdf(double k, const Urn& urn);

/// The smallest *k with P(X <= *k) >= probability; see discrete_quantile.hpp. Routine name
/// "hypergeo_lower_quant".
void hypergeo_lower_quant(double probability, const Urn& urn, double* k);

}  // namespace vela::kernels

#endif
