#ifndef VELA_KERNELS_STUDENT_T_HPP
#define VELA_KERNELS_STUDENT_T_HPP

#include "kernels/double_double.hpp"

/// The central Student t distribution: tails, density and quantile.
namespace vela::kernels {

/// Student's t with df degrees of freedom (df > 0, infinity for the normal limit). Constants that
/// depend on df alone are computed once, so that an array of arguments pays for them once.
class CentralT {
public:
    /// An invalid df (NaN, 0 or negative) is reported by the functions below, not here.
    explicit CentralT(double df);

    bool is_valid() const { return m_kind != Kind::kInvalid; }
    bool is_normal() const { return m_kind == Kind::kNormal; }
    double df() const { return m_df; }

    /// lower = P(T <= t), upper = P(T > t), each with a relative error of at most 1e-13 (measured
    /// on 200,000 points, df 0.01 to 1e8: 2.1e-14 below df = 20, 1.2e-15 from there on); a tail
    /// below exp(-662.34472) is 0 and raises the level to 1. tails(-t) is tails(t) exchanged, bit
    /// for bit. An invalid df or a NaN raises the level to 2 and writes the largest double into
    /// both. An infinite df goes to normal_df() and has its accuracy.
    void tails(double t, double* lower, double* upper) const;

    /// The density at t, relative error at most 1e-13 (measured on the same points: 1.2e-15) down
    /// to the smallest normal double; 0 where it underflows and at infinite t. Invalid arguments
    /// give level 2 and the largest double.
    double density(double t) const;

    struct TailAndSlope {
        double tail;   // P(T > t)
        double slope;  // t times the density, -d tail / d ln t: in range wherever the tail is
        double y;      // t^2 / (df + t^2)
    };

    /// For a finite t > 0 and a finite df other than 1 and 2, which have closed forms: no checks,
    /// no report, no flush to 0 of tails that a double still holds.
    TailAndSlope upper_tail(double t) const;

    /// The density at 0.
    double peak() const { return m_peak; }

    /// a B(a, 1/2) with a = df / 2: P(T > t) = x^a (1 + O(x)) / (2 a B), x = df / (df + t^2).
    double leading_scale() const { return 1.0 / m_seriesScale; }

private:
    enum class Kind { kInvalid, kNormal, kOne, kTwo, kSmall, kLarge };

    double closed_form(double t) const;
    TailAndSlope large_df(DoubleDouble log, double ratio, double t) const;
    TailAndSlope series(double power, double ratio) const;
    double finite_density(double t) const;

    double m_df;
    double m_a = 0.0;            // df / 2
    DoubleDouble m_reduced;      // a - 1/4
    double m_centreScale = 0.0;  // 1 / B(a, 1/2)
    double m_seriesScale = 0.0;  // 1 / (a B(a, 1/2))
    double m_largeScale = 0.0;   // Gamma(a + 1/2) / (Gamma(a) sqrt(a - 1/4) sqrt(2 pi))
    double m_largeStep = 0.0;    // 1 / (2 (a - 1/4))^2
    double m_peak = 0.0;
    Kind m_kind = Kind::kInvalid;
};

/// Both tails of one t; see CentralT::tails(). Routine name "t_df".
void t_df(double t, double df, double* lower, double* upper);

/// The density of one t; see CentralT::density(). Routine name "t_pdf".
double t_pdf(double t, double df);

/// The t with P(T > t) = p for 0 < p <= 0.5, so t >= 0. Inverts the tails above to 1e-13 relative
/// in p, or to half an ulp of t where that is more (1.3e-13 of p next to p = 1e-280 with many
/// degrees of freedom, where neighbouring doubles are that far apart). Level 2 and -DBL_MAX for p
/// or df outside their domain; level 3 and -DBL_MAX where t exceeds the range of doubles (small p
/// with few degrees of freedom). Routine name "t_upper_qt".
void t_upper_qt(double p, double df, double* t);

/// The t with P(T <= t) = p for 0 < p < 1; otherwise as t_upper_qt(). Routine name "inv_t_df".
void inv_t_df(double p, double df, double* t);

}  // namespace vela::kernels

#endif
