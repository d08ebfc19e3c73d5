// SPDX-License-Identifier: GPL-3.0-or-later
// Makes the tables of a team's store.
#pragma once

#include <string>
#include <vector>

#include "platform/postgresql/link.h"

namespace tools {

// Makes the tables that are missing, all or none, and gives each role its rights. Raises an error if the
// database cannot hold a store or holds one of a later version.
void CreateStore(const Link& link, const std::vector<std::string>& editors,
                 const std::vector<std::string>& schedulers);

}  // namespace tools
