# SPDX-License-Identifier: MIT
# What `cmake --install` lays down: the library with its public headers, the program, and the two
# descriptions by which other builds find them (a CMake package and a pkg-config module).
include(CMakePackageConfigHelpers)

set(ESPALIER_CMAKE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/espalier)

install(TARGETS espalier
    EXPORT espalier-targets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
    FILE_SET HEADERS DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(EXPORT espalier-targets
    NAMESPACE espalier::
    DESTINATION ${ESPALIER_CMAKE_DIR})

configure_package_config_file(
    cmake/espalier-config.cmake.in
    ${PROJECT_BINARY_DIR}/espalier-config.cmake
    INSTALL_DESTINATION ${ESPALIER_CMAKE_DIR})
write_basic_package_version_file(
    ${PROJECT_BINARY_DIR}/espalier-config-version.cmake
    COMPATIBILITY SameMajorVersion)
install(FILES
        ${PROJECT_BINARY_DIR}/espalier-config.cmake
        ${PROJECT_BINARY_DIR}/espalier-config-version.cmake
    DESTINATION ${ESPALIER_CMAKE_DIR})

# The .pc file names its prefix relative to itself, so an installation can be moved.
file(RELATIVE_PATH ESPALIER_PC_TO_PREFIX
    ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_PREFIX})
file(RELATIVE_PATH ESPALIER_PC_LIBDIR ${CMAKE_INSTALL_PREFIX} ${CMAKE_INSTALL_FULL_LIBDIR})
file(RELATIVE_PATH ESPALIER_PC_INCLUDEDIR ${CMAKE_INSTALL_PREFIX} ${CMAKE_INSTALL_FULL_INCLUDEDIR})
configure_file(cmake/espalier.pc.in ${PROJECT_BINARY_DIR}/espalier.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/espalier.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)

if(TARGET espalier_tool)
    file(RELATIVE_PATH ESPALIER_BIN_TO_LIB ${CMAKE_INSTALL_FULL_BINDIR} ${CMAKE_INSTALL_FULL_LIBDIR})
    set_target_properties(espalier_tool PROPERTIES INSTALL_RPATH "$ORIGIN/${ESPALIER_BIN_TO_LIB}")
    install(TARGETS espalier_tool RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
endif()
