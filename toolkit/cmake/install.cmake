# What another project needs: headers, the libraries, and how CMake and pkg-config find them.
include(CMakePackageConfigHelpers)

set(package ${CMAKE_INSTALL_LIBDIR}/cmake/ZelToolkit)
foreach(folder IN LISTS folders ITEMS toolkit/testing)
  install(DIRECTORY ${ZEL_ROOT}/${folder}/ DESTINATION ${headers}/${folder}
    COMPONENT toolkit FILES_MATCHING PATTERN "*.h")
endforeach()
install(TARGETS zel_toolkit zel_testing EXPORT ZelToolkit ARCHIVE COMPONENT toolkit)
install(EXPORT ZelToolkit FILE ZelToolkitTargets.cmake NAMESPACE ZelToolkit::
  DESTINATION ${package} COMPONENT toolkit)

write_basic_package_version_file(${CMAKE_CURRENT_BINARY_DIR}/ZelToolkitConfigVersion.cmake
  COMPATIBILITY SameMinorVersion)
file(RELATIVE_PATH up ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_PREFIX})
configure_file(cmake/zel-toolkit.pc.in zel-toolkit.pc @ONLY)
install(FILES cmake/ZelToolkitConfig.cmake ${CMAKE_CURRENT_BINARY_DIR}/ZelToolkitConfigVersion.cmake
  DESTINATION ${package} COMPONENT toolkit)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/zel-toolkit.pc
  DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT toolkit)
