#ifndef VELA_CONVENTIONS_STATUS_HPP
#define VELA_CONVENTIONS_STATUS_HPP

namespace vela::conventions {

/// The `int` results of record- and array-filling functions: values from 10001 are warnings (the
/// result is usable), values from 30001 errors (the result fields hold NaN).
enum Status : int {
    kSuccess = 0,
    kInnerIntervalOnly = 10001,      // the sample's range covers less than the confidence asked for
    kOuterIntervalOnly = 10002,      // no interval within the outer one of the sign test
    kOutOfMemory = 30001,            // a working copy could not be allocated
    kInvalidIntervalType = 30002,    // an IntervalType outside -1, 0, 1
    kTooManyPowerSums = 30011,       // more than four power sums requested
    kInvalidQuantileMethod = 30017,  // a quantile method outside 1..9
    kMissingEndPoint = 30020,        // an end point of a root search evaluates to the missing value
    kNoRoot = 30021,         // no sign change and no end is a root, or the search was cut off
    kConstantSample = 30023  // all values of a sample are equal, or there are none
};

}  // namespace vela::conventions

#endif
