# SPDX-License-Identifier: GPL-3.0-or-later
# The sources of a folder compiled as one: they read the same headers, which then are read once. Names without linkage
# are unique in a folder for it. Off in the presets that look for faults, so that a file that forgets an include is
# found there, and where one file at a time is changed and compiled.
option(OXC_UNITY "Compile the sources of a folder together" OFF)

# oxc_compile_alone(SOURCE ...): sources that are written alike, each with the same names, as tables of functions are.
function(oxc_compile_alone)
    foreach(source ${ARGN})
        get_filename_component(path "${source}" ABSOLUTE)
        set_property(GLOBAL APPEND PROPERTY OXC_COMPILED_ALONE "${path}")
    endforeach()
endfunction()

# oxc_unity(TARGET): after all of its sources are known.
function(oxc_unity target)
    if(NOT OXC_UNITY)
        return()
    endif()
    get_property(alone GLOBAL PROPERTY OXC_COMPILED_ALONE)
    get_target_property(sources ${target} SOURCES)
    foreach(source ${sources})
        get_filename_component(path "${source}" ABSOLUTE)
        if(path MATCHES "\\.cpp$" AND NOT path IN_LIST alone)
            get_filename_component(folder "${path}" DIRECTORY)
            file(RELATIVE_PATH folder "${CMAKE_SOURCE_DIR}/src" "${folder}")
            string(MAKE_C_IDENTIFIER "${folder}" group)
            set_source_files_properties("${source}" TARGET_DIRECTORY ${target} PROPERTIES UNITY_GROUP "${group}")
        endif()
    endforeach()
    set_target_properties(${target} PROPERTIES UNITY_BUILD ON UNITY_BUILD_MODE GROUP)
endfunction()
