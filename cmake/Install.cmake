# SPDX-License-Identifier: MIT
# What `cmake --install` lays down, in three components: "runtime", the library; "development", its
# public headers and the two descriptions by which other builds find it (a CMake package and a
# pkg-config module); "tools", the program with its manual page and the completions of shells.
include(CMakePackageConfigHelpers)

set(ESPALIER_CMAKE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/espalier)

install(TARGETS espalier
    EXPORT espalier-targets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
        COMPONENT runtime NAMELINK_COMPONENT development
    FILE_SET HEADERS DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT development)
install(EXPORT espalier-targets
    NAMESPACE espalier::
    DESTINATION ${ESPALIER_CMAKE_DIR}
    COMPONENT development)

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
    DESTINATION ${ESPALIER_CMAKE_DIR}
    COMPONENT development)

# The .pc file names its prefix relative to itself, so an installation can be moved.
file(RELATIVE_PATH ESPALIER_PC_TO_PREFIX
    ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_PREFIX})
file(RELATIVE_PATH ESPALIER_PC_LIBDIR ${CMAKE_INSTALL_PREFIX} ${CMAKE_INSTALL_FULL_LIBDIR})
file(RELATIVE_PATH ESPALIER_PC_INCLUDEDIR ${CMAKE_INSTALL_PREFIX} ${CMAKE_INSTALL_FULL_INCLUDEDIR})
configure_file(cmake/espalier.pc.in ${PROJECT_BINARY_DIR}/espalier.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/espalier.pc
    DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig
    COMPONENT development)

if(TARGET espalier_tool)
    # The program finds its library in an installation that is moved. In a package it has no need to.
    if(NOT ESPALIER_PACKAGES)
        file(RELATIVE_PATH ESPALIER_BIN_TO_LIB
            ${CMAKE_INSTALL_FULL_BINDIR} ${CMAKE_INSTALL_FULL_LIBDIR})
        set_target_properties(espalier_tool PROPERTIES
            INSTALL_RPATH "$ORIGIN/${ESPALIER_BIN_TO_LIB}")
    endif()
    install(TARGETS espalier_tool
        RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
        COMPONENT tools)
    # Where the shells look. zsh has a folder for packages and one for all else.
    set(zsh_folder site-functions)
    if(ESPALIER_PACKAGES)
        set(zsh_folder vendor-completions)
    endif()
    set(completions ${PROJECT_SOURCE_DIR}/tools/espalier/completions)
    install(FILES ${completions}/espalier.bash
        DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions
        RENAME espalier
        COMPONENT tools)
    install(FILES ${completions}/_espalier
        DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/${zsh_folder}
        COMPONENT tools)
    install(FILES ${completions}/espalier.fish
        DESTINATION ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d
        COMPONENT tools)
    if(NOT ESPALIER_PACKAGES)  # there it is compressed
        install(FILES ${PROJECT_SOURCE_DIR}/tools/espalier/espalier.1
            DESTINATION ${CMAKE_INSTALL_MANDIR}/man1
            COMPONENT tools)
    endif()
endif()
