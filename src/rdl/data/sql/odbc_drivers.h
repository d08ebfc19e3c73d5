// The ODBC drivers of the machine and of the user, as the driver manager knows them.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace rdl::data {

// In the order of the lists; empty when there is no driver manager.
std::vector<std::string> InstalledOdbcDrivers();

// The name as the list has it, found without regard to case. Raises rdl::Error naming what is installed: the
// driver manager would take an unknown name for a library's.
std::string FindOdbcDriver(std::string_view name);

// The newest of Microsoft's own drivers, else FreeTDS. Raises rdl::Error when there is none.
std::string SqlServerDriver();

}  // namespace rdl::data
