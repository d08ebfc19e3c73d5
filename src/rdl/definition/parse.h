// From the bytes of a report file to a Definition. Nothing is evaluated and nothing but the file is read.
#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>

#include "rdl/definition/model.h"
#include "rdl/values/error.h"

namespace rdl {

// What a report file may come to at most: files come from anywhere, so memory and depth have an end.
struct DefinitionLimits {
    std::size_t bytes = 64u << 20;
    int depth = 200;  // of nested elements
    int elements = 1'000'000;
    std::size_t attributes = 256;  // of one element
    int items = 200'000;           // report items, those made of a matrix's totals included
};

// `fileName` is for error texts. Raises rdl::Error naming file, line, element and item: when the file is no
// report definition (the text says what it is instead), is cut off, breaks the rules of the schema, or holds
// something that cannot be drawn.
Definition ParseDefinition(std::string_view bytes, const std::string& fileName,
                           const DefinitionLimits& limits = {});

// The same for a file; one that cannot be read is an error too.
Definition ParseDefinitionFile(const std::filesystem::path& path, const DefinitionLimits& limits = {});

}  // namespace rdl
