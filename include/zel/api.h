// What every public header needs: the export macro, the version, the format check.
#pragma once

/// The version of the library. The build reads it from here; no other place states it.
#define ZEL_VERSION_MAJOR 1
#define ZEL_VERSION_MINOR 0
#define ZEL_VERSION_PATCH 0

/// Marks what a shared library exports. The library's own build defines ZEL_BUILDING_LIBRARY. The build of a
/// static library, and of what uses it, defines ZEL_STATIC.
#if defined(ZEL_STATIC)
#define ZEL_API
#elif defined(_WIN32)
#if defined(ZEL_BUILDING_LIBRARY)
#define ZEL_API __declspec(dllexport)
#else
#define ZEL_API __declspec(dllimport)
#endif
#else
#define ZEL_API __attribute__((visibility("default")))
#endif

/// Lets the compiler check printf-style arguments. Positions count from 1, and `this` counts as the first.
#if defined(__MINGW32__) && !defined(__clang__)
#define ZEL_PRINTF_FORMAT(formatAt, firstAt) __attribute__((format(gnu_printf, formatAt, firstAt)))
#elif defined(__GNUC__)
#define ZEL_PRINTF_FORMAT(formatAt, firstAt) __attribute__((format(printf, formatAt, firstAt)))
#else
#define ZEL_PRINTF_FORMAT(formatAt, firstAt)
#endif
