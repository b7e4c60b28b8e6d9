#ifndef VELA_TESTS_SUPPORT_ENTRIES_HPP
#define VELA_TESTS_SUPPORT_ENTRIES_HPP

#include <cstddef>
#include <functional>
#include <ostream>
#include <string>
#include <vector>

/// Every exported distribution, P-value and critical-value function in one table, for the tests
/// that hold all of them to the same promises. A new family adds rows here and nothing to those
/// tests.
namespace vela::test {

using Arguments = std::vector<double>;  // in the order of the scalar form

/// The documented domain of an argument. Locations and scales stay clear of the largest double,
/// where quantiles would leave the range of doubles.
// clang-format off
enum class Domain {
    kReal, kLocation, kPositive, kDegreesOfFreedom, kNoncentrality, kProbability, kFlag,
    kAlternative, kComparisons, kSize, kInteger, kRows, kHalf, kShape, kUnitInterval, kLambda,
    kSumOfSquares
};
// clang-format on

struct Entry {
    std::string name;
    std::vector<Domain> domains;
    std::function<double(const Arguments&)> scalar;
    /// The array form; empty for a function without one. The first argument is not used.
    std::function<void(double* out, const double* x, std::size_t n, const Arguments&)> array;

    bool has_tail_flag() const { return domains.back() == Domain::kFlag; }
    friend std::ostream& operator<<(std::ostream& stream, const Entry& entry) {
        return stream << entry.name;
    }
};

const std::vector<Entry>& entries();

/// Throws std::out_of_range for an unknown name.
const Entry& entry(const std::string& name);

/// Points that cover a domain: ordinary values, both ends, and the neighbours of every special one.
const std::vector<double>& grid(Domain domain);

/// NaN, infinities, and what else no function promises anything about.
const std::vector<double>& hostile_values();

/// Calls visit with every combination of grid points of the entry's domains.
using Visitor = std::function<void(const Arguments&)>;
void for_each_grid_point(const Entry& entry, const Visitor& visit);

/// The same over hostile_values() in every argument.
void for_each_hostile_point(const Entry& entry, const Visitor& visit);

}  // namespace vela::test

#endif
