// SPDX-License-Identifier: GPL-3.0-or-later
// What was not saved when a designer was ended by force. Each window keeps a copy of its report while it is
// modified; one whose process is gone is offered at the next start.
#pragma once

#include <QLockFile>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace designer {

// Returns ${XDG_STATE_HOME:-~/.local/state}/oxbow-courier/designer.
std::filesystem::path RecoveryFolder();

// The copy of one window. The destructor removes it.
class RecoveryFile {
 public:
    RecoveryFile();
    ~RecoveryFile();
    RecoveryFile(const RecoveryFile&) = delete;
    RecoveryFile& operator=(const RecoveryFile&) = delete;

    // Writes the copy. `original` is the file that the report is saved to; empty if it has none yet. `digest`
    // is the SHA-256 of what was read from that file or written to it last; empty if not known. A copy that
    // cannot be written is no error: the user continues without it.
    void Write(const std::filesystem::path& original, const std::string& digest, std::string_view bytes);
    void Remove();

 private:
    std::filesystem::path m_file;
    std::unique_ptr<QLockFile> m_lock;
};

struct LostReport {
    std::filesystem::path copy;
    std::filesystem::path original;  // empty if it had none
    std::string digest;              // of what the original had, as far as the window knew; empty: not known
    std::string bytes;
};

// Returns the copies that no process keeps.
std::vector<LostReport> FindLostReports();
void ForgetLostReport(const LostReport& lost);

}  // namespace designer
