// SPDX-License-Identifier: GPL-3.0-or-later
#include "execution/Preview.h"

#include <QPointer>

#include "execution/frmTest.h"
#include "shared/Global.h"

namespace Global {

namespace {

frmTest* MakeWindow(QWidget* dialog) {
    if (dialog == nullptr) {
        auto* form = new frmTest;
        if (Frame != nullptr) {
            Frame->AddChild(*form);
        }
        return form;
    }
    // The window outlives the dialog.
    auto* form = new frmTest(dialog->parentWidget());
    form->StandAlone();
    return form;
}

}  // namespace

void ShowPreview(QWidget* dialog) {
    static QPointer<frmTest> form;
    static bool isOnItsOwn = false;
    if (form && !form->IsClosed() && isOnItsOwn != (dialog != nullptr)) {
        form->CloseWindow();
    }
    // A window that was just closed may not be destroyed yet.
    if (!form || form->IsClosed()) {
        form = MakeWindow(dialog);
        isOnItsOwn = dialog != nullptr;
    }
    form->Form_Load();
}

}  // namespace Global
