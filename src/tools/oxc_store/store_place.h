// SPDX-License-Identifier: GPL-3.0-or-later
// A store that an argument names: a database file, or a database on a server.
#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <string>

#include "platform/data_provider/session.h"
#include "platform/postgresql/link.h"

namespace tools {

struct StorePlace {
    std::filesystem::path file;  // empty: the argument is a connect string
    std::optional<Link> link;    // set for a connect string and for a file that is a link

    // Returns the place as messages name it.
    std::string Name() const;
};

// Returns the live file for an empty text, the server for a connect string (it has a key Host), else the
// file, which need not exist.
StorePlace PlaceOf(const std::string& argument);

// Returns the file PressroomLive.dat of the application's folder.
std::filesystem::path LiveFile();

// Raises the error of data access if the store cannot be opened.
std::unique_ptr<DataSession> OpenPlace(const StorePlace& place);

// Raises the error with which a command ends.
[[noreturn]] void RefuseStore(const std::string& why);

}  // namespace tools
