// SPDX-License-Identifier: GPL-3.0-or-later
// Users and passwords that were typed for data sources while the designer runs. No file has them.
#pragma once

#include <map>
#include <string>

namespace designer {

struct Logon {
    std::string user, password;
};
using Logons = std::map<std::string, Logon>;  // by the name of the data source

}  // namespace designer
