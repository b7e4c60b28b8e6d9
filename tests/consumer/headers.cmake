# Every public header in ${WORK}/shared compiles alone, without a warning, under both compilers, and
# vela/vela.hpp includes them all.

set(include_dir ${WORK}/shared/include)
file(GLOB_RECURSE headers RELATIVE ${include_dir} ${include_dir}/*.hpp)
if(NOT headers)
  message(FATAL_ERROR "no headers in ${include_dir}")
endif()
file(READ ${include_dir}/vela/vela.hpp umbrella)
foreach(header IN LISTS headers)
  foreach(compiler IN ITEMS g++ clang++)
    execute_process(
      COMMAND ${compiler} -std=c++20 -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror
        -fsyntax-only -I ${include_dir} -x c++ ${include_dir}/${header}
      COMMAND_ERROR_IS_FATAL ANY)
  endforeach()
  if(NOT header MATCHES "/(vela|api)\\.hpp$" AND NOT umbrella MATCHES "#include \"${header}\"")
    message(SEND_ERROR "vela/vela.hpp does not include ${header}")
  endif()
endforeach()
