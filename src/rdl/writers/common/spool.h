// Bytes that are needed later than they are made: in memory while they are few, then in a temporary file that
// has no name, so that a long report does not fill the memory.
#pragma once

#include <cstddef>
#include <cstdio>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace rdl::writers {

class Spool {
 public:
    // Raises rdl::Error when the temporary file is full, and as Host::OpenTemporaryFile when there is none.
    void Append(std::string_view bytes);
    std::size_t size() const { return m_size; }
    using Take = std::function<void(std::string_view)>;
    // Everything from the beginning, in pieces.
    void Read(const Take& take) { Read(0, m_size, take); }
    // A part of it.
    void Read(std::size_t from, std::size_t length, const Take& take);

 private:
    struct Closer {
        void operator()(std::FILE* file) const { std::fclose(file); }
    };
    void Flush();

    std::string m_pending;
    std::unique_ptr<std::FILE, Closer> m_file;
    std::size_t m_size = 0, m_filed = 0;  // of which so many are in the file
};

}  // namespace rdl::writers
