# SPDX-License-Identifier: MIT
# The warnings that our own targets are built with. A project that takes the library in with
# add_subdirectory() never sees them.
function(espalier_set_warnings target)
    if(NOT espalier_IS_TOP_LEVEL)
        return()
    endif()
    target_compile_options(${target} PRIVATE
        -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wold-style-cast -Wcast-align
        -Wcast-qual -Wnon-virtual-dtor -Woverloaded-virtual -Wundef -Wimplicit-fallthrough)
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
        target_compile_options(${target} PRIVATE
            -Wduplicated-cond -Wduplicated-branches -Wlogical-op -Wuseless-cast -Wsuggest-override)
        if(CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
            # Optimising, g++ 12 takes `"text" + std::string()` for a copy within itself (GCC 105651).
            target_compile_options(${target} PRIVATE -Wno-restrict)
        endif()
    endif()
    if(CMAKE_CXX_COMPILER_ID STREQUAL "Clang" AND CMAKE_CXX_COMPILER_VERSION VERSION_GREATER_EQUAL 14)
        target_compile_options(${target} PRIVATE -Wreserved-identifier -Wreserved-macro-identifier)
    endif()
    if(ESPALIER_WERROR)
        target_compile_options(${target} PRIVATE -Werror)
    endif()
endfunction()
