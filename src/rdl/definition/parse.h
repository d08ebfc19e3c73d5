// SPDX-License-Identifier: GPL-3.0-or-later
// Parses the bytes of a report file into a Definition. Evaluates nothing and reads no other file.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "rdl/definition/model.h"
#include "rdl/definition/style_constant.h"
#include "rdl/definition/tree/limits.h"
#include "rdl/values/error.h"

namespace rdl {

// `fileName` is for error texts. Raises rdl::Error naming file, line, element and item if the bytes are not a
// report definition (the text says what they are instead), are truncated, violate the schema, or contain
// something that cannot be drawn.
Definition ParseDefinition(std::string_view bytes, const std::string& fileName,
                           const DefinitionLimits& limits = {});

// The same for a file. Raises rdl::Error also if the file cannot be read.
Definition ParseDefinitionFile(const std::filesystem::path& path, const DefinitionLimits& limits = {},
                               const TakeStyleConstant& takeStyle = {});

}  // namespace rdl
