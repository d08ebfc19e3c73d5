# SPDX-License-Identifier: GPL-3.0-or-later
# oxc_module(NAME SOURCES ... LIBS ...): one static library, includes written from src/.
function(oxc_module name)
    cmake_parse_arguments(ARG "QT" "" "SOURCES;LIBS;PRIVATE_LIBS" ${ARGN})
    add_library(${name} STATIC ${ARG_SOURCES})
    target_include_directories(${name} PUBLIC "${CMAKE_SOURCE_DIR}/src")
    target_link_libraries(${name} PUBLIC ${ARG_LIBS} PRIVATE ${ARG_PRIVATE_LIBS})
    if(ARG_QT)
        set_target_properties(${name} PROPERTIES AUTOMOC ON AUTOUIC ON AUTORCC ON)
        oxc_precompile(${name} oxc_qt_headers)
    else()
        oxc_precompile(${name} oxc_standard_headers)
    endif()
    oxc_unity(${name})
endfunction()

# oxc_test(NAME SOURCES ... LIBS ... [QT] [OWN_MAIN]): one GoogleTest program, which is one test of ctest. A
# process for each case costs four times as much; a case alone runs by the program's --gtest_filter.
# Time zone and locale of the tests are the test presets' affair.
function(oxc_test name)
    cmake_parse_arguments(ARG "QT;OWN_MAIN" "" "SOURCES;LIBS" ${ARGN})
    add_executable(${name} ${ARG_SOURCES})
    target_include_directories(${name} PRIVATE "${CMAKE_SOURCE_DIR}/src" "${CMAKE_SOURCE_DIR}/tests")
    target_link_libraries(${name} PRIVATE ${ARG_LIBS} oxc_source_dir GTest::gmock)
    oxc_compile_tests(${name})
    oxc_precompile(${name} oxc_test_headers)
    if(ARG_OWN_MAIN)
        target_link_libraries(${name} PRIVATE GTest::gtest)
    else()
        target_link_libraries(${name} PRIVATE GTest::gtest GTest::gtest_main)
    endif()
    if(ARG_QT)
        set_target_properties(${name} PROPERTIES AUTOMOC ON)
    endif()
    set(timeout 300)
    if(OXC_SANITIZE)
        set(timeout 1500)
    endif()
    add_test(NAME ${name} COMMAND ${name})
    set_tests_properties(${name} PROPERTIES TIMEOUT ${timeout}
        ENVIRONMENT_MODIFICATION
            "LSAN_OPTIONS=set:suppressions=${CMAKE_SOURCE_DIR}/tests/sanitizer_suppressions.txt"
        ENVIRONMENT "QT_QPA_PLATFORM=offscreen")
endfunction()

# oxc_add_subdirectories(DIR ...): adds each folder that has a CMakeLists.txt.
function(oxc_add_subdirectories)
    foreach(dir ${ARGN})
        if(EXISTS "${CMAKE_CURRENT_SOURCE_DIR}/${dir}/CMakeLists.txt")
            add_subdirectory(${dir})
        endif()
    endforeach()
endfunction()
