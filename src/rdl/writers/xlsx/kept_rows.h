// SPDX-License-Identifier: GPL-3.0-or-later
// The rows of complete sheets. The library has a file open for the rows of each sheet until the book is
// closed; a process may have fewer files open than a book has sheets, and closing one of many is slow. Here
// they are in one spool meanwhile.
#pragma once

#include <xlsxwriter.h>

#include <cstddef>
#include <cstdio>
#include <deque>
#include <exception>

#include "rdl/spool/spool.h"

namespace rdl::writers {

class KeptRows {
 public:
    KeptRows() = default;
    KeptRows(const KeptRows&) = delete;
    KeptRows& operator=(const KeptRows&) = delete;

    // Takes the rows of a sheet whose rows are closed, and closes its file. Raises rdl::Error if they cannot
    // be read, and errors of Spool.
    void Take(lxw_worksheet& sheet);
    // Gives each sheet a stream of its rows, which the library closes. This must outlive them.
    void GiveBack();
    // Call this once the library has closed the book. Closes the streams that it left open after an error.
    // Raises the error of a stream that could not be read: the library ignores it.
    void Finish();

 private:
    struct Part {
        KeptRows* owner;
        lxw_worksheet* sheet;
        std::size_t begin, size, at;
        std::FILE* stream;  // null while it is not open
    };
    static ssize_t Read(void* part, char* to, std::size_t size);
    static int Seek(void* part, off64_t* offset, int from);
    static int Close(void* part);

    Spool m_spool;
    std::deque<Part> m_parts;
    std::exception_ptr m_error;
};

}  // namespace rdl::writers
