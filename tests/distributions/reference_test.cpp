// Values computed with 300-bit arithmetic; see the header of the data file for their tolerances.

#include "support/csv.hpp"
#include "support/entries.hpp"
#include "support/equality.hpp"

#include <gtest/gtest.h>

namespace vela::test {
namespace {

TEST(Distributions, AgreeWithReferenceValues) {
    for (const Row& row : read_csv("distributions.csv")) {
        const std::string& name = row.at(0);
        Arguments arguments;
        for (const std::string& field : split(row.at(1), ' ')) {
            arguments.push_back(parse_double(field));
        }
        if (row.at(2) != "-") {
            arguments.push_back(parse_double(row.at(2)));
        }
        const double expected = parse_double(row.at(3));
        const double got = entry(name).scalar(arguments);
        EXPECT_TRUE(within_relative(got, expected, parse_double(row.at(4))))
            << name << "(" << row[1] << ", " << row[2] << ") is " << testing::PrintToString(got)
            << ", expected " << row[3] << ", relative error " << (got - expected) / expected;
    }
}

}  // namespace
}  // namespace vela::test
