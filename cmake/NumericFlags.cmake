# Compiler flags that carry meaning: without them the library gives other results, or lets a
# floating-point trap end the process. They belong to every object of the library, whatever the
# build type, and to no one else.

function(vela_numeric_flags target)
  target_compile_options(${target} PRIVATE
    -ffp-contract=off      # a fused multiply-add would make results depend on the instruction set
    -fno-fast-math         # NaN, infinities and the order of operations are part of the results
    -ftrapping-math        # no operation may be speculated or moved across a change of the traps
    -fno-math-errno        # no one reads errno after a C library function; sqrt is one instruction
    -ftls-model=initial-exec)  # the error channel costs one load, also in a shared library
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # A trap becomes an exception thrown at the faulting instruction itself.
    target_compile_options(${target} PRIVATE -fnon-call-exceptions)
  endif()
endfunction()
