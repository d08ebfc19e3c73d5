// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/writers/xlsx/kept_rows.h"

#include <algorithm>
#include <new>
#include <string>

#include "rdl/values/error.h"
#include "rdl/writers/xlsx/library.h"

namespace rdl::writers {

void KeptRows::Take(lxw_worksheet& sheet) {
    constexpr std::size_t PieceSize = 64u << 10;
    std::FILE* const file = sheet.optimize_tmpfile;
    Part part{this, &sheet, m_spool.size(), 0, 0, nullptr};
    if (std::fflush(file) != 0) {
        throw Error("The temporary file of the Excel workbook cannot be written: the disk is full");
    }
    std::rewind(file);
    std::string piece(PieceSize, '\0');
    while (const std::size_t read = std::fread(piece.data(), 1, piece.size(), file)) {
        m_spool.Append(std::string_view(piece).substr(0, read));
        part.size += read;
    }
    if (std::ferror(file)) {
        throw Error("The temporary file of the Excel workbook cannot be read");
    }
    m_parts.push_back(part);
    CloseFile(sheet);
}

// The C library finds an open stream fastest if it is the last that was opened, and the library closes those
// of the first sheets first.
void KeptRows::GiveBack() {
    for (auto part = m_parts.rbegin(); part != m_parts.rend(); ++part) {
        cookie_io_functions_t functions{};
        functions.read = Read;
        functions.seek = Seek;
        functions.close = Close;
        part->stream = fopencookie(&*part, "r", functions);
        if (!part->stream) {
            throw std::bad_alloc();
        }
        part->sheet->optimize_tmpfile = part->sheet->file = part->stream;
    }
}

void KeptRows::Finish() {
    for (const Part& part : m_parts) {
        if (part.stream) {
            std::fclose(part.stream);
        }
    }
    if (m_error) {
        std::rethrow_exception(m_error);
    }
}

// No exception may leave this: the C library calls it.
ssize_t KeptRows::Read(void* cookie, char* to, std::size_t size) {
    Part& part = *static_cast<Part*>(cookie);
    const std::size_t wanted = std::min(size, part.size - part.at);
    try {
        part.owner->m_spool.Read(part.begin + part.at, wanted,
                                 [&to](std::string_view piece) { to = std::ranges::copy(piece, to).out; });
    } catch (...) {
        part.owner->m_error = std::current_exception();
        return -1;
    }
    part.at += wanted;
    return static_cast<ssize_t>(wanted);
}

// The library goes back to the beginning before it reads.
int KeptRows::Seek(void* cookie, off64_t* offset, int from) {
    Part& part = *static_cast<Part*>(cookie);
    if (from != SEEK_SET || *offset < 0 || static_cast<std::size_t>(*offset) > part.size) {
        return -1;
    }
    part.at = static_cast<std::size_t>(*offset);
    return 0;
}

int KeptRows::Close(void* cookie) {
    static_cast<Part*>(cookie)->stream = nullptr;
    return 0;
}

}  // namespace rdl::writers
