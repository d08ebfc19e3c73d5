#include "platform/rdl/engine/private_folder.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <charconv>
#include <csignal>
#include <cstdlib>
#include <system_error>

#include "platform/runtime.h"

namespace rdl::engine {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view Prefix = "oxbow-courier-export-";

// The process that made the folder; 0 when the name is not one of ours.
pid_t MakerOf(const std::string& name) {
    pid_t pid = 0;
    if (name.starts_with(Prefix)) {
        std::from_chars(name.data() + Prefix.size(), name.data() + name.size(), pid);
    }
    return pid;
}

bool IsOwn(const fs::path& path) {
    struct stat facts {};
    return lstat(path.c_str(), &facts) == 0 && S_ISDIR(facts.st_mode) && facts.st_uid == geteuid();
}

void RemoveStale(const fs::path& parent) {
    std::error_code failure;
    for (const fs::directory_entry& entry : fs::directory_iterator(parent, failure)) {
        const pid_t pid = MakerOf(entry.path().filename().string());
        if (pid > 0 && kill(pid, 0) != 0 && errno == ESRCH && IsOwn(entry.path())) {
            std::error_code ignored;
            fs::remove_all(entry.path(), ignored);
        }
    }
}

}  // namespace

PrivateFolder::PrivateFolder() {
    std::error_code failure;
    fs::path parent = fs::temp_directory_path(failure);
    if (failure) {
        parent = "/tmp";
    }
    RemoveStale(parent);
    std::string name = (parent / (std::string(Prefix) + std::to_string(getpid()) + "-XXXXXX")).string();
    if (!mkdtemp(name.data())) {
        throw RuntimeError(err::PathFileAccess, "No folder for the export can be made in \"" +
                                                    parent.string() +
                                                    "\": " + std::generic_category().message(errno));
    }
    m_path = name;
}

PrivateFolder::~PrivateFolder() {
    std::error_code ignored;
    fs::remove_all(m_path, ignored);
}

}  // namespace rdl::engine
