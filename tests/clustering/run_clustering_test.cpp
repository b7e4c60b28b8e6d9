#include "clustering/literal_rule.hpp"
#include "support/equality.hpp"
#include "support/special_values.hpp"
#include "support/threads.hpp"
#include "vela/missing_value.hpp"
#include "vela/nms/clustering/hierarchical_clustering.hpp"
#include "vela/nms/types/make_containers.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <limits>
#include <memory>
#include <random>
#include <utility>
#include <vector>

namespace vela::test {
namespace {

using namespace nms::clustering;
using Steps = std::unique_ptr<nms::types::IReadableVector<ClusterStep>>;
using Members = std::unique_ptr<nms::types::IReadableVector<int>>;

constexpr LinkageEnums kLinkages[] = {
    LinkageEnums::Average,  LinkageEnums::Single, LinkageEnums::Complete, LinkageEnums::Ward,
    LinkageEnums::McQuitty, LinkageEnums::Median, LinkageEnums::Centroid};

template <class Draw>
DistanceMatrix make_matrix(int rows, Draw draw) {
    DistanceMatrix matrix;
    matrix.Init(rows, 0.0);
    for (int i = 0; i < rows; ++i) {
        for (int j = 0; j < i; ++j) {
            matrix.Set(i, j, draw());
        }
    }
    return matrix;
}

bool same_steps(const Steps& got, const std::vector<ClusterStep>& expected) {
    bool same = got->size() == static_cast<int>(expected.size());
    for (int i = 0; same && i < got->size(); ++i) {
        const ClusterStep& a = (*got)[i];
        const ClusterStep& b = expected[static_cast<std::size_t>(i)];
        same = a.cluster1 == b.cluster1 && a.cluster2 == b.cluster2 && a.size == b.size &&
               same_bits(a.distance, b.distance);
    }
    return same;
}

bool same_matrix(const DistanceMatrix& a, const DistanceMatrix& b) {
    bool same = a.RowCount() == b.RowCount();
    for (int i = 0; same && i < a.RowCount(); ++i) {
        for (int j = 0; same && j < i; ++j) {
            same = same_bits(a(i, j), b(i, j));
        }
    }
    return same;
}

/// Runs the library and the literal rule on copies; compares steps and what is left in the matrix.
void expect_literal_rule(const DistanceMatrix& matrix, const char* kind) {
    for (const LinkageEnums linkage : kLinkages) {
        DistanceMatrix ours = matrix;
        DistanceMatrix literal = matrix;
        const Steps steps(RunClustering(linkage, 1.0, ours));
        const std::vector<ClusterStep> expected = LiteralRule(linkage, &literal).run();
        const auto context = [&] {
            return testing::Message() << kind << ", linkage " << static_cast<int>(linkage) << ", "
                                      << matrix.RowCount() << " rows";
        };
        EXPECT_TRUE(same_steps(steps, expected)) << context();
        EXPECT_TRUE(same_matrix(ours, literal)) << context();
    }
}

TEST(RunClustering, IsTheLiteralRuleBitForBit) {
    std::mt19937_64 random(20240607);
    const auto uniform = [&] { return static_cast<double>(random() >> 11) * 0x1p-53; };
    const auto integer = [&](unsigned bound) { return static_cast<double>(1 + random() % bound); };
    const double odd[] = {kInfinity, -kInfinity, 0.0, -0.0, 1e308, -1.0, 1.0, kNaN};
    const std::pair<const char*, std::function<double()>> draws[] = {
        {"no ties", uniform},
        {"ties", [&] { return integer(6); }},
        {"two values", [&] { return integer(2); }},
        {"NaN", [&] { return random() % 8 != 0 ? integer(6) : kNaN; }},
        {"NaN, no ties",
         [&] { return random() % 20 != 0 ? uniform() : std::copysign(kNaN, uniform() - 0.5); }},
        {"both signs",
         [&] { return random() % 20 != 0 ? uniform() - 0.5 : odd[2 + random() % 2]; }},
        {"odd values", [&] { return odd[random() % 8]; }}};
    for (int round = 0; round < 800; ++round) {
        const int size = static_cast<int>(random() % 41);
        for (const auto& [kind, draw] : draws) {
            expect_literal_rule(make_matrix(size, draw), kind);
        }
    }
    // Rows enough for the lists of candidates to run empty many times.
    const int rows = 300;
    expect_literal_rule(make_matrix(rows, uniform), "no ties");
    expect_literal_rule(make_matrix(rows, [&] { return integer(1000); }), "ties");
    double rising = 0.0;
    expect_literal_rule(make_matrix(rows, [&] { return rising += 1.0; }), "rising");
    double falling = 1e6;
    expect_literal_rule(make_matrix(rows, [&] { return falling -= 1.0; }), "falling");
    // Merges into the row before, and into the rows of clusters far from each other.
    const std::pair<const char*, std::function<double(int)>> points[] = {
        {"chain", [&](int i) { return i + 0.9 * uniform(); }},
        {"three clusters", [&](int) { return 1e3 * integer(3) + uniform(); }}};
    for (const auto& [kind, point] : points) {
        std::vector<double> values(static_cast<std::size_t>(rows));
        for (int i = 0; i < rows; ++i) {
            values[static_cast<std::size_t>(i)] = point(i);
        }
        const std::unique_ptr<nms::types::IRectangularArray<double>> table(
            nms::types::MakeRectangularArrayOver(values.data(), rows, 1));
        DistanceMatrix matrix;
        CreateForClusterObservations(matrix, *table, DistanceEnums::Manhattan);
        expect_literal_rule(matrix, kind);
    }
}

TEST(RunClustering, UnknownLinkageIsReportedAndLeavesTheMatrix) {
    for (const int code : {999, 1007, 0, -1}) {
        DistanceMatrix matrix = make_matrix(3, [] { return 4.0; });
        testing::internal::CaptureStdout();
        EXPECT_EQ(RunClustering(static_cast<LinkageEnums>(code), 1.0, matrix), nullptr);
        EXPECT_EQ(testing::internal::GetCapturedStdout(), "invalid linkage\n");
        EXPECT_TRUE(same_matrix(matrix, make_matrix(3, [] { return 4.0; })));
    }
}

TEST(Clustering, RaisesNoTrapAndGivesTheStateBack) {
    under_armed_host([] {
        const double odd[] = {kNaN, kInfinity, 1e308, 1.0, -kInfinity, 0.0, 1e-308, MissingValue};
        const std::unique_ptr<nms::types::IRectangularArray<double>> table(
            nms::types::MakeRectangularArrayOver(odd, 4, 2));
        DistanceMatrix matrix;
        for (int kind = 2000; kind <= 2004; ++kind) {
            CreateForClusterObservations(matrix, *table, static_cast<DistanceEnums>(kind));
            for (const LinkageEnums linkage : kLinkages) {
                DistanceMatrix copy = matrix;
                const Steps steps(RunClustering(linkage, kNaN, copy));
                const Members members(FindMembersWithCut(*steps, kNaN));
                EXPECT_EQ(members->size(), 4);
            }
        }
        CreateForClusterVariables(matrix, *table, true);
        EXPECT_EQ(matrix.RowCount(), 2);
    });
}

std::vector<int> elements(const Members& members) {
    std::vector<int> result;
    for (int i = 0; i < members->size(); ++i) {
        result.push_back((*members)[i]);
    }
    return result;
}

TEST(FindMembers, FirstStepBeyondTheCutStops) {
    const ClusterStep steps[] = {
        {0.0, 1.0, 1, 3, 2}, {0.0, 2.0, 0, 4, 2}, {0.0, 1.5, 0, 2, 3}, {0.0, kNaN, 0, 1, 5}};
    const Steps all(nms::types::MakeVectorOver(steps, 4));
    const std::pair<double, std::vector<int>> cuts[] = {
        {0.5, {1, 2, 3, 4, 5}}, {1.0, {1, 2, 3, 2, 4}},       {1.9, {1, 2, 3, 2, 4}},
        {2.0, {1, 2, 1, 2, 1}}, {kInfinity, {1, 2, 1, 2, 1}}, {kNaN, {1, 2, 3, 4, 5}}};
    for (const auto& [cut, expected] : cuts) {
        EXPECT_EQ(elements(Members(FindMembersWithCut(*all, cut))), expected) << cut;
    }
    constexpr int most = std::numeric_limits<int>::max();
    for (const int count : {-most - 1, 0, 1, 5, 6, most}) {
        const Members members(FindMembersWithNumber(*all, count));
        EXPECT_EQ((*members)[4], count < 5 ? 1 : 5) << count;
    }
}

TEST(FindMembers, StepsThatNameNoRowsArePassedOver) {
    constexpr int most = std::numeric_limits<int>::max();
    const ClusterStep steps[] = {{0.0, 0.0, -most - 1, most, 0},
                                 {0.0, 0.0, 1, 1, 0},
                                 {0.0, 0.0, 2, 1, 0},
                                 {0.0, 0.0, 0, 5, 0},
                                 {0.0, 0.0, -1, 2, 0}};
    const Steps all(nms::types::MakeVectorOver(steps, 5));
    EXPECT_EQ(elements(Members(FindMembersWithNumber(*all, 1))),
              (std::vector<int>{1, 2, 3, 4, 5, 1}));
}

}  // namespace
}  // namespace vela::test
