// The side of vela in clustering_peers.py, which says what to do on the standard input, line by
// line, and reads one line of answer for each on the standard output:
//
//   table FILE ROWS COLUMNS  reads a table of doubles, as they are in memory
//   distances KIND           makes the matrix of that kind of distance      -> seconds
//   run LINKAGE              clusters a copy of the matrix                  -> seconds
//   steps FILE               writes cluster1, cluster2, distance, size of the last run as doubles

#include <vela/nms/clustering/hierarchical_clustering.hpp>
#include <vela/nms/types/make_containers.hpp>

#include <chrono>
#include <cstddef>
#include <fstream>
#include <iostream>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace {

using namespace vela::nms;

struct State {
    std::unique_ptr<types::IRectangularArray<double>> table;
    clustering::DistanceMatrix distances;
    std::unique_ptr<types::IReadableVector<clustering::ClusterStep>> steps;
};

template <class Call>
double seconds(Call call) {
    const auto start = std::chrono::steady_clock::now();
    call();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

double read_table(State* state) {
    std::string path;
    int rows = 0;
    int columns = 0;
    std::cin >> path >> rows >> columns;
    std::vector<double> values(static_cast<std::size_t>(rows) * static_cast<std::size_t>(columns));
    std::ifstream(path, std::ios::binary)
        .read(reinterpret_cast<char*>(values.data()),
              static_cast<std::streamsize>(values.size() * sizeof(double)));
    state->table.reset(types::MakeRectangularArray(values.data(), rows, columns));
    return 0.0;
}

double make_distances(State* state) {
    int kind = 0;
    std::cin >> kind;
    // A matrix of its own each time: the peer, too, asks for new memory.
    clustering::DistanceMatrix distances;
    const double time = seconds([&] {
        clustering::CreateForClusterObservations(distances, *state->table,
                                                 static_cast<clustering::DistanceEnums>(kind));
    });
    state->distances = std::move(distances);
    return time;
}

double run(State* state) {
    int linkage = 0;
    std::cin >> linkage;
    clustering::DistanceMatrix distances = state->distances;
    return seconds([&] {
        state->steps.reset(clustering::RunClustering(static_cast<clustering::LinkageEnums>(linkage),
                                                     0.0, distances));
    });
}

double write_steps(State* state) {
    std::string path;
    std::cin >> path;
    std::ofstream file(path, std::ios::binary);
    for (int i = 0; i < state->steps->size(); ++i) {
        const clustering::ClusterStep& step = (*state->steps)[i];
        const double row[] = {static_cast<double>(step.cluster1),
                              static_cast<double>(step.cluster2), step.distance,
                              static_cast<double>(step.size)};
        file.write(reinterpret_cast<const char*>(row), sizeof row);
    }
    return 0.0;
}

}  // namespace

int main() {
    const std::pair<const char*, double (*)(State*)> commands[] = {
        {"table", read_table}, {"distances", make_distances}, {"run", run}, {"steps", write_steps}};
    State state;
    for (std::string word; std::cin >> word;) {
        for (const auto& [name, command] : commands) {
            if (word == name) {
                std::cout << command(&state) << std::endl;
            }
        }
    }
    return 0;
}
