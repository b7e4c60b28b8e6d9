# Chooses the source files that implement src/conventions/fp_platform.hpp. Throwing at a faulting
# instruction needs g++ (-fnon-call-exceptions); everything else reads the sticky flags.

if(NOT CMAKE_SYSTEM_NAME STREQUAL "Linux" OR NOT CMAKE_SYSTEM_PROCESSOR STREQUAL "x86_64")
  set(VELA_FP_PLATFORM_DEFAULT portable)
elseif(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  set(VELA_FP_PLATFORM_DEFAULT x86_64_traps)
else()
  set(VELA_FP_PLATFORM_DEFAULT x86_64_flags)
endif()
set(VELA_FP_PLATFORM ${VELA_FP_PLATFORM_DEFAULT} CACHE STRING
    "Floating-point platform: x86_64_traps (Linux, g++ only), x86_64_flags (Linux) or portable")
set_property(CACHE VELA_FP_PLATFORM PROPERTY STRINGS x86_64_traps x86_64_flags portable)

set(vela_fp_sources_x86_64_traps mxcsr.cpp linux_sigfpe.cpp)
set(vela_fp_sources_x86_64_flags mxcsr.cpp no_traps.cpp)
set(vela_fp_sources_portable c_environment.cpp no_traps.cpp)
set(VELA_FP_SOURCES ${vela_fp_sources_${VELA_FP_PLATFORM}})
if(NOT VELA_FP_SOURCES)
  message(FATAL_ERROR "VELA_FP_PLATFORM has no value ${VELA_FP_PLATFORM}")
endif()
list(TRANSFORM VELA_FP_SOURCES PREPEND conventions/platform/)
