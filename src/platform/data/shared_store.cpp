// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/contracts/shared_store.h"

#include <cerrno>
#include <filesystem>
#include <memory>
#include <system_error>

#include "platform/base/digest.h"
#include "platform/base/paths.h"
#include "platform/base/text.h"
#include "platform/contracts/system_error.h"
#include "platform/data/open_session.h"
#include "platform/posix/atomic_file.h"
#include "platform/posix/small_file.h"

namespace {

constexpr std::size_t LargestReport = 64U << 20U;

// Returns the file's name if its folder is called Cache, else an empty text.
std::string NameInCache(const std::string& path) {
    constexpr std::string_view Separators = "\\/";
    const std::size_t name = path.find_last_of(Separators);
    if (name == std::string::npos || name == 0) {
        return {};
    }
    const std::string_view folder = std::string_view(path).substr(0, name);
    const std::size_t start = folder.find_last_of(Separators);
    const bool isCache = start != std::string_view::npos && SameText(folder.substr(start + 1), "Cache");
    const std::string file = path.substr(name + 1);
    return isCache && file != "." && file != ".." ? file : std::string();
}

bool IsFile(const std::string& path) {
    try {
        std::error_code ignored;
        return std::filesystem::is_regular_file(paths::ToMachine(path), ignored);
    } catch (const RuntimeError&) {  // a drive of another machine
        return false;
    }
}

}  // namespace

std::optional<RuntimeError> SharedStoreFailure(const std::string& connectionString) {
    try {
        if (IsShared(connectionString)) {
            const std::string readOnly = OpenDataSession(connectionString, IfAway::Raise)->WhyReadOnly();
            return readOnly.empty() ? std::nullopt : std::optional(RuntimeError(err::DataReadOnly, readOnly));
        }
    } catch (const RuntimeError& error) {
        return error;
    }
    return std::nullopt;
}

void KeepReport(const std::string& connectionString, const std::string& path) {
    const std::string name = NameInCache(path);
    if (name.empty() || !IsShared(connectionString)) {
        return;
    }
    const std::optional<std::string> bytes = ReadSmallFile(paths::ToMachine(path), LargestReport);
    if (!bytes) {
        throw RuntimeError(
            errno == EOVERFLOW ? err::Overflow : err::PathFileAccess,
            "The report file \"" + paths::ForUser(path) + "\" cannot be put into the store; " +
                (errno == EOVERFLOW ? "it has more than 64 megabytes" : SystemErrorText(errno)));
    }
    OpenDataSession(connectionString)->KeepReport(name, *bytes);
}

std::string ReportOnThisMachine(const std::string& connectionString, const std::string& path) {
    const std::string name = NameInCache(path);
    if (name.empty()) {
        return path;
    }
    const std::string own = AppPath() + "\\Cache\\" + name;
    if (!IsShared(connectionString)) {
        // A data file that is a copy of a shared store names the files of the machines that shared it.
        return !IsFile(path) && IsFile(own) ? own : path;
    }
    const std::unique_ptr<DataSession> session = OpenDataSession(connectionString);
    const std::string digest = session->DigestOfReport(name);
    if (digest.empty()) {
        return path;
    }
    const std::optional<std::string> bytes = ReadSmallFile(paths::ToMachine(own), LargestReport);
    if (!bytes || Sha256(*bytes) != digest) {
        const std::string stored = session->BytesOfReport(name);
        AtomicFile file(paths::ToMachine(own));
        file.Write(stored);
        file.Commit();
    }
    return own;
}
