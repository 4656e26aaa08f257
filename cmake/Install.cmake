# What a host gets: both libraries, their headers, and two ways to find them (CMake package, pkg-config).
include(CMakePackageConfigHelpers)

install(TARGETS veldan-platform EXPORT veldan-targets DESTINATION ${CMAKE_INSTALL_LIBDIR})
if(TARGET veldan)
  install(TARGETS veldan EXPORT veldan-targets DESTINATION ${CMAKE_INSTALL_LIBDIR})
endif()

install(DIRECTORY include/veldan/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/veldan FILES_MATCHING PATTERN "*.h")
# The layer's headers name each other from platform/ on, so users search include/veldan as well.
install(DIRECTORY src/platform DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/veldan FILES_MATCHING PATTERN "*.h"
        PATTERN "*Internal*" EXCLUDE PATTERN "x11" EXCLUDE)
if(EXISTS ${PROJECT_SOURCE_DIR}/data/Profiles)
  install(DIRECTORY data/Profiles DESTINATION ${CMAKE_INSTALL_DATADIR}/veldan)
endif()
install(FILES LICENSE DESTINATION ${CMAKE_INSTALL_DOCDIR})

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/veldan)
install(EXPORT veldan-targets NAMESPACE veldan:: DESTINATION ${package_dir})
configure_package_config_file(cmake/veldanConfig.cmake.in veldanConfig.cmake INSTALL_DESTINATION ${package_dir})
write_basic_package_version_file(veldanConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/veldanConfig.cmake ${PROJECT_BINARY_DIR}/veldanConfigVersion.cmake
        DESTINATION ${package_dir})

# The path from the folder of the .pc files to the prefix, so that an installed tree can be moved.
file(RELATIVE_PATH pc_to_prefix /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
foreach(library veldan veldan-platform)
  configure_file(cmake/${library}.pc.in ${library}.pc @ONLY)
  install(FILES ${PROJECT_BINARY_DIR}/${library}.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
endforeach()
