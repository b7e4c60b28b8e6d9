# Fails when the work of calls differs from the record by two per mille: with more, the same results
# have become slower, and with less, a check may have been lost. Where that was the intention, the
# record takes what vela_work prints.
#
#   cmake -D PROGRAM=<vela_work> -P compare_work.cmake
#
# The blocks of a function are the compiler's, and how many steps a search takes depends on the last
# bits of the C library: with others than those of the record there is nothing to compare.

cmake_minimum_required(VERSION 3.25)
execute_process(COMMAND ${PROGRAM} OUTPUT_VARIABLE printed COMMAND_ERROR_IS_FATAL ANY)
string(REPLACE "\n" ";" printed "${printed}")
file(STRINGS ${CMAKE_CURRENT_LIST_DIR}/../data/work.txt record)
foreach(part IN ITEMS compiler library)
  list(POP_FRONT printed used)
  list(POP_FRONT record recorded)
  if(NOT used STREQUAL recorded)
    message("${used}: nothing to compare, on record is ${recorded}")
    return()
  endif()
endforeach()

set(different "")
foreach(now was IN ZIP_LISTS printed record)
  string(REPLACE " " ";" now "${now}")
  string(REPLACE " " ";" was "${was}")
  list(POP_FRONT now name)
  list(POP_FRONT was recordedName)
  list(LENGTH now calls)
  list(LENGTH was recordedCalls)
  if(NOT "${name} ${calls}" STREQUAL "${recordedName} ${recordedCalls}")
    message(FATAL_ERROR "\"${name}\" stands in place of \"${recordedName}\"")
  endif()
  foreach(blocks recorded IN ZIP_LISTS now was)
    math(EXPR perMille "1000 * (${blocks} - ${recorded}) / (${recorded} + 1)")
    if(perMille GREATER_EQUAL 2 OR perMille LESS_EQUAL -2)
      string(APPEND different "  ${name}: ${blocks} for ${recorded}\n")
    endif()
  endforeach()
endforeach()
if(different)
  message(FATAL_ERROR "Basic blocks, other than on record:\n${different}")
endif()
