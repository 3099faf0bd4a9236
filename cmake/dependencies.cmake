# What the program and the tests stand on: CLI11, nlohmann-json and GoogleTest, all from Debian.
#
# A cross build takes the two header-only libraries from the host through links of their own folders (all of
# /usr/include would bring the host's C library with it) and builds GoogleTest from its installed sources.

function(bvsystem_header_library target folder)
  set(headers ${PROJECT_BINARY_DIR}/host-headers)
  file(MAKE_DIRECTORY ${headers})
  file(CREATE_LINK /usr/include/${folder} ${headers}/${folder} SYMBOLIC)
  add_library(${target} INTERFACE IMPORTED)
  target_include_directories(${target} SYSTEM INTERFACE ${headers})
endfunction()

if(BVSYSTEM_TOOLS OR BVSYSTEM_TESTS)
  if(CMAKE_CROSSCOMPILING)
    bvsystem_header_library(CLI11::CLI11 CLI)
    bvsystem_header_library(nlohmann_json::nlohmann_json nlohmann)
  else()
    find_package(CLI11 REQUIRED)
    find_package(nlohmann_json REQUIRED)
  endif()
endif()

if(BVSYSTEM_TESTS)
  if(CMAKE_CROSSCOMPILING)
    set(INSTALL_GTEST OFF)
    add_subdirectory(/usr/src/googletest ${PROJECT_BINARY_DIR}/googletest EXCLUDE_FROM_ALL SYSTEM)
  else()
    find_package(GTest REQUIRED)
  endif()
endif()

# A Windows program finds MinGW-w64's run-time libraries beside itself.
if(DEFINED mingw_gcc)
  foreach(library libstdc++-6.dll libgcc_s_seh-1.dll libwinpthread-1.dll)
    execute_process(COMMAND ${mingw_gcc} -print-file-name=${library}
      OUTPUT_VARIABLE path OUTPUT_STRIP_TRAILING_WHITESPACE)
    file(COPY ${path} DESTINATION ${CMAKE_RUNTIME_OUTPUT_DIRECTORY})
  endforeach()
endif()
