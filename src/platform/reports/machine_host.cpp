// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/reports/machine_host.h"

#include <cstdlib>
#include <optional>
#include <string>

#include "platform/base/database_files.h"
#include "platform/base/paths.h"
#include "platform/contracts/clock.h"
#include "platform/contracts/runtime.h"
#include "platform/posix/atomic_file.h"
#include "platform/reports/moment.h"

namespace reports {
namespace {

// nullopt for a report without an application.
std::optional<std::filesystem::path> ApplicationFolder() {
    try {
        return paths::ToMachine(AppPath());
    } catch (const RuntimeError&) {
        return std::nullopt;
    }
}

}  // namespace

std::int64_t MachineHost::NowTicks() const {
    return TicksOf(Now());
}

std::filesystem::path MachineHost::PathOf(std::string_view name, const std::string& folder) const {
    if (paths::IsAbsolute(name)) {
        return paths::ToMachine(name);
    }
    return paths::ToMachine(paths::FromMachine(folder.empty() ? "." : folder) + "\\" + std::string(name));
}

std::vector<std::string> MachineHost::DataFolders() const {
    const std::optional<std::filesystem::path> application = ApplicationFolder();
    return application ? std::vector<std::string>{application->string(), (*application / "samples").string()}
                       : std::vector<std::string>();
}

std::vector<std::filesystem::path> MachineHost::OwnFiles() const {
    std::vector<std::filesystem::path> own{ConfigPlace()};
    // Mails of other reports wait there. An outbox elsewhere is the administrator's choice.
    own.push_back(DataHome() / "oxbow-courier" / "outbox");
    if (const std::optional<std::filesystem::path> application = ApplicationFolder()) {
        own.push_back(*application / "outbox");
        own.push_back(*application / LiveDatabaseFile);
        own.push_back(*application / (std::string(LiveDatabaseFile) + ReplacedEnding));
        own.push_back(*application / BlankDatabaseFile);
    }
    // They open the team's store.
    if (const char* const home = std::getenv("HOME")) {
        own.push_back(std::filesystem::path(home) / ".pgpass");
        own.push_back(std::filesystem::path(home) / ".postgresql" / "postgresql.key");
    }
    return own;
}

int MachineHost::OpenTemporaryFile() const {
    return ::OpenTemporaryFile();
}

void UseMachineHost() {
    static const MachineHost machine;
    rdl::SetHost(&machine);
}

}  // namespace reports
