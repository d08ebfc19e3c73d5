// The preview of reports on the screen.
#pragma once

namespace Global {

// Shows CurrentReport in the preview window frmTest, a child window of the frame, not modally. There is one
// such window: it leaves the report that it showed before. It reports its errors itself and stays up, empty.
void ShowPreview();

}  // namespace Global
