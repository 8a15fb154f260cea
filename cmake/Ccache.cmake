# SPDX-License-Identifier: MIT
# Compiles through ccache where it is installed; -DESPALIER_CCACHE=OFF does without.
if(PROJECT_IS_TOP_LEVEL AND NOT DEFINED CMAKE_CXX_COMPILER_LAUNCHER)
    find_program(ESPALIER_CCACHE ccache DOC "The ccache program, or OFF")
    mark_as_advanced(ESPALIER_CCACHE)
    if(ESPALIER_CCACHE)
        set(CMAKE_CXX_COMPILER_LAUNCHER ${ESPALIER_CCACHE})
    endif()
endif()
