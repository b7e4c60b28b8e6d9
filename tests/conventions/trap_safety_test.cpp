// With the hardware traps armed, a fault in any intermediate ends the call as an exception even
// where the answer is an ordinary number. No documented argument may cause one.

#include "support/entries.hpp"
#include "support/equality.hpp"
#include "support/floating_point_state.hpp"
#include "support/threads.hpp"
#include "vela/vela.hpp"

#include <gtest/gtest.h>

#include <stdexcept>
#include <vector>

namespace vela::test {
namespace {

testing::Message show(const Entry& entry, const Arguments& arguments) {
    testing::Message text;
    text << entry.name;
    for (const double argument : arguments) {
        text << " " << argument;
    }
    return text;
}

class EveryEntry : public testing::TestWithParam<Entry> {};

INSTANTIATE_TEST_SUITE_P(Entries, EveryEntry, testing::ValuesIn(entries()),
                         [](const auto& entryInfo) { return entryInfo.param.name; });

TEST_P(EveryEntry, ThrowsNothingAndLeavesTheDefaultStateOverItsWholeDomain) {
    const Entry& entry = GetParam();
    std::vector<double> masked;
    on_thread(Registration::kUnregistered, [&] {
        for_each_grid_point(
            entry, [&](const Arguments& arguments) { masked.push_back(entry.scalar(arguments)); });
    });
    on_thread(Registration::kRegistered, [&] {
        std::size_t i = 0;
        for_each_grid_point(entry, [&](const Arguments& arguments) {
            try {
                const double result = entry.scalar(arguments);
                ASSERT_TRUE(same_bits(result, masked[i]))
                    << show(entry, arguments) << ": armed " << result << ", masked " << masked[i];
                ASSERT_TRUE(is_default_state()) << show(entry, arguments);
            } catch (const std::exception& exception) {
                ADD_FAILURE() << show(entry, arguments) << " threw " << exception.what();
                ResetFpuStates();
            }
            ++i;
        });
    });
}

TEST_P(EveryEntry, ReturnsOrThrowsForAnyArguments) {
    const Entry& entry = GetParam();
    for (const auto registration : {Registration::kUnregistered, Registration::kRegistered}) {
        on_thread(registration, [&] {
            for_each_hostile_point(entry, [&](const Arguments& arguments) {
                try {
                    const double result = entry.scalar(arguments);
                    EXPECT_FALSE(result == MissingValue) << show(entry, arguments);
                } catch (const std::invalid_argument&) {
                } catch (const std::runtime_error&) {
                }
                ResetFpuStates();
            });
        });
    }
}

}  // namespace
}  // namespace vela::test
