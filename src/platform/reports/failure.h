// SPDX-License-Identifier: GPL-3.0-or-later
// The run-time error numbers of the report engine's errors. The text says what is wrong; the number gives the
// stage.
#pragma once

#include <cstdint>
#include <new>
#include <utility>

#include "platform/contracts/runtime.h"
#include "rdl/api/failure.h"

namespace reports {

inline constexpr std::int32_t InvalidReport = -2147206461;     // the file is not a report, or cannot be drawn
inline constexpr std::int32_t InvalidParameter = -2147206460;  // a value is missing or does not fit
inline constexpr std::int32_t InvalidFormula = -2147206459;    // the record selection formula
inline constexpr std::int32_t DataFailed = -2147206458;        // a data source or query
inline constexpr std::int32_t RunFailed = -2147206457;         // layout and writing
inline constexpr std::int32_t WorkerFailed = -2147206456;      // the process that runs it (worker/)
inline constexpr std::int32_t InvalidOption = 5;               // "Invalid procedure call or argument"

// Returns the number for a stage of the engine.
inline std::int32_t NumberOf(rdl::Stage stage) {
    switch (stage) {
        case rdl::Stage::Open:
            return InvalidReport;
        case rdl::Stage::Parameter:
            return InvalidParameter;
        case rdl::Stage::Formula:
            return InvalidFormula;
        case rdl::Stage::Data:
            return DataFailed;
        case rdl::Stage::Run:
            break;
    }
    return RunFailed;
}

// Runs `work` and returns its result. Every error leaves as a RuntimeError: a RuntimeError unchanged, out of
// memory as 7, any other error with the number of its stage.
template <typename Work>
auto Translated(Work&& work) {
    try {
        return std::forward<Work>(work)();
    } catch (const RuntimeError&) {
        throw;
    } catch (const rdl::Failure& failure) {
        throw RuntimeError(NumberOf(failure.stage()), failure.what());
    } catch (const std::bad_alloc&) {
        throw RuntimeError(err::OutOfMemory);
    } catch (const std::exception& error) {
        throw RuntimeError(RunFailed, error.what());
    }
}

}  // namespace reports
