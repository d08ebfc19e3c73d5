// SPDX-License-Identifier: GPL-3.0-or-later
// Parses the bytes of a report file into a Definition. Evaluates nothing and reads no other file.
#pragma once

#include <cstddef>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>

#include "rdl/definition/model.h"
#include "rdl/values/error.h"

namespace rdl {

// Limits on untrusted report files: they bound memory and recursion.
struct DefinitionLimits {
    std::size_t bytes = 64u << 20;
    std::size_t wholeBytes =
        1u << 20;     // of a file whose rows become part of the tree; else they are read apart
    int depth = 200;  // of nested elements
    int elements = 1'000'000;
    std::size_t attributes = 256;  // of one element
    int items = 200'000;           // report items, including those created for a matrix's totals
};

// `fileName` is for error texts. Raises rdl::Error naming file, line, element and item if the bytes are not a
// report definition (the text says what they are instead), are truncated, violate the schema, or contain
// something that cannot be drawn.
Definition ParseDefinition(std::string_view bytes, const std::string& fileName,
                           const DefinitionLimits& limits = {});

// Takes a constant of a style, whose line and place are those of the report. It is called for each one, and
// for some of them several times.
using TakeStyleConstant = std::function<void(StyleProperty property, const Expr& constant)>;

// The same for a file. Raises rdl::Error also if the file cannot be read.
Definition ParseDefinitionFile(const std::filesystem::path& path, const DefinitionLimits& limits = {},
                               const TakeStyleConstant& takeStyle = {});

}  // namespace rdl
