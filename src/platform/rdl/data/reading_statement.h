// Whether a report's own statement only reads. The server's read-only session stands behind this; here it is
// what no such session holds back: files of either machine, settings, other databases.
#pragma once

#include <string_view>

#include "platform/rdl/data/provider.h"

namespace rdl::data {

// Raises rdl::Error, naming the word, when the statement does not begin with one that reads (SELECT, WITH,
// VALUES, TABLE, SHOW, DESCRIBE, EXPLAIN) or calls a procedure, or holds one that writes. A batch of SQL
// Server may also declare, set and branch, and may fill tables of its own (#name, @name). Texts, quoted names
// and comments do not count; a comment that the server runs (/*! */) is refused.
void CheckReads(std::string_view text, ProviderKind dialect);

}  // namespace rdl::data
