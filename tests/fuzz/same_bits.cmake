# Builds the library and vela_digest under each compiler, at each optimisation, shared and static:
# all print the same digest of results.
#
#   cmake -D WORK=<scratch> -P same_bits.cmake

cmake_minimum_required(VERSION 3.25)
get_filename_component(root ${CMAKE_CURRENT_LIST_DIR}/../.. ABSOLUTE)
get_filename_component(WORK ${WORK} ABSOLUTE)

set(first "")
foreach(variant IN ITEMS g++:-O2:shared g++:-O0:shared g++:-O3:shared g++:-O2:static
                         clang++:-O0:shared clang++:-O2:shared clang++:-O3:shared)
  string(REPLACE ":" ";" words ${variant})
  list(GET words 0 compiler)
  list(GET words 1 level)
  set(shared OFF)
  if(variant MATCHES ":shared$")
    set(shared ON)
  endif()
  string(REPLACE ":" "_" name ${variant})
  set(tree ${WORK}/${name})
  execute_process(COMMAND ${CMAKE_COMMAND} -G Ninja -S ${root} -B ${tree}
      -D CMAKE_CXX_COMPILER=${compiler} -D CMAKE_CXX_FLAGS=${level} -D CMAKE_CXX_FLAGS_RELEASE=
      -D CMAKE_BUILD_TYPE=Release -D BUILD_SHARED_LIBS=${shared} -D VELA_BUILD_TESTS=ON
    OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
  execute_process(COMMAND ${CMAKE_COMMAND} --build ${tree} --target vela_digest
    OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
  execute_process(COMMAND ${tree}/tests/fuzz/vela_digest
    OUTPUT_VARIABLE digest COMMAND_ERROR_IS_FATAL ANY)
  message("${variant}\n${digest}")
  if(NOT first)
    set(first ${digest})
  elseif(NOT digest STREQUAL first)
    message(SEND_ERROR "${variant} gives other results")
  endif()
endforeach()
