// SPDX-License-Identifier: GPL-3.0-or-later
// The function that a menu entry runs.
#pragma once

#include <functional>
#include <string>

// Returns the handler of the entry with this name, or an empty function if the entry has none.
std::function<void()> FindMenuHandler(const std::string& entry);
