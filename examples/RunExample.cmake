# SPDX-License-Identifier: MIT
# Runs PROGRAM, on ARGUMENT or with the file INPUT as standard input where these are given, and
# compares what it prints, or what it has written to the file DOCUMENT, with the file EXPECTED.
if(DEFINED DOCUMENT)
    file(REMOVE ${DOCUMENT})
    execute_process(COMMAND ${PROGRAM} ${ARGUMENT} ${DOCUMENT} OUTPUT_VARIABLE printed RESULT_VARIABLE result)
    if(printed)
        message(FATAL_ERROR "printed:\n${printed}")
    endif()
    file(READ ${DOCUMENT} output)
    string(APPEND output "\n")  # the writer ends no line behind the root element
elseif(DEFINED INPUT)
    execute_process(COMMAND ${PROGRAM} INPUT_FILE ${INPUT}
        OUTPUT_VARIABLE output RESULT_VARIABLE result)
else()
    execute_process(COMMAND ${PROGRAM} ${ARGUMENT} OUTPUT_VARIABLE output RESULT_VARIABLE result)
endif()
file(READ ${EXPECTED} expected)
if(NOT result EQUAL 0)
    message(FATAL_ERROR "${PROGRAM} ended with ${result}")
endif()
if(NOT output STREQUAL expected)
    message(FATAL_ERROR "printed:\n${output}\nexpected:\n${expected}")
endif()
