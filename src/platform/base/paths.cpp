// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/base/paths.h"

#include <algorithm>
#include <system_error>

#include "platform/base/ascii.h"
#include "platform/base/text.h"
#include "platform/contracts/runtime.h"

namespace {

namespace fs = std::filesystem;

[[noreturn]] void RaiseNotFound(std::string_view path) {
    const std::string shown = paths::ForUser(path.substr(0, path.find('\0')));
    throw RuntimeError(err::PathNotFound,
                       RuntimeError(err::PathNotFound).Description() + ": \"" + shown + "\"");
}

bool Exists(const fs::path& path) {
    std::error_code error;
    return fs::exists(path, error);
}

// Returns the entry of `folder` that is `name` without regard to case, or an empty text. Of several it
// returns the first in byte order, so that the result does not depend on the order of the file system.
std::string EntryLike(const fs::path& folder, const std::string& name) {
    std::string found;
    std::error_code error;
    const fs::path listed = folder.empty() ? fs::path(".") : folder;
    for (fs::directory_iterator entry(listed, error), end; !error && entry != end; entry.increment(error)) {
        std::string candidate = entry->path().filename().string();
        if (SameText(candidate, name) && (found.empty() || candidate < found)) {
            found = std::move(candidate);
        }
    }
    return found;
}

fs::path AsSpelledOnDisk(const fs::path& wanted) {
    fs::path known;
    bool missing = false;
    for (const fs::path& piece : wanted) {
        const fs::path asSpelled = known / piece;
        if (missing || piece.empty() || Exists(asSpelled)) {
            known = asSpelled;
            continue;
        }
        const std::string entry = EntryLike(known, piece.string());
        missing = entry.empty();
        known /= missing ? piece : fs::path(entry);
    }
    return known;
}

// Several slashes in a row count as one.
std::string WithSingleSlashes(std::string path) {
    const auto last = std::unique(path.begin(), path.end(),
                                  [](char left, char right) { return left == '/' && right == '/'; });
    path.erase(last, path.end());
    return path;
}

}  // namespace

namespace paths {

bool IsAbsolute(std::string_view path) {
    return path.starts_with('\\') || path.starts_with('/') || (path.size() > 1 && path[1] == ':');
}

fs::path ToMachine(std::string_view path) {
    if (path.find('\0') != std::string_view::npos) {
        RaiseNotFound(path);
    }
    std::string text(path);
    std::replace(text.begin(), text.end(), '\\', '/');
    if (text.size() >= 2 && text[1] == ':' && IsAsciiLetter(text[0])) {
        if (text[0] != 'Z' && text[0] != 'z') {
            RaiseNotFound(path);
        }
        text.replace(0, 2, "/");
    }
    const fs::path machine(WithSingleSlashes(std::move(text)));
    return Exists(machine) ? machine : AsSpelledOnDisk(machine);
}

std::string FromMachine(const fs::path& path) {
    std::error_code error;
    const fs::path whole = fs::absolute(path, error);
    std::string text = (error ? path : whole).lexically_normal().string();
    std::replace(text.begin(), text.end(), '/', '\\');
    return "Z:" + text;
}

std::string ForUser(std::string_view path) {
    std::string text(path);
    if (!path.starts_with("Z:\\") || path.find('/') != std::string_view::npos) {
        return text;
    }
    text.erase(0, 2);
    std::replace(text.begin(), text.end(), '\\', '/');
    return text;
}

std::string ForUserAsOnDisk(std::string_view path) {
    const std::string shown = ForUser(path);
    if (!shown.starts_with('/') || shown.find('\0') != std::string::npos) {
        return shown;
    }
    std::string onDisk = ToMachine(path).string();
    return SameText(onDisk, shown) ? onDisk : shown;
}

std::string FromUser(std::string_view text) {
    if (!text.starts_with('/')) {
        return std::string(text);
    }
    std::string path = "Z:" + std::string(text);
    std::replace(path.begin(), path.end(), '/', '\\');
    return path;
}

}  // namespace paths
