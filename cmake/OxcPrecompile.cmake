# SPDX-License-Identifier: GPL-3.0-or-later
# Headers that nearly every file of a kind reads, parsed once. Off in the presets that look for faults, so that a file
# that forgets an include is found there.
option(OXC_PRECOMPILE "Precompile common headers" ON)

set(OXC_STANDARD_HEADERS
    <algorithm> <array> <cmath> <cstdint> <cstring> <filesystem> <functional> <map> <memory> <optional> <set> <sstream>
    <string> <string_view> <unordered_map> <utility> <variant> <vector>)
set(OXC_QT_HEADERS
    <QAction> <QApplication> <QDialog> <QEvent> <QLineEdit> <QMainWindow> <QMenu> <QPainter> <QStyle> <QTimer> <QWidget>)
set(OXC_TEST_HEADERS <gmock/gmock.h> <gtest/gtest.h>)

# One kind of code for libraries and programs: precompiled headers serve only files that are compiled alike.
set(CMAKE_CXX_COMPILE_OPTIONS_PIE ${CMAKE_CXX_COMPILE_OPTIONS_PIC})

# oxc_compile_tests(TARGET): the code of tests runs once; compiling it takes longer than running it.
function(oxc_compile_tests target)
    if(CMAKE_BUILD_TYPE STREQUAL "Release")
        target_compile_options(${target} PRIVATE -O0 -U_FORTIFY_SOURCE)
    endif()
endfunction()

# oxc_precompiled(NAME LIBS ... HEADERS ...): a library that holds nothing but these headers, for oxc_precompile.
function(oxc_precompiled name)
    cmake_parse_arguments(ARG "" "" "LIBS;HEADERS" ${ARGN})
    if(NOT OXC_PRECOMPILE)
        return()
    endif()
    file(WRITE "${CMAKE_CURRENT_BINARY_DIR}/${name}.cpp" "")
    add_library(${name} OBJECT "${CMAKE_CURRENT_BINARY_DIR}/${name}.cpp")
    target_link_libraries(${name} PRIVATE ${ARG_LIBS})
    target_precompile_headers(${name} PRIVATE ${ARG_HEADERS})
endfunction()

# oxc_precompile(TARGET FROM): TARGET reads the headers of oxc_precompiled(FROM), unless it links to a library that brings
# definitions (_REENTRANT, _LARGEFILE64_SOURCE) which these headers are made without.
function(oxc_precompile target from)
    get_target_property(libraries ${target} LINK_LIBRARIES)
    if(OXC_PRECOMPILE AND TARGET ${from} AND NOT libraries MATCHES "PkgConfig::(CURL|GIO|GMIME)")
        target_precompile_headers(${target} REUSE_FROM ${from})
    endif()
endfunction()
