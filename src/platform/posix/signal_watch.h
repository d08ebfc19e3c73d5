// SPDX-License-Identifier: GPL-3.0-or-later
// Signals, taken in a thread of their own: a run may keep the message loop waiting, and a handler of the
// kernel may call next to nothing.
#pragma once

#include <functional>
#include <initializer_list>

// Calls `take` with the number of each signal of these `numbers` that arrives, one after another, until the
// process ends. Call this once in a process, before there are other threads. Signals are not blocked, so that
// child programs do not inherit that.
void WatchSignals(std::initializer_list<int> numbers, std::function<void(int number)> take);
