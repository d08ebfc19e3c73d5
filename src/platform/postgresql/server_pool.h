// SPDX-License-Identifier: GPL-3.0-or-later
// Connections that wait for their next use. The system opens one for each operation; to open one to a server
// takes several round trips.
#pragma once

#include <memory>

#include "platform/postgresql/server_connection.h"

struct ReturnServer {
    void operator()(Server* server) const;  // to the pool if it can be used again
};
using LeasedServer = std::unique_ptr<Server, ReturnServer>;

// Returns a connection that nobody uses, or a new one to a store of this program's version. Raises
// err::DataUnavailable if there is none.
LeasedServer LeaseServer(const Link& link);

// Closes the connections that nobody uses.
void CloseIdleServers();
