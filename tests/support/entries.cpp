#include "support/entries.hpp"

#include "support/special_values.hpp"
#include "vela/vela.hpp"

#include <algorithm>
#include <cfloat>
#include <map>
#include <stdexcept>
#include <type_traits>
#include <utility>

namespace vela::test {
namespace {

using enum Domain;

template <class Parameter>
Parameter convert(double argument) {
    if constexpr (std::is_same_v<Parameter, double>) {
        return argument;
    } else {
        // A hostile double has no integer value: the nearest int stands for it.
        const double bounded =
            argument == argument ? std::clamp(argument, -2147483648.0, 2147483647.0) : 0.0;
        return static_cast<Parameter>(static_cast<int>(bounded));
    }
}

/// The first argument may be a count.
template <class First, class... Parameters>
auto scalar(double (*function)(First, Parameters...)) {
    return [function](const Arguments& arguments) {
        return [&]<std::size_t... i>(std::index_sequence<i...>) {
            return function(convert<First>(arguments[0]), convert<Parameters>(arguments[i + 1])...);
        }
        (std::index_sequence_for<Parameters...>{});
    };
}

template <class... Parameters>
auto array(void (*function)(double*, const double*, std::size_t, Parameters...)) {
    return [function](double* out, const double* x, std::size_t n, const Arguments& arguments) {
        [&]<std::size_t... i>(std::index_sequence<i...>) {
            function(out, x, n, convert<Parameters>(arguments[i + 1])...);
        }
        (std::index_sequence_for<Parameters...>{});
    };
}

/// The arguments of a Discrete function: x, count, the values, their probabilities, the tail flag.
struct DiscreteTable {
    explicit DiscreteTable(const Arguments& arguments)
        : values(arguments.data() + 2),
          count(std::min(convert<int>(arguments[1]), static_cast<int>((arguments.size() - 2) / 2))),
          probabilities(values + std::max(count, 0)) {}

