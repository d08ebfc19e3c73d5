// SPDX-License-Identifier: GPL-3.0-or-later
// Members of DesignWindow: opening, saving and closing.
#include <QApplication>
#include <QFileDialog>
#include <QMessageBox>
#include <QPushButton>
#include <QStackedWidget>
#include <QStatusBar>
#include <QTabWidget>

#include "designer/model/report_data.h"
#include "designer/window/design_window.h"
#include "designer/window/designer_settings.h"
#include "designer/window/preview_page.h"
#include "designer/window/source_page.h"
#include "designer/window/xml_page.h"
#include "designer/wizards/new_report_wizard.h"
#include "platform/base/digest.h"
#include "platform/contracts/runtime.h"

namespace designer {
namespace {

namespace fs = std::filesystem;

QString Filters() {
    return DesignWindow::tr("Reports (*.rdl *.rpt *.rdlc);;All files (*)");
}

// Raises SourceFlaw as well if the text is well-formed and no report: nothing of it can be designed.
Document ReportIn(const std::string& bytes) {
    Document document(bytes);
    const std::string root = document.Name(document.Root());
    if (root != "Report") {
        throw SourceFlaw(document.PlaceOf(document.Root()),
                         "this is no report: its root is \"" + root + "\", not \"Report\"");
    }
    return document;
}

}  // namespace

QString DesignWindow::NameOf(const fs::path& file) {
    return file.empty() ? tr("New Report") : QString::fromStdString(file.filename().string());
}

void DesignWindow::Complain(const QString& text) {
    QMessageBox::warning(this, tr("Oxbow Courier Designer"), text);
}

void DesignWindow::ShowTitle() {
    const QString name = NameOf(m_model->File());
    setWindowTitle((m_isReadOnly ? tr("%1[*] (read-only) - Oxbow Courier Designer")
                                 : tr("%1[*] - Oxbow Courier Designer"))
                       .arg(name));
    setWindowModified(IsChanged());
    setWindowFilePath({});
}

bool DesignWindow::IsChanged() const {
    return m_isLost || m_xml->IsModified() ||
           (IsText() ? m_source->IsModified() : m_model->Source().IsModified());
}

std::string DesignWindow::Bytes() const {
    return IsText() ? m_source->Bytes() : m_model->Source().Bytes();
}

bool DesignWindow::OpenFile(const fs::path& file) {
    try {
        const fs::path whole = fs::absolute(file).lexically_normal();
        const auto stamp = StampOf(whole);
        std::string bytes = ReadReportFile(whole);
        if (!ClaimToShow(whole)) {
            return false;
        }
        m_stamp = stamp;
        m_digest = Sha256(bytes);
        m_isLost = false;
        ShowBytes(bytes, whole);
        m_recovery.Remove();
        AddRecentFile(whole);
        return true;
    } catch (const RuntimeError& error) {
        ForgetRecentFile(QString::fromStdString(file.string()));
        Complain(QString::fromStdString(error.Description()));
        return false;
    }
}

// The file may have been changed since. Its digest shows whether it is as it was; its time does not.
void DesignWindow::ShowLost(const LostReport& lost) {
    m_stamp = lost.original.empty() ? std::nullopt : std::optional(FileStamp());
    m_digest = lost.digest;
    m_claim.Release();
    m_isReadOnly = !lost.original.empty() && !m_claim.Take(lost.original);
    m_isLost = true;
    ShowBytes(lost.bytes, lost.original);
    KeepCopy();
}

void DesignWindow::ShowNew(const std::string& bytes, const Logon& logon) {
    ShowLost({.copy = {}, .original = {}, .digest = {}, .bytes = bytes});
    const std::vector<ReportSource> sources = SourcesOf(m_model->Source());
    if (!sources.empty() && !logon.user.empty()) {
        m_model->SourceLogons()[sources.front().name] = logon;
    }
}

void DesignWindow::ShowBytes(const std::string& bytes, const fs::path& file) {
    try {
        Document document = ReportIn(bytes);
        m_stack->setCurrentWidget(m_tabs);
        m_xml->Forget();
        m_tabs->setCurrentWidget(m_canvas);
        m_preview->Clear();
        m_model->SetDocument(std::move(document));
        m_model->SourceLogons().clear();
        m_canvas->setFocus();
    } catch (const SourceFlaw& flaw) {
        m_model->SetDocument(Document(BlankReport()));
        m_stack->setCurrentWidget(m_source);
        m_source->Show(bytes, flaw);
        m_source->setFocus();
    }
    m_model->SetFile(file);
    m_copyTimer.stop();
    ShowCommands();
}

void DesignWindow::OpenMendedText() {
    const std::string bytes = m_source->Bytes();
    try {
        Document document = ReportIn(bytes);
        m_isLost = m_isLost || m_source->IsModified();  // what was typed is not in the file yet
        m_stack->setCurrentWidget(m_tabs);
        m_model->SetDocument(std::move(document));
        m_canvas->setFocus();
    } catch (const SourceFlaw& flaw) {
        m_source->ShowFlaw(flaw);
        m_source->setFocus();
    }
    ShowTitle();
    ShowCommands();
}

void DesignWindow::AskAndOpen() {
    const QString folder = QString::fromStdString(m_model->File().parent_path().string());
    const QStringList files = QFileDialog::getOpenFileNames(this, tr("Open Report"), folder, Filters());
    for (const QString& file : files) {
        emit WindowRequested(file);
    }
}

void DesignWindow::MakeFromData() {
    NewReportWizard wizard(this);
    if (wizard.exec() == QDialog::Accepted) {
        const rdl::QueryRequest& request = wizard.Draft().request;
        emit ReportMade(wizard.Text(), {.user = request.user, .password = request.password});
    }
}

void DesignWindow::FinishTyping() {
    m_canvas->FinishEditing();
    m_properties->FinishEditing();
}

bool DesignWindow::TakeXml() {
    if (m_xml->Apply()) {
        return true;
    }
    m_tabs->setCurrentWidget(m_xml);
    return false;
}

bool DesignWindow::Save() {
    FinishTyping();
    if (!TakeXml()) {
        return false;
    }
    const fs::path file = m_model->File();
    if (file.empty() || (m_isReadOnly && !m_claim.Take(file))) {
        return AskAndSaveAs();
    }
    m_isReadOnly = false;  // the other window has been closed
    switch (AskToOverwrite()) {
        case Overwriting::Allowed:
            return WriteTo(file);
        case Overwriting::Elsewhere:
            return AskAndSaveAs();
        case Overwriting::Refused:
            break;
    }
    ShowTitle();
    return false;
}

bool DesignWindow::AskAndSaveAs() {
    FinishTyping();
    if (!TakeXml()) {
        return false;
    }
    const fs::path& now = m_model->File();
    QString file = QFileDialog::getSaveFileName(
        this, tr("Save Report As"), now.empty() ? tr("report.rdl") : QString::fromStdString(now.string()),
        Filters());
    if (file.isEmpty()) {
        return false;
    }
    if (QFileInfo(file).suffix().isEmpty()) {
        file += ".rdl";
        if (QFileInfo::exists(file) &&
            QMessageBox::question(this, tr("Save Report As"), tr("\"%1\" exists. Replace it?").arg(file)) !=
                QMessageBox::Yes) {
            return false;
        }
    }
    const fs::path target = fs::absolute(file.toStdString()).lexically_normal();
    const bool isOwn = !m_isReadOnly && !now.empty() && IsSameFile(now, target);
    if (!isOwn && FileClaim::IsTaken(target)) {
        Complain(tr("\"%1\" is open in another window of the designer. Save under another name.")
                     .arg(NameOf(target)));
        return false;
    }
    if (!WriteTo(target)) {
        return false;
    }
    m_isReadOnly = !m_claim.Take(target);
    m_model->SetFile(target);
    return true;
}

bool DesignWindow::WriteTo(const fs::path& file) {
    try {
        const std::string bytes = Bytes();
        WriteReportFile(file, bytes);
        m_digest = Sha256(bytes);
    } catch (const RuntimeError& error) {
        Complain(QString::fromStdString(error.Description()));
        return false;
    } catch (const SourceFlaw& flaw) {
        Complain(QString::fromUtf8(flaw.what()));
        return false;
    }
    m_stamp = StampOf(file);
    m_isLost = false;
    m_source->SetModified(false);
    m_model->MarkSaved();
    m_copyTimer.stop();
    m_recovery.Remove();
    AddRecentFile(file);
    statusBar()->showMessage(tr("Saved %1").arg(NameOf(file)), 5000);
    ShowTitle();
    return true;
}

bool DesignWindow::MayLeave() {
    FinishTyping();
    if (!IsChanged()) {
        return true;
    }
    QMessageBox box(QMessageBox::Question, tr("Oxbow Courier Designer"),
                    tr("\"%1\" has changes that are not saved. Save them?").arg(NameOf(m_model->File())),
                    QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel, this);
    box.setDefaultButton(QMessageBox::Save);
    const int answer = box.exec();
    return answer == QMessageBox::Discard || (answer == QMessageBox::Save && Save());
}

bool DesignWindow::AskToLeave() {
    if (!IsChanged()) {
        FinishTyping();
    }
    if (IsChanged()) {
        raise();
        activateWindow();
    }
    m_mayLeave = MayLeave();
    return m_mayLeave;
}

// A further change does not restart the timer: a copy is also made while the user keeps working.
void DesignWindow::KeepCopySoon() {
    if (!m_copyTimer.isActive()) {
        m_copyTimer.start();
    }
}

void DesignWindow::KeepCopy() {
    if (!IsChanged()) {
        m_recovery.Remove();
        return;
    }
    try {
        m_recovery.Write(m_model->File(), m_digest, Bytes());
    } catch (const SourceFlaw&) {
        // A character that the encoding of the file does not have: saving reports it.
    }
}

}  // namespace designer
