#ifndef VELA_BENCH_PERFORMANCE_PAGE_HPP
#define VELA_BENCH_PERFORMANCE_PAGE_HPP

#include "ratio_table.hpp"

#include <string>

namespace bench {

/// Writes docs/performance.md from a finished run, up to the section that clustering_peers.py adds.
void write_performance_page(const std::string& path, const RatioTable& table);

}  // namespace bench

#endif
