#ifndef VELA_KERNELS_NEG_BINOMIAL_HPP
#define VELA_KERNELS_NEG_BINOMIAL_HPP

/// The negative binomial distribution of the number of non-events before the r-th event of
/// probability p, and the geometric distribution, r = 1.
///
/// 0 < p <= 1, 0 < r < 1e149, r need not be whole; anything else is level 2. Failed outputs are
/// DBL_MAX, and -DBL_MAX for a quantile.
namespace vela::kernels {

/// *lower = P(X <= k), *upper = P(X > k) for a whole k of any size or sign, to 5e-14 relative
/// for small counts, else through beta_df() with its accuracy and other levels; P(X <= 0) is p^r.
/// Routine name "neg_binomial_df".
void neg_binomial_df(double k, double p, double r, double* lower, double* upper);

/// P(X = k) for a whole k, through BetaPower, whose accuracy it has. Routine name
/// "neg_binomial_pdf".
double neg_binomial_pdf(double k, double p, double r);

/// The smallest *k with P(X <= *k) >= probability; see discrete_quantile.hpp. Routine name
/// "neg_binomial_lower_quant".
void neg_binomial_lower_quant(double probability, double p, double r, double* k);

/// The same for r = 1 in closed form. Routine names "geometric_df", "geometric_pdf" and
/// "geometric_lower_quant".
void geometric_df(double k, double p, double* lower, double* upper);
double geometric_pdf(double k, double p);
void geometric_lower_quant(double probability, double p, double* k);

}  // namespace vela::kernels

#endif
