// SPDX-License-Identifier: GPL-3.0-or-later
#include "desktop/DeskWindows.h"

#include <QMdiSubWindow>

#include "desktop/frmDesk.h"
#include "platform/controls/child_area.h"
#include "shared/Global.h"

frmDesk* OpenDeskWindow(ChildArea& area) {
    const auto slot = static_cast<std::size_t>(++Global::DeskCount);
    if (Global::DeskWindows.size() <= slot) {
        Global::DeskWindows.resize(slot + 1);  // never shrinks: windows in higher slots stay reachable
    }
    auto* window = new frmDesk;
    Global::DeskWindows[slot] = window;
    window->Tag = std::to_string(slot);
    QObject::connect(&area.Add(*window), &QMdiSubWindow::aboutToActivate, window, &frmDesk::Form_Activate);
    window->Form_Load();
    if (slot > 1) {
        ChildArea::PlaceFree(*window);
    }
    window->show();
    window->lsvDesk->setFocus();  // not the toolbar's first button: users move through the list with keys
    window->Form_Activate();
    return window;
}

frmDesk& DeskAt(int slot) {
    return dynamic_cast<frmDesk&>(Global::DeskSlot(slot));
}

frmDesk* FindDesk(int slot) {
    const bool inArray = slot >= 0 && slot < static_cast<int>(Global::DeskWindows.size());
    return inArray ? dynamic_cast<frmDesk*>(Global::DeskWindows[static_cast<std::size_t>(slot)]) : nullptr;
}

frmDesk& ActiveDeskForm() {
    return dynamic_cast<frmDesk&>(Global::ActiveDesk());
}

// A nested command finds the windows already kept and leaves them to the outer one.
KeptWindows::KeptWindows(const frmDesk& any) {
    const auto* frame = qobject_cast<QMdiSubWindow*>(any.parentWidget());
    for (QMdiSubWindow* window : frame->mdiArea()->subWindowList()) {
        if (window->testAttribute(Qt::WA_DeleteOnClose)) {
            window->setAttribute(Qt::WA_DeleteOnClose, false);
            m_windows.emplace_back(window);
        }
    }
}

KeptWindows::~KeptWindows() {
    for (const QPointer<QMdiSubWindow>& window : m_windows) {
        if (window && window->isHidden()) {
            window->deleteLater();
        } else if (window) {
            window->setAttribute(Qt::WA_DeleteOnClose);
        }
    }
}
