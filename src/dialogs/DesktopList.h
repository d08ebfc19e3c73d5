// What dialogs change of the Desktop's lists.
#pragma once

#include <string>

#include "shared/Frame.h"

namespace Global {

// Shows a folder in the Desktop window: what has just been saved in it is seen at once.
void RefreshDesktopList(const std::string& folderName, DeskWindow& window, const std::string& folderID);

}  // namespace Global
