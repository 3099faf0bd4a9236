# As mingw-toolchain.cmake, with clang on top of MinGW-w64's libraries.
include(${CMAKE_CURRENT_LIST_DIR}/mingw-toolchain.cmake)
execute_process(COMMAND ${mingw_gcc} -print-libgcc-file-name
  OUTPUT_VARIABLE libgcc OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
get_filename_component(gcc_directory ${libgcc} DIRECTORY)

set(CMAKE_C_COMPILER clang)
set(CMAKE_CXX_COMPILER clang++)
set(CMAKE_C_COMPILER_TARGET x86_64-w64-mingw32)
set(CMAKE_CXX_COMPILER_TARGET x86_64-w64-mingw32)
foreach(folder c++ c++/x86_64-w64-mingw32 c++/backward)
  string(APPEND CMAKE_CXX_FLAGS_INIT " -isystem ${gcc_directory}/include/${folder}")
endforeach()
foreach(kind EXE SHARED)
  set(CMAKE_${kind}_LINKER_FLAGS_INIT "-B${gcc_directory} -L${gcc_directory} -pthread")
endforeach()
