#include "clustering/condensed.hpp"
#include "clustering/containers.hpp"
#include "conventions/fp_environment.hpp"
#include "conventions/quiet_nan.hpp"
#include "vela/nms/clustering/distance_matrix.hpp"
#include "vela/v1/correlation.hpp"
#include "vela/v1/moments.hpp"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace vela::clustering {
namespace {

using nms::StatlibraryErrorCode;
using nms::clustering::DistanceEnums;
using nms::clustering::DistanceMatrix;
using TableView = nms::types::IRectangularArray<double>;
using nms::types::IMissingValueInfo;

/// A copy of the caller's table by columns: the distances from one row to all others then run along
/// contiguous memory.
struct Table {
    int rows = 0;
    int columns = 0;
    std::vector<double> values;
    std::vector<std::uint8_t> isPresent;
    bool isComplete = true;

    std::size_t index(int row, int column) const {
        return static_cast<std::size_t>(column) * static_cast<std::size_t>(rows) +
               static_cast<std::size_t>(row);
    }
    const double* column(int c) const { return values.data() + index(0, c); }
    const std::uint8_t* presence(int c) const { return isPresent.data() + index(0, c); }
};

Table copy_table(const TableView& source, const IMissingValueInfo* missing) {
    Table table;
    table.rows = source.RowCount();
    table.columns = source.ColumnCount();
    table.values.resize(table.index(0, table.columns));
    table.isPresent.resize(table.values.size());
    for (int row = 0; row < table.rows; ++row) {
        for (int column = 0; column < table.columns; ++column) {
            const double value = source(row, column);
            const bool isMissing = missing != nullptr ? missing->IsMissing(value)
                                                      : value != value || value == MissingValue;
            table.values[table.index(row, column)] = value;
            table.isPresent[table.index(row, column)] = isMissing ? 0 : 1;
            table.isComplete = table.isComplete && !isMissing;
        }
    }
    return table;
}

// What one variable adds to the distance of a pair, from the difference of its values.

struct SquaredDifference {
    double operator()(double difference) const { return difference * difference; }
};

struct AbsoluteDifference {
    double operator()(double difference) const { return std::fabs(difference); }
};

struct StandardizedDifference {
    double variance;
    double operator()(double difference) const { return difference * difference / variance; }
};

/// What some variables add to the sums of `count` pairs of row i with the rows from `begin`.
template <int kVariables, class MakeTerm>
void add_terms(double* sums, std::ptrdiff_t count, const Table& table, int i, int begin, int first,
               MakeTerm make_term) {
    const auto columns = [&](int v) { return table.column(first + v); };
    for (std::ptrdiff_t j = 0; j < count; ++j) {
        double sum = sums[j];
        for (int v = 0; v < kVariables; ++v) {
            sum += make_term(first + v)(columns(v)[begin + j] - columns(v)[i]);
        }
        sums[j] = sum;
    }
}

/// The sums over the variables, for a table with everything present.
template <class MakeTerm>
void sum_terms(const Table& table, const Condensed& out, MakeTerm make_term) {
    constexpr int kBlock = 1024;  // sums and values of a block stay in the innermost cache
    for (int i = 0; i < table.rows; ++i) {
        for (int begin = i + 1; begin < table.rows; begin += kBlock) {
            const std::ptrdiff_t count = std::min(kBlock, table.rows - begin);
            double* const sums = out.values() + (out.offset(i) + begin);
            int c = 0;
            for (; c + 4 <= table.columns;
                 c += 4) {  // sums are loaded and stored a fourth as often
                add_terms<4>(sums, count, table, i, begin, c, make_term);
            }
            for (; c < table.columns; ++c) {
                add_terms<1>(sums, count, table, i, begin, c, make_term);
            }
        }
    }
}

/// The same with the variables that both rows have, scaled up.
template <class MakeTerm>
void sum_present_terms(const Table& table, const Condensed& out, MakeTerm make_term) {
    for (int i = 0; i < table.rows; ++i) {
        for (int j = i + 1; j < table.rows; ++j) {
            double sum = 0.0;
            int used = 0;
            for (int c = 0; c < table.columns; ++c) {
                if (table.presence(c)[i] != 0 && table.presence(c)[j] != 0) {
                    sum += make_term(c)(table.column(c)[j] - table.column(c)[i]);
                    ++used;
                }
            }
            out.at(i, j) =
                used > 0 ? sum * (static_cast<double>(table.columns) / used) : conventions::kNaN;
        }
    }
}

template <class MakeTerm>
void sum_all(const Table& table, const Condensed& out, MakeTerm make_term) {
    if (table.isComplete && table.columns > 0) {
        sum_terms(table, out, make_term);
    } else {
        sum_present_terms(table, out, make_term);
    }
}

/// The divisor of each variable's squares. A variable without variation gets +infinity: it adds
/// nothing, also where the differences are rounding errors of the caller's.
std::vector<double> variances(const Table& table) {
    std::vector<double> result(static_cast<std::size_t>(table.columns));
    std::vector<double> present(static_cast<std::size_t>(table.rows));
    for (int c = 0; c < table.columns; ++c) {
        unsigned int count = 0;
        for (int row = 0; row < table.rows; ++row) {
            if (table.presence(c)[row] != 0) {
                present[count++] = table.column(c)[row];
            }
        }
        double mean = 0.0;
        double variance = 0.0;
        v1::GetSampleMeanAndVariance(present.data(), count, &mean, &variance);
        result[static_cast<std::size_t>(c)] = count < 2 || variance == 0.0 ? HUGE_VAL : variance;
    }
    return result;
}

bool is_standardized(DistanceEnums kind) {
    return kind == DistanceEnums::Pearson || kind == DistanceEnums::SquaredPearson;
}

bool is_root(DistanceEnums kind) {
    return kind == DistanceEnums::Euclidean || kind == DistanceEnums::Pearson;
}

void fill_observations(const Table& table, DistanceEnums kind, const std::vector<double>& divisors,
                       const Condensed& out) {
    if (is_standardized(kind)) {
        sum_all(table, out, [&](int c) {
            return StandardizedDifference{divisors[static_cast<std::size_t>(c)]};
        });
    } else if (kind == DistanceEnums::Manhattan) {
        sum_all(table, out, [](int) { return AbsoluteDifference{}; });
    } else {
        sum_all(table, out, [](int) { return SquaredDifference{}; });
    }
    if (is_root(kind)) {
        double* const values = out.values();
        for (std::size_t i = 0; i < pair_count(table.rows); ++i) {
            values[i] = std::sqrt(values[i]);
        }
    }
}

/// The correlation of two columns over the rows that both have; x and y are room for those.
double correlation(const Table& table, int a, int b, double* x, double* y) {
    if (table.isComplete) {
        return v1::GetPearsonCorrelation(table.column(a), table.column(b),
                                         static_cast<unsigned int>(table.rows));
    }
    unsigned int count = 0;
    for (int row = 0; row < table.rows; ++row) {
        if (table.presence(a)[row] != 0 && table.presence(b)[row] != 0) {
            x[count] = table.column(a)[row];
            y[count] = table.column(b)[row];
            ++count;
        }
    }
    return v1::GetPearsonCorrelation(x, y, count);
}

/// Runs `make`, which returns a code, with what it throws for want of memory as a code too.
template <class Make>
StatlibraryErrorCode with_memory(const TableView& source, Make make) {
    if (source.RowCount() < 0 || source.ColumnCount() < 0) {
        return StatlibraryErrorCode::InvalidSize;
    }
    try {
        return make();
    } catch (const std::bad_alloc&) {
        return StatlibraryErrorCode::OutOfMemory;
    } catch (const std::length_error&) {
        return StatlibraryErrorCode::OutOfMemory;
    }
}

}  // namespace

