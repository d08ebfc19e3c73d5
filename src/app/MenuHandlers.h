// Which function a menu entry runs.
#pragma once

#include <functional>
#include <string>

struct MenuHandler {
    bool built = false;           // false: the entry is shown disabled
    std::function<void()> click;  // empty: the entry only closes its menu
};

MenuHandler FindMenuHandler(const std::string& entry);
