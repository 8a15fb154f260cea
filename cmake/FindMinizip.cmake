# SPDX-License-Identifier: MIT
# Finds minizip, the zip library that comes with zlib, and makes the target Minizip::Minizip. It has
# no CMake package of its own. The header is <minizip/unzip.h>, as in the packages of distributions.
include(FindPackageHandleStandardArgs)

find_path(Minizip_INCLUDE_DIR NAMES minizip/unzip.h)
find_library(Minizip_LIBRARY NAMES minizip)
mark_as_advanced(Minizip_INCLUDE_DIR Minizip_LIBRARY)
find_package_handle_standard_args(Minizip REQUIRED_VARS Minizip_LIBRARY Minizip_INCLUDE_DIR)

if(Minizip_FOUND AND NOT TARGET Minizip::Minizip)
    add_library(Minizip::Minizip UNKNOWN IMPORTED)
    set_target_properties(Minizip::Minizip PROPERTIES
        IMPORTED_LOCATION ${Minizip_LIBRARY}
        INTERFACE_INCLUDE_DIRECTORIES ${Minizip_INCLUDE_DIR})
endif()
