# cmake --install: library, headers, CMake package, pkg-config file, command and what describes it.
# Components: library (for programs that use it), development (for building them), tool.
include(CMakePackageConfigHelpers)

install(TARGETS VelkStepSplitter EXPORT VelkStepSplitterTargets
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
    COMPONENT library NAMELINK_COMPONENT development)
set(not_installed)
if(NOT VELKSTEP_C_INTERFACE)
  set(not_installed PATTERN kessel.h EXCLUDE)
endif()
install(DIRECTORY include/kessel DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT development
  ${not_installed})
install(EXPORT VelkStepSplitterTargets
  NAMESPACE VelkStepSplitter::
  DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/VelkStepSplitter COMPONENT development)

configure_package_config_file(cmake/VelkStepSplitterConfig.cmake.in
  ${PROJECT_BINARY_DIR}/VelkStepSplitterConfig.cmake
  INSTALL_DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/VelkStepSplitter)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/VelkStepSplitterConfigVersion.cmake
  COMPATIBILITY SameMajorVersion)
install(FILES
  ${PROJECT_BINARY_DIR}/VelkStepSplitterConfig.cmake
  ${PROJECT_BINARY_DIR}/VelkStepSplitterConfigVersion.cmake
  DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/VelkStepSplitter COMPONENT development)

# From the pkg-config file to the prefix, wherever the tree is installed or moved to.
file(RELATIVE_PATH VELKSTEP_PC_TO_PREFIX
  ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_PREFIX})
configure_file(cmake/velkstepsplitter.pc.in ${PROJECT_BINARY_DIR}/velkstepsplitter.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/velkstepsplitter.pc
  DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT development)

if(VELKSTEP_BUILD_CLI)
  install(TARGETS velkstep RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT tool)
  install(FILES ${VELKSTEP_REFERENCE_FOLDER}/velkstep.1
    DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT tool)
  install(FILES ${VELKSTEP_REFERENCE_FOLDER}/velkstep.bash RENAME velkstep
    DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions COMPONENT tool)
  install(FILES ${VELKSTEP_REFERENCE_FOLDER}/_velkstep
    DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/site-functions COMPONENT tool)
  install(FILES ${VELKSTEP_REFERENCE_FOLDER}/velkstep.fish
    DESTINATION ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d COMPONENT tool)
endif()
