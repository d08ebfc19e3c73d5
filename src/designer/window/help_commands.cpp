// SPDX-License-Identifier: GPL-3.0-or-later
// Members of DesignWindow: the menu Help.
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>

#include "designer/window/design_window.h"
#include "platform/base/paths.h"
#include "platform/contracts/runtime.h"
#include "platform/shell/desktop_shell.h"

namespace designer {

void DesignWindow::BuildHelpMenu() {
    QMenu& help = *menuBar()->addMenu(tr("&Help"));
    AddCommand(help, "helpBook", tr("Help &Book"), QKeySequence(Qt::SHIFT | Qt::Key_F1),
               [this] { OpenHelpBook(); });
    AddCommand(help, "helpKeys", tr("&Keys on the Canvas"), QKeySequence::HelpContents, [this] {
        QMessageBox::information(
            this, tr("Keys on the Canvas"),
            tr("Tab, Shift+Tab: the next or previous item\nEscape: what the item is in\n"
               "Arrow keys: move by a step of the grid; with Ctrl by a fifth of it\n"
               "Shift+arrow keys: resize\nIn a table the arrow keys go to the next cell, Shift+click and "
               "Shift+arrow keys select several\nEnter, F2: type the text of a text box\nF6: the next pane"));
    });
}

// The book is the editor's: it has chapters for both programs.
void DesignWindow::OpenHelpBook() {
    constexpr int Started = 32, Missing = 2, NoProgram = 31;
    try {
        const std::string book = AppPath() + "\\Oxbow Courier.chm";
        const int code = DesktopShell().ShellExecuteA("open", book, "", "", 1);
        if (code <= Started) {
            Complain(code == Missing     ? tr("The help book is not installed")
                     : code == NoProgram ? tr("The desktop has no program for help books (.chm)")
                                         : tr("The program for help books (.chm) cannot be started"));
        }
    } catch (const RuntimeError& error) {
        Complain(QString::fromStdString(error.Description()));  // the application's folder cannot be made
    }
}

}  // namespace designer
