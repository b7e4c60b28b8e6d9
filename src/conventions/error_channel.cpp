#include "conventions/error_channel.hpp"

namespace vela::conventions {

constinit thread_local ErrorChannel error_channel;

}  // namespace vela::conventions
