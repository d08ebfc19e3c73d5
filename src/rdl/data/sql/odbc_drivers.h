// SPDX-License-Identifier: GPL-3.0-or-later
// The ODBC drivers registered for the machine and the user.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace rdl::data {

using OdbcDriverNames = std::vector<std::string>;

// Returns the names in registration order; empty without a driver manager. The driver manager keeps what it
// has read for a while, so a list that changes is not seen at once.
OdbcDriverNames InstalledOdbcDrivers();

// Returns the spelling of `name` among the installed drivers, found without regard to case. Raises rdl::Error
// naming these: the driver manager would take an unknown name for a library's path.
std::string FindOdbcDriver(std::string_view name, const OdbcDriverNames& installed);

// Returns the newest of Microsoft's drivers, else FreeTDS. Raises rdl::Error if neither is installed.
std::string SqlServerDriver(const OdbcDriverNames& installed);

}  // namespace rdl::data
