// Which function a menu entry runs.
#pragma once

#include <functional>
#include <string>

// Empty for an entry that only closes its menu.
std::function<void()> FindMenuHandler(const std::string& entry);
