// SPDX-License-Identifier: GPL-3.0-or-later
// Adds the stage to errors of a run.
#pragma once

#include <stdexcept>
#include <utility>

#include "rdl/api/failure.h"

namespace rdl::engine {

// Runs `work` and returns its result. Errors of the engine and the standard library become a Failure of
// `stage`. A Failure, std::bad_alloc and errors of the host pass unchanged.
template <typename Work>
auto InStage(Stage stage, Work&& work) {
    try {
        return std::forward<Work>(work)();
    } catch (const Failure&) {
        throw;
    } catch (const std::runtime_error& error) {
        throw Failure(stage, error.what());
    } catch (const std::logic_error& error) {
        throw Failure(stage, error.what());
    }
}

}  // namespace rdl::engine
