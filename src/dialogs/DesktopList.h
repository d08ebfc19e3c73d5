// SPDX-License-Identifier: GPL-3.0-or-later
// Updates the Desktop's lists after a dialog has saved.
#pragma once

#include <string>

#include "shared/Frame.h"

namespace Global {

// Lists a folder in the Desktop window, so that what has just been saved appears at once.
void RefreshDesktopList(const std::string& folderName, DeskWindow& window, const std::string& folderID);

}  // namespace Global
