#ifndef VELA_TESTS_SUPPORT_REFERENCE_CASES_HPP
#define VELA_TESTS_SUPPORT_REFERENCE_CASES_HPP

#include <cstddef>
#include <functional>
#include <map>
#include <string>
#include <vector>

namespace vela::test {

using Values = std::vector<double>;

/// The length of a sample as the library takes it.
inline unsigned int size(const Values& x) { return static_cast<unsigned int>(x.size()); }

/// One call of a data file with the columns function, case, data sets, arguments, result, expected
/// values, tolerances; a row without a function has another result of the call above it.
struct ReferenceCase {
    std::string function;
    std::string name;
    std::vector<Values> data;
    std::map<std::string, Values> arguments;

    const double* x() const { return data.at(0).data(); }
    unsigned int n() const { return size(data.at(0)); }
    bool has(const std::string& argument) const { return arguments.contains(argument); }
    double get(const std::string& argument) const { return arguments.at(argument).at(0); }
    int integer(const std::string& argument) const { return static_cast<int>(get(argument)); }
};

/// What a call gave, by the names in the file.
struct Results : std::map<std::string, Values> {
    /// A result of one number, NaN until it is written.
    double& value(const std::string& name);
    /// The doubles that a record begins with, in this order, which is part of the binary interface.
    void add_fields(const void* record, const std::string& names);
};

using Runners = std::map<std::string, std::function<void(const ReferenceCase&, Results&)>>;

/// Runs the cases of the functions that `runners` names, each of which must have some, and compares
/// bit for bit or within the absolute tolerance of the row.
void check_reference_cases(const std::string& fileName, const Runners& runners);

}  // namespace vela::test

#endif
