// SPDX-License-Identifier: GPL-3.0-or-later
// The parts of a document beside its text: content types, properties, settings (ECMA-376 Part 2, 10.1 and 11;
// Part 1, 15.2 and 17.15).
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "rdl/writers/common/writers.h"

namespace rdl::writers {

// The types of all parts, of which `margins` are headers and as many are footers, numbered from 0.
std::string DocxContentTypes(std::size_t margins);
// The relationships of the document as a whole.
std::string DocxRootRelations();
// `nowTicks`: when the document is made.
std::string DocxProperties(const DocumentInfo& info, std::int64_t nowTicks);
std::string DocxSettings();

}  // namespace rdl::writers
