// SPDX-License-Identifier: GPL-3.0-or-later
#include "dialogs/ModalForm.h"

#include <QApplication>
#include <QWidget>

#include "platform/qt/application.h"
#include "shared/Global.h"

QWidget* OwnerWindow() {
    if (QWidget* modal = QApplication::activeModalWidget()) {
        return modal;
    }
    QWidget* active = QApplication::activeWindow();
    return active != nullptr ? active : dynamic_cast<QWidget*>(Global::Frame);
}

void BringToFront(QWidget& form) {
    form.show();
    form.raise();
    form.activateWindow();
}

bool LoadForm(const std::function<void()>& load) {
    try {
        load();
        return true;
    } catch (...) {
        EndByRuntimeError(CurrentError());
        return false;
    }
}
