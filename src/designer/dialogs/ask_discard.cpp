// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/dialogs/ask_discard.h"

#include <QCoreApplication>
#include <QMessageBox>
#include <QPushButton>

namespace designer {

bool AskToDiscard(QWidget& dialog) {
    const auto words = [](const char* text) { return QCoreApplication::translate("AskToDiscard", text); };
    QMessageBox box(QMessageBox::Question, dialog.windowTitle(), words("Discard what was typed here?"),
                    QMessageBox::NoButton, &dialog);
    const QPushButton* discard = box.addButton(words("&Discard"), QMessageBox::DestructiveRole);
    QPushButton* keep = box.addButton(words("&Keep"), QMessageBox::RejectRole);
    box.setDefaultButton(keep);
    box.setEscapeButton(keep);
    box.exec();
    return box.clickedButton() == discard;
}

}  // namespace designer
