#include "support/entries.hpp"

#include "vela/vela.hpp"

#include <algorithm>
#include <limits>
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

}  // namespace

const std::vector<Entry>& entries() {
    // One row, one line.
    // clang-format off
    static const std::vector<Entry> table = {
        {"NormalPdf", {kReal, kLocation, kPositive}, scalar(NormalPdf), array(NormalPdf)},
        {"NormalCdf", {kReal, kLocation, kPositive, kFlag}, scalar(NormalCdf), array(NormalCdf)},
        {"NormalInvCdf", {kProbability, kLocation, kPositive}, scalar(NormalInvCdf), array(NormalInvCdf)},
        {"ExponentialPdf", {kReal, kPositive, kLocation}, scalar(ExponentialPdf), array(ExponentialPdf)},
        {"ExponentialCdf", {kReal, kPositive, kLocation, kFlag}, scalar(ExponentialCdf), array(ExponentialCdf)},
        {"ExponentialInvCdf", {kProbability, kPositive, kLocation}, scalar(ExponentialInvCdf), array(ExponentialInvCdf)},
        {"TPdf", {kReal, kDegreesOfFreedom, kNoncentrality}, scalar(TPdf), array(TPdf)},
        {"TCdf", {kReal, kDegreesOfFreedom, kNoncentrality, kFlag}, scalar(TCdf), array(TCdf)},
        {"TInvCdf", {kProbability, kDegreesOfFreedom, kNoncentrality}, scalar(TInvCdf), array(TInvCdf)},
        {"NormalPValue", {kReal, kAlternative}, scalar(NormalPValue), {}},
        {"TPValue", {kReal, kDegreesOfFreedom, kAlternative}, scalar(TPValue), {}},
        {"NormalCritValue", {kProbability, kAlternative}, scalar(NormalCritValue), {}},
        {"TCritValue", {kProbability, kDegreesOfFreedom, kAlternative, kComparisons}, scalar(TCritValue), {}},
        {"TSidakCritValue", {kProbability, kDegreesOfFreedom, kAlternative, kComparisons}, scalar(TSidakCritValue), {}},
        {"BinomialPdf", {kReal, kSize, kProbability}, scalar(BinomialPdf), array(BinomialPdf)},
        {"BinomialCdf", {kReal, kSize, kProbability, kFlag}, scalar(BinomialCdf), array(BinomialCdf)},
        {"BinomialInvCdf", {kProbability, kSize, kProbability}, scalar(BinomialInvCdf), array(BinomialInvCdf)},
        {"PoissonPdf", {kReal, kPositive}, scalar(PoissonPdf), array(PoissonPdf)},
        {"PoissonCdf", {kReal, kPositive, kFlag}, scalar(PoissonCdf), array(PoissonCdf)},
        {"PoissonInvCdf", {kProbability, kPositive}, scalar(PoissonInvCdf), array(PoissonInvCdf)},
        {"GeometricPdf", {kReal, kProbability}, scalar(GeometricPdf), array(GeometricPdf)},
        {"GeometricCdf", {kReal, kProbability, kFlag}, scalar(GeometricCdf), array(GeometricCdf)},
        {"GeometricInvCdf", {kProbability, kProbability}, scalar(GeometricInvCdf), array(GeometricInvCdf)},
        {"NegBinomialPdf", {kReal, kProbability, kPositive}, scalar(NegBinomialPdf), array(NegBinomialPdf)},
        {"NegBinomialCdf", {kReal, kProbability, kPositive, kFlag}, scalar(NegBinomialCdf), array(NegBinomialCdf)},
        {"NegBinomialInvCdf", {kProbability, kProbability, kPositive}, scalar(NegBinomialInvCdf), array(NegBinomialInvCdf)},
        {"HypergeometricPdf", {kReal, kSize, kSize, kSize}, scalar(HypergeometricPdf), array(HypergeometricPdf)},
        {"HypergeometricCdf", {kReal, kSize, kSize, kSize, kFlag}, scalar(HypergeometricCdf), array(HypergeometricCdf)},
        {"HypergeometricInvCdf", {kProbability, kSize, kSize, kSize}, scalar(HypergeometricInvCdf), array(HypergeometricInvCdf)},
        {"IntegerUniformPdf", {kReal, kInteger, kInteger}, scalar(IntegerUniformPdf), array(IntegerUniformPdf)},
        {"IntegerUniformCdf", {kReal, kInteger, kInteger, kFlag}, scalar(IntegerUniformCdf), array(IntegerUniformCdf)},
        {"IntegerUniformInvCdf", {kProbability, kInteger, kInteger}, scalar(IntegerUniformInvCdf), array(IntegerUniformInvCdf)},
        {"BinomialPValue", {kReal, kSize, kProbability, kAlternative}, scalar(BinomialPValue), {}},
        {"HypergeometricPValue", {kSize, kSize, kSize, kSize, kAlternative}, scalar(HypergeometricPValue), {}},
        {"CauchyPdf", {kReal, kLocation, kPositive}, scalar(CauchyPdf), array(CauchyPdf)},
        {"CauchyCdf", {kReal, kLocation, kPositive, kFlag}, scalar(CauchyCdf), array(CauchyCdf)},
        {"CauchyInvCdf", {kProbability, kLocation, kPositive}, scalar(CauchyInvCdf), array(CauchyInvCdf)},
        {"GammaPdf", {kReal, kPositive, kPositive, kLocation}, scalar(GammaPdf), array(GammaPdf)},
        {"GammaCdf", {kReal, kPositive, kPositive, kLocation, kFlag}, scalar(GammaCdf), array(GammaCdf)},
        {"GammaInvCdf", {kProbability, kPositive, kPositive, kLocation}, scalar(GammaInvCdf), array(GammaInvCdf)},
        {"HalfNormalPdf", {kReal, kPositive, kLocation}, scalar(HalfNormalPdf), array(HalfNormalPdf)},
        {"HalfNormalCdf", {kReal, kPositive, kLocation, kFlag}, scalar(HalfNormalCdf), array(HalfNormalCdf)},
        {"HalfNormalInvCdf", {kProbability, kPositive, kLocation}, scalar(HalfNormalInvCdf), array(HalfNormalInvCdf)},
        {"LambdaPdf", {kReal, kLambda, kLocation, kPositive}, scalar(LambdaPdf), array(LambdaPdf)},
        {"LambdaCdf", {kReal, kLambda, kLocation, kPositive, kFlag}, scalar(LambdaCdf), array(LambdaCdf)},
        {"LambdaInvCdf", {kProbability, kLambda, kLocation, kPositive}, scalar(LambdaInvCdf), array(LambdaInvCdf)},
        {"LaplacePdf", {kReal, kLocation, kPositive}, scalar(LaplacePdf), array(LaplacePdf)},
        {"LaplaceCdf", {kReal, kLocation, kPositive, kFlag}, scalar(LaplaceCdf), array(LaplaceCdf)},
        {"LaplaceInvCdf", {kProbability, kLocation, kPositive}, scalar(LaplaceInvCdf), array(LaplaceInvCdf)},
        {"LargestExtremeValuePdf", {kReal, kLocation, kPositive}, scalar(LargestExtremeValuePdf), array(LargestExtremeValuePdf)},
        {"LargestExtremeValueCdf", {kReal, kLocation, kPositive, kFlag}, scalar(LargestExtremeValueCdf), array(LargestExtremeValueCdf)},
        {"LargestExtremeValueInvCdf", {kProbability, kLocation, kPositive}, scalar(LargestExtremeValueInvCdf), array(LargestExtremeValueInvCdf)},
        {"LogisticPdf", {kReal, kLocation, kPositive}, scalar(LogisticPdf), array(LogisticPdf)},
        {"LogisticCdf", {kReal, kLocation, kPositive, kFlag}, scalar(LogisticCdf), array(LogisticCdf)},
        {"LogisticInvCdf", {kProbability, kLocation, kPositive}, scalar(LogisticInvCdf), array(LogisticInvCdf)},
        {"LogLogisticPdf", {kReal, kLocation, kPositive, kLocation}, scalar(LogLogisticPdf), array(LogLogisticPdf)},
        {"LogLogisticCdf", {kReal, kLocation, kPositive, kLocation, kFlag}, scalar(LogLogisticCdf), array(LogLogisticCdf)},
        {"LogLogisticInvCdf", {kProbability, kLocation, kPositive, kLocation}, scalar(LogLogisticInvCdf), array(LogLogisticInvCdf)},
        {"LogNormalPdf", {kReal, kLocation, kPositive, kLocation}, scalar(LogNormalPdf), array(LogNormalPdf)},
        {"LogNormalCdf", {kReal, kLocation, kPositive, kLocation, kFlag}, scalar(LogNormalCdf), array(LogNormalCdf)},
        {"LogNormalInvCdf", {kProbability, kLocation, kPositive, kLocation}, scalar(LogNormalInvCdf), array(LogNormalInvCdf)},
        {"SmallestExtremeValuePdf", {kReal, kLocation, kPositive}, scalar(SmallestExtremeValuePdf), array(SmallestExtremeValuePdf)},
        {"SmallestExtremeValueCdf", {kReal, kLocation, kPositive, kFlag}, scalar(SmallestExtremeValueCdf), array(SmallestExtremeValueCdf)},
        {"SmallestExtremeValueInvCdf", {kProbability, kLocation, kPositive}, scalar(SmallestExtremeValueInvCdf), array(SmallestExtremeValueInvCdf)},
        {"TriangularPdf", {kReal, kLocation, kLocation, kLocation}, scalar(TriangularPdf), array(TriangularPdf)},
        {"TriangularCdf", {kReal, kLocation, kLocation, kLocation, kFlag}, scalar(TriangularCdf), array(TriangularCdf)},
        {"TriangularInvCdf", {kProbability, kLocation, kLocation, kLocation}, scalar(TriangularInvCdf), array(TriangularInvCdf)},
        {"UniformPdf", {kReal, kLocation, kLocation}, scalar(UniformPdf), array(UniformPdf)},
        {"UniformCdf", {kReal, kLocation, kLocation, kFlag}, scalar(UniformCdf), array(UniformCdf)},
        {"UniformInvCdf", {kProbability, kLocation, kLocation}, scalar(UniformInvCdf), array(UniformInvCdf)},
        {"WeibullPdf", {kReal, kPositive, kPositive, kLocation}, scalar(WeibullPdf), array(WeibullPdf)},
        {"WeibullCdf", {kReal, kPositive, kPositive, kLocation, kFlag}, scalar(WeibullCdf), array(WeibullCdf)},
        {"WeibullInvCdf", {kProbability, kPositive, kPositive, kLocation}, scalar(WeibullInvCdf), array(WeibullInvCdf)},
        {"BetaPdf", {kUnitInterval, kShape, kShape}, scalar(BetaPdf), array(BetaPdf)},
        {"BetaCdf", {kUnitInterval, kShape, kShape, kFlag}, scalar(BetaCdf), array(BetaCdf)},
        {"BetaInvCdf", {kProbability, kShape, kShape}, scalar(BetaInvCdf), array(BetaInvCdf)},
        {"ChiSqPdf", {kReal, kDegreesOfFreedom}, scalar(ChiSqPdf), array(ChiSqPdf)},
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
        discrete("DiscreteInvCdf", kProbability, DiscreteInvCdf, DiscreteInvCdf),
        // clang-format on
    };
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
    constexpr double infinity = std::numeric_limits<double>::infinity();
    constexpr double largest = std::numeric_limits<double>::max();
    constexpr double denormal = std::numeric_limits<double>::denorm_min();
    static const std::map<Domain, std::vector<double>> grids = {
        {kReal,
         {-largest, -1e300, -1e10, -37.6, -1.5, -1e-10, -1e-300, -denormal, 0.0,          1e-308,
          1e-8,     0.3,    1.0,   2.5,   36.5, 700.0,  1e5,     1e150,     MissingValue, largest}},
        {kLocation, {-1e300, -1e10, -1.5, -1e-300, 0.0, 0.3, 1e5, 1e300}},
        {kPositive, {denormal, 1e-308, 1e-300, 1e-8, 0.5, 1.0, 3.0, 1e5, 1e300}},
        {kDegreesOfFreedom,
         {denormal, 1e-300, 1e-3, 0.5, 1.0, 2.0, 7.5, 100.0, 1e5, 1e8, 1e15, 1e300, infinity}},
        {kNoncentrality, {-1e4, -30.0, -1.0, -1e-10, 0.0, 1e-300, 0.5, 5.0, 40.0, 1e4}},
        {kProbability,
         {0.0, denormal, 1e-300, 1e-101, 1e-100, 1e-17, 0.01, 0.25, 0.42, 0.499999, 0.5, 0.500001,
          0.7, 0.999, 1.0 - 0x1p-53, 1.0}},
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
         {-largest, -1.5, -denormal, 0.0, denormal, 1e-308, 1e-150, 1e-16, 1e-8, 0.1, 0.3, 0.5, 0.7,
          0.999, 1.0 - 0x1p-53, 1.0, 1.5, MissingValue, largest}},
        {kSumOfSquares, {0.0, 1e-300, 1e-10, 0.5, 40.0, 1e4}},
        {kLambda,
         {-1e300, -1e12, -2e4, -1e3, -3.0, -1.0, -1e-10, -1e-300, 0.0, 1e-300, 1e-10, 0.14, 0.5,
          1.0, 2.0, 7.0, 1e3, 1e300}},
    };
    return grids.at(domain);
}

const std::vector<double>& hostile_values() {
    constexpr double infinity = std::numeric_limits<double>::infinity();
    constexpr double largest = std::numeric_limits<double>::max();
    constexpr double denormal = std::numeric_limits<double>::denorm_min();
    constexpr double nan = std::numeric_limits<double>::quiet_NaN();
    static const std::vector<double> values = {nan,  -infinity, infinity,    -largest, largest,
                                               -1.0, -denormal, -0.0,        denormal, 0.5,
                                               1.0,  1e9,       MissingValue};
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
