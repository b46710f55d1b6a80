# What `cmake --install` puts down: headers, the library, its definition files, the CMake package
# (`find_package(tqutil)` gives tqutil::tqutil) and tqutil.pc. Everything in it is relative to the
# place of the package, so that an installed tree may be moved.
include(CMakePackageConfigHelpers)

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/tqutil)
set(pkgconfig_dir ${CMAKE_INSTALL_LIBDIR}/pkgconfig)

install(DIRECTORY ${PROJECT_SOURCE_DIR}/include/tqutil DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}
  FILES_MATCHING PATTERN *.h)
# The library finds its definition files from the place where it stands itself.
install(DIRECTORY ${PROJECT_SOURCE_DIR}/share/tqutil DESTINATION ${CMAKE_INSTALL_DATADIR})
install(TARGETS tqutil EXPORT tqutilTargets)
install(EXPORT tqutilTargets NAMESPACE tqutil:: FILE tqutilConfig.cmake DESTINATION ${package_dir})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/tqutilConfigVersion.cmake
  COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/tqutilConfigVersion.cmake DESTINATION ${package_dir})

file(RELATIVE_PATH pc_prefix /${pkgconfig_dir} /)
string(REGEX REPLACE "/$" "" pc_prefix ${pc_prefix})
configure_file(${PROJECT_SOURCE_DIR}/cmake/tqutil.pc.in ${PROJECT_BINARY_DIR}/tqutil.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/tqutil.pc DESTINATION ${pkgconfig_dir})
