// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/data/open_session.h"

#include <filesystem>
#include <optional>
#include <utility>

#include "platform/base/paths.h"
#include "platform/contracts/adodb.h"
#include "platform/data/provider/connection_string.h"
#include "platform/postgresql/link.h"
#include "platform/postgresql/postgresql_session.h"
#include "platform/sqlite/sqlite_session.h"

namespace {

// Returns nullopt for a file that is no link. A path that cannot be used is the other provider's to report.
std::optional<Link> LinkIn(const std::string& file) {
    std::filesystem::path path;
    try {
        path = paths::ToMachine(file);
    } catch (const RuntimeError&) {
        return std::nullopt;
    }
    return ReadLink(path);
}

}  // namespace

bool IsShared(const std::string& connectionString) {
    return LinkIn(ConnectionValue(connectionString, "Data Source")).has_value();
}

std::string ADODB::StoreIdentity(const std::string& connectionString) {
    const std::optional<Link> link = LinkIn(ConnectionValue(connectionString, "Data Source"));
    return link ? link->host + ":" + link->port + "/" + link->database : connectionString;
}

std::unique_ptr<DataSession> OpenDataSession(const std::string& connectionString) {
    const std::string file = ConnectionValue(connectionString, "Data Source");
    if (file.empty()) {
        throw RuntimeError(err::DataUnavailable, "The connection string names no data file (Data Source)");
    }
    if (std::optional<Link> link = LinkIn(file)) {
        return std::make_unique<PostgresqlSession>(std::move(*link));
    }
    return std::make_unique<SqliteSession>(file);
}
