// SPDX-License-Identifier: GPL-3.0-or-later
// The report process: carries the operations of a program out with the engine of rdl_engine.h, one after
// another, until the program closes the socket.
#pragma once

#include <functional>

#include "platform/reports/worker/operations.h"

namespace reports::worker {

// The socket's descriptor in the report process.
inline constexpr int ServerSocket = 3;

// Returns the exit code of the process. The first operation confines it (confinement.h), so call this in a
// process with one thread. An operation that fails answers with its RuntimeError, and the process continues.
// A message that cannot be read ends it. `before` is called before each operation but the first.
int Serve(int socket, const std::function<void(const Operation&)>& before = {});

}  // namespace reports::worker
