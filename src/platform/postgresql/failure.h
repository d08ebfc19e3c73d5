// SPDX-License-Identifier: GPL-3.0-or-later
// Converts PostgreSQL's failures to the numbered errors of the data layer.
#pragma once

#include <string>
#include <string_view>

// Raises the error of a failed statement. `state` is its SQLSTATE (PostgreSQL's appendix A), `message` the
// server's text, `store` the database's name as errors show it (Link::Name).
[[noreturn]] void RaiseServerError(std::string_view state, const std::string& message,
                                   const std::string& store);

// Raises the error of a server that cannot be reached or does not answer.
[[noreturn]] void RaiseUnreachable(const std::string& store, const std::string& message);
