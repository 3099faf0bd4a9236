# What every target of this project is built with, as each compiler calls it.

function(bvsystem_warnings target)
  if(MSVC)
    target_compile_options(${target} PRIVATE /W4 /permissive- /utf-8 $<$<BOOL:${BVSYSTEM_WARNINGS_AS_ERRORS}>:/WX>)
    target_compile_definitions(${target} PRIVATE _CRT_SECURE_NO_WARNINGS) # fopen and the like are meant
    return()
  endif()
  target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wconversion -Wshadow
    $<$<CXX_COMPILER_ID:Clang>:-Wgnu> # forms of these two compilers that a third may refuse
    $<$<BOOL:${BVSYSTEM_WARNINGS_AS_ERRORS}>:-Werror>)
  # GCC 12 takes the parts of an optimised std::string concatenation for overlapping (GCC bug 105651).
  if(CMAKE_CXX_COMPILER_ID STREQUAL GNU AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    target_compile_options(${target} PRIVATE -Wno-restrict)
  endif()
endfunction()

# A product and a sum stay two operations, each rounded: compilers that make one of them where the processor can (GCC
# does, with -march=native and on aarch64) would give other values than the same source elsewhere, and those of noise
# are the same everywhere.
function(bvsystem_exact_floats target)
  target_compile_options(${target} PRIVATE $<IF:$<BOOL:${MSVC}>,/fp:precise,-ffp-contract=off>)
endfunction()

# The library is tested as it is shipped; the tests themselves would only take longer to build.
function(bvsystem_not_optimised target)
  target_compile_options(${target} PRIVATE $<IF:$<BOOL:${MSVC}>,/Od,-O0>)
endfunction()
