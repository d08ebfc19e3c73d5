// SPDX-License-Identifier: GPL-3.0-or-later
// The functions of the system's SQL dialect, and the comparison of texts.
#pragma once

#include <optional>

#include "platform/contracts/runtime.h"

struct sqlite3;

// Registers left(text,n), datediff('d',a,b) and Now(), makes like and NOCASE know the characters of every
// script, and adds the collation MOMENT, which compares texts as the moments that they hold. A function that
// fails stores its error in `failure`, because SQLite keeps only a text. `failure` must live as long as the
// connection. Returns SQLite's result code.
int RegisterDialect(sqlite3* handle, std::optional<RuntimeError>* failure);
