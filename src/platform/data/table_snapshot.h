// SPDX-License-Identifier: GPL-3.0-or-later
// Statements that are answered from a TableSnapshot (platform/contracts/shared_store.h).
#pragma once

#include <memory>
#include <string>

#include "platform/data_provider/session.h"

// Returns the rows of the statement if a snapshot that lives now answers it, else null. The first such
// statement reads the table.
std::unique_ptr<DataRows> RowsOfSnapshot(const std::string& statement, const std::string& connectionString);
