// Texts of drivers and names out of reports, made fit for an error.
#pragma once

#include <string>
#include <string_view>

#include "rdl/data/common/masking.h"
#include "rdl/values/ascii.h"
#include "rdl/xml/element.h"

namespace rdl::data {

// One line without ', without control characters and a full stop at its end, at most 400 bytes.
std::string CleanText(std::string_view text);
// The same with a password struck out (see Masked); a driver may quote the whole connect string.
std::string CleanText(std::string_view text, const Secret& secret);

// What is said of a query that was given up.
std::string TookTooLong(int seconds);

using xml::Trimmed;

}  // namespace rdl::data
