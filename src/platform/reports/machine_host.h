// The machine and the application as the report engine sees them.
#pragma once

#include "rdl/api/host.h"

namespace reports {

class MachineHost : public rdl::Host {
 public:
    std::int64_t NowTicks() const override;
    // By the path rules of the system (platform/base/paths.h). Raises RuntimeError 76 as paths::ToMachine.
    std::filesystem::path PathOf(std::string_view name, const std::string& folder) const override;
    // The application's folder and its samples: a report that runs from a copy finds its data there.
    std::vector<std::string> DataFolders() const override;
    int OpenTemporaryFile() const override;
};

// Makes the engine ask the machine, and keeps reports away from the settings, the mail profile and the
// databases of the application. May be called again when the application's folder has changed.
void UseMachineHost();

}  // namespace reports