    const double* values;
    int count;
    const double* probabilities;
};

template <class... Flag>
Entry discrete(const char* name, Domain first,
               double (*function)(double, const double*, const double*, int, Flag...),
               void (*array)(double*, const double*, std::size_t, const double*, const double*, int,
                             Flag...)) {
    std::vector<Domain> domains = {first, kRows, kLocation, kLocation, kHalf, kHalf};
    domains.resize(domains.size() + sizeof...(Flag), kFlag);
    return {name, domains,
            [function](const Arguments& a) {
                const DiscreteTable t(a);
                return function(a[0], t.values, t.probabilities, t.count,
                                convert<Flag>(a.back())...);
            },
            [array](double* out, const double* x, std::size_t n, const Arguments& a) {
                const DiscreteTable t(a);
                array(out, x, n, t.values, t.probabilities, t.count, convert<Flag>(a.back())...);
            }};
}

/// The three functions of a family, each in its scalar and its array form.
template <class... Parameters>
std::vector<Entry> family(const std::string& name, Domain x, const std::vector<Domain>& parameters,
                          double (*pdf)(double, Parameters...),
                          void (*pdfs)(double*, const double*, std::size_t, Parameters...),
                          double (*cdf)(double, std::type_identity_t<Parameters>..., bool),
                          void (*cdfs)(double*, const double*, std::size_t,
                                       std::type_identity_t<Parameters>..., bool),
                          double (*inverse)(double, Parameters...),
                          void (*inverses)(double*, const double*, std::size_t, Parameters...)) {
    std::vector<Domain> domains = {x};
    domains.insert(domains.end(), parameters.begin(), parameters.end());
    std::vector<Entry> rows(3, {name + "Pdf", domains, scalar(pdf), array(pdfs)});
    rows[1] = {name + "Cdf", domains, scalar(cdf), array(cdfs)};
    rows[1].domains.push_back(kFlag);
    domains[0] = kProbability;
    rows[2] = {name + "InvCdf", domains, scalar(inverse), array(inverses)};
    return rows;
}

std::vector<Entry> join(const std::vector<std::vector<Entry>>& groups) {
    std::vector<Entry> all;
    for (const std::vector<Entry>& group : groups) {
        all.insert(all.end(), group.begin(), group.end());
    }
    return all;
}

}  // namespace

const std::vector<Entry>& entries() {
    // One row or family, one line.
    // clang-format off
    static const std::vector<Entry> table = join({
        family("Normal", kReal, {kLocation, kPositive}, NormalPdf, NormalPdf, NormalCdf, NormalCdf, NormalInvCdf, NormalInvCdf),
        family("Exponential", kReal, {kPositive, kLocation}, ExponentialPdf, ExponentialPdf, ExponentialCdf, ExponentialCdf, ExponentialInvCdf, ExponentialInvCdf),
        family("T", kReal, {kDegreesOfFreedom, kNoncentrality}, TPdf, TPdf, TCdf, TCdf, TInvCdf, TInvCdf),
        {{"NormalPValue", {kReal, kAlternative}, scalar(NormalPValue), {}},
         {"TPValue", {kReal, kDegreesOfFreedom, kAlternative}, scalar(TPValue), {}},
         {"NormalCritValue", {kProbability, kAlternative}, scalar(NormalCritValue), {}},
         {"TCritValue", {kProbability, kDegreesOfFreedom, kAlternative, kComparisons}, scalar(TCritValue), {}},
         {"TSidakCritValue", {kProbability, kDegreesOfFreedom, kAlternative, kComparisons}, scalar(TSidakCritValue), {}}},
        {{"BinomialPdf", {kReal, kSize, kProbability}, scalar(BinomialPdf), array(BinomialPdf)},
         {"BinomialCdf", {kReal, kSize, kProbability, kFlag}, scalar(BinomialCdf), array(BinomialCdf)},
         {"BinomialInvCdf", {kProbability, kSize, kProbability}, scalar(BinomialInvCdf), array(BinomialInvCdf)}},
        family("Poisson", kReal, {kPositive}, PoissonPdf, PoissonPdf, PoissonCdf, PoissonCdf, PoissonInvCdf, PoissonInvCdf),
        family("Geometric", kReal, {kProbability}, GeometricPdf, GeometricPdf, GeometricCdf, GeometricCdf, GeometricInvCdf, GeometricInvCdf),
        family("NegBinomial", kReal, {kProbability, kPositive}, NegBinomialPdf, NegBinomialPdf, NegBinomialCdf, NegBinomialCdf, NegBinomialInvCdf, NegBinomialInvCdf),
        family("Hypergeometric", kReal, {kSize, kSize, kSize}, HypergeometricPdf, HypergeometricPdf, HypergeometricCdf, HypergeometricCdf, HypergeometricInvCdf, HypergeometricInvCdf),
        family("IntegerUniform", kReal, {kInteger, kInteger}, IntegerUniformPdf, IntegerUniformPdf, IntegerUniformCdf, IntegerUniformCdf, IntegerUniformInvCdf, IntegerUniformInvCdf),
        {{"BinomialPValue", {kReal, kSize, kProbability, kAlternative}, scalar(BinomialPValue), {}},
         {"HypergeometricPValue", {kSize, kSize, kSize, kSize, kAlternative}, scalar(HypergeometricPValue), {}}},
        family("Cauchy", kReal, {kLocation, kPositive}, CauchyPdf, CauchyPdf, CauchyCdf, CauchyCdf, CauchyInvCdf, CauchyInvCdf),
        family("Gamma", kReal, {kPositive, kPositive, kLocation}, GammaPdf, GammaPdf, GammaCdf, GammaCdf, GammaInvCdf, GammaInvCdf),
        family("HalfNormal", kReal, {kPositive, kLocation}, HalfNormalPdf, HalfNormalPdf, HalfNormalCdf, HalfNormalCdf, HalfNormalInvCdf, HalfNormalInvCdf),
        family("Lambda", kReal, {kLambda, kLocation, kPositive}, LambdaPdf, LambdaPdf, LambdaCdf, LambdaCdf, LambdaInvCdf, LambdaInvCdf),
        family("Laplace", kReal, {kLocation, kPositive}, LaplacePdf, LaplacePdf, LaplaceCdf, LaplaceCdf, LaplaceInvCdf, LaplaceInvCdf),
        family("LargestExtremeValue", kReal, {kLocation, kPositive}, LargestExtremeValuePdf, LargestExtremeValuePdf, LargestExtremeValueCdf, LargestExtremeValueCdf, LargestExtremeValueInvCdf, LargestExtremeValueInvCdf),
        family("Logistic", kReal, {kLocation, kPositive}, LogisticPdf, LogisticPdf, LogisticCdf, LogisticCdf, LogisticInvCdf, LogisticInvCdf),
        family("LogLogistic", kReal, {kLocation, kPositive, kLocation}, LogLogisticPdf, LogLogisticPdf, LogLogisticCdf, LogLogisticCdf, LogLogisticInvCdf, LogLogisticInvCdf),
        family("LogNormal", kReal, {kLocation, kPositive, kLocation}, LogNormalPdf, LogNormalPdf, LogNormalCdf, LogNormalCdf, LogNormalInvCdf, LogNormalInvCdf),
        family("SmallestExtremeValue", kReal, {kLocation, kPositive}, SmallestExtremeValuePdf, SmallestExtremeValuePdf, SmallestExtremeValueCdf, SmallestExtremeValueCdf, SmallestExtremeValueInvCdf, SmallestExtremeValueInvCdf),
        family("Triangular", kReal, {kLocation, kLocation, kLocation}, TriangularPdf, TriangularPdf, TriangularCdf, TriangularCdf, TriangularInvCdf, TriangularInvCdf),
        family("Uniform", kReal, {kLocation, kLocation}, UniformPdf, UniformPdf, UniformCdf, UniformCdf, UniformInvCdf, UniformInvCdf),
        family("Weibull", kReal, {kPositive, kPositive, kLocation}, WeibullPdf, WeibullPdf, WeibullCdf, WeibullCdf, WeibullInvCdf, WeibullInvCdf),
        family("Beta", kUnitInterval, {kShape, kShape}, BetaPdf, BetaPdf, BetaCdf, BetaCdf, BetaInvCdf, BetaInvCdf),
        {{"ChiSqPdf", {kReal, kDegreesOfFreedom}, scalar(ChiSqPdf), array(ChiSqPdf)},
         {"ChiSqCdf", {kReal, kDegreesOfFreedom, kSumOfSquares, kFlag}, scalar(ChiSqCdf), array(ChiSqCdf)},
         {"ChiSqInvCdf", {kProbability, kDegreesOfFreedom, kSumOfSquares}, scalar(ChiSqInvCdf), array(ChiSqInvCdf)},
         {"FPdf", {kReal, kDegreesOfFreedom, kDegreesOfFreedom}, scalar(FPdf), array(FPdf)},
         {"FCdf", {kReal, kDegreesOfFreedom, kDegreesOfFreedom, kSumOfSquares, kFlag}, scalar(FCdf), array(FCdf)},
         {"FInvCdf", {kProbability, kDegreesOfFreedom, kDegreesOfFreedom, kSumOfSquares}, scalar(FInvCdf), array(FInvCdf)},
         {"ChiSqPValue", {kReal, kDegreesOfFreedom, kAlternative}, scalar(ChiSqPValue), {}},
         {"FPValue", {kReal, kDegreesOfFreedom, kDegreesOfFreedom, kAlternative}, scalar(FPValue), {}},
         {"ChiSqCritValue", {kProbability, kDegreesOfFreedom, kAlternative}, scalar(ChiSqCritValue), {}},
         {"FCritValue", {kProbability, kDegreesOfFreedom, kDegreesOfFreedom, kAlternative}, scalar(FCritValue), {}},
         discrete("DiscretePdf", kReal, DiscretePdf, DiscretePdf),
         discrete("DiscreteCdf", kReal, DiscreteCdf, DiscreteCdf),
         discrete("DiscreteInvCdf", kProbability, DiscreteInvCdf, DiscreteInvCdf)},
        // clang-format on
    });
    return table;
}

const Entry& entry(const std::string& name) {
    for (const Entry& candidate : entries()) {
        if (candidate.name == name) {
            return candidate;
        }
    }
    throw std::out_of_range("no entry named " + name);
}

const std::vector<double>& grid(Domain domain) {
    static const std::map<Domain, std::vector<double>> grids = {
        {kReal, {-DBL_MAX,      -1e300, -1e10,  -37.6, -1.5,         -1e-10, -1e-300,
                 -DBL_TRUE_MIN, 0.0,    1e-308, 1e-8,  0.3,          1.0,    2.5,
                 36.5,          700.0,  1e5,    1e150, MissingValue, DBL_MAX}},
        {kLocation, {-1e300, -1e10, -1.5, -1e-300, 0.0, 0.3, 1e5, 1e300}},
        {kPositive, {DBL_TRUE_MIN, 1e-308, 1e-300, 1e-8, 0.5, 1.0, 3.0, 1e5, 1e300}},
        {kDegreesOfFreedom,
         {DBL_TRUE_MIN, 1e-300, 1e-3, 0.5, 1.0, 2.0, 7.5, 100.0, 1e5, 1e8, 1e15, 1e300, kInfinity}},
        {kNoncentrality, {-1e4, -30.0, -1.0, -1e-10, 0.0, 1e-300, 0.5, 5.0, 40.0, 1e4}},
        {kProbability,
         {0.0, DBL_TRUE_MIN, 1e-300, 1e-101, 1e-100, 1e-17, 0.01, 0.25, 0.42, 0.499999, 0.5,
          0.500001, 0.7, 0.999, 1.0 - 0x1p-53, 1.0}},
        {kFlag, {0.0, 1.0}},
        {kAlternative, {-1.0, 0.0, 1.0, 2.0}},
        {kComparisons, {1.0, 2.0, 1000.0}},
        {kSize, {0.0, 1.0, 2.0, 10.0, 199.0, 1e6, 2147483647.0}},
        {kInteger, {-2147483648.0, -5.0, 0.0, 6.0, 2147483647.0}},
        {kRows, {0.0, 2.0}},
        {kHalf, {0.5}},
        {kShape,
         {1e-150, 1e-20, 1e-3, 0.3, 0.5, 1.0, 2.0, 7.5, 60.0, 500.0, 1e6, 1e8, 1e15, 1e50, 1e150}},
        {kUnitInterval,
         {-DBL_MAX, -1.5, -DBL_TRUE_MIN, 0.0, DBL_TRUE_MIN, 1e-308, 1e-150, 1e-16, 1e-8, 0.1, 0.3,
          0.5, 0.7, 0.999, 1.0 - 0x1p-53, 1.0, 1.5, MissingValue, DBL_MAX}},
        {kSumOfSquares, {0.0, 1e-300, 1e-10, 0.5, 40.0, 1e4}},
        {kLambda,
         {-1e300, -1e12, -2e4, -1e3, -3.0, -1.0, -1e-10, -1e-300, 0.0, 1e-300, 1e-10, 0.14, 0.5,
          1.0, 2.0, 7.0, 1e3, 1e300}},
    };
    return grids.at(domain);
}

const std::vector<double>& hostile_values() {
    static const std::vector<double> values = {
        kNaN, -kInfinity,   kInfinity, -DBL_MAX, DBL_MAX, -1.0,        -DBL_TRUE_MIN,
        -0.0, DBL_TRUE_MIN, 0.5,       1.0,      1e9,     MissingValue};
    return values;
}

namespace {

/// Counts through all combinations like an odometer.
void visit_product(const std::vector<const std::vector<double>*>& values, const Visitor& visit) {
    std::vector<std::size_t> index(values.size(), 0);
    Arguments arguments(values.size());
    for (std::size_t position = 0; position < values.size();) {
        for (std::size_t i = 0; i < values.size(); ++i) {
            arguments[i] = (*values[i])[index[i]];
        }
        visit(arguments);
        for (position = 0; position < values.size(); ++position) {
            if (++index[position] < values[position]->size()) {
                break;
            }
            index[position] = 0;
        }
    }
}

}  // namespace

void for_each_grid_point(const Entry& entry, const Visitor& visit) {
    std::vector<const std::vector<double>*> values;
    for (const Domain domain : entry.domains) {
        values.push_back(&grid(domain));
    }
    visit_product(values, visit);
}

void for_each_hostile_point(const Entry& entry, const Visitor& visit) {
    visit_product({entry.domains.size(), &hostile_values()}, visit);
}

}  // namespace vela::test
