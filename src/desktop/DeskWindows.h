// The Desktop windows of the frame and their slots.
#pragma once

#include <QPointer>
#include <vector>

class ChildArea;
class QMdiSubWindow;
class frmDesk;

// A new Desktop window of the place CurrentFolderID, in the slot behind the highest in use. The slot's number
// is the window's Tag. When a window in the middle was closed before, the new one takes the slot of a window
// that is still open; that one stays on the screen and is no longer reached through the slots.
frmDesk* OpenDeskWindow(ChildArea& area);

// The window in a slot: 9 "Subscript out of range" when there is no such slot, 91 when it is empty.
frmDesk& DeskAt(int slot);
frmDesk* FindDesk(int slot);  // null for both
// The one that commands act on.
frmDesk& ActiveDeskForm();

// For commands that let events run: the button that such a command came from must outlive it. While this
// lives, child windows of the frame that the user closes leave the screen and their slot, and nothing more;
// they are destroyed behind it.
class KeptWindows {
 public:
    explicit KeptWindows(const frmDesk& any);  // one of the frame's
    ~KeptWindows();
    KeptWindows(const KeptWindows&) = delete;
    KeptWindows& operator=(const KeptWindows&) = delete;

 private:
    std::vector<QPointer<QMdiSubWindow>> m_windows;
};
