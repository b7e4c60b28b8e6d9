# `cmake --build ... --target docs`: the site, in docs/html of the build tree. A warning fails it.

find_program(VELA_DOXYGEN doxygen)
if(VELA_DOXYGEN)
  configure_file(${PROJECT_SOURCE_DIR}/docs/Doxyfile.in ${PROJECT_BINARY_DIR}/docs/Doxyfile @ONLY)
  add_custom_target(docs
    COMMAND ${VELA_DOXYGEN} ${PROJECT_BINARY_DIR}/docs/Doxyfile
    WORKING_DIRECTORY ${PROJECT_BINARY_DIR}/docs
    COMMENT "Documentation: ${PROJECT_BINARY_DIR}/docs/html/index.html"
    VERBATIM)
endif()
