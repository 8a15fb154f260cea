# SPDX-License-Identifier: MIT
# Included by projects that take the library's sources into their own build. Only the library comes
# along: no tests, no program, no examples, no install rules, no warnings policy; and what the
# project itself has set is as it was.
function(expect what found wanted)
    if(NOT "${found}" STREQUAL "${wanted}")
        message(FATAL_ERROR "${what} is \"${found}\", not \"${wanted}\"")
    endif()
endfunction()

function(collect_targets folder result)
    get_property(targets DIRECTORY ${folder} PROPERTY BUILDSYSTEM_TARGETS)
    get_property(folders DIRECTORY ${folder} PROPERTY SUBDIRECTORIES)
    foreach(below IN LISTS folders)
        collect_targets(${below} more)
        list(APPEND targets ${more})
    endforeach()
    set(${result} ${targets} PARENT_SCOPE)
endfunction()

collect_targets(${CMAKE_CURRENT_SOURCE_DIR} targets)
list(REMOVE_ITEM targets espalier_verify_interface_header_sets all_verify_interface_header_sets)
list(SORT targets)
expect("the list of targets" "${targets}" "consumer;espalier;espalier_objects")

get_target_property(options espalier_objects COMPILE_OPTIONS)
if("${options}" MATCHES "-W")
    message(FATAL_ERROR "the library is compiled with ${options} in another project's build")
endif()
foreach(property COMPILE_OPTIONS COMPILE_DEFINITIONS LINK_OPTIONS INCLUDE_DIRECTORIES)
    get_target_property(value consumer ${property})
    expect("${property} of the consumer" "${value}" "value-NOTFOUND")
    get_property(value DIRECTORY PROPERTY ${property})
    expect("${property} of its folder" "${value}" "")
endforeach()
foreach(property COMPILE_OPTIONS COMPILE_DEFINITIONS LINK_OPTIONS)
    get_target_property(value espalier INTERFACE_${property})
    expect("INTERFACE_${property}" "${value}" "value-NOTFOUND")
endforeach()
foreach(name CXX_FLAGS CXX_STANDARD CXX_EXTENSIONS CXX_VISIBILITY_PRESET CXX_COMPILER_LAUNCHER
             POSITION_INDEPENDENT_CODE MODULE_PATH)
    expect(CMAKE_${name} "${CMAKE_${name}}" "${given_${name}}")
endforeach()
