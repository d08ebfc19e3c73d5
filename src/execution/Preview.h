// The preview of reports on the screen.
#pragma once

class QWidget;

namespace Global {

// Shows CurrentReport in the preview window frmTest, not modally: a child window of the frame or, when a
// dialog asks, which stands before the frame, a window of its own before that dialog. There is one such
// window: it leaves the report that it showed before. It reports its errors itself and stays up, empty.
void ShowPreview(QWidget* dialog = nullptr);

}  // namespace Global
