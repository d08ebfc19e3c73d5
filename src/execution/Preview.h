// SPDX-License-Identifier: GPL-3.0-or-later
// The preview of reports on the screen.
#pragma once

class QWidget;

namespace Global {

// Shows CurrentReport in the preview window frmTest, which is not modal. Without `dialog` the preview is a
// child window of the frame; with `dialog` it is a window of its own in front of that dialog. There is one
// preview window: a new report replaces the one shown before. The preview shows its errors itself and stays
// on the screen, empty.
void ShowPreview(QWidget* dialog = nullptr);

}  // namespace Global
