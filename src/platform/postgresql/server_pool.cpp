// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/postgresql/server_pool.h"

#include <algorithm>
#include <vector>

#include "platform/postgresql/store_version.h"

namespace {

constexpr std::size_t MostIdle = 4;

// Never destroyed: a recordset may outlive it at the end of the process.
std::vector<std::unique_ptr<Server>>& IdleServers() {
    static auto& idle = *new std::vector<std::unique_ptr<Server>>;
    return idle;
}

}  // namespace

void ReturnServer::operator()(Server* server) const {
    std::unique_ptr<Server> owned(server);
    if (owned != nullptr && owned->IsIdle() && IdleServers().size() < MostIdle) {
        IdleServers().push_back(std::move(owned));
    }
}

LeasedServer LeaseServer(const Link& link) {
    std::vector<std::unique_ptr<Server>>& idle = IdleServers();
    // After the link has changed, the old connections are of no use.
    std::erase_if(idle, [&link](const std::unique_ptr<Server>& server) { return server->Linked() != link; });
    while (!idle.empty()) {
        std::unique_ptr<Server> last = std::move(idle.back());
        idle.pop_back();
        if (last->IsAlive()) {
            return LeasedServer(last.release());
        }
    }
    auto opened = std::make_unique<Server>(link);
    CheckStoreVersion(*opened);
    return LeasedServer(opened.release());
}

void CloseIdleServers() {
    IdleServers().clear();
}
