// SPDX-License-Identifier: GPL-3.0-or-later
// The parameters that the text of a query asks for. The author of the query sees them.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "rdl/data/common/provider.h"

namespace rdl::data {

// Returns the names in the text as BindParameters would replace them, with their marks (@Year, :Year, with
// SQLite also $Year), each once in the order of the text; without names a ? for each mark. Names in strings,
// quoted names and comments are none, nor are variables that the statement declares or assigns itself.
// PostgreSQL has operators that are called ?: they are no marks there.
std::vector<std::string> NamesInQuery(std::string_view text, ProviderKind provider);

}  // namespace rdl::data
