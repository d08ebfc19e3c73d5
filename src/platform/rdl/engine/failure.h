// The numbers that the engine's errors have for the system. The texts say what is wrong; the numbers tell the
// stages apart.
#pragma once

#include <cstdint>
#include <new>
#include <utility>

#include "platform/rdl/error.h"
#include "platform/runtime.h"

namespace rdl::engine {

inline constexpr std::int32_t InvalidReport = -2147206461;     // the file is no report, or cannot be drawn
inline constexpr std::int32_t InvalidParameter = -2147206460;  // a value is missing or does not fit
inline constexpr std::int32_t InvalidFormula = -2147206459;    // the record selection formula
inline constexpr std::int32_t DataFailed = -2147206458;        // a data source or query
inline constexpr std::int32_t RunFailed = -2147206457;         // layout and writing
inline constexpr std::int32_t InvalidOption = 5;               // "Invalid procedure call or argument"

// Runs a stage: errors that have a number keep it, the others get this one.
template <typename Work>
auto Stage(std::int32_t number, Work&& work) {
    try {
        return std::forward<Work>(work)();
    } catch (const Error& error) {
        throw RuntimeError(number, error.what());
    } catch (const RuntimeError&) {
        throw;
    } catch (const std::bad_alloc&) {
        throw RuntimeError(err::OutOfMemory);
    } catch (const std::exception& error) {
        throw RuntimeError(number, error.what());
    }
}

}  // namespace rdl::engine
