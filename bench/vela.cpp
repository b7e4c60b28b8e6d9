// Our own entries: the public scalar and array forms.

#include "functions.hpp"
#include "vela/beta.hpp"
#include "vela/binomial.hpp"
#include "vela/cauchy.hpp"
#include "vela/chi_sq.hpp"
#include "vela/exponential.hpp"
#include "vela/f.hpp"
#include "vela/gamma.hpp"
#include "vela/geometric.hpp"
#include "vela/half_normal.hpp"
#include "vela/hypergeometric.hpp"
#include "vela/laplace.hpp"
#include "vela/largest_extreme_value.hpp"
#include "vela/log_logistic.hpp"
#include "vela/log_normal.hpp"
#include "vela/logistic.hpp"
#include "vela/neg_binomial.hpp"
#include "vela/normal.hpp"
#include "vela/poisson.hpp"
#include "vela/smallest_extreme_value.hpp"
#include "vela/t.hpp"
#include "vela/v0/one_sample_t.hpp"
#include "vela/v0/two_sample_t.hpp"
#include "vela/v1/correlation.hpp"
#include "vela/v1/moments.hpp"
#include "vela/weibull.hpp"

#include <cstdint>
#include <type_traits>
#include <utility>

namespace bench {
namespace {

using P = Parameters;
using Size = std::size_t;

template <class... Rest>
using Scalar = double (*)(double, Rest...);
template <class... Rest>
using Array = void (*)(double*, const double*, Size, Rest...);

/// The two overloads of a public function.
template <class... Rest>
consteval auto scalar_of(Scalar<Rest...> function) {
    return function;
}
template <class... Rest>
consteval auto array_of(Array<Rest...> function) {
    return function;
}

/// Gives a function of (arguments..., parameters...) its parameters, each in its own type.
template <class... Rest, class Function, class... Arguments>
auto call(Function function, const P& p, Arguments... arguments) {
    return [&]<Size... i>(std::index_sequence<i...>) {
        return function(arguments..., static_cast<Rest>(p[i])...);
    }
    (std::index_sequence_for<Rest...>());
}

enum class Tail { Lower, Upper };

/// Parameters for a function of count parameters: for the upper tail the last of them is true. The
/// others are passed on without a copy, which would be measured.
template <Tail tail, Size count>
auto with_tail(const P& p) -> std::conditional_t<tail == Tail::Upper, P, const P&> {
    if constexpr (tail == Tail::Upper) {
        P upper = p;
        upper[count - 1] = 1.0;
        return upper;
    } else {
        return p;
    }
}

template <auto scalar, auto array, Tail tail, class... Rest>
PointFunction both_forms(const char* name, Scalar<Rest...> /*has the types*/) {
    constexpr auto adjust = with_tail<tail, sizeof...(Rest)>;
    return {name, [](double x, const P& p) { return call<Rest...>(scalar, adjust(p), x); },
            [](double* out, const double* x, Size n, const P& p) {
                call<Rest...>(array, adjust(p), out, x, n);
            }};
}

/// An entry; both tails of one; the entries of a family under its own name.
#define VELA_FORMS(name, function, tail)                                              \
    both_forms<scalar_of(vela::function), array_of(vela::function), Tail::tail>(name, \
                                                                                vela::function)

#define VELA_POINT(name, function) VELA_FORMS(name, function, Lower)
#define VELA_TAILS(name, function) \
    VELA_POINT(name "Cdf", function), VELA_FORMS(name "UpperCdf", function, Upper)

#define VELA_FAMILY(name)                                             \
    VELA_POINT(#name "Pdf", name##Pdf), VELA_TAILS(#name, name##Cdf), \
        VELA_POINT(#name "InvCdf", name##InvCdf)

double mean_and_variance(const double* x, Size n) {
    double mean = 0.0;
    double variance = 0.0;
    vela::v1::GetSampleMeanAndVariance(x, static_cast<unsigned int>(n), &mean, &variance);
    return mean + variance;
}

double sum(const double* x, Size n) { return vela::v1::GetSum(x, static_cast<unsigned int>(n)); }

double skewness_and_kurtosis(const double* x, Size n) {
    double skewness = 0.0;
    double kurtosis = 0.0;
    vela::v1::GetKroSkewnessAndKurtosis(x, static_cast<unsigned int>(n), &skewness, &kurtosis);
    return skewness + kurtosis;
}

double covariance(const double* x, Size n) {
    double varianceX = 0.0;
    double varianceY = 0.0;
    const double* y = x + n / 2;
    return vela::v1::GetCovariance(x, y, static_cast<unsigned int>(n / 2), &varianceX, &varianceY);
}

double two_sample_t(const double* x, Size n) {
    vela::v0::TwoSampleT record;
    record.count1 = record.count2 = static_cast<std::uint32_t>(n / 2);
    vela::v0::RunTwoSampleT(&record, x, x + n / 2, true, kConfidence, vela::IntervalType::TwoSided,
                            vela::AlternativeHypothesis::NotEqual, 0.0);
    return record.statistic + record.pValue;
}

double one_sample_t(const double* x, Size n) {
    vela::v0::OneSampleT record;
    record.count = static_cast<std::uint32_t>(n);
    vela::v0::RunOneSampleT(&record, x, kConfidence, vela::IntervalType::TwoSided,
                            vela::AlternativeHypothesis::NotEqual, kHypothesizedMean);
    return record.lower + record.upper + record.pValue;
}

}  // namespace

const Implementation& ours() {
    static const Implementation implementation = {
        "vela",
        {
            VELA_FAMILY(Normal),
            VELA_FAMILY(T),
            VELA_FAMILY(Beta),
            VELA_FAMILY(F),
            VELA_FAMILY(Gamma),
            VELA_FAMILY(ChiSq),
            VELA_FAMILY(Binomial),
            VELA_FAMILY(NegBinomial),
            VELA_FAMILY(Poisson),
            VELA_FAMILY(Hypergeometric),
            VELA_FAMILY(Geometric),
            VELA_FAMILY(Weibull),
            VELA_FAMILY(LogNormal),
            VELA_FAMILY(Logistic),
            VELA_FAMILY(Cauchy),
            VELA_FAMILY(Laplace),
            VELA_FAMILY(LargestExtremeValue),
            VELA_FAMILY(SmallestExtremeValue),
            VELA_FAMILY(LogLogistic),
            VELA_FAMILY(HalfNormal),
            VELA_FAMILY(Exponential),
            VELA_POINT("NoncentralTPdf", TPdf),
            VELA_TAILS("NoncentralT", TCdf),
            VELA_POINT("NoncentralTInvCdf", TInvCdf),
            VELA_TAILS("NoncentralChiSq", ChiSqCdf),
            VELA_POINT("NoncentralChiSqInvCdf", ChiSqInvCdf),
            VELA_TAILS("NoncentralF", FCdf),
            VELA_POINT("NoncentralFInvCdf", FInvCdf),
        },
        {{"Sum", sum},
         {"MeanAndVariance", mean_and_variance},
         {"SkewnessAndKurtosis", skewness_and_kurtosis},
         {"Covariance", covariance},
         {"OneSampleT", one_sample_t},
         {"TwoSampleT", two_sample_t}}};
    return implementation;
}

}  // namespace bench
