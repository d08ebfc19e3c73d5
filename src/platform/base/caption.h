// SPDX-License-Identifier: GPL-3.0-or-later
// What readers see of the name of a column or field.
#pragma once

#include <string>
#include <string_view>

// Returns the words of the name: "Order date" for order_date, "Customer Name" for CustomerName, "Year" for
// year. A name without any word stays as it is.
std::string CaptionOf(std::string_view name);
