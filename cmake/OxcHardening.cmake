# SPDX-License-Identifier: GPL-3.0-or-later
# What makes an error in memory an end of the program instead of a way in. For optimised builds of our own targets;
# sanitizers and fuzzers watch memory themselves, and with these in between they would see less of it.
include(CheckCXXCompilerFlag)

if(OXC_SANITIZE OR OXC_FUZZ)
    set(OXC_HARDENED OFF)
else()
    string(TOUPPER "${CMAKE_BUILD_TYPE}" type)
    if(type MATCHES "^(RELEASE|RELWITHDEBINFO|MINSIZEREL)$")
        set(OXC_HARDENED ON)
    else()
        set(OXC_HARDENED OFF)
    endif()
endif()

if(OXC_HARDENED)
    foreach(flag -fstack-protector-strong -fstack-clash-protection -fcf-protection=full)
        string(MAKE_C_IDENTIFIER "OXC_HAS${flag}" known)
        check_cxx_compiler_flag(${flag} ${known})
        if(${known})
            add_compile_options(${flag})
        endif()
    endforeach()
    add_compile_options(-U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=3)
    add_compile_definitions(_GLIBCXX_ASSERTIONS)
    add_link_options(-Wl,-z,relro -Wl,-z,now -Wl,-z,noexecstack
        "$<$<STREQUAL:$<TARGET_PROPERTY:TYPE>,EXECUTABLE>:-pie>")
endif()
