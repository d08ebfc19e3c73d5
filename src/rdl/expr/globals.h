// What the built-in collections Globals and User say of a run, wherever its expressions stand.
#pragma once

#include <cstdint>
#include <string_view>

#include "rdl/expr/environment.h"

namespace rdl::expr {

struct RunFacts {
    std::int64_t nowTicks = 0;
    std::string_view reportName, reportFolder, userName, renderFormat, language;
};

// Null for what belongs to a page.
Value GlobalOf(const RunFacts& facts, GlobalName name);

}  // namespace rdl::expr
