// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/sqlite/read_only_file.h"

#include <fcntl.h>
#include <unistd.h>

#include <string_view>
#include <system_error>

namespace fs = std::filesystem;

namespace {

bool MayWrite(const fs::path& path) {
    return faccessat(AT_FDCWD, path.c_str(), W_OK, AT_EACCESS) == 0;
}

fs::path Beside(const fs::path& file, const char* ending) {
    std::error_code error;
    const fs::path real = fs::canonical(file, error);
    return fs::path(error ? file : real).concat(ending);
}

// Writes the bytes that end a path in a URI (RFC 3986, section 3.3) as %XX.
std::string UriPath(const std::string& path) {
    constexpr std::string_view Digits = "0123456789ABCDEF";
    std::string uri;
    for (const char c : path) {
        if (c == '%' || c == '?' || c == '#') {
            const auto byte = static_cast<unsigned char>(c);
            uri.append("%").append(1, Digits[byte / 16]).append(1, Digits[byte % 16]);
        } else {
            uri += c;
        }
    }
    return uri;
}

}  // namespace

bool IsWriteProtected(const fs::path& file) {
    std::error_code ignored;
    return !MayWrite(file) ||
           (!MayWrite(Beside(file, "").parent_path()) && !fs::exists(Beside(file, "-wal"), ignored));
}

std::string ReadOnlyName(const fs::path& file, ReadOnlyUse use) {
    return "file://" + UriPath(file.string()) + "?mode=ro&" +
           (use == ReadOnlyUse::Shared ? "readonly_shm=1" : "immutable=1");
}

fs::path LogWithRows(const fs::path& file) {
    for (const char* ending : {"-wal", "-journal"}) {
        fs::path log = Beside(file, ending);
        struct stat status {};
        if (stat(log.c_str(), &status) == 0 && status.st_size > 0) {
            return log;
        }
    }
    return {};
}

FileStamp::FileStamp(const fs::path& file) {
    stat(file.c_str(), &m_status);
}

bool FileStamp::operator==(const FileStamp& other) const {
    return m_status.st_dev == other.m_status.st_dev && m_status.st_ino == other.m_status.st_ino &&
           m_status.st_size == other.m_status.st_size &&
           m_status.st_mtim.tv_sec == other.m_status.st_mtim.tv_sec &&
           m_status.st_mtim.tv_nsec == other.m_status.st_mtim.tv_nsec;
}
