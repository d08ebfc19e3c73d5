#include "platform/rdl/engine/file_output.h"

#include <sys/stat.h>

#include "platform/rdl/error.h"

namespace rdl::engine {
namespace {

constexpr std::size_t BufferSize = std::size_t{256} << 10;

mode_t FileMode() {
    const mode_t mask = umask(0);
    umask(mask);
    return 0666 & ~mask;
}

}  // namespace

FileOutput::FileOutput(std::filesystem::path target, std::uint64_t most)
    : m_target(std::move(target)), m_file(m_target), m_most(most) {
    m_buffer.reserve(BufferSize);
}

void FileOutput::Write(const char* data, std::size_t size) {
    m_size += size;
    if (m_size > m_most) {
        throw Error("The document is larger than " + std::to_string(m_most >> 20) + " MB");
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
    // A pipe or a device, /dev/null for one, keeps its mode: it was there before, and others need it as it
    // is.
    std::error_code ignored;
    if (std::filesystem::is_regular_file(m_target, ignored)) {
        // Best effort: the file is there and whole, only others may not be able to read it.
        [[maybe_unused]] const int result = chmod(m_target.c_str(), FileMode());
    }
}

}  // namespace rdl::engine
