#ifndef VELA_KERNELS_COMPLEMENT_POWER_HPP
#define VELA_KERNELS_COMPLEMENT_POWER_HPP

namespace vela::kernels {

/// (1 - p)^n for 0 < p < 1 and a finite n >= 0, the probability of no event in n trials, to the
/// last digits: the exponent of the result is carried in two doubles where it is large, because at
/// 1e-280 the rounding of one would cost a digit and a half of the thirteen that count.
double complement_power(double p, double n);

/// Both that and its complement, the probability of an event in n >= 1 trials.
struct EventOrNone {
    double none;
    double event;
};
EventOrNone event_or_none(double p, double n);

}  // namespace vela::kernels

#endif