static StatlibraryErrorCode create_for_observations(DistanceMatrix* out, const TableView& source,
                                                    DistanceEnums kind,
                                                    const IMissingValueInfo* missing) {
    const conventions::QuietArithmetic quiet;
    const Table table = copy_table(source, missing);
    const std::vector<double> divisors =
        is_standardized(kind) ? variances(table) : std::vector<double>();
    const StatlibraryErrorCode code = out->Init(table.rows, 0.0);
    if (code == StatlibraryErrorCode::Success) {
        fill_observations(table, kind, divisors, MatrixAccess::condensed(*out));
    }
    return code;
}

static StatlibraryErrorCode create_for_variables(DistanceMatrix* out, const TableView& source,
                                                 bool absolute, const IMissingValueInfo* missing) {
    const conventions::QuietArithmetic quiet;
    const Table table = copy_table(source, missing);
    std::vector<double> x(static_cast<std::size_t>(table.rows));
    std::vector<double> y(x.size());
    const StatlibraryErrorCode code = out->Init(table.columns, 0.0);
    if (code != StatlibraryErrorCode::Success) {
        return code;
    }
    const Condensed distances = MatrixAccess::condensed(*out);
    for (int a = 0; a < table.columns; ++a) {
        for (int b = a + 1; b < table.columns; ++b) {
            const double r = correlation(table, a, b, x.data(), y.data());
            distances.at(a, b) = 1.0 - (absolute ? std::fabs(r) : r);
        }
    }
    return code;
}

}  // namespace vela::clustering

namespace vela::nms::clustering {

StatlibraryErrorCode CreateForClusterObservations(DistanceMatrix& out,
                                                  const types::IRectangularArray<double>& rows,
                                                  DistanceEnums kind,
                                                  const types::IMissingValueInfo* missing) {
    if (kind < DistanceEnums::Euclidean || kind > DistanceEnums::SquaredPearson) {
        return StatlibraryErrorCode::InvalidEnumeration;
    }
    return vela::clustering::with_memory(
        rows, [&] { return vela::clustering::create_for_observations(&out, rows, kind, missing); });
}

StatlibraryErrorCode CreateForClusterVariables(DistanceMatrix& out,
                                               const types::IRectangularArray<double>& rows,
                                               bool absolute,
                                               const types::IMissingValueInfo* missing) {
    return vela::clustering::with_memory(rows, [&] {
        return vela::clustering::create_for_variables(&out, rows, absolute, missing);
    });
}

}  // namespace vela::nms::clustering
