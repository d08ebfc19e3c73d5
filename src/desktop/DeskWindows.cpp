#include "desktop/DeskWindows.h"

#include <QMdiArea>
#include <QMdiSubWindow>
#include <QStyle>

#include "app/Global.h"
#include "desktop/frmDesk.h"

namespace {

// One title bar below and beside the one before, so that every title is seen, and never out of the frame,
// which chose a place before the window had its size.
void Cascade(QMdiSubWindow& window, const QMdiArea& area) {
    const QSize room = area.viewport()->size() - window.size();
    const int step = window.style()->pixelMetric(QStyle::PM_TitleBarHeight);
    const int before = static_cast<int>(area.subWindowList().size()) - 1;
    const auto place = [&](int length) { return length < step ? 0 : before % (length / step + 1) * step; };
    window.move(place(room.width()), place(room.height()));
}

}  // namespace

frmDesk* OpenDeskWindow(QMdiArea& area) {
    const auto slot = static_cast<std::size_t>(++Global::DeskCount);
    if (Global::DeskWindows.size() <= slot) {
        Global::DeskWindows.resize(slot + 1);  // never shrinks: windows in higher slots stay reachable
    }
    auto* window = new frmDesk;
    Global::DeskWindows[slot] = window;
    window->Tag = std::to_string(slot);
    QMdiSubWindow* frame = area.addSubWindow(window);
    frame->setAttribute(Qt::WA_DeleteOnClose);
    QObject::connect(frame, &QMdiSubWindow::aboutToActivate, window, &frmDesk::Form_Activate);
    window->Form_Load();
    if (slot > 1) {
        Cascade(*frame, area);
    }
    window->show();
    window->lsvDesk
        ->setFocus();  // and not the toolbar's first button: what was opened is walked on with keys
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

// A command inside another finds the windows kept already and leaves them to the outer one.
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
