// SPDX-License-Identifier: GPL-3.0-or-later
// Chooses the provider of a connection string.
#pragma once

#include <memory>
#include <string>

#include "platform/data_provider/session.h"

enum class IfAway { Ask, Raise };

// Opens the data that "Data Source=" names: an embedded database, or the server that a link names. With
// "Mode=Read" an embedded database that the user may not write is read without making or changing a file; the
// error is 80040E09 if its remains of a crash forbid that, and 80040E31 if it is written meanwhile. If the
// server of a link cannot be reached, the user may be asked (platform/contracts/shared_store.h).
std::unique_ptr<DataSession> OpenDataSession(const std::string& connectionString,
                                             IfAway ifAway = IfAway::Ask);

// Returns true if the data is a store that several machines share.
bool IsShared(const std::string& connectionString);

// Calls the statement trace, if there is one.
void TraceStatement(const std::string& statement);
