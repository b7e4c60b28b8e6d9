#include "fuzz/exercise.hpp"
#include "support/entries.hpp"
#include "vela/vela.hpp"

#include <stdexcept>

namespace vela::test {
namespace {

/// A point of the domain's grid, one near it, or any number.
double argument(Domain domain, Bytes& bytes) {
    const std::vector<double>& points = grid(domain);
    const std::uint8_t how = bytes.next<std::uint8_t>();
    const double point = points[how / 4U % points.size()];
    const bool isCode = domain == Domain::kFlag || domain == Domain::kAlternative ||
                        domain == Domain::kComparisons || domain == Domain::kRows;
    if (isCode || how % 4 == 0) {
        return point;
    }
    return how % 4 == 3 ? bytes.number() : point * (0.5 + bytes.fraction());
}

/// The call's result, or the number of the documented exception that it threw.
template <class Call>
double result_of(Call call) {
    try {
        return call();
    } catch (const std::overflow_error&) {
        ResetFpuStates();
        return -1e6;
    } catch (const std::invalid_argument&) {
        ResetFpuStates();
        return -2e6;
    } catch (const std::runtime_error&) {
        ResetFpuStates();
        return -3e6;
    }
}

}  // namespace

void exercise_distributions(Bytes& bytes, Results& results) {
    const Entry& entry = entries()[bytes.below(static_cast<unsigned>(entries().size()))];
    Arguments arguments;
    for (const Domain domain : entry.domains) {
        arguments.push_back(argument(domain, bytes));
    }
    const double value = result_of([&] { return entry.scalar(arguments); });
    results.add(value);
    if (!entry.array) {
        return;
    }
    const double x[] = {arguments[0], argument(entry.domains[0], bytes), arguments[0]};
    double out[3];
    results.add(result_of([&] {
        entry.array(out, x, 3, arguments);
        require(out[0] == value || (out[0] != out[0] && value != value));
        require(out[2] == out[0] || out[0] != out[0]);
        results.add(out, 3);
        return 0.0;
    }));
}

}  // namespace vela::test
