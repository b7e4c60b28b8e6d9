#include "functions.hpp"

#include <algorithm>
#include <cmath>
#include <utility>

namespace bench {
namespace {

template <class Function>
const Function* find(const std::vector<Function>& functions, std::string_view name) {
    const auto found = std::find_if(functions.begin(), functions.end(),
                                    [=](const Function& f) { return f.name == name; });
    return found == functions.end() ? nullptr : &*found;
}

}  // namespace

const PointFunction* Implementation::find_point(std::string_view function) const {
    return find(points, function);
}

const SampleFunction* Implementation::find_sample(std::string_view function) const {
    return find(samples, function);
}

std::vector<Implementation>& peers() {
    static std::vector<Implementation> all;
    return all;
}

bool add_peer(Implementation peer) {
    peers().push_back(std::move(peer));
    return true;
}

double relative_difference(double a, double b) {
    const double difference = a == b ? 0.0 : std::abs(a - b) / std::max(std::abs(a), std::abs(b));
    return std::isnan(difference) ? HUGE_VAL : difference;
}

}  // namespace bench
