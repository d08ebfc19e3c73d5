// SPDX-License-Identifier: GPL-3.0-or-later
// Expectations about rdl::Error.
#pragma once

#include <string>

#include "rdl/values/error.h"

namespace rdl {

// Returns the text of the error that `body` raises, or an empty text.
template <typename Body>
std::string ErrorRaisedBy(Body body) {
    try {
        body();
    } catch (const Error& error) {
        return error.what();
    }
    return {};
}

}  // namespace rdl
