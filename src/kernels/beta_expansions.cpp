// Expansions of the incomplete beta function about its large-shape limits: a normal tail times a
// power series, and incomplete gamma functions times a power series.

#include "kernels/beta_expansions.hpp"

#include "kernels/beta_gamma.hpp"
#include "kernels/beta_mills.hpp"

#include <cmath>

namespace vela::kernels {
namespace {

constexpr double kTolerance = 1.1e-16;  // terms below this fraction of the sum end an expansion
constexpr int kMaxOrder = 48;

}  // namespace

// Where both shapes are large: beyond sqrt(2 E) standard deviations in the margin's direction the
// beta distribution is a normal one times a power series,
//   P = exp(-E) / sqrt(2 pi) sum F_k (-1)^k lambda^(-k/2) T_k,  lambda = a b / (a + b),
// T_k the k-th moment of the normal tail over its density. 1 / F is the series V of
// (x - p) / (tau sqrt(p q)) in tau, E = lambda tau^2 / 2, p = a / (a + b); from the differential
// equation tau x (1 - x) = (x - p) dx/dtau its square S obeys
//   S_k = ((q - p) V_(k-1) - p q S_(k-2)) / (1 + k/2).
// (Temme's uniform expansion in a form that needs no special case at the mean.)
bool large_shapes_expansion(double a, double b, double deviance, double* sum) {
    const double total = a + b;
    const double p = a / total;
    const double q = b / total;
    const double step = -1.0 / std::sqrt(p * b);  // (-1)^k lambda^(-k/2), one factor of it
    const double z = std::sqrt(2.0 * deviance);
    double V[kMaxOrder];
    double S[kMaxOrder];
    double F[kMaxOrder];
    V[0] = S[0] = F[0] = 1.0;
    double evenMoment = mills_ratio(z);
    double oddMoment = 1.0;
    double power = 1.0;  // z^(k-1)
    double factor = step;
    *sum = evenMoment;
    double previous = 1.0;
    for (int k = 1; k < kMaxOrder; ++k) {
        S[k] = ((q - p) * V[k - 1] - (k > 1 ? p * q * S[k - 2] : 0.0)) / (1.0 + 0.5 * k);
        double square = S[k];
        double inverse = 0.0;
        for (int i = 1; i < k; ++i) {
            square -= V[i] * V[k - i];
            inverse -= V[i] * F[k - i];
        }
        V[k] = 0.5 * square;
        F[k] = inverse - V[k];
        double& moment = k % 2 == 0 ? evenMoment : oddMoment;
        moment = k == 1 ? 1.0 : power + (k - 1) * moment;
        const double term = F[k] * factor * moment;
        *sum += term;
        power *= z;
        factor *= step;
        const double size = std::fabs(term);
        if (!(size + previous > kTolerance * *sum)) {  // F of every other order may vanish
            return true;
        }
        previous = size;
    }
    return false;
}

// I_x(a, b) / G for b <= 1, a >= 15 and x near 1: with u = -ln of the integration variable the
// integrand is exp(-N u) u^(b-1) (sinh(u/2) / (u/2))^(b-1), N = a + (b - 1) / 2, and the last
// factor is expanded in powers of u^2.
double gamma_expansion(double a, double b, double y) {
    // ln(sinh(u/2) / (u/2)) in powers of u^2
    constexpr double l[] = {0.0,
                            0.041666666666666664,
                            -0.00034722222222222224,
                            5.5114638447971785e-06,
                            -1.033399470899471e-07,
                            2.08767569878681e-09,
                            -4.403491782239578e-11,
                            9.55895466477477e-13,
                            -2.1185501852016142e-14,
                            4.770034475709914e-16,
                            -1.087434349279031e-17,
                            2.5040921947091955e-19,
                            -5.814360285755218e-21,
                            1.3595027075497952e-22,
                            -3.1976847953705525e-24,
                            7.559841507792277e-26};
    constexpr int orders = 16;
    const double n = a + 0.5 * (b - 1.0);
    const double logarithm = -std::log1p(-y);
    const double z = n * logarithm;
    double c[orders] = {1.0};
    double moment = scaled_upper_gamma(b, z);  // e^z z^-b Gamma(b + 2 k, z)
    double power = 1.0;
    double scale = 1.0;
    double sum = moment;
    for (int k = 1; k < orders; ++k) {
        double coefficient = 0.0;
        for (int i = 1; i <= k; ++i) {
            coefficient += i * l[i] * c[k - i];
        }
        c[k] = (b - 1.0) * coefficient / k;
        const double s = b + 2.0 * (k - 1);
        moment = s * moment + power;
        power *= z;
        moment = (s + 1.0) * moment + power;
        power *= z;
        scale /= n * n;
        const double term = c[k] * scale * moment;
        sum += term;
        if (!(std::fabs(term) > kTolerance * sum)) {
            break;
        }
    }
    // x^N (N L)^b / (N^b B) over G = x^a y^b / B
    return sum * std::exp(b * std::log(logarithm / y) + 0.5 * (1.0 - b) * logarithm);
}

}  // namespace vela::kernels
