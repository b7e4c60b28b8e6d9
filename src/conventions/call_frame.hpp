#ifndef VELA_CONVENTIONS_CALL_FRAME_HPP
#define VELA_CONVENTIONS_CALL_FRAME_HPP

#include "conventions/fp_environment.hpp"
#include "conventions/quiet_nan.hpp"

#include <cstddef>
#include <type_traits>

/// The frame of every exported distribution, P-value and critical-value call: bracket, missing
/// value, NaN. An entry hands its internal routine and its arguments to one of the functions below
/// and does nothing else.
///
/// A routine is either a function of (x, parameters...) that returns a double, or, where work on
/// the parameters alone is worth doing once for a whole array, a function of (parameters...) that
/// returns a function object of x. It returns MissingValue for a result that it cannot compute.
namespace vela::conventions {

/// Whether a function looks for MissingValue in its first argument. Cumulative and inverse
/// functions do; densities deliberately take it as the ordinary number that it is.
enum class MissingInput { kGivesMissing, kIsOrdinary };

template <class Routine, class... Parameters>
auto with_parameters(Routine routine, Parameters... parameters) {
    if constexpr (std::is_invocable_r_v<double, Routine, double, Parameters...>) {
        return [=](double x) { return routine(x, parameters...); };
    } else {
        return routine(parameters...);
    }
}

/// Keeps the work on the arguments inside the bracket.
template <class... Arguments>
void pin_each(Arguments&... arguments) {
    const auto pin_number = [](auto& argument) {
        if constexpr (std::is_same_v<decltype(argument), double&>) {
            pin(argument);
        }
    };
    (pin_number(arguments), ...);
}

/// One evaluation inside a bracket, up to the value that the caller sees.
template <MissingInput missingInput, class Function>
double evaluate(const Function& function, double x, bool armed) {
    if constexpr (missingInput == MissingInput::kGivesMissing) {
        if (x == MissingValue) {
            return kNaN;
        }
    }
    double result = function(x);
    pin(result);
    return !armed && take_fault() ? kNaN : nan_if_missing(result);
}

template <MissingInput missingInput, class Routine, class... Parameters>
double call(Routine routine, double x, Parameters... parameters) {
    const bool armed = enter_bracket();
    pin_each(x, parameters...);
    const auto function = with_parameters(routine, parameters...);
    const double result = evaluate<missingInput>(function, x, armed);
    leave_bracket();
    return result;
}

/// Elements are read before they are written, so `out` and `x` may be the same array. With n == 0
/// nothing is read or written, but the floating-point state is reset as by any other call.
template <MissingInput missingInput, class Routine, class... Parameters>
void call(Routine routine, double* out, const double* x, std::size_t n, Parameters... parameters) {
    const bool armed = enter_bracket();
    pin_each(parameters...);
    if (n != 0) {
        const auto function = with_parameters(routine, parameters...);
        for (std::size_t i = 0; i < n; ++i) {
            out[i] = evaluate<missingInput>(function, x[i], armed);
        }
    }
    leave_bracket();
}

/// The frame of the families that leave the floating-point state alone: missing values and arrays
/// as above, but faults belong to the caller, so that none is looked for.
template <MissingInput missingInput, class Routine, class... Parameters>
double call_unbracketed(Routine routine, double x, Parameters... parameters) {
    constexpr bool armed = true;
    return evaluate<missingInput>(with_parameters(routine, parameters...), x, armed);
}

template <MissingInput missingInput, class Routine, class... Parameters>
void call_unbracketed(Routine routine, double* out, const double* x, std::size_t n,
                      Parameters... parameters) {
    constexpr bool armed = true;
    if (n != 0) {
        const auto function = with_parameters(routine, parameters...);
        for (std::size_t i = 0; i < n; ++i) {
            out[i] = evaluate<missingInput>(function, x[i], armed);
        }
    }
}

/// One evaluation for functions that do not bracket and never throw, inside their QuietArithmetic:
/// a fault, a missing value or a NaN argument gives NaN.
template <class Routine, class... Parameters>
double quiet_value(Routine routine, double x, Parameters... parameters) {
    if (x != x || x == MissingValue) {
        return kNaN;
    }
    clear_recorded_faults();
    double result = with_parameters(routine, parameters...)(x);
    pin(result);
    return recorded_faults() == 0 ? nan_if_missing(result) : kNaN;
}

}  // namespace vela::conventions

#endif
