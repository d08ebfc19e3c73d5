// SPDX-License-Identifier: GPL-3.0-or-later
// Members of DesignWindow: other windows, processes and programs that have the file too.
#include <QApplication>
#include <QMessageBox>
#include <QPushButton>

#include "designer/window/design_window.h"
#include "platform/base/digest.h"
#include "platform/contracts/runtime.h"

namespace designer {

namespace fs = std::filesystem;

// Claims a file that is going to be shown. One that another process of the designer has open is shown to be
// read, if the user wants that. Returns false if not; then the window keeps what it has.
bool DesignWindow::ClaimToShow(const fs::path& file) {
    const bool isAgain = m_isReadOnly && file == m_model->File();
    FileClaim claim;
    const bool isOwn = claim.Take(file);
    if (!isOwn && !isAgain) {
        QMessageBox box(QMessageBox::Question, tr("Oxbow Courier Designer"),
                        tr("\"%1\" is open in another window of the designer.").arg(NameOf(file)),
                        QMessageBox::NoButton, this);
        box.setInformativeText(tr(
            "Here it can be read, and changed and saved under another name. Once the other window is closed "
            "it can be saved here."));
        QPushButton* read = box.addButton(tr("Open &Read-Only"), QMessageBox::AcceptRole);
        QPushButton* cancel = box.addButton(QMessageBox::Cancel);
        box.setDefaultButton(read);
        box.setEscapeButton(cancel);
        box.exec();
        if (box.clickedButton() != read) {
            return false;
        }
    }
    m_claim = claim;
    m_isReadOnly = !isOwn;
    return true;
}

// Whether the file has what was read from it or written to it last. One that was touched, or written again
// with the same bytes, has.
bool DesignWindow::IsFileAsKnown() const {
    const auto now = StampOf(m_model->File());
    if (now == m_stamp) {
        return true;
    }
    try {
        return now && Sha256(ReadReportFile(m_model->File())) == m_digest;
    } catch (const RuntimeError&) {
        return false;
    }
}

// A file that is gone is written again without a question.
DesignWindow::Overwriting DesignWindow::AskToOverwrite() {
    if (!StampOf(m_model->File()) || IsFileAsKnown()) {
        return Overwriting::Allowed;
    }
    QMessageBox box(
        QMessageBox::Warning, tr("Oxbow Courier Designer"),
        tr("Another program has changed \"%1\" since it was opened here.").arg(NameOf(m_model->File())),
        QMessageBox::NoButton, this);
    box.setInformativeText(tr("Overwriting it loses what the other program has changed."));
    QPushButton* overwrite = box.addButton(tr("&Overwrite"), QMessageBox::DestructiveRole);
    QPushButton* elsewhere = box.addButton(tr("Save &As..."), QMessageBox::AcceptRole);
    QPushButton* cancel = box.addButton(QMessageBox::Cancel);
    box.setDefaultButton(elsewhere);
    box.setEscapeButton(cancel);
    m_asking = true;
    box.exec();
    m_asking = false;
    return box.clickedButton() == overwrite   ? Overwriting::Allowed
           : box.clickedButton() == elsewhere ? Overwriting::Elsewhere
                                              : Overwriting::Refused;
}

void DesignWindow::LookAtFile() {
    const fs::path file = m_model->File();
    if (m_asking || file.empty() || !m_stamp || !isActiveWindow() || QApplication::activeModalWidget()) {
        return;
    }
    const auto now = StampOf(file);
    if (now == m_stamp) {
        return;
    }
    const bool isSame = IsFileAsKnown();
    m_stamp = now;
    if (!isSame) {
        AskToReload(now.has_value());
    }
}

void DesignWindow::AskToReload(bool isThere) {
    const fs::path file = m_model->File();
    m_asking = true;
    QMessageBox box(
        QMessageBox::Question, tr("Oxbow Courier Designer"),
        (isThere ? tr("Another program has changed \"%1\".") : tr("Another program has removed \"%1\"."))
            .arg(NameOf(file)),
        QMessageBox::NoButton, this);
    QPushButton* reload = isThere ? box.addButton(tr("&Reload"), QMessageBox::AcceptRole) : nullptr;
    QPushButton* keep = box.addButton(tr("&Keep What Is Here"), QMessageBox::RejectRole);
    box.setDefaultButton(keep);
    box.setEscapeButton(keep);
    if (IsChanged() && isThere) {
        box.setInformativeText(tr("Reloading loses the changes that are not saved."));
    }
    box.exec();
    m_asking = false;
    if (reload && box.clickedButton() == reload) {
        OpenFile(file);
    } else {
        m_isLost = true;  // what is here is in no file
        ShowTitle();
    }
}

}  // namespace designer
