// SPDX-License-Identifier: GPL-3.0-or-later
// A document of the engine as a text.
#pragma once

#include <cstddef>
#include <string>

#include "rdl/api/output.h"

namespace rdl {

struct StringOutput : Output {
    std::string bytes;
    using Output::Write;
    void Write(const char* data, std::size_t size) override { bytes.append(data, size); }
};

}  // namespace rdl
