// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/oxc_store/store_place.h"

#include "platform/base/ascii.h"
#include "platform/base/database_files.h"
#include "platform/base/paths.h"
#include "platform/postgresql/postgresql_session.h"
#include "platform/sqlite/sqlite_session.h"

namespace tools {

void RefuseStore(const std::string& why) {
    throw RuntimeError(err::DataUnavailable, why);
}

std::string StorePlace::Name() const {
    return file.empty() ? "the store " + link->Name() : "the file \"" + file.string() + "\"";
}

std::filesystem::path LiveFile() {
    return paths::ToMachine(AppPath()) / LiveDatabaseFile;
}

StorePlace PlaceOf(const std::string& argument) {
    if (ToLower(argument).find("host=") != std::string::npos || argument.find(';') != std::string::npos) {
        return {{}, LinkOfConnectString(argument)};
    }
    StorePlace place{argument.empty() ? LiveFile() : std::filesystem::absolute(argument), {}};
    place.link = ReadLink(place.file);
    return place;
}

std::unique_ptr<DataSession> OpenPlace(const StorePlace& place) {
    if (place.link) {
        return std::make_unique<PostgresqlSession>(*place.link);
    }
    return std::make_unique<SqliteSession>(paths::FromMachine(place.file));
}

}  // namespace tools
