# The dynamic symbols of ${library} are public names of vela and nothing else, and it needs no
# library but the language's own.

execute_process(COMMAND nm -D --defined-only --demangle ${library}
  OUTPUT_VARIABLE symbols COMMAND_ERROR_IS_FATAL ANY)
string(REGEX REPLACE "\n$" "" symbols "${symbols}")
string(REPLACE ";" "," symbols "${symbols}")
string(REPLACE "\n" ";" symbols "${symbols}")
if(NOT symbols)
  message(FATAL_ERROR "${library} exports nothing")
endif()
foreach(line IN LISTS symbols)
  string(REGEX REPLACE "^[0-9a-f]* *. " "" name "${line}")
  string(REGEX REPLACE "^(vtable|typeinfo|typeinfo name) for " "" name "${name}")
  if(NOT name MATCHES "^vela::"
     OR name MATCHES "^vela::(clustering|conventions|descriptive|distributions|hypothesis|kernels)::")
    message(SEND_ERROR "exported, but not public: ${line}")
  endif()
endforeach()

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
