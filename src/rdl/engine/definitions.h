// SPDX-License-Identifier: GPL-3.0-or-later
// Definitions of the report files that were opened last. A schedule opens the same file again and again.
#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <string_view>

#include "rdl/definition/model.h"

namespace rdl::engine {

// Parses the file and checks its expressions, unless a file of this name had the same bytes when it was
// opened before. Long files are parsed each time. May be called from any thread. Raises rdl::Error as
// ParseDefinitionFile and layout::CheckExpressions do.
std::shared_ptr<const Definition> OpenDefinition(const std::filesystem::path& file);

// Does the same with these bytes. `name` is the file name that errors have.
std::shared_ptr<const Definition> ReadDefinition(std::string_view bytes, const std::string& name);

}  // namespace rdl::engine
