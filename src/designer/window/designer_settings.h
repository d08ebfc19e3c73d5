// SPDX-License-Identifier: GPL-3.0-or-later
// What the designer remembers: recent files and how its window looked. It has a file of its own, designer.ini
// in the folder of the settings.
#pragma once

#include <QByteArray>
#include <QStringList>
#include <filesystem>

#include "designer/panes/property_panel.h"

namespace designer {

inline constexpr int MostRecentFiles = 10;

// The file that was used last comes first.
QStringList RecentFiles();
void AddRecentFile(const std::filesystem::path& file);
void ForgetRecentFile(const QString& file);

struct WindowLook {
    QByteArray geometry, state;  // of a QMainWindow; empty before the first window was closed
    PropertyLook properties;
};
WindowLook LastWindowLook();
void KeepWindowLook(const WindowLook& look);

}  // namespace designer
