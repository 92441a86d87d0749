# cmake --install: library, headers, CMake package, pkg-config file.
include(CMakePackageConfigHelpers)

install(TARGETS VelkStepSplitter EXPORT VelkStepSplitterTargets
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(DIRECTORY include/kessel DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(EXPORT VelkStepSplitterTargets
  NAMESPACE VelkStepSplitter::
  DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/VelkStepSplitter)

configure_package_config_file(cmake/VelkStepSplitterConfig.cmake.in
  ${PROJECT_BINARY_DIR}/VelkStepSplitterConfig.cmake
  INSTALL_DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/VelkStepSplitter)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/VelkStepSplitterConfigVersion.cmake
  COMPATIBILITY SameMajorVersion)
install(FILES
  ${PROJECT_BINARY_DIR}/VelkStepSplitterConfig.cmake
  ${PROJECT_BINARY_DIR}/VelkStepSplitterConfigVersion.cmake
  DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/VelkStepSplitter)

# From the pkg-config file to the prefix, wherever the tree is installed or moved to.
file(RELATIVE_PATH VELKSTEP_PC_TO_PREFIX
  ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_PREFIX})
configure_file(cmake/velkstepsplitter.pc.in ${PROJECT_BINARY_DIR}/velkstepsplitter.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/velkstepsplitter.pc
  DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)

if(VELKSTEP_BUILD_CLI)
  install(TARGETS velkstep RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
endif()
