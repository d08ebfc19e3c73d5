// Whether a report's own query only reads. What a server refuses by itself (a session that is read-only) is
// the second lock; this one is before anything is sent.
#pragma once

#include <string_view>

#include "rdl/data/common/provider.h"

namespace rdl::data {

// For the text as it goes to the server, by what the server speaks. Raises rdl::Error, "a report only reads:
// ...", for
// - a statement that begins with another word than one that reads or calls a procedure,
// - INTO and data-changing parts of WITH,
// - what servers read in different ways, and could be hidden so: comments that MySQL runs, a NUL.
// SQL Server runs batches: there tables whose names begin with # or @ may be made and filled, as they end
// with the session, and a procedure is called by its name; sp_ and xp_ are the server's own and refused.
void CheckReads(std::string_view text, ProviderKind dialect);

}  // namespace rdl::data
