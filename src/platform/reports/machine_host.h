// SPDX-License-Identifier: GPL-3.0-or-later
// The machine and the application as the report engine sees them.
#pragma once

#include "rdl/api/host.h"

namespace reports {

class MachineHost : public rdl::Host {
 public:
    std::int64_t NowTicks() const override;
    // Uses the path rules of the system (platform/base/paths.h). Raises RuntimeError 76 as paths::ToMachine.
    std::filesystem::path PathOf(std::string_view name, const std::string& folder) const override;
    // Returns the application's folder and its samples: a report that runs from a copy finds its data there.
    std::vector<std::string> DataFolders() const override;
    // Returns the settings, the mail profile and the databases of the application, and what opens a team's
    // store: the user's passwords and key for PostgreSQL.
    std::vector<std::filesystem::path> OwnFiles() const override;
    int OpenTemporaryFile() const override;
};

// Gives the engine this host.
void UseMachineHost();

}  // namespace reports
