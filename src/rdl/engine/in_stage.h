// Errors of a run with the stage that they ended.
#pragma once

#include <stdexcept>
#include <utility>

#include "rdl/api/failure.h"

namespace rdl::engine {

// Runs `work` and returns what it returns. An error of the engine or of the standard library becomes a
// Failure of `stage`; one that is a Failure already, std::bad_alloc and what the host raises pass as they
// are.
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
