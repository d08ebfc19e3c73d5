// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/data/open_session.h"

#include "platform/contracts/runtime.h"
#include "platform/data/provider/connection_string.h"
#include "platform/sqlite/sqlite_session.h"

std::unique_ptr<DataSession> OpenDataSession(const std::string& connectionString) {
    const std::string file = ConnectionValue(connectionString, "Data Source");
    if (file.empty()) {
        throw RuntimeError(err::DataUnavailable, "The connection string names no data file (Data Source)");
    }
    return std::make_unique<SqliteSession>(file);
}
