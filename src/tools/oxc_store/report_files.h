// SPDX-License-Identifier: GPL-3.0-or-later
// The report files of a store that is copied: those that a shared store keeps, or those of the folder Cache
// beside a data file.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "tools/oxc_store/store_place.h"

namespace tools {

class ReportFiles {
 public:
    // `session` is the open store of `place`, and must outlive the object.
    ReportFiles(const StorePlace& place, DataSession& session);

    std::vector<std::string> Names() const;
    // Raises an error for a file that cannot be read or has more than 64 megabytes.
    std::string Bytes(const std::string& name) const;
    std::string Digest(const std::string& name) const;  // SHA-256

 private:
    std::filesystem::path m_folder;  // empty: the store keeps them
    DataSession& m_session;
};

// Gives a shared store all files.
void SendReports(const ReportFiles& from, DataSession& to);

// Files that arrive in a folder together or not at all. The folder is made if there are any.
class FetchedReports {
 public:
    // Raises an error if the folder has another file under the name of one of them; then nothing has changed.
    FetchedReports(const ReportFiles& from, std::filesystem::path folder);
    ~FetchedReports();  // removes what is new, unless Keep was called
    FetchedReports(const FetchedReports&) = delete;
    FetchedReports& operator=(const FetchedReports&) = delete;
    void Keep() { m_made.clear(); }

 private:
    std::vector<std::filesystem::path> m_made;
};

}  // namespace tools
