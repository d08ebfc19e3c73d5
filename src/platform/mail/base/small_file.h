// Reads whole settings files up to a size limit.
#pragma once

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <optional>
#include <string>

#include "platform/mail/base/unique_fd.h"

namespace mailer {

// Opens a regular file for reading. A pipe or a device could block the caller and is not opened: errno is
// EACCES and the result is empty.
inline UniqueFd OpenRegularFile(const std::filesystem::path& path) {
    UniqueFd file(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    struct stat status {};
    if (file.Get() >= 0 && (fstat(file.Get(), &status) != 0 || !S_ISREG(status.st_mode))) {
        file.Close();
        errno = EACCES;
    }
    return file;
}

// Returns nullopt if the file is missing, cannot be read or is larger than `largest` bytes.
inline std::optional<std::string> ReadSmallFile(const std::filesystem::path& path, std::size_t largest) {
    const UniqueFd file = OpenRegularFile(path);
    std::string text;
    char buffer[16384];
    ssize_t count = file.Get() < 0 ? -1 : 1;
    while (count > 0 && text.size() <= largest) {
        count = read(file.Get(), buffer, sizeof buffer);
        text.append(buffer, count > 0 ? static_cast<std::size_t>(count) : 0);
    }
    return count == 0 && text.size() <= largest ? std::optional(text) : std::nullopt;
}

}  // namespace mailer
