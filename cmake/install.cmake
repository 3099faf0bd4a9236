# `cmake --install`: headers, library, program, and what find_package and pkg-config need.
include(CMakePackageConfigHelpers)

install(TARGETS BvSystem EXPORT BvSystemTargets
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(DIRECTORY ${PROJECT_SOURCE_DIR}/include/zel DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
if(BVSYSTEM_TOOLS)
  install(TARGETS zel RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
endif()

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/BvSystem)
install(EXPORT BvSystemTargets NAMESPACE BvSystem:: DESTINATION ${package_dir})
configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/BvSystemConfig.cmake.in
  ${PROJECT_BINARY_DIR}/BvSystemConfig.cmake INSTALL_DESTINATION ${package_dir})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/BvSystemConfigVersion.cmake
  COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/BvSystemConfig.cmake ${PROJECT_BINARY_DIR}/BvSystemConfigVersion.cmake
  DESTINATION ${package_dir})

# The file names its directories relative to its own, so that an installation may be moved.
set(pc_dir ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
file(RELATIVE_PATH pc_libdir /${pc_dir} /${CMAKE_INSTALL_LIBDIR})
file(RELATIVE_PATH pc_includedir /${pc_dir} /${CMAKE_INSTALL_INCLUDEDIR})
if(NOT BUILD_SHARED_LIBS) # then its user links what it needs
  set(pc_definitions -DZEL_STATIC)
  if(WIN32)
    set(pc_system_libraries -lole32 -lshell32 -lwindowscodecs -lwinmm)
    list(JOIN pc_system_libraries " " pc_system_libraries)
  else()
    set(pc_requires libjpeg)
  endif()
endif()
configure_file(${PROJECT_SOURCE_DIR}/cmake/bvsystem.pc.in ${PROJECT_BINARY_DIR}/bvsystem.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/bvsystem.pc DESTINATION ${pc_dir})
