// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace rdl::engine {

// Returns a line for each constant of a style that means nothing, with file, line, item and property, in the
// order of lines; of very many the first ones, and a line that says so. Raises rdl::Error as
// ParseDefinitionFile does.
std::vector<std::string> ProblemsOf(const std::filesystem::path& file);

}  // namespace rdl::engine
