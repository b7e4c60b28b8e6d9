# Installs the library, its headers, and what find_package() and pkg-config read. Everything is
# found relative to its own place, so that an installed tree may be moved.

include(CMakePackageConfigHelpers)

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/vela)

install(TARGETS vela EXPORT velaTargets
  LIBRARY COMPONENT runtime NAMELINK_COMPONENT development
  ARCHIVE COMPONENT development)
install(DIRECTORY ${PROJECT_SOURCE_DIR}/include/vela TYPE INCLUDE COMPONENT development
  FILES_MATCHING PATTERN "*.hpp")
install(EXPORT velaTargets NAMESPACE vela:: DESTINATION ${package_dir} COMPONENT development)

configure_package_config_file(
  ${PROJECT_SOURCE_DIR}/cmake/velaConfig.cmake.in ${PROJECT_BINARY_DIR}/velaConfig.cmake
  INSTALL_DESTINATION ${package_dir})
# The same promise as the SONAME's, which changes with the major version and with nothing else.
write_basic_package_version_file(${PROJECT_BINARY_DIR}/velaConfigVersion.cmake
  COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/velaConfig.cmake ${PROJECT_BINARY_DIR}/velaConfigVersion.cmake
  DESTINATION ${package_dir} COMPONENT development)

# pkg-config knows no expressions, so the paths are put together here. An absolute directory
# replaces the prefix.
file(RELATIVE_PATH pc_prefix ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_PREFIX})
string(REGEX REPLACE "/$" "" pc_prefix ${pc_prefix})
set(pc_libdir "\${prefix}")
cmake_path(APPEND pc_libdir ${CMAKE_INSTALL_LIBDIR})
set(pc_includedir "\${prefix}")
cmake_path(APPEND pc_includedir ${CMAKE_INSTALL_INCLUDEDIR})
# For `pkg-config --static`: the C++ runtime that the objects were compiled against, for a linker
# that is not driven by the same C++ compiler.
set(pc_libs_private "")
foreach(library IN ITEMS stdc++ c++ m)
  if(library IN_LIST CMAKE_CXX_IMPLICIT_LINK_LIBRARIES)
    string(APPEND pc_libs_private " -l${library}")
  endif()
endforeach()
configure_file(${PROJECT_SOURCE_DIR}/cmake/vela.pc.in ${PROJECT_BINARY_DIR}/vela.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/vela.pc
  DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT development)
