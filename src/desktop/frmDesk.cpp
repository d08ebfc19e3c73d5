#include "desktop/frmDesk.h"

#include <QCloseEvent>

#include "app/Global.h"
#include "platform/convert.h"

frmDesk::frmDesk(QWidget* parent) : QWidget(parent) {
    setObjectName("frmDesk");
    setWindowTitle("Desktop");
}

void frmDesk::closeEvent(QCloseEvent* event) {
    Form_Unload();
    event->accept();
}

void frmDesk::Form_Activate() {
    Global::DeskIndex = CInt(Tag);
}

void frmDesk::Form_Unload() {
    --Global::DeskCount;
    const auto slot = static_cast<std::size_t>(CInt(Tag));
    if (slot < Global::DeskWindows.size()) {
        Global::DeskWindows[slot] = nullptr;
    }
}

void frmDesk::ListMousePointer(int pointer) {
    if (pointer == 0) {
        unsetCursor();
    } else {
        setCursor(Qt::WaitCursor);
    }
}

std::string frmDesk::Caption() const {
    return windowTitle().toStdString();
}

// The window shows no items: nothing can be selected.
std::string frmDesk::SelectedText() const {
    throw RuntimeError(err::ObjectNotSet);
}

std::string frmDesk::SelectedKey() const {
    throw RuntimeError(err::ObjectNotSet);
}

void frmDesk::ComAction(int /*command*/) {}
