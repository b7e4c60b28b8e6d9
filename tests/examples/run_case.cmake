# Runs PROGRAM, the one called NAME, with ARGUMENTS and checks the line LINE as KIND says; see
# CMakeLists.txt.

execute_process(COMMAND ${PROGRAM} ${ARGUMENTS}
  RESULT_VARIABLE status OUTPUT_VARIABLE output ERROR_VARIABLE errors)

if(KIND STREQUAL "OUTPUT")
  set(expectedStatus 0)
  string(REGEX REPLACE " +" " " lines "\n${output}")
  string(FIND "${lines}" "\n ${LINE}\n" place)
  if(place EQUAL -1 OR NOT errors STREQUAL "")
    set(wrong TRUE)
  endif()
else()
  set(expectedStatus 1)
  if(NOT output STREQUAL "" OR NOT errors STREQUAL "${NAME}: ${LINE}\n")
    set(wrong TRUE)
  endif()
endif()

if(wrong OR NOT status STREQUAL expectedStatus)
  message(FATAL_ERROR "exit status ${status}\n--- output\n${output}--- errors\n${errors}"
    "--- expected ${KIND}\n${LINE}")
endif()
