// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/values/stop.h"

#include <utility>

#include "rdl/values/error.h"

namespace rdl {
namespace {

thread_local std::shared_ptr<const StopSignal> current;

}  // namespace

StopsAt::StopsAt(std::shared_ptr<const StopSignal> signal)
    : m_before(std::exchange(current, std::move(signal))) {}

StopsAt::~StopsAt() {
    current = std::move(m_before);
}

std::shared_ptr<const StopSignal> SignalOfThread() {
    return current;
}

bool IsStopped() {
    return current && current->IsGiven();
}

void CheckStop() {
    if (IsStopped()) {
        throw Error("The run was stopped");
    }
}

}  // namespace rdl
