// SPDX-License-Identifier: GPL-3.0-or-later
// How a provider waits: windows repaint themselves meanwhile, and no other event runs.
#pragma once

#include <chrono>

// Returns how long busy data is waited for (ADODB::SetBusyWait).
std::chrono::duration<double> LongestBusyWait();

// Lets windows repaint themselves if a wait that began at `since` is long enough to be noticed. Never raises
// an error.
void RepaintDuringWait(std::chrono::steady_clock::time_point since) noexcept;
