#ifndef VELA_KERNELS_INCOMPLETE_GAMMA_HPP
#define VELA_KERNELS_INCOMPLETE_GAMMA_HPP

#include <limits>

namespace vela::kernels {

/// exp(x) - 1; -DBL_MAX with errno EDOM for x below -662.34472 or above 709.78271.
double expm1_accurate(double x);

/// ln of x^(a - 1) e^(-x) / Gamma(a), without cancellation near x = a. x and a positive.
void gamma_log_density(double a, double x, double* out);

/// A shape a of the incomplete gamma function with what depends on it alone, so that many
/// evaluations at one shape do that work once, and one evaluation only the part that its x needs:
/// each number is computed when it is first asked for. Threads may share only a prepared() object.
class GammaShape {
public:
    explicit GammaShape(double a);

    /// With everything computed.
    static GammaShape prepared(double a);

    bool is_valid() const { return m_isValid; }

    /// ln Gamma(a + 1), for a valid shape.
    double log_gamma_1() const;

    /// Regularized lower tail P and upper tail Q at x, and, unless f is null, the density there.
    /// Routine name "gamma_df".
    ///
    /// Level 1: a tail underflowed and was set to 0. Level 2 (outputs not written): a <= 0, x < 0,
    /// a > 94906265, NaN, or a so small that 1/a overflows. Level 4: no convergence.
    /// For x below 2.2e-288 P is 0 whatever the shape.
    void pq(double x, double* P, double* Q, double* f) const;

private:
    static constexpr double kUnknown = std::numeric_limits<double>::quiet_NaN();

    double log_a() const;
    double remainder() const;
    double small_switch_point() const;
    double gamma() const;
    double gamma_excess() const;

    bool is_lower(double x) const;
    double log_density(double x) const;
    double tails(double x, bool isDensityWanted, double* P, double* Q) const;
    void lower_series(double x, double logDensity, double* P, double* Q) const;
    void small_shape_series(double x, double* P, double* Q) const;
    void upper_function(double x, double logDensity, double density, double* P, double* Q) const;

    double m_a;
    bool m_isValid;
    mutable double m_logA = kUnknown;
    mutable double m_logGamma1 = kUnknown;
    mutable double m_remainder = kUnknown;    // stirling_remainder(a)
    mutable double m_switchPoint = kUnknown;  // for a < 0.59 only
    mutable double m_gamma = kUnknown;        // Gamma(a), for a < 1 only
    mutable double m_gammaExcess = kUnknown;  // Gamma(a) - 1/a, for a < 1 only
};

/// GammaShape(a), but already prepared where 2a is one of 1, 2, ..., 18: a few whole degrees of
/// freedom are what is asked for most.
GammaShape gamma_shape(double a);

/// One evaluation at one shape; see GammaShape::pq().
void gamma_pq(double x, double a, double* P, double* Q, double* f);

/// S = 1 + x/(a+1) + x^2/((a+1)(a+2)) + ...; 0, or 4 when it did not converge.
int gamma_Iax(double a, double x, double* S);

/// J = Gamma(a, x) / (x^(a-1) e^(-x)); 0, or 4 when it did not converge.
int gamma_Jax(double a, double x, double* J);

/// J for a shape b in [0, 1): the continued fraction, or for x < 1 the small-shape series. 0, or 4.
int gamma_cf(double x, double b, double* J);

/// Unnormalized upper incomplete gamma function Gamma(a, x) for 0 <= a < 1 and x < 1.
double upper_gamma_small(double x, double a);

}  // namespace vela::kernels

#endif
