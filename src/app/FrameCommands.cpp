// SPDX-License-Identifier: GPL-3.0-or-later
// Commands of the main window frmMain: its windows and its end.
#include <QPointer>
#include <QTimer>

#include "app/frmMain.h"
#include "app/frmSplash.h"
#include "desktop/DeskWindows.h"
#include "dialogs/ModalForm.h"
#include "platform/base/journal.h"
#include "platform/contracts/process.h"
#include "shared/Global.h"

void mnuEnd_Click() {
    for (std::size_t slot = 1; slot < Global::DeskWindows.size(); ++slot) {
        Global::DeskWindows[slot] = nullptr;
    }
    EndProcess();
}

void mnutbExit_Click() {
    journal::Write({journal::Level::Notice, "stop", {journal::Text("reason", "exit")}});
    EndProcess();
}

void mnuAbout_Click() {
    static QPointer<frmSplash> about;
    if (!about) {
        about = new frmSplash(&frmMain::Instance());
        about->setAttribute(Qt::WA_DeleteOnClose);
    }
    BringToFront(*about);
}

void mnuDesktop_Click() {
    Global::CurrentFolderID = "0";
    OpenDeskWindow(frmMain::Instance().Children());
}

void mnuCasc_Click() {
    frmMain::Instance().Children().Cascade();
}

void mnuTile_Click() {
    frmMain::Instance().Children().tileSubWindows();
}

void mnuArr_Click() {
    frmMain::Instance().Children().ArrangeIcons();
}
