// SPDX-License-Identifier: GPL-3.0-or-later
#include "dialogs/DesktopList.h"

namespace Global {

void RefreshDesktopList(const std::string& folderName, DeskWindow& window, const std::string& folderID) {
    window.RefreshList(folderName, folderID);
}

}  // namespace Global
