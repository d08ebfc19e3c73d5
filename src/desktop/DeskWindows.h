// SPDX-License-Identifier: GPL-3.0-or-later
// The Desktop windows of the frame and their slots.
#pragma once

#include <QPointer>
#include <vector>

class ChildArea;
class QMdiSubWindow;
class frmDesk;

// Opens a Desktop window of the place CurrentFolderID in the slot after the highest one in use. The slot's
// number is the window's Tag. If a window in the middle was closed before, the new window takes the slot of a
// window that is still open. That window stays on the screen and is no longer reached through the slots. The
// child window in `area` owns the result.
frmDesk* OpenDeskWindow(ChildArea& area);

// Returns the window in a slot. Raises 9 "Subscript out of range" if there is no such slot, 91 if it is
// empty.
frmDesk& DeskAt(int slot);
frmDesk* FindDesk(int slot);  // null in both cases
// Returns the window that commands act on. Raises as DeskAt.
frmDesk& ActiveDeskForm();

// For commands that let events run: the button that such a command came from must outlive it. While an object
// of this class lives, a child window that the user closes leaves the screen and its slot but is not
// destroyed. The destructor destroys it.
class KeptWindows {
 public:
    explicit KeptWindows(const frmDesk& any);  // any window of the frame
    ~KeptWindows();
    KeptWindows(const KeptWindows&) = delete;
    KeptWindows& operator=(const KeptWindows&) = delete;

 private:
    std::vector<QPointer<QMdiSubWindow>> m_windows;
};
