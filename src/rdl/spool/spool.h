// SPDX-License-Identifier: GPL-3.0-or-later
// Buffers bytes that are written later: in memory while they are few, then in an unnamed temporary file, so
// that memory does not grow with a report's length.
#pragma once

#include <cstddef>
#include <cstdio>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace rdl {

class Spool {
 public:
    static constexpr std::size_t UsualMemory = std::size_t{4} << 20;

    // `memory`: how many bytes, at least 1, are in memory before they go to the file. More of them need
    // little.
    explicit Spool(std::size_t memory = UsualMemory) : m_memory(memory) {}
    // Raises rdl::Error if the temporary file is full, and errors of Host::OpenTemporaryFile.
    void Append(std::string_view bytes);
    std::size_t size() const { return m_size; }
    std::string Text();  // all bytes
    using Take = std::function<void(std::string_view)>;
    // Passes all bytes to `take`, in pieces.
    void Read(const Take& take) { Read(0, m_size, take); }
    // Passes a range of bytes to `take`, in pieces.
    void Read(std::size_t from, std::size_t length, const Take& take);

 private:
    struct Closer {
        void operator()(std::FILE* file) const { std::fclose(file); }
    };
    void Flush();

    std::size_t m_memory;
    std::string m_pending;
    std::unique_ptr<std::FILE, Closer> m_file;
    std::size_t m_size = 0, m_filed = 0;  // m_filed of them are in the file
};

// Reads a spool from its beginning. The spool must outlive it and must not grow.
class SpoolReader {
 public:
    explicit SpoolReader(Spool& spool) : m_spool(spool) {}
    // Returns the next bytes, valid until the next call; fewer than `count` only at the end.
    std::string_view Next(std::size_t count);

 private:
    Spool& m_spool;
    std::string m_read;  // from m_at on not returned
    std::size_t m_at = 0;
    std::size_t m_from = 0;  // of the spool's bytes, what comes after m_read
};

}  // namespace rdl
