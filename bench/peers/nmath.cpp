// nmath, the C library of R's distribution functions. It has no procedures on samples.

#include "functions.hpp"

#include <utility>
#include <vector>

#define MATHLIB_STANDALONE
#include <Rmath.h>  // last, because it defines short names as macros

namespace bench {
namespace {

using P = Parameters;

constexpr int kLower = 1;
constexpr int kUpper = 0;
constexpr int kNoLog = 0;

/// Calls function(x, the first count parameters..., flags...).
template <auto function, std::size_t count, auto order, int... flags>
double call(double x, const P& parameters) {
    const P p = order(parameters);
    return [&]<std::size_t... i>(std::index_sequence<i...>) {
        return function(x, p[i]..., flags...);
    }
    (std::make_index_sequence<count>());
}

P as_ours(const P& p) { return p; }
P size_first(const P& p) { return {p[1], p[0]}; }
P events_others_sample(const P& p) { return {p[1], p[0] - p[1], p[2]}; }

template <std::size_t count, auto density, auto cumulative, auto quantile, auto order = as_ours>
void add(std::vector<PointFunction>& all, const char* family) {
    add_family<call<density, count, order, kNoLog>, call<cumulative, count, order, kLower, kNoLog>,
               call<cumulative, count, order, kUpper, kNoLog>,
               call<quantile, count, order, kLower, kNoLog>>(all, family);
}

std::vector<PointFunction> families() {
    std::vector<PointFunction> all;
    add<2, dnorm, pnorm, qnorm>(all, "Normal");
    add<1, dt, pt, qt>(all, "T");
    add<2, dnt, pnt, qnt>(all, "NoncentralT");
    add<2, dbeta, pbeta, qbeta>(all, "Beta");
    add<2, df, pf, qf>(all, "F");
    add<3, dnf, pnf, qnf>(all, "NoncentralF");
    add<2, dgamma, pgamma, qgamma>(all, "Gamma");
    add<1, dchisq, pchisq, qchisq>(all, "ChiSq");
    add<2, dnchisq, pnchisq, qnchisq>(all, "NoncentralChiSq");
    add<2, dbinom, pbinom, qbinom>(all, "Binomial");
    add<2, dnbinom, pnbinom, qnbinom, size_first>(all, "NegBinomial");
    add<1, dpois, ppois, qpois>(all, "Poisson");
    add<3, dhyper, phyper, qhyper, events_others_sample>(all, "Hypergeometric");
    add<1, dgeom, pgeom, qgeom>(all, "Geometric");
    add<2, dweibull, pweibull, qweibull>(all, "Weibull");
    add<2, dlnorm, plnorm, qlnorm>(all, "LogNormal");
    add<2, dlogis, plogis, qlogis>(all, "Logistic");
    add<2, dcauchy, pcauchy, qcauchy>(all, "Cauchy");
    add<1, dexp, pexp, qexp>(all, "Exponential");
    return all;
}

[[maybe_unused]] const bool added = add_peer({"nmath", families(), {}, R_VERSION_STRING});

}  // namespace
}  // namespace bench
