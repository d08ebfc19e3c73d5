// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/reports/file_output.h"

#include <utility>

#include "rdl/values/error.h"

namespace reports {
namespace {

constexpr std::size_t BufferSize = std::size_t{256} << 10;

}  // namespace

FileOutput::FileOutput(std::filesystem::path target, std::uint64_t most, AtomicFile::Lasting lasting)
    : m_file(std::move(target), AtomicFile::IfThere::Replace, AtomicFile::Readers::Mask, lasting),
      m_most(most) {
    m_buffer.reserve(BufferSize);
}

FileOutput::FileOutput(std::filesystem::path target, UniqueFd file, std::uint64_t most)
    : m_file(std::move(target), std::move(file)), m_most(most) {
    m_buffer.reserve(BufferSize);
}

void FileOutput::Write(const char* data, std::size_t size) {
    m_size += size;
    if (m_size > m_most) {
        throw rdl::Error("The document is larger than " + std::to_string(m_most >> 20) + " MB");
    }
    if (m_buffer.size() + size > BufferSize) {
        m_file.Write(m_buffer);
        m_buffer.clear();
    }
    if (size > BufferSize) {
        m_file.Write({data, size});
    } else {
        m_buffer.append(data, size);
    }
}

void FileOutput::Commit() {
    m_file.Write(m_buffer);
    m_buffer.clear();
    m_file.Commit();
}

}  // namespace reports
