#include "platform/reports/machine_host.h"

#include "platform/base/paths.h"
#include "platform/contracts/clock.h"
#include "platform/contracts/runtime.h"
#include "platform/posix/atomic_file.h"
#include "platform/reports/moment.h"
#include "rdl/data/common/own_files.h"

namespace reports {
namespace {

bool IsAbsolute(std::string_view name) {
    return name.starts_with('/') || name.starts_with('\\') || (name.size() > 1 && name[1] == ':');
}

// Settings and mail profile hold passwords, and the database holds all users' schedules.
void ProtectOwnFiles() {
    std::vector<std::filesystem::path> own{ConfigPlace()};
    try {
        const std::filesystem::path application = paths::ToMachine(AppPath());
        own.push_back(application / "PressroomLive.dat");
        own.push_back(application / "Pressroom.dat");
    } catch (const RuntimeError&) {
        // a report without an application
    }
    rdl::data::ProtectFiles(std::move(own));
}

}  // namespace

std::int64_t MachineHost::NowTicks() const {
    return TicksOf(Now());
}

std::filesystem::path MachineHost::PathOf(std::string_view name, const std::string& folder) const {
    if (IsAbsolute(name)) {
        return paths::ToMachine(name);
    }
    return paths::ToMachine(paths::FromMachine(folder.empty() ? "." : folder) + "\\" + std::string(name));
}

std::vector<std::string> MachineHost::DataFolders() const {
    try {
        const std::filesystem::path application = paths::ToMachine(AppPath());
        return {application.string(), (application / "samples").string()};
    } catch (const RuntimeError&) {
        return {};  // a report without an application
    }
}

int MachineHost::OpenTemporaryFile() const {
    return ::OpenTemporaryFile();
}

void UseMachineHost() {
    static const MachineHost machine;
    rdl::SetHost(&machine);
    ProtectOwnFiles();
}

}  // namespace reports
