#include "execution/Preview.h"

#include <QPointer>

#include "app/Global.h"
#include "execution/frmTest.h"

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
    // It outlives the dialog.
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
    // One that was closed a moment ago may wait for its end.
    if (!form || form->IsClosed()) {
        form = MakeWindow(dialog);
        isOnItsOwn = dialog != nullptr;
    }
    form->Form_Load();
}

}  // namespace Global
