// SPDX-License-Identifier: GPL-3.0-or-later
// The version of a store's tables, which the table store_version holds.
#pragma once

#include "platform/postgresql/server_connection.h"

// Raises err::DataUnavailable if there is no store, or if its version is older, newer or unreadable. The
// error says what to do about it.
void CheckStoreVersion(Server& server);

// Raises err::DataUnavailable if the store is newer than this program, or its version unreadable. A database
// without a store, and an older one, can be brought to the version of this program.
void CheckStoreCanBeMade(Server& server);
