#ifndef VELA_VELA_HPP
#define VELA_VELA_HPP

/// Every public header of the library.

#include "vela/critical_values.hpp"
#include "vela/exponential.hpp"
#include "vela/floating_point.hpp"
#include "vela/hypothesis.hpp"
#include "vela/missing_value.hpp"
#include "vela/normal.hpp"
#include "vela/p_values.hpp"
#include "vela/t.hpp"
#include "vela/v0/one_sample_t.hpp"
#include "vela/v0/one_sample_z.hpp"
#include "vela/v0/paired_t.hpp"
#include "vela/v0/two_sample_t.hpp"
#include "vela/v1/moments.hpp"
#include "vela/v2/psi.hpp"

#endif
