// SPDX-License-Identifier: GPL-3.0-or-later
// Reads whole settings files up to a size limit.
#pragma once

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <optional>
#include <string>
#include <utility>

#include "platform/posix/unique_fd.h"

// Opens a regular file for reading. The result is empty, with the reason in errno, for any other: a pipe or a
// device could block the caller (EACCES), and a folder is no file (EISDIR).
inline UniqueFd OpenRegularFile(const std::filesystem::path& path) {
    UniqueFd file(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    struct stat status {};
    if (file.Get() >= 0 && (fstat(file.Get(), &status) != 0 || !S_ISREG(status.st_mode))) {
        file.Close();
        errno = S_ISDIR(status.st_mode) ? EISDIR : EACCES;
    }
    return file;
}

// Reads an open file to its end. Returns nullopt, with the reason in errno, if it is not open, cannot be read
// or has more than `largest` bytes (EOVERFLOW).
inline std::optional<std::string> ReadToEnd(int file, std::size_t largest) {
    std::string text;
    char buffer[16384];
    ssize_t count = file < 0 ? -1 : 1;
    while (count > 0 && text.size() <= largest) {
        do {
            count = read(file, buffer, sizeof buffer);
        } while (count < 0 && errno == EINTR);
        text.append(buffer, count > 0 ? static_cast<std::size_t>(count) : 0);
    }
    if (count > 0 || text.size() > largest) {
        errno = EOVERFLOW;
        return std::nullopt;
    }
    return count == 0 ? std::optional(std::move(text)) : std::nullopt;
}

// The same for the regular file of this name.
inline std::optional<std::string> ReadSmallFile(const std::filesystem::path& path, std::size_t largest) {
    return ReadToEnd(OpenRegularFile(path).Get(), largest);
}
