// SPDX-License-Identifier: GPL-3.0-or-later
// The ODBC drivers registered for the machine and the user.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace rdl::data {

// Returns the names in registration order; empty without a driver manager.
std::vector<std::string> InstalledOdbcDrivers();

// Returns the registered spelling of `name`, found without regard to case. Raises rdl::Error naming the
// installed drivers: the driver manager would take an unknown name for a library's path.
std::string FindOdbcDriver(std::string_view name);

// Returns the newest of Microsoft's drivers, else FreeTDS. Raises rdl::Error if there is none.
std::string SqlServerDriver();

}  // namespace rdl::data
