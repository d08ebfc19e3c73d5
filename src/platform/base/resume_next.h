// SPDX-License-Identifier: GPL-3.0-or-later
// For routines that ignore errors statement by statement: each statement runs, and after a failed one the
// next one runs.
#pragma once

#include <exception>

template <typename Statement>
void ResumeNext(Statement&& statement) {
    try {
        statement();
    } catch (const std::exception&) {
        // What the failed statement would have changed stays unchanged.
    }
}
