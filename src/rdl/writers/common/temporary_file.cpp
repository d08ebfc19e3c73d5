// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/writers/common/temporary_file.h"

#include <unistd.h>

#include <utility>

#include "rdl/api/host.h"

namespace rdl::writers {

TemporaryFile::TemporaryFile(std::string document) : m_document(std::move(document)) {
    const int handle = TheHost().OpenTemporaryFile();
    m_stream.reset(fdopen(handle, "w+b"));
    if (!m_stream) {
        close(handle);
        throw Error("No temporary file can be made for " + m_document);
    }
}

std::string TemporaryFile::Path() const {
    return "/proc/self/fd/" + std::to_string(fileno(m_stream.get()));
}

Error TemporaryFile::Full() const {
    return Error("The temporary file of " + m_document + " cannot be written: the disk is full");
}

void TemporaryFile::CopyTo(Output& output) const {
    constexpr std::size_t PieceSize = 256u << 10;
    if (std::fflush(m_stream.get()) != 0) {
        throw Full();
    }
    std::rewind(m_stream.get());
    std::string piece(PieceSize, '\0');
    std::size_t read = 0;
    while ((read = std::fread(piece.data(), 1, piece.size(), m_stream.get())) > 0) {
        output.Write(piece.data(), read);
    }
    if (std::ferror(m_stream.get())) {
        throw Error("The temporary file of " + m_document + " cannot be read");
    }
}

}  // namespace rdl::writers
