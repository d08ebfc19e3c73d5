// SPDX-License-Identifier: GPL-3.0-or-later
// Writes a writer's output to a file that appears complete or not at all.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

#include "platform/posix/atomic_file.h"
#include "rdl/api/output.h"

namespace reports {

// A report is not trusted: it must not fill the disk. In bytes.
inline constexpr std::uint64_t LargestDocument = std::uint64_t{8} << 30;

// Raises RuntimeError 76, 61 and 75 as AtomicFile does, and rdl::Error if more than `most` bytes are written.
// Others may read an export: a new file has the mode that the user's file mask gives, a replaced one keeps
// its mode.
class FileOutput : public rdl::Output {
 public:
    explicit FileOutput(std::filesystem::path target, std::uint64_t most = LargestDocument,
                        AtomicFile::Lasting lasting = AtomicFile::Lasting::OnDisk);
    // Writes to an open file that another process gives its name.
    FileOutput(std::filesystem::path target, UniqueFd file, std::uint64_t most = LargestDocument);
    using rdl::Output::Write;
    void Write(const char* data, std::size_t size) override;
    void Commit();
    // Returns the descriptor of the file, for another process that writes all of it.
    int Handle() const { return m_file.Handle(); }

 private:
    AtomicFile m_file;
    std::string m_buffer;
    std::uint64_t m_size = 0;
    const std::uint64_t m_most;
};

}  // namespace reports
