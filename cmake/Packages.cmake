# SPDX-License-Identifier: MIT
# Four Debian packages by `cpack -G DEB`: the library, what one needs to build with it, the program,
# and the guide. `scripts/check-debs` makes them with the settings that they want.
if(NOT CMAKE_INSTALL_PREFIX STREQUAL "/usr")
    message(FATAL_ERROR "packages want -DCMAKE_INSTALL_PREFIX=/usr")
endif()
find_program(ESPALIER_GZIP gzip REQUIRED)
mark_as_advanced(ESPALIER_GZIP)

set(debian ${PROJECT_SOURCE_DIR}/packaging/debian)
set(library libespalier${PROJECT_VERSION_MAJOR})

# Debian wants its change records and the manual page compressed, without the time in them.
function(espalier_compress input output)
    execute_process(COMMAND ${ESPALIER_GZIP} -9nc
        INPUT_FILE ${input}
        OUTPUT_FILE ${PROJECT_BINARY_DIR}/${output}
        COMMAND_ERROR_IS_FATAL ANY)
    set_property(DIRECTORY ${PROJECT_SOURCE_DIR} APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${input})
endfunction()
espalier_compress(${PROJECT_SOURCE_DIR}/CHANGELOG.md changelog.gz)
espalier_compress(${debian}/changelog changelog.Debian.gz)
espalier_compress(${PROJECT_SOURCE_DIR}/tools/espalier/espalier.1 espalier.1.gz)

install(FILES ${PROJECT_BINARY_DIR}/espalier.1.gz
    DESTINATION ${CMAKE_INSTALL_MANDIR}/man1
    COMPONENT tools)
install(DIRECTORY ${PROJECT_SOURCE_DIR}/docs/ ${PROJECT_SOURCE_DIR}/examples
    DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/libespalier-doc
    COMPONENT documentation
    FILES_MATCHING PATTERN "*.md" PATTERN "*.cpp" PATTERN expected EXCLUDE)
# The pages of Doxygen, if they have been made (scripts/check-docs).
if(EXISTS ${PROJECT_SOURCE_DIR}/build/docs/html/index.html)
    install(DIRECTORY ${PROJECT_SOURCE_DIR}/build/docs/html
        DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/libespalier-doc
        COMPONENT documentation)
endif()

# espalier_package(COMPONENT PACKAGE SECTION DESCRIPTION): what Debian's policy asks of each.
function(espalier_package component package section description)
    install(FILES
            ${debian}/copyright
            ${PROJECT_BINARY_DIR}/changelog.gz
            ${PROJECT_BINARY_DIR}/changelog.Debian.gz
        DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${package}
        COMPONENT ${component})
    if(EXISTS ${debian}/${package}.lintian-overrides)
        install(FILES ${debian}/${package}.lintian-overrides
            DESTINATION ${CMAKE_INSTALL_DATADIR}/lintian/overrides
            RENAME ${package}
            COMPONENT ${component})
    endif()
    string(TOUPPER ${component} upper)
    set(CPACK_DEBIAN_${upper}_PACKAGE_NAME ${package} PARENT_SCOPE)
    set(CPACK_DEBIAN_${upper}_PACKAGE_SECTION ${section} PARENT_SCOPE)
    set(CPACK_COMPONENT_${upper}_DESCRIPTION ${description} PARENT_SCOPE)
endfunction()

set(about "Espalier reads XML documents of any size as a stream, calls handlers,
writes documents, holds them as trees, and computes the style of their
elements by CSS.
")
espalier_package(runtime ${library} libs "XML toolkit for C++ (shared library)
${about}
This package has the shared library.")
espalier_package(development libespalier-dev libdevel "XML toolkit for C++ (development files)
${about}
This package has the headers, and what CMake and pkg-config need to find the
library.")
espalier_package(tools espalier-tools text "check, show, select from and format XML documents
The program espalier tells whether documents are well-formed, and where not;
shows their nodes, their shape and their style; selects elements by selectors
of CSS; and formats documents. It works on documents of any size, also
compressed ones and members of archives.")
espalier_package(documentation libespalier-doc doc "XML toolkit for C++ (documentation)
${about}
This package has the guide, the pages of all classes, and examples.")

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME espalier)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_CONTACT "The Espalier authors <espalier@example.org>")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "")  # or it stands before that of each package
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_ALL runtime development tools documentation)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_SOURCE espalier)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)

# The program wants just this build of the library in the packages' own dependencies, since both
# come from one source; programs of others want the version of the interface.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${PROJECT_BINARY_DIR})
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY >=)
set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS ON)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA ${debian}/triggers)
set(CPACK_COMPONENT_DEVELOPMENT_DEPENDS runtime)
set(CPACK_COMPONENT_TOOLS_DEPENDS runtime)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SUGGESTS libespalier-doc)
set(CPACK_DEBIAN_DOCUMENTATION_PACKAGE_ARCHITECTURE all)
set(CPACK_DEBIAN_DOCUMENTATION_PACKAGE_SHLIBDEPS OFF)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SHLIBDEPS OFF)
include(CPack)
