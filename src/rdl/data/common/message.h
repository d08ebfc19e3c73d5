// SPDX-License-Identifier: GPL-3.0-or-later
// Sanitizes driver messages and names from reports for error texts.
#pragma once

#include <string>
#include <string_view>

#include "rdl/data/common/masking.h"

namespace rdl::data {

// Returns one line of at most 400 bytes without ', control characters and a final full stop.
std::string CleanText(std::string_view text);
// The same with a password removed (see Masked); a driver may quote the whole connect string.
std::string CleanText(std::string_view text, const Secret& secret);

// The error text for a query that exceeded its time.
std::string TookTooLong(int seconds);

}  // namespace rdl::data
