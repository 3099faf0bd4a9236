# 64-bit Windows, built with Debian's MinGW-w64 and run through Wine.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

set(mingw_gcc x86_64-w64-mingw32-g++-posix) # which knows where its libraries are, whatever compiler builds
set(CMAKE_C_COMPILER x86_64-w64-mingw32-gcc-posix) # GoogleTest asks for one
set(CMAKE_CXX_COMPILER ${mingw_gcc})
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)

set(CMAKE_FIND_ROOT_PATH /usr/x86_64-w64-mingw32)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

set(CMAKE_CROSSCOMPILING_EMULATOR ${CMAKE_CURRENT_LIST_DIR}/../scripts/wine.sh)
