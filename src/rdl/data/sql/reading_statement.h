// SPDX-License-Identifier: GPL-3.0-or-later
// Checks that a report's query only reads, before anything is sent. A read-only session on the server is the
// second line of defence.
#pragma once

#include <string_view>

#include "rdl/data/common/provider.h"

namespace rdl::data {

// `text` is the final text, `dialect` that of the server. Raises rdl::Error, "a report only reads: ...", for
// - a statement whose first word neither reads nor calls a procedure,
// - INTO and data-changing parts of WITH,
// - text that servers read in different ways and that could hide a statement: comments that MySQL executes, a
// NUL.
// SQL Server runs batches: temporary tables (# or @) may be created and filled, as they end with the session;
// a procedure is called by its name, but not one of the server's own (sp_, xp_).
void CheckReads(std::string_view text, ProviderKind dialect);

}  // namespace rdl::data
