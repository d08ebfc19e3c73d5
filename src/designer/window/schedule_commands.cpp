// SPDX-License-Identifier: GPL-3.0-or-later
// Members of DesignWindow: from the report to a schedule.
#include <QMenu>
#include <QMessageBox>
#include <QStatusBar>
#include <cstring>

#include "designer/window/design_window.h"
#include "platform/posix/handed_report.h"
#include "platform/shell/desktop_shell.h"
#include "platform/shell/detached_process.h"

namespace designer {

void DesignWindow::AddScheduleCommand(QMenu& menu) {
    AddCommand(menu, "fileSchedule", tr("Sc&hedule This Report..."), QKeySequence(Qt::Key_F9),
               [this] { ScheduleReport(); });
    menu.addSeparator();
}

// A schedule is made of a file: of what is on the disk, not of what is shown.
bool DesignWindow::IsSavedForSchedule() {
    FinishTyping();
    if (m_model->File().empty()) {
        return AskAndSaveAs();
    }
    if (!IsChanged()) {
        return true;
    }
    QMessageBox box(QMessageBox::Question, tr("Schedule This Report"),
                    tr("The report has changes that are not saved. A schedule is made of the saved file. "
                       "Save them now?"),
                    QMessageBox::Save | QMessageBox::Cancel, this);
    box.setDefaultButton(QMessageBox::Save);
    return box.exec() == QMessageBox::Save && Save();
}

// Each report starts an editor of its own: any number of them may run.
void DesignWindow::ScheduleReport() {
    if (!IsSavedForSchedule()) {
        return;
    }
    const std::filesystem::path editor = DesktopShell::InstalledProgram();
    const std::string variable = std::string(HandedReportVariable) + "=" + m_model->File().string();
    const int failure = StartDetached(editor, {}, {}, {variable});
    if (failure != 0) {
        Complain(
            tr("The editor \"%1\" cannot be started: %2")
                .arg(QString::fromStdString(editor.string()), QString::fromLocal8Bit(strerror(failure))));
        return;
    }
    const bool keepsLogons = !m_model->SourceLogons().empty();
    statusBar()->showMessage(
        keepsLogons ? tr("The editor starts with this report. The schedule needs the user and password again")
                    : tr("The editor starts with this report"),
        15000);
}

}  // namespace designer
