#ifndef VELA_DISTRIBUTIONS_DISCRETE_P_VALUES_HPP
#define VELA_DISTRIBUTIONS_DISCRETE_P_VALUES_HPP

#include "vela/p_values.hpp"

namespace vela::distributions {

/// P-value of an observed number of events, x truncated to a whole number.
double binomial_p_value(double x, int trials, double probability, EAlternative alternative);

/// P-value of a whole number x of events in a sample.
double hypergeometric_p_value(double x, int population, int events, int sample,
                              EAlternative alternative);

}  // namespace vela::distributions

#endif
