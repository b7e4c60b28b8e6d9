# Runs PROGRAM and compares its output with the file EXPECTED.

execute_process(COMMAND ${PROGRAM} OUTPUT_VARIABLE output COMMAND_ERROR_IS_FATAL ANY)
file(READ ${EXPECTED} expected)
if(NOT output STREQUAL expected)
  message(FATAL_ERROR "--- output\n${output}--- documented\n${expected}")
endif()
