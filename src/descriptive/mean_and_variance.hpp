#ifndef VELA_DESCRIPTIVE_MEAN_AND_VARIANCE_HPP
#define VELA_DESCRIPTIVE_MEAN_AND_VARIANCE_HPP

#include <array>
#include <cstddef>

namespace vela::descriptive {

struct Sample {
    const double* x;  ///< may be null when n is 0
    unsigned int n;
};

struct MeanAndVariance {
    double mean;
    double variance;
};

/// v1::GetSampleMeanAndVariance.
MeanAndVariance mean_and_variance(Sample sample);

/// The same of several samples, whose equal but independent chains of operations run together: two
/// or three samples take little longer than the longest of them.
template <std::size_t count>
std::array<MeanAndVariance, count> means_and_variances(const std::array<Sample, count>& samples);

extern template std::array<MeanAndVariance, 2> means_and_variances(const std::array<Sample, 2>&);
extern template std::array<MeanAndVariance, 3> means_and_variances(const std::array<Sample, 3>&);

}  // namespace vela::descriptive

#endif
