# SPDX-License-Identifier: GPL-3.0-or-later
# Where an installation keeps its files.
include(GNUInstallDirs)
set(OXC_SHARE "${CMAKE_INSTALL_DATADIR}/oxbow-courier")

# oxc_install(DESTINATION FILES|TARGETS ...): as install does. Folders that are missing are made so that every user
# can read them: cmake makes them with the umask, which may be 077. A folder that is there keeps its mode.
function(oxc_install destination)
    install(CODE "set(path \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${destination}\")")
    install(CODE [[
        set(missing "")
        while(NOT path STREQUAL "" AND NOT EXISTS "${path}")
            list(PREPEND missing "${path}")
            cmake_path(GET path PARENT_PATH path)
        endwhile()
        foreach(path IN LISTS missing)
            file(MAKE_DIRECTORY "${path}")
            file(CHMOD "${path}" DIRECTORY_PERMISSIONS
                OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
        endforeach()]])
    install(${ARGN} DESTINATION "${destination}")
endfunction()
