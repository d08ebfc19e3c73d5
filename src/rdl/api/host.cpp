// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/api/host.h"

#include <fcntl.h>
#include <pwd.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <ctime>
#include <system_error>
#include <vector>

#include "rdl/values/ascii.h"

namespace rdl {
namespace {

constexpr std::int64_t TicksPerSecond = 10'000'000;
constexpr std::int64_t SecondsToEpoch = 62'135'596'800;  // from 0001-01-01 to 1970-01-01

std::atomic<const Host*> chosen = nullptr;  // reports may run in several threads

namespace fs = std::filesystem;

// Returns the piece if it exists, else the entry of the folder that differs from it in case only. Of
// several entries the first in the order of bytes: folders list them in any order.
fs::path PieceOnDisk(const fs::path& folder, const fs::path& piece) {
    fs::path exact = folder / piece;
    std::error_code failure;
    if (fs::exists(exact, failure)) {
        return exact;
    }
    fs::path found;
    for (fs::directory_iterator entry(folder, failure), end; !failure && entry != end;
         entry.increment(failure)) {
        const fs::path& candidate = entry->path();
        if (EqualNoCase(candidate.filename().string(), piece.string()) &&
            (found.empty() || candidate.native() < found.native())) {
            found = candidate;
        }
    }
    return found.empty() ? exact : found;
}

}  // namespace

std::int64_t Host::NowTicks() const {
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    localtime_r(&now, &local);
    return (static_cast<std::int64_t>(now) + local.tm_gmtoff + SecondsToEpoch) * TicksPerSecond;
}

std::string Host::UserName() const {
    constexpr std::size_t LongestEntry = 16'384;
    std::vector<char> space(LongestEntry);
    passwd entry{};
    passwd* user = nullptr;
    getpwuid_r(geteuid(), &entry, space.data(), space.size(), &user);
    return user ? user->pw_name : std::to_string(geteuid());
}

std::filesystem::path Host::PathOf(std::string_view name, const std::string& folder) const {
    std::string path(name);
    std::replace(path.begin(), path.end(), '\\', '/');
    fs::path found;
    for (const fs::path& piece : fs::absolute(fs::path(folder) / path)) {
        found = PieceOnDisk(found, piece);
    }
    return found;
}

std::vector<std::string> Host::DataFolders() const {
    return {};
}

std::vector<std::filesystem::path> Host::OwnFiles() const {
    return {};
}

int Host::OpenTemporaryFile() const {
    const std::filesystem::path folder = std::filesystem::temp_directory_path();
    const int handle = open(folder.c_str(), O_TMPFILE | O_RDWR | O_CLOEXEC, 0600);
    if (handle < 0) {
        throw std::system_error(errno, std::generic_category(), folder.string());
    }
    return handle;
}

const Host& TheHost() {
    static const Host machine;
    const Host* const host = chosen;
    return host ? *host : machine;
}

void SetHost(const Host* host) {
    chosen = host;
}

}  // namespace rdl
