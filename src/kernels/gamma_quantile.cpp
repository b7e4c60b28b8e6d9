// Quantile of the gamma distribution, solved for the smaller tail by the common search: Halley's
// method, because the bend of the tail, a - x, costs nothing. From the starts below one or two
// evaluations of the incomplete gamma function are enough.
//
//   x far below a + 1          the power series of P about 0, inverted; its first terms are final
//                              where x < 1e-5 (a + 1)
//   a = 1                      a logarithm, final
//   a = 1/2                    half the square of a normal quantile
//   a > 1/2                    a normal quantile put through Temme (1992), Asymptotic inversion of
//                              incomplete gamma functions, Math. Comp. 58, with three correction
//                              terms; final for a >= 1000 except in the far tails
//   a < 1/2, upper tail        the leading continued fraction of Gamma(a, x), inverted

#include "kernels/gamma_quantile.hpp"

#include "conventions/error_channel.hpp"
#include "kernels/limits.hpp"
#include "kernels/normal_start.hpp"
#include "kernels/positive_quantile.hpp"

#include <cmath>
#include <limits>

namespace vela::kernels {
namespace {

using conventions::enter_kernel;
using conventions::kArgumentTooLarge;
using conventions::kInvalidArgument;
using conventions::kNoConvergence;
using conventions::raise_level;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kLogSmallestX = -745.0;  // exp of less is 0
constexpr double kFinalRatio = 1e-5;      // x / (a + 1) up to which three terms are exact
constexpr double kSeriesRatio = 0.3;      // up to which they are a start
constexpr double kFinalShape = 1000.0;    // Temme's expansion has a relative error of 5e-13
constexpr double kFinalEta = 0.2;         // from this shape on and up to this |eta|

/// x from the leading term x0 of P = x^a / Gamma(a + 1) (1 - a x / (a + 1) + ...).
double inverted_series(double a, double x0) {
    const double t = x0 / (a + 1.0);
    const double c2 = (3.0 * a + 5.0) / (2.0 * (a + 2.0));
    const double c3 = ((8.0 * a + 33.0) * a + 31.0) / (3.0 * (a + 2.0) * (a + 3.0));
    return x0 * (1.0 + t * (1.0 + t * (c2 + t * c3)));
}

/// The r > 0 with r - 1 - ln r = eta^2 / 2, on the side of 1 that the sign of eta says.
double ratio_of(double eta) {
    if (std::fabs(eta) < 1.0) {
        return 1.0 +
               eta * (1.0 +
                      eta * (1.0 / 3 +
                             eta * (1.0 / 36 +
                                    eta * (-1.0 / 270 +
                                           eta * (1.0 / 4320 +
                                                  eta * (1.0 / 17010 + eta * (-139.0 / 5443200 +
                                                                              eta / 204120)))))));
    }
    const double h = 1.0 + 0.5 * eta * eta;
    double r;
    if (eta > 0.0) {
        const double logH = std::log(h);
        r = h + logH + logH / h;
    } else {
        const double u = std::exp(-h);
        r = u * (1.0 + u * (1.0 + u * (1.5 + u * (8.0 / 3))));
        if (u < 1e-3) {
            return r;
        }
    }
    r -= (r - std::log(r) - h) * r / (r - 1.0);
    return r - (r - std::log(r) - h) * r / (r - 1.0);
}

/// The lower-tail normal quantile of p, from the routine for an upper tail.
template <double upperQuantile(double)>
double normal_quantile(double p) {
    return p <= 0.5 ? -upperQuantile(p) : upperQuantile(1.0 - p);
}

/// x from eta = z / sqrt(a), where z is the normal quantile of p: the expansion adds
/// e1 / a + e2 / a^2 + e3 / a^3 to it.
double temme_quantile(double a, double eta) {
    if (std::fabs(eta) < 2.0) {
        const double e1 =
            -1.0 / 3 +
            eta * (1.0 / 36 +
                   eta * (1.0 / 1620 +
                          eta * (-7.0 / 6480 + eta * (5.0 / 18144 - eta * (11.0 / 382725)))));
        const double e2 =
            -7.0 / 405 +
            eta * (-7.0 / 2592 +
                   eta * (533.0 / 204120 + eta * (-1579.0 / 2099520 + eta * (109.0 / 1749600))));
        const double e3 =
            449.0 / 102060 + eta * (-63149.0 / 20995200 +
                                    eta * (29233.0 / 36741600 + eta * (346793.0 / 5290790400.0)));
        return a * ratio_of(eta + (e1 + (e2 + e3 / a) / a) / a);
    }
    const double r = ratio_of(eta);
    const double slope = eta / (r - 1.0);
    return a * r * std::exp(slope * std::log(slope) / (eta * a));
}

/// x with Q(a, x) = q for a small shape, from Q = x^a e^(-x) / Gamma(a) (x + 1) / (x (x + 2 - a)),
/// the fraction's second convergent.
double upper_start(double a, double q, double logGamma1) {
    const double y = std::log(a / q) - logGamma1;
    double x = y > 1.0 ? y : 0.5;
    for (int i = 0; i < 2; ++i) {
        const double excess = x + (1.0 - a) * std::log(x) + std::log((x + 2.0 - a) / (x + 1.0)) - y;
        x = std::fmax(x - excess * x / (x + 1.0 - a), 0.1 * x);
    }
    return x;
}

/// One quantile to find.
struct Task {
    double p;
    double a;
    const GammaShape& shape;
    double x0 = 0.0;  // the leading term of the power series

