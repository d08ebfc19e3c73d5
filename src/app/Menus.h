// SPDX-License-Identifier: GPL-3.0-or-later
// The menu table: every menu and entry of the main window by name, with its caption.
#pragma once

#include <span>

struct MenuRow {
    const char* menu;     // the name of the menu that holds the entry
    const char* name;     // the entry; null in the row of a menu itself
    const char* caption;  // "-" is a separator
    bool popup = false;   // a context menu: not shown in the menu bar
};

// The rows in the order in which they are shown. A menu's own row stands before the rows of its entries.
std::span<const MenuRow> MenuTable();
