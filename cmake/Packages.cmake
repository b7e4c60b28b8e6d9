# `cpack -G DEB` in a build tree of the shared library makes libvela<N> (the library, N its SONAME's
# version) and libvela-dev (headers, CMake package, pkg-config file).

set(CPACK_PACKAGE_NAME vela)
set(CPACK_PACKAGE_VENDOR vela)
set(CPACK_PACKAGE_CONTACT "The vela developers <vela@localhost>")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_COMPONENTS_ALL runtime development)
set(CPACK_STRIP_FILES ON)

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)

set(CPACK_COMPONENT_RUNTIME_DESCRIPTION "${PROJECT_DESCRIPTION}: shared library
 Distributions, P-values, descriptive statistics, hypothesis tests and hierarchical clustering.")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME libvela${PROJECT_VERSION_MAJOR})
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_GENERATE_SHLIBS ON)

set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION "${PROJECT_DESCRIPTION}: development files
 Headers, and what find_package() and pkg-config read.")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libvela-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS
  "libvela${PROJECT_VERSION_MAJOR} (= ${PROJECT_VERSION})")

include(CPack)
