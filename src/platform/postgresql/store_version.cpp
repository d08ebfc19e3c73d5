// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/postgresql/store_version.h"

#include <libpq-fe.h>

#include <charconv>
#include <cstdint>
#include <optional>
#include <string>

#include "platform/contracts/runtime.h"

namespace {

constexpr std::int64_t OwnVersion = 1;

[[noreturn]] void Refuse(const std::string& text) {
    throw RuntimeError(err::DataUnavailable, text);
}

// Returns nullopt for a database without a store, 0 for a store without a version.
std::optional<std::int64_t> ReadVersion(Server& server) {
    Result found;
    try {
        found = server.RunOne("select max(version) from oxbow_courier.store_version");
    } catch (const RuntimeError& error) {
        if (error.Number() != err::DataTableMissing) {
            throw;
        }
        return std::nullopt;
    }
    if (PQgetisnull(found.get(), 0, 0) != 0) {
        return 0;
    }
    const std::string text = PQgetvalue(found.get(), 0, 0);
    const char* const end = text.data() + text.size();
    std::int64_t version = 0;
    const auto read = std::from_chars(text.data(), end, version);
    if (read.ec != std::errc() || read.ptr != end) {
        Refuse("The store " + server.Linked().Name() + " has the unreadable version \"" + text +
               "\"; it is to be restored from a backup");
    }
    return version;
}

void RefuseOther(const Server& server, std::int64_t version, const std::string& help) {
    Refuse("The store " + server.Linked().Name() + " has the version " + std::to_string(version) +
           ", and this program, " OXC_VERSION ", works with version " + std::to_string(OwnVersion) + "; " +
           help);
}

void RefuseNewer(const Server& server, std::int64_t version) {
    if (version > OwnVersion) {
        RefuseOther(server, version, "this machine needs the newer program");
    }
}

}  // namespace

void CheckStoreVersion(Server& server) {
    const std::optional<std::int64_t> version = ReadVersion(server);
    if (!version) {
        Refuse("The database " + server.Linked().Name() +
               " holds no store; its owner makes one: oxc-store create");
    }
    RefuseNewer(server, *version);
    if (*version < OwnVersion) {
        RefuseOther(server, *version, "the owner of the store brings it up to date: oxc-store create");
    }
}

void CheckStoreCanBeMade(Server& server) {
    RefuseNewer(server, ReadVersion(server).value_or(0));
}
