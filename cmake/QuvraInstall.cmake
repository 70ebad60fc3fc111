# Install rules, the CMake package for find_package(quvra), and quvra.pc.
include(CMakePackageConfigHelpers)

install(TARGETS quvra EXPORT quvraTargets
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
install(DIRECTORY ${CMAKE_SOURCE_DIR}/export_inc/
  DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/quvra
  PATTERN ".clang-tidy" EXCLUDE)
install(EXPORT quvraTargets NAMESPACE quvra::
  DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/quvra)

configure_package_config_file(${CMAKE_SOURCE_DIR}/cmake/quvraConfig.cmake.in
  ${CMAKE_BINARY_DIR}/quvraConfig.cmake
  INSTALL_DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/quvra)
write_basic_package_version_file(${CMAKE_BINARY_DIR}/quvraConfigVersion.cmake
  COMPATIBILITY SameMajorVersion)
install(FILES ${CMAKE_BINARY_DIR}/quvraConfig.cmake
  ${CMAKE_BINARY_DIR}/quvraConfigVersion.cmake
  DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/quvra)

configure_file(${CMAKE_SOURCE_DIR}/cmake/quvra.pc.in
  ${CMAKE_BINARY_DIR}/quvra.pc @ONLY)
install(FILES ${CMAKE_BINARY_DIR}/quvra.pc
  DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
