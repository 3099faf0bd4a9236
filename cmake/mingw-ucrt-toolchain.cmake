# As mingw-toolchain.cmake, with the Universal C Runtime in the place of msvcrt.
include(${CMAKE_CURRENT_LIST_DIR}/mingw-toolchain.cmake)
execute_process(COMMAND ${mingw_gcc} -dumpspecs OUTPUT_VARIABLE specs COMMAND_ERROR_IS_FATAL ANY)
string(REPLACE "-lmsvcrt" "-lucrt" specs "${specs}")
file(WRITE ${CMAKE_BINARY_DIR}/ucrt.specs "${specs}")
set(CMAKE_CXX_FLAGS_INIT "-D_UCRT -specs=${CMAKE_BINARY_DIR}/ucrt.specs")
