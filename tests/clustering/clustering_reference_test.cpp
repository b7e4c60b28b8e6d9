// The library against expected values of independent origin: tests/data/clustering.csv.

#include "support/csv.hpp"
#include "support/equality.hpp"
#include "vela/nms/clustering/hierarchical_clustering.hpp"
#include "vela/nms/types/make_containers.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace vela::test {
namespace {

using namespace nms::clustering;
using Values = std::vector<double>;
using Results = std::map<std::string, Values>;

Values parse_values(const std::string& text) {
    Values values;
    for (const std::string& field : split(text, ' ')) {
        values.push_back(parse_double(field));
    }
    return values;
}

struct Call {
    std::string function;
    Values data;
    std::map<std::string, double> arguments;

    int get(const std::string& name) const { return static_cast<int>(arguments.at(name)); }
};

Results run_steps(const Call& call,
                  std::unique_ptr<nms::types::IReadableVector<ClusterStep>>* out) {
    DistanceMatrix matrix;
    matrix.Init(call.get("rows"), 0.0);
    auto next = call.data.begin();
    for (int i = 0; i < matrix.RowCount(); ++i) {
        for (int j = 0; j < i; ++j) {
            matrix.Set(i, j, *next++);
        }
    }
    const auto reference = call.arguments.find("reference");
    out->reset(RunClustering(static_cast<LinkageEnums>(call.get("linkage")),
                             reference == call.arguments.end() ? 0.0 : reference->second, matrix));
    Results results;
    for (int i = 0; i < (*out)->size(); ++i) {
        const ClusterStep& step = (**out)[i];
        results["similarity"].push_back(step.similarity);
        results["distance"].push_back(step.distance);
        results["cluster1"].push_back(step.cluster1);
        results["cluster2"].push_back(step.cluster2);
        results["size"].push_back(step.size);
    }
    return results;
}

Results run_distances(const Call& call) {
    const int columns = call.get("columns");
    const std::unique_ptr<nms::types::IRectangularArray<double>> table(
        nms::types::MakeRectangularArrayOver(
            call.data.data(), static_cast<int>(call.data.size()) / columns, columns));
    DistanceMatrix matrix;
    const auto status = call.function == "CreateForClusterVariables"
                            ? CreateForClusterVariables(matrix, *table, call.get("absolute") != 0)
                            : CreateForClusterObservations(
                                  matrix, *table, static_cast<DistanceEnums>(call.get("kind")));
    Results results = {{"status", {static_cast<double>(status)}},
                       {"rows", {static_cast<double>(matrix.RowCount())}}};
    for (int i = 0; i < matrix.RowCount(); ++i) {
        for (int j = 0; j < i; ++j) {
            results["distance"].push_back(matrix(i, j));
        }
    }
    return results;
}

Results run_call(const Call& call) {
    if (call.function.starts_with("Create")) {
        return run_distances(call);
    }
    std::unique_ptr<nms::types::IReadableVector<ClusterStep>> steps;
    Results results = run_steps(call, &steps);
    if (call.function.starts_with("FindMembers")) {
        const std::unique_ptr<nms::types::IReadableVector<int>> members(
            call.function == "FindMembersWithCut"
                ? FindMembersWithCut(*steps, call.arguments.at("cut"))
                : FindMembersWithNumber(*steps, call.get("count")));
        for (int i = 0; i < members->size(); ++i) {
            results["members"].push_back((*members)[i]);
        }
    }
    return results;
}

void expect_close(const Values& got, const Values& expected, const Values& tolerance,
                  const std::string& context) {
    ASSERT_EQ(got.size(), expected.size()) << context;
    for (std::size_t i = 0; i < got.size(); ++i) {
        const double allowed = tolerance.size() == 1 ? tolerance[0] : tolerance.at(i);
        EXPECT_TRUE(same_bits(got[i], expected[i]) || std::fabs(got[i] - expected[i]) <= allowed)
            << context << ", element " << i << ": " << got[i] << ", expected " << expected[i];
    }
}

TEST(Clustering, ReferenceCases) {
    std::map<std::string, Values> sets;
    for (const Row& row : read_csv("clustering_datasets.csv")) {
        sets[row.at(0)] = parse_values(row.at(2));
    }
    Results results;
    for (const Row& row : read_csv("clustering.csv")) {
        if (!row.at(0).empty()) {
            Call call = {row[0], sets.at(row.at(2)), {}};
            for (const std::string& pair : split(row.at(3), ';')) {
                const auto parts = split(pair, '=');
                call.arguments[parts.at(0)] = parse_double(parts.at(1));
            }
            results = run_call(call);
        }
        expect_close(results[row.at(4)], parse_values(row.at(5)), parse_values(row.at(6)),
                     row.at(1) + " " + row.at(4));
    }
}

}  // namespace
}  // namespace vela::test
