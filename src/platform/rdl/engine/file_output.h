// A writer's output into a file that appears whole or not at all.
#pragma once

#include <filesystem>
#include <string>

#include "platform/posix/atomic_file.h"
#include "platform/rdl/writers/writers.h"

namespace rdl::engine {

// Raises RuntimeError 76, 61 and 75 as AtomicFile does. An export is for others to read: once it is there it
// has the mode that the user's file mask gives.
class FileOutput : public writers::Output {
 public:
    explicit FileOutput(std::filesystem::path target);
    using Output::Write;
    void Write(const char* data, std::size_t size) override;
    void Commit();

 private:
    std::filesystem::path m_target;
    AtomicFile m_file;
    std::string m_buffer;
};

}  // namespace rdl::engine
