# The dynamic symbols of ${library} are those of exported_symbols.txt, whose lines are reviewed like
# code: each is a promise to every program that was linked against it. A new function adds its line;
# a line that goes or changes needs another SONAME. Beyond them the library needs no library but the
# language's own.
#
# The list is `nm -D --defined-only --demangle` without addresses, sorted, each name once.

execute_process(COMMAND nm -D --defined-only --demangle ${library}
  OUTPUT_VARIABLE symbols COMMAND_ERROR_IS_FATAL ANY)
file(READ ${here}/exported_symbols.txt expected)
foreach(list IN ITEMS symbols expected)
  string(REGEX REPLACE "\n$" "" ${list} "${${list}}")
  string(REPLACE ";" "," ${list} "${${list}}")
  string(REPLACE "\n" ";" ${list} "${${list}}")
endforeach()
list(TRANSFORM symbols REPLACE "^[0-9a-f]* *. " "")
list(REMOVE_DUPLICATES symbols)
list(SORT symbols)

set(new ${symbols})
list(REMOVE_ITEM new ${expected})
set(gone ${expected})
list(REMOVE_ITEM gone ${symbols})
foreach(name IN LISTS new)
  message(SEND_ERROR "exported, but not in exported_symbols.txt: ${name}")
endforeach()
foreach(name IN LISTS gone)
  message(SEND_ERROR "in exported_symbols.txt, but not exported: ${name}")
endforeach()
if(new OR gone)
  string(REPLACE ";" "\n" text "${symbols}")
  file(WRITE ${WORK}/exported_symbols.txt "${text}\n")
  message(STATUS "the library's own list is ${WORK}/exported_symbols.txt")
endif()

execute_process(COMMAND readelf --dynamic --wide ${library}
  OUTPUT_VARIABLE dynamic COMMAND_ERROR_IS_FATAL ANY)
string(REGEX MATCHALL "\\(NEEDED\\)[^\n]*" needed "${dynamic}")
list(FILTER needed EXCLUDE REGEX "\\[(libstdc\\+\\+|libm|libgcc_s|libc|ld-linux-[a-z0-9-]+)\\.so")
if(needed)
  message(SEND_ERROR "needed, but not of the language: ${needed}")
endif()
if(NOT dynamic MATCHES "\\(SONAME\\)[^\n]*\\[libvela\\.so\\.[0-9]+\\]")
  message(SEND_ERROR "no SONAME with a version")
endif()
