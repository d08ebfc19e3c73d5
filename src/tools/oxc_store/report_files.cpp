// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/oxc_store/report_files.h"

#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <optional>
#include <system_error>
#include <utility>

#include "platform/base/digest.h"
#include "platform/contracts/system_error.h"
#include "platform/posix/atomic_file.h"
#include "platform/posix/small_file.h"

namespace tools {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t Largest = 64U << 20U;

std::string ReadReport(const fs::path& file) {
    std::optional<std::string> bytes = ReadSmallFile(file, Largest);
    if (!bytes) {
        RefuseStore("Not copied: the report file \"" + file.string() + "\" cannot be read");
    }
    return std::move(*bytes);
}

bool IsThere(const fs::path& path) {
    std::error_code ignored;
    return fs::exists(fs::symlink_status(path, ignored));
}

// A store that somebody has changed could name a file outside of the folder.
fs::path FileOf(const fs::path& folder, const std::string& name) {
    if (name.empty() || name == "." || name == ".." || name.find('/') != std::string::npos) {
        RefuseStore("Not copied: the store has a report file \"" + name + "\", which is no name of a file");
    }
    return folder / name;
}

}  // namespace

ReportFiles::ReportFiles(const StorePlace& place, DataSession& session)
    : m_folder(place.link ? fs::path() : place.file.parent_path() / "Cache"), m_session(session) {}

std::vector<std::string> ReportFiles::Names() const {
    if (m_folder.empty()) {
        return m_session.ReportNames();
    }
    std::vector<std::string> names;
    std::error_code failed;
    for (fs::directory_iterator at(m_folder, failed), end; !failed && at != end; at.increment(failed)) {
        std::error_code ignored;
        if (at->is_regular_file(ignored)) {
            names.push_back(at->path().filename().string());
        }
    }
    std::sort(names.begin(), names.end());
    return names;
}

std::string ReportFiles::Bytes(const std::string& name) const {
    return m_folder.empty() ? m_session.BytesOfReport(name) : ReadReport(m_folder / name);
}

std::string ReportFiles::Digest(const std::string& name) const {
    return m_folder.empty() ? m_session.DigestOfReport(name) : Sha256(Bytes(name));
}

void SendReports(const ReportFiles& from, DataSession& to) {
    for (const std::string& name : from.Names()) {
        to.KeepReport(name, from.Bytes(name));
    }
}

FetchedReports::FetchedReports(const ReportFiles& from, fs::path folder) {
    std::vector<std::string> missing;
    for (const std::string& name : from.Names()) {
        const fs::path file = FileOf(folder, name);
        if (!IsThere(file)) {
            missing.push_back(name);
        } else if (Sha256(ReadReport(file)) != from.Digest(name)) {
            RefuseStore("Not copied: the report file \"" + file.string() +
                        "\" is another one than that of the store; copy to a folder of its own");
        }
    }
    if (!missing.empty() && mkdir(folder.c_str(), S_IRWXU) != 0 && errno != EEXIST) {
        RefuseStore("Not copied: the folder \"" + folder.string() +
                    "\" cannot be made: " + SystemErrorText(errno));
    }
    try {
        for (const std::string& name : missing) {
            AtomicFile file(folder / name, AtomicFile::IfThere::Fail);
            file.Write(from.Bytes(name));
            file.Commit();
            m_made.push_back(folder / name);
        }
    } catch (...) {
        for (const fs::path& file : m_made) {
            std::error_code ignored;
            fs::remove(file, ignored);
        }
        throw;
    }
}

FetchedReports::~FetchedReports() {
    for (const fs::path& file : m_made) {
        std::error_code ignored;
        fs::remove(file, ignored);
    }
}

}  // namespace tools
