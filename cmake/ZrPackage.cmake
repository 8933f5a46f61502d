# What makes find_package(zrcallouts) work after an installation.
include(CMakePackageConfigHelpers)
set(package_folder "${CMAKE_INSTALL_LIBDIR}/cmake/zrcallouts")
configure_package_config_file(cmake/zrcalloutsConfig.cmake.in "${CMAKE_BINARY_DIR}/zrcalloutsConfig.cmake"
                              INSTALL_DESTINATION "${package_folder}")
write_basic_package_version_file("${CMAKE_BINARY_DIR}/zrcalloutsConfigVersion.cmake"
                                 COMPATIBILITY SameMinorVersion)
install(FILES "${CMAKE_BINARY_DIR}/zrcalloutsConfig.cmake" "${CMAKE_BINARY_DIR}/zrcalloutsConfigVersion.cmake"
        DESTINATION "${package_folder}")
install(EXPORT zrcallouts NAMESPACE zrcallouts:: FILE zrcalloutsTargets.cmake DESTINATION "${package_folder}")
