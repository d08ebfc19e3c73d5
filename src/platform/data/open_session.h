// SPDX-License-Identifier: GPL-3.0-or-later
// Chooses the provider of a connection string.
#pragma once

#include <memory>
#include <string>

#include "platform/data_provider/session.h"

// Opens the data that "Data Source=" names: an embedded database, or the server that a link names.
std::unique_ptr<DataSession> OpenDataSession(const std::string& connectionString);

// Returns true if the data is a store that several machines share.
bool IsShared(const std::string& connectionString);

// Calls the statement trace, if there is one.
void TraceStatement(const std::string& statement);
