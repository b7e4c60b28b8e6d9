# Uses vela as other projects do: through find_package() and pkg-config from an installed tree and
# from the Debian packages, and as a part of a larger build. The installed tree is checked on the
# way.
#
#   cmake -D SHARED=<build tree> -D STATIC=<build tree> -D WORK=<scratch> -P check.cmake

cmake_minimum_required(VERSION 3.25)
set(here ${CMAKE_CURRENT_LIST_DIR})
get_filename_component(SHARED ${SHARED} ABSOLUTE)
get_filename_component(STATIC ${STATIC} ABSOLUTE)
get_filename_component(WORK ${WORK} ABSOLUTE)
file(REMOVE_RECURSE ${WORK})

function(run)
  execute_process(COMMAND ${ARGN} COMMAND_ECHO STDOUT COMMAND_ERROR_IS_FATAL ANY)
endfunction()

# Moves the tree after the installation: nothing in it may remember where it was put first.
function(install_moved tree prefix)
  execute_process(COMMAND ${CMAKE_COMMAND} --install ${tree} --prefix ${prefix}-first
    COMMAND_ECHO STDOUT OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
  file(RENAME ${prefix}-first ${prefix})
endfunction()

function(configure_project project tree)
  run(${CMAKE_COMMAND} -G Ninja -S ${here}/${project} -B ${tree} -D CMAKE_CXX_COMPILER=g++ ${ARGN})
endfunction()

function(build_and_run_project project tree)
  configure_project(${project} ${tree} ${ARGN})
  run(${CMAKE_COMMAND} --build ${tree})
  run(${tree}/user)
endfunction()

function(build_and_run_command compiler prefix flags)
  file(GLOB_RECURSE pc_file ${prefix}/vela.pc)
  get_filename_component(pc_dir ${pc_file} DIRECTORY)
  set(program ${WORK}/user-${compiler}${flags})
  run(${CMAKE_COMMAND} -E env PKG_CONFIG_PATH=${pc_dir} sh -c
      "${compiler} -std=c++20 ${here}/main.cpp $(pkg-config --cflags --libs ${flags} vela) -o ${program}")
  get_filename_component(lib_dir ${pc_dir} DIRECTORY)
  run(${CMAKE_COMMAND} -E env LD_LIBRARY_PATH=${lib_dir} ${program})
endfunction()

message("-- Installing")
install_moved(${SHARED} ${WORK}/shared)
install_moved(${STATIC} ${WORK}/static)

message("-- Exported symbols and needed libraries")
file(GLOB_RECURSE library ${WORK}/shared/libvela.so)
include(${here}/exported_symbols.cmake)

message("-- Public headers")
include(${here}/headers.cmake)

message("-- find_package")
foreach(kind IN ITEMS shared static)
  build_and_run_project(find_package ${WORK}/find_package-${kind}
    -D CMAKE_PREFIX_PATH=${WORK}/${kind})
endforeach()

message("-- pkg-config")
build_and_run_command(g++ ${WORK}/shared "")
build_and_run_command(clang++ ${WORK}/shared "")
build_and_run_command(g++ ${WORK}/static --static)

message("-- add_subdirectory")
configure_project(add_subdirectory ${WORK}/add_subdirectory-default)
build_and_run_project(add_subdirectory ${WORK}/add_subdirectory-shared -D BUILD_SHARED_LIBS=ON)

message("-- Debian packages")
find_program(dpkg dpkg)
if(dpkg)
  include(${here}/packages.cmake)
endif()
