# SPDX-License-Identifier: GPL-3.0-or-later
# Project, contents and index of a help book, from its pages.

# The text of an element or attribute of a page that `pattern` finds; a page without it is an error.
function(oxc_help_find page pattern result)
    file(READ "${page}" text)
    if(NOT text MATCHES "${pattern}")
        message(FATAL_ERROR "${page}: nothing like ${pattern}")
    endif()
    set(${result} "${CMAKE_MATCH_1}" PARENT_SCOPE)
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS "${page}")
endfunction()

function(oxc_help_entry name page result)
    set(entry "<LI><OBJECT type=\"text/sitemap\">\n<param name=\"Name\" value=\"${name}\">\n")
    if(page)
        string(APPEND entry "<param name=\"Local\" value=\"${page}\">\n")
    endif()
    set(${result} "${entry}</OBJECT>\n" PARENT_SCOPE)
endfunction()

function(oxc_help_contents contents pages result)
    set(text "")
    set(in_chapter FALSE)
    foreach(line ${contents})
        if(line MATCHES "\\.html$")
            oxc_help_find("${pages}/${line}" "<title>([^<]+)</title>" title)
            oxc_help_entry("${title}" "${line}" entry)
            string(APPEND text "${entry}")
            continue()
        endif()
        if(in_chapter)
            string(APPEND text "</UL>\n")
        endif()
        oxc_help_entry("${line}" "" entry)
        string(APPEND text "${entry}<UL>\n")
        set(in_chapter TRUE)
    endforeach()
    if(in_chapter)
        string(APPEND text "</UL>\n")
    endif()
    set(${result} "${text}" PARENT_SCOPE)
endfunction()

# Keywords stand in a page's head, parted by semicolons. Several pages may have the same one.
function(oxc_help_index contents pages result)
    set(lines "")
    foreach(page ${contents})
        if(page MATCHES "\\.html$")
            oxc_help_find("${pages}/${page}" "name=\"keywords\" content=\"([^\"]+)\"" keywords)
            foreach(keyword ${keywords})
                string(STRIP "${keyword}" keyword)
                list(APPEND lines "${keyword}|${page}")
            endforeach()
        endif()
    endforeach()
    list(SORT lines CASE INSENSITIVE)
    set(text "")
    foreach(line ${lines})
        string(REGEX MATCH "^(.*)\\|(.*)$" ignored "${line}")
        oxc_help_entry("${CMAKE_MATCH_1}" "${CMAKE_MATCH_2}" entry)
        string(APPEND text "${entry}")
    endforeach()
    set(${result} "${text}" PARENT_SCOPE)
endfunction()

# Writes a file only when it changes, so that the book is not made again for nothing.
function(oxc_help_write file text)
    file(CONFIGURE OUTPUT "${file}" CONTENT "${text}" @ONLY)
endfunction()

# oxc_help_book(TITLE PAGES FOLDER CONTENTS): book.hhp, book.hhc and book.hhk in FOLDER.
# The index is the text book.hhk alone: a binary one has the time of its making in it.
function(oxc_help_book title pages folder contents)
    set(frame_begin "<!DOCTYPE HTML PUBLIC \"-//IETF//DTD HTML//EN\">\n<HTML><BODY>\n<UL>\n")
    set(frame_end "</UL>\n</BODY></HTML>\n")
    oxc_help_contents("${contents}" "${pages}" entries)
    oxc_help_write("${folder}/book.hhc" "${frame_begin}${entries}${frame_end}")
    oxc_help_index("${contents}" "${pages}" entries)
    oxc_help_write("${folder}/book.hhk" "${frame_begin}${entries}${frame_end}")

    set(files "style.css\ndesktop.png\n")
    foreach(line ${contents})
        if(line MATCHES "\\.html$")
            string(APPEND files "${line}\n")
        endif()
    endforeach()
    list(GET contents 0 first)
    oxc_help_write("${folder}/book.hhp" "[OPTIONS]
Title=${title}
Compiled file=book.chm
Contents file=book.hhc
Index file=book.hhk
Default topic=${first}
Default Window=main
Language=0x409 English (United States)
Compatibility=1.1 or later
Full-text search=Yes
Binary TOC=No
Binary Index=No

[WINDOWS]
main=\"${title}\",\"book.hhc\",\"book.hhk\",\"${first}\",\"${first}\",,,,,0x23520,220,0x304e,,,,,,,,0

[FILES]
${files}")
endfunction()
