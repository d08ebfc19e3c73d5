// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/engine/definitions.h"

#include <algorithm>
#include <list>
#include <mutex>
#include <string>

#include "rdl/definition/parse.h"
#include "rdl/layout/build.h"
#include "rdl/values/whole_file.h"

namespace rdl::engine {
namespace {

constexpr std::size_t MostFiles = 16;
constexpr std::size_t MostBytes = std::size_t{1} << 20;  // of all files
// The rows of a file up to this size are in memory, where several runs may read them at once.
constexpr std::size_t LongestFile = std::size_t{256} << 10;

struct Known {
    std::filesystem::path file;
    std::string bytes;
    std::shared_ptr<const Definition> definition;
};

// The file that was opened last comes first.
class Recent {
 public:
    std::shared_ptr<const Definition> Find(const std::filesystem::path& file, const std::string& bytes) {
        const std::lock_guard lock(m_mutex);
        const auto found = std::find_if(m_known.begin(), m_known.end(),
                                        [&](const Known& known) { return known.file == file; });
        if (found == m_known.end() || found->bytes != bytes) {
            return nullptr;
        }
        m_known.splice(m_known.begin(), m_known, found);
        return found->definition;
    }

    void Add(Known known) {
        const std::lock_guard lock(m_mutex);
        m_known.remove_if([&](const Known& other) { return other.file == known.file; });
        m_known.push_front(std::move(known));
        std::size_t bytes = 0, files = 0;
        m_known.remove_if([&](const Known& other) {
            bytes += other.bytes.size();
            return ++files > MostFiles || bytes > MostBytes;
        });
    }

 private:
    std::mutex m_mutex;
    std::list<Known> m_known;
};

std::shared_ptr<const Definition> Checked(Definition parsed) {
    layout::CheckExpressions(parsed);
    return std::make_shared<const Definition>(std::move(parsed));
}

}  // namespace

std::shared_ptr<const Definition> OpenDefinition(const std::filesystem::path& file) {
    static Recent recent;
    std::string failure;
    std::string bytes = ReadBytes(file, LongestFile + 1, failure);
    if (!failure.empty() || bytes.size() > LongestFile) {
        return Checked(ParseDefinitionFile(file));
    }
    std::shared_ptr<const Definition> definition = recent.Find(file, bytes);
    if (!definition) {
        definition = ReadDefinition(bytes, file.filename().string());
        recent.Add({file, std::move(bytes), definition});
    }
    return definition;
}

std::shared_ptr<const Definition> ReadDefinition(std::string_view bytes, const std::string& name) {
    return Checked(ParseDefinition(bytes, name));
}

}  // namespace rdl::engine
