#ifndef VELA_API_HPP
#define VELA_API_HPP

/// Marks the public names: everything else in the library is hidden.
#if defined(__GNUC__)
#define VELA_API __attribute__((visibility("default")))
#else
#define VELA_API
#endif

#endif
