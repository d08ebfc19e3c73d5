// SPDX-License-Identifier: GPL-3.0-or-later
// Bytes of files that a report is or names.
#pragma once

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <filesystem>
#include <string>
#include <system_error>

namespace rdl {

// Returns the first `most` bytes of a file, or all if there are fewer. If it cannot be read, sets `failure`
// to the machine's own words for it, without ', and returns an empty text.
inline std::string ReadBytes(const std::filesystem::path& path, std::uintmax_t most, std::string& failure) {
    const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
    struct stat facts {};
    bool isGood = file >= 0 && fstat(file, &facts) == 0;
    const auto size = static_cast<std::uintmax_t>(std::max<off_t>(facts.st_size, 0));
    std::string bytes(static_cast<std::size_t>(std::min(size, most)), '\0');
    std::size_t length = 0;
    while (isGood && length < bytes.size()) {
        const ssize_t count = read(file, bytes.data() + length, bytes.size() - length);
        if (count == 0) {
            break;
        }
        isGood = count > 0 || errno == EINTR;
        length += count > 0 ? static_cast<std::size_t>(count) : 0;
    }
    failure.clear();
    if (!isGood) {
        failure = std::generic_category().message(errno);
        std::replace(failure.begin(), failure.end(), '\'', '"');
        length = 0;
    }
    if (file >= 0) {
        close(file);
    }
    bytes.resize(length);
    return bytes;
}

}  // namespace rdl