    bool is_answered_without_search(double* x);
    void search(double* x) const;
    double start() const;
};

bool Task::is_answered_without_search(double* x) {
    enter_kernel("inv_gamma_df");
    *x = -kLargestDouble;
    if (!shape.is_valid() || p != p || p < 0.0 || p >= 1.0) {
        raise_level(kInvalidArgument, "inv_gamma_df");
        return true;
    }
    if (a >= kFinalShape && p >= kUnderflow) {
        const double eta = normal_quantile<polished_normal_start>(p) / std::sqrt(a);
        if (std::fabs(eta) < kFinalEta) {
            *x = temme_quantile(a, eta);
            return true;
        }
    }
    const double logPower = p > 0.0 ? std::log(p) + shape.log_gamma_1() : 0.0;  // ln of x^a near 0
    if (p == 0.0 || logPower < kLogSmallestX * a) {
        *x = 0.0;
        return true;
    }
    const double logX0 = logPower / a;
    x0 = logX0 < kLogOverflow ? std::exp(logX0) : kLargestDouble;
    if (x0 < kFinalRatio * (a + 1.0)) {
        *x = inverted_series(a, x0);
        return true;
    }
    if (a == 1.0) {
        *x = p <= 0.5 ? -std::log1p(-p) : -std::log(1.0 - p);
        return true;
    }
    if (p < kUnderflow) {
        raise_level(kArgumentTooLarge, "inv_gamma_df");
        return true;
    }
    return false;
}

double Task::start() const {
    if (x0 < kSeriesRatio * (a + 1.0)) {
        return inverted_series(a, x0);
    }
    if (a == 0.5) {
        const double z = normal_start(0.5 * (1.0 - p));
        return 0.5 * z * z;
    }
    if (a > 0.5) {
        return temme_quantile(a, normal_quantile<normal_start>(p) / std::sqrt(a));
    }
    return upper_start(a, 1.0 - p, shape.log_gamma_1());
}

void Task::search(double* x) const {
    const bool isUpper = p > 0.5;
    const auto tail = [&](double at) -> TailAndSlope {
        double P = kNaN;
        double Q = kNaN;
        double f = 0.0;
        shape.pq(at, &P, &Q, &f);
        return {isUpper ? Q : P, at * f, a - at, -at};
    };
    double found = 0.0;
    const QuantileOutcome outcome =
        find_positive_quantile(isUpper ? 1.0 - p : p, isUpper, start(), tail, &found);
    enter_kernel("inv_gamma_df");
    if (outcome == QuantileOutcome::kFound) {
        *x = found;
    } else {
        raise_level(kNoConvergence, "inv_gamma_df");
    }
}

}  // namespace

void GammaQuantile::find(double p, double* x) const {
    Task task{p, m_a, m_shape};
    if (!task.is_answered_without_search(x)) {
        task.search(x);
    }
}

void inv_gamma_df(double p, double a, double* x) { GammaQuantile(a).find(p, x); }

}  // namespace vela::kernels
