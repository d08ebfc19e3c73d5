// For routines that ignore errors statement by statement: each statement is run, and the one behind a failed
// one is next.
#pragma once

#include <exception>

template <typename Statement>
void ResumeNext(Statement&& statement) {
    try {
        statement();
    } catch (const std::exception&) {
        // What the statement would have changed is left as it was.
    }
}
