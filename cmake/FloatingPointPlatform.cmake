# Chooses the source file that implements src/conventions/fp_platform.hpp. Throwing at a faulting
# instruction needs g++ (-fnon-call-exceptions); everything else reads the sticky flags.

if(CMAKE_SYSTEM_NAME STREQUAL "Linux" AND CMAKE_SYSTEM_PROCESSOR STREQUAL "x86_64"
   AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  set(VELA_FP_PLATFORM_DEFAULT x86_64_linux)
else()
  set(VELA_FP_PLATFORM_DEFAULT portable)
endif()
set(VELA_FP_PLATFORM ${VELA_FP_PLATFORM_DEFAULT} CACHE STRING
    "Floating-point platform: x86_64_linux (catchable traps, g++ only) or portable (sticky flags)")
set_property(CACHE VELA_FP_PLATFORM PROPERTY STRINGS x86_64_linux portable)
