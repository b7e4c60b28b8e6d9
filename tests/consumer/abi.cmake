# Compares the binary interface of a library built with debug information with the one on record,
# abi.xml, which knows more than the list of symbols: parameters, results, the layout of records.
# Any difference fails. Where one was meant, -D RECORD=ON writes the record anew; a change of
# something that was there needs another SONAME.
#
#   cmake -D LIBRARY=<libvela.so> [-D RECORD=ON] -P abi.cmake

cmake_minimum_required(VERSION 3.25)
set(record ${CMAKE_CURRENT_LIST_DIR}/abi.xml)
get_filename_component(root ${CMAKE_CURRENT_LIST_DIR}/../.. ABSOLUTE)
file(REAL_PATH ${LIBRARY} library)

find_program(ABIDIFF abidiff)
if(NOT ABIDIFF)
  message("No abidiff (Debian package abigail-tools): nothing is compared")
elseif(RECORD)
  execute_process(COMMAND abidw --headers-dir ${root}/include --drop-private-types
      --exported-interfaces-only --drop-undefined-syms --no-show-locs --no-corpus-path
      --no-comp-dir-path --no-parameter-names --no-elf-needed ${library}
    OUTPUT_VARIABLE description COMMAND_ERROR_IS_FATAL ANY)
  string(REPLACE "path='${root}/" "path='" description "${description}")
  file(WRITE ${record} "${description}")
else()
  execute_process(COMMAND ${ABIDIFF} --no-show-locs --harmless ${record} ${library}
    COMMAND_ECHO STDOUT COMMAND_ERROR_IS_FATAL ANY)
endif()
