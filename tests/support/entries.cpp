#include "support/entries.hpp"

#include "vela/vela.hpp"

#include <algorithm>
#include <limits>
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

template <class... Parameters>
auto scalar(double (*function)(double, Parameters...)) {
    return [function](const Arguments& arguments) {
        return [&]<std::size_t... i>(std::index_sequence<i...>) {
            return function(arguments[0], convert<Parameters>(arguments[i + 1])...);
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

}  // namespace

const std::vector<Entry>& entries() {
    static const std::vector<Entry> table = {
        {"NormalPdf", {kReal, kLocation, kPositive}, scalar(NormalPdf), array(NormalPdf)},
        {"NormalCdf", {kReal, kLocation, kPositive, kFlag}, scalar(NormalCdf), array(NormalCdf)},
        {"NormalInvCdf",
         {kProbability, kLocation, kPositive},
         scalar(NormalInvCdf),
         array(NormalInvCdf)},
        {"ExponentialPdf",
         {kReal, kPositive, kLocation},
         scalar(ExponentialPdf),
         array(ExponentialPdf)},
        {"ExponentialCdf",
         {kReal, kPositive, kLocation, kFlag},
         scalar(ExponentialCdf),
         array(ExponentialCdf)},
        {"ExponentialInvCdf",
         {kProbability, kPositive, kLocation},
         scalar(ExponentialInvCdf),
         array(ExponentialInvCdf)},
        {"TPdf", {kReal, kDegreesOfFreedom, kNoncentrality}, scalar(TPdf), array(TPdf)},
        {"TCdf", {kReal, kDegreesOfFreedom, kNoncentrality, kFlag}, scalar(TCdf), array(TCdf)},
        {"TInvCdf",
         {kProbability, kDegreesOfFreedom, kNoncentrality},
         scalar(TInvCdf),
         array(TInvCdf)},
        {"NormalPValue", {kReal, kAlternative}, scalar(NormalPValue), {}},
        {"TPValue", {kReal, kDegreesOfFreedom, kAlternative}, scalar(TPValue), {}},
        {"NormalCritValue", {kProbability, kAlternative}, scalar(NormalCritValue), {}},
        {"TCritValue",
         {kProbability, kDegreesOfFreedom, kAlternative, kComparisons},
         scalar(TCritValue),
         {}},
        {"TSidakCritValue",
         {kProbability, kDegreesOfFreedom, kAlternative, kComparisons},
         scalar(TSidakCritValue),
         {}},
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
    static const std::vector<double> real = {
        -largest, -1e300, -1e10, -37.6, -1.5, -1e-10, -1e-300, -denormal, 0.0,          1e-308,
        1e-8,     0.3,    1.0,   2.5,   36.5, 700.0,  1e5,     1e150,     MissingValue, largest};
    static const std::vector<double> location = {-1e300, -1e10, -1.5, -1e-300,
                                                 0.0,    0.3,   1e5,  1e300};
    static const std::vector<double> positive = {denormal, 1e-308, 1e-300, 1e-8, 0.5,
                                                 1.0,      3.0,    1e5,    1e300};
    static const std::vector<double> degreesOfFreedom = {
        denormal, 1e-300, 1e-3, 0.5, 1.0, 2.0, 7.5, 100.0, 1e5, 1e8, 1e15, 1e300, infinity};
    static const std::vector<double> noncentrality = {-1e4,   -30.0, -1.0, -1e-10, 0.0,
                                                      1e-300, 0.5,   5.0,  40.0,   1e4};
    static const std::vector<double> probability = {
        0.0,  denormal, 1e-300, 1e-101,   1e-100, 1e-17, 0.01,          0.25,
        0.42, 0.499999, 0.5,    0.500001, 0.7,    0.999, 1.0 - 0x1p-53, 1.0};
    static const std::vector<double> flag = {0.0, 1.0};
    static const std::vector<double> alternative = {-1.0, 0.0, 1.0, 2.0};
    static const std::vector<double> comparisons = {1.0, 2.0, 1000.0};
    switch (domain) {
        case kReal: return real;
        case kLocation: return location;
        case kPositive: return positive;
        case kDegreesOfFreedom: return degreesOfFreedom;
        case kNoncentrality: return noncentrality;
        case kProbability: return probability;
        case kFlag: return flag;
        case kAlternative: return alternative;
        case kComparisons: return comparisons;
    }
    throw std::invalid_argument("no grid for this domain");
}

const std::vector<double>& hostile_values() {
    constexpr double infinity = std::numeric_limits<double>::infinity();
    constexpr double largest = std::numeric_limits<double>::max();
    constexpr double denormal = std::numeric_limits<double>::denorm_min();
    static const std::vector<double> values = {std::numeric_limits<double>::quiet_NaN(),
                                               -infinity,
                                               infinity,
                                               -largest,
                                               largest,
                                               -1.0,
                                               -denormal,
                                               -0.0,
                                               denormal,
                                               0.5,
                                               1.0,
                                               1e9,
                                               MissingValue};
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
