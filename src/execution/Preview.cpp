#include "execution/Preview.h"

#include <QPointer>

#include "app/Global.h"
#include "execution/frmTest.h"

namespace Global {

void ShowPreview() {
    static QPointer<frmTest> form;
    // One that was closed a moment ago may wait for its end.
    if (!form || form->IsClosed()) {
        form = new frmTest;
        if (Frame != nullptr) {
            Frame->AddChild(*form);
        }
    }
    form->Form_Load();
}

}  // namespace Global
