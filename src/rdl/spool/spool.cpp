// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/spool/spool.h"

#include <algorithm>

#include "rdl/api/host.h"
#include "rdl/values/error.h"

namespace rdl {
namespace {

constexpr std::size_t PieceSize = 256u << 10;

}  // namespace

// The buffer never grows beyond its bound: what a string takes by doubling, and both strings while it moves,
// would be up to three times as much.
void Spool::Append(std::string_view bytes) {
    m_size += bytes.size();
    while (true) {
        const std::size_t most = m_file ? std::min(m_memory, PieceSize) : m_memory;
        const std::size_t taken = std::min(bytes.size(), most - std::min(most, m_pending.size()));
        if (m_pending.size() + taken > m_pending.capacity()) {
            m_pending.reserve(std::min(most, std::max(m_pending.size() + taken, 2 * m_pending.capacity())));
        }
        m_pending += bytes.substr(0, taken);
        bytes.remove_prefix(taken);
        if (bytes.empty()) {
            return;
        }
        Flush();
    }
}

std::string Spool::Text() {
    std::string text;
    text.reserve(m_size);
    Read([&text](std::string_view piece) { text += piece; });
    return text;
}

void Spool::Flush() {
    if (!m_file) {
        m_file.reset(fdopen(TheHost().OpenTemporaryFile(), "w+b"));
        if (!m_file) {
            throw Error("No temporary file can be made for the export");
        }
    }
    if (std::fwrite(m_pending.data(), 1, m_pending.size(), m_file.get()) != m_pending.size()) {
        throw Error("The temporary file of the export cannot be written: the disk is full");
    }
    m_filed += m_pending.size();
    m_pending.clear();
    if (m_pending.capacity() > PieceSize) {
        m_pending.shrink_to_fit();
    }
}

void Spool::Read(std::size_t from, std::size_t length, const Take& take) {
    if (from < m_filed) {
        std::fseek(m_file.get(), static_cast<long>(from), SEEK_SET);
        std::string piece(std::min(PieceSize, length), '\0');
        while (length > 0 && from < m_filed) {
            const std::size_t wanted = std::min({piece.size(), length, m_filed - from});
            if (std::fread(piece.data(), 1, wanted, m_file.get()) != wanted) {
                throw Error("The temporary file of the export cannot be read");
            }
            take(std::string_view(piece).substr(0, wanted));
            from += wanted;
            length -= wanted;
        }
        std::fseek(m_file.get(), 0, SEEK_END);
    }
    if (length > 0) {
        take(std::string_view(m_pending).substr(from - m_filed, length));
    }
}

std::string_view SpoolReader::Next(std::size_t count) {
    if (m_read.size() - m_at < count && m_from < m_spool.size()) {
        m_read.erase(0, m_at);
        m_at = 0;
        const std::size_t length =
            std::min(std::max(count - m_read.size(), PieceSize), m_spool.size() - m_from);
        m_spool.Read(m_from, length, [this](std::string_view piece) { m_read += piece; });
        m_from += length;
    }
    const std::string_view bytes = std::string_view(m_read).substr(m_at, count);
    m_at += bytes.size();
    return bytes;
}

}  // namespace rdl
