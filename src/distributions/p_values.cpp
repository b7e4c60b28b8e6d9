#include "vela/p_values.hpp"

#include "conventions/call_frame.hpp"
#include "distributions/normal.hpp"
#include "distributions/t.hpp"

namespace vela {

using conventions::call;
using enum conventions::MissingInput;

double NormalPValue(double z, EAlternative alternative) {
    return call<kGivesMissing>(distributions::normal_p_value, z, alternative);
}

double TPValue(double t, double df, EAlternative alternative) {
    return call<kGivesMissing>(distributions::t_p_value, t, df, alternative);
}

}  // namespace vela
