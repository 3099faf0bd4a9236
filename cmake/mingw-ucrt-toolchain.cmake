# As mingw-toolchain.cmake, with the Universal C Runtime in the place of msvcrt: the compiler's own rules for linking,
# which it prints and takes again, name the other library.
include(${CMAKE_CURRENT_LIST_DIR}/mingw-toolchain.cmake)
execute_process(COMMAND ${mingw_gcc} -dumpspecs OUTPUT_VARIABLE link_rules COMMAND_ERROR_IS_FATAL ANY)
string(REPLACE "-lmsvcrt" "-lucrt" link_rules "${link_rules}")
file(WRITE ${CMAKE_BINARY_DIR}/ucrt-link-rules "${link_rules}")
set(CMAKE_CXX_FLAGS_INIT "-D_UCRT -specs=${CMAKE_BINARY_DIR}/ucrt-link-rules")
