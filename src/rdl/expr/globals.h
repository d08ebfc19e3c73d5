// SPDX-License-Identifier: GPL-3.0-or-later
// Values of the built-in collections Globals and User, independent of where the expression
// stands.
#pragma once

#include <cstdint>
#include <string_view>

#include "rdl/expr/environment.h"

namespace rdl::expr {

struct RunFacts {
    std::int64_t nowTicks = 0;
    std::string_view reportName, reportFolder, userName, renderFormat, language;
};

// Returns Null for globals that depend on a page.
Value GlobalOf(const RunFacts& facts, GlobalName name);

}  // namespace rdl::expr
