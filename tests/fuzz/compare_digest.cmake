# Fails when vela_digest prints other digests than those on record: a result has changed by a bit at
# least. Where that was the intention, the new digests go on record with the change.
#
#   cmake -D PROGRAM=<vela_digest> -P compare_digest.cmake
#
# With another C library than the one of the record there is nothing to compare.

execute_process(COMMAND ${PROGRAM} OUTPUT_VARIABLE digests COMMAND_ERROR_IS_FATAL ANY)
file(READ ${CMAKE_CURRENT_LIST_DIR}/../data/digests.txt record)
string(REGEX MATCH "^[^\n]+" library "${digests}")
string(FIND "${record}" "${library}\n" found)
message("${digests}")
if(NOT found EQUAL 0)
  message("Another C library: nothing to compare")
elseif(NOT digests STREQUAL record)
  message(FATAL_ERROR "On record are other digests:\n${record}")
endif()
