// SPDX-License-Identifier: GPL-3.0-or-later
#include "dialogs/frmWiz.h"
#include "dialogs/ModalForm.h"
#include "dialogs/ScheduleFields.h"

#include <QPointer>
#include <QScopeGuard>
#include <QScopedValueRollback>
#include <QStyle>
#include <algorithm>

#include "dialogs/frmPar.h"
#include "dialogs/frmWizDone.h"
#include "execution/RunReport.h"
#include "mail/PickRecipients.h"
#include "platform/base/convert.h"
#include "platform/base/paths.h"
#include "platform/base/resume_next.h"
#include "platform/contracts/loop.h"
#include "platform/contracts/prompts.h"
#include "platform/controls/folders/common_dialog.h"
#include "platform/controls/kit/window_size.h"
#include "platform/shell/window_handle.h"
#include "scheduler/Frequencies.h"
#include "shared/Global.h"
#include "shared/ShellMod.h"
#include "store/TextConventions.h"
#include "ui_frmWiz.h"

namespace {

constexpr const char *Next = "Next >", *FinishCaption = "&Finish";
constexpr const char* BrowseTitle = "Browse for Folder";

std::string WithBackslash(const std::string& folder) {
    return folder.ends_with('\\') ? folder : folder + "\\";
}

// Returns the folder of a file, with its backslash.
std::string FolderOf(const std::string& file) {
    const auto backslashes = static_cast<int>(std::count(file.begin(), file.end(), '\\'));
    const std::string piece = cmFunc::GetDelimitedField(file, backslashes + 1, "\\");
    return file.substr(0, file.size() - piece.size());
}

}  // namespace

frmWiz& frmWiz::Instance() {
    static QPointer<frmWiz> form;
    // A form that was just unloaded may not be destroyed yet.
    if (!form || form->m_unloaded) {
        form = new frmWiz(dynamic_cast<QWidget*>(Global::Frame));
        form->Form_Load();
    }
    return *form;
}

void frmWiz::ShowForm() {
    if (m_writing) {
        return;
    }
    BringToFront(*this);
}

frmWiz::frmWiz(QWidget* parent) : QDialog(parent), m_ui(std::make_unique<Ui::frmWiz>()) {
    m_ui->setupUi(this);
    FillControls();
    connect(m_ui->cmdBack, &QPushButton::clicked, this, &frmWiz::cmdBack_Click);
    connect(m_ui->cmdCancel, &QPushButton::clicked, this, &frmWiz::cmdCancel_Click);
    connect(m_ui->cmdSave, &QPushButton::clicked, this, &frmWiz::cmdSave_Click);
    connect(m_ui->txtTitle, &TextBox::LostFocus, this, &frmWiz::txtTitle_LostFocus);
    ConnectSchedule();
    ConnectReports();
    ConnectEmail();
}

frmWiz::~frmWiz() = default;

void frmWiz::FillControls() {
    auto words = Global::frequencies::OfPackages;
    std::sort(words.begin(), words.end());
    for (const std::string_view word : words) {
        m_ui->cmbFreq1->AddItem(std::string(word));
    }
    ListFormats(*m_ui->cmbFormat1, Global::FormatList::PackageWizard);
    m_ui->filList->Pattern("*.rpt");
    m_ui->txtReport1->ShowsPaths(true);
    m_ui->lsvReports->AcceptFiles(true);
    m_ui->cmbBrowse1->setIcon(style()->standardIcon(QStyle::SP_ArrowRight, nullptr, this));
    m_ui->Command1->setIcon(style()->standardIcon(QStyle::SP_ArrowLeft, nullptr, this));
}

void frmWiz::ConnectSchedule() {
    connect(m_ui->cmdBrowse, &QPushButton::clicked, this, &frmWiz::cmdBrowse_Click);
    connect(m_ui->cmdBrowse1, &QPushButton::clicked, this, &frmWiz::cmdBrowse1_Click);
    connect(m_ui->txtReport1, &TextBox::LostFocus, this, &frmWiz::txtReport1_LostFocus);
}

void frmWiz::ConnectReports() {
    connect(m_ui->dirList, &DirListBox::Change, this, &frmWiz::dirList_Change);
    connect(m_ui->dirList, &DirListBox::KeyDown, this, &frmWiz::dirList_KeyDown);
    connect(m_ui->cmdFolder, &QPushButton::clicked, this, &frmWiz::cmdFolder_Click);
    connect(m_ui->filList, &FileListBox::MouseMove, this, &frmWiz::filList_MouseMove);
    connect(m_ui->filList, &FileListBox::DblClick, this, &frmWiz::filList_DblClick);
    connect(m_ui->cmbBrowse1, &QPushButton::clicked, this, &frmWiz::cmbBrowse1_Click);
    connect(m_ui->Command1, &QPushButton::clicked, this, &frmWiz::Command1_Click);
    connect(m_ui->lsvReports, &QListWidget::itemSelectionChanged, this, &frmWiz::EnableRemove);
    EnableRemove();
    connect(m_ui->lsvReports, &ListBox::OLEDragDrop, this, &frmWiz::lsvReports_OLEDragDrop);
}

void frmWiz::ConnectEmail() {
    connect(m_ui->chkMail, &CheckBox::Click, this, &frmWiz::chkMail_Click);
    connect(m_ui->cmdTo, &QPushButton::clicked, this, &frmWiz::cmdTo_Click);
    connect(m_ui->txtRecipient, &TextBox::LostFocus, this, &frmWiz::txtRecipient_LostFocus);
    connect(m_ui->txtSubject, &TextBox::LostFocus, this, &frmWiz::txtSubject_LostFocus);
    connect(m_ui->txtMsg, &MultiLineTextBox::LostFocus, this, &frmWiz::txtMsg_LostFocus);
}

void frmWiz::Form_Load() {
    try {
        // Before it is shown: its position depends on its size.
        constexpr int CharactersWide = 80, LinesHigh = 26;
        resize(SizeForText(*this, CharactersWide, LinesHigh));
        show();
        DoEvents();
        Global::ParCaller = "frmWiz";
        m_ui->txtReport1->Text(Global::OutputPath);
        SetFirstTimes(*m_ui->msTime, *m_ui->stDate1, *m_ui->enDate1);
        EmptyWorkTable();
        // Last, because the folder used before may be missing.
        m_ui->dirList->Path(Global::DefPath);
    } catch (...) {
        // "occured": sic
        MsgBox(Global::ErrorText("An error occured. ", CurrentError()), vbExclamation);
    }
}

void frmWiz::ShowPage(QWidget* page) {
    m_ui->pages->setCurrentWidget(page);
    QWidget* first = page == m_ui->Step1   ? static_cast<QWidget*>(m_ui->txtTitle)
                     : page == m_ui->Step2 ? m_ui->cmbFreq1
                     : page == m_ui->Step3 ? static_cast<QWidget*>(m_ui->filList)
                                           : m_ui->txtRecipient;
    (first->isEnabled() ? first : m_ui->chkMail)->setFocus();
}

void frmWiz::cmdBack_Click() {
    const QWidget* page = m_ui->pages->currentWidget();
    if (page == m_ui->Step4) {
        ShowPage(m_ui->Step3);
        m_ui->cmdSave->setText(Next);
    } else if (page == m_ui->Step3) {
        ShowPage(m_ui->Step2);
    } else {
        ShowPage(m_ui->Step1);
        m_ui->cmdBack->setEnabled(false);
    }
}

// A wizard that ended with its process has left its values, and report lines with the same text would take
// them.
void frmWiz::EmptyWorkTable() {
    ADODB::Connection connection;
    connection.Open(Global::ConnectionString);
    Global::DeleteWaitingParameters(connection);
    connection.Close();
}

void frmWiz::cmdCancel_Click() {
    EmptyWorkTable();
    Unload();
}

void frmWiz::reject() {
    cmdCancel_Click();
}

void frmWiz::Unload() {
    m_unloaded = true;
    hide();
    deleteLater();
}

void frmWiz::cmdSave_Click() {
    // Enter does not move the focus. The button takes it, so that the last box is cleaned before its text is
    // read.
    m_ui->cmdSave->setFocus();
    try {
        const QWidget* page = m_ui->pages->currentWidget();
        if (m_ui->cmdSave->text() != Next) {
            Finish();
        } else if (page == m_ui->Step1) {
            LeaveSetup();
        } else if (page == m_ui->Step2) {
            LeaveSchedule();
        } else if (page == m_ui->Step3) {
            LeaveReports();
        }
    } catch (...) {
        const RuntimeError error = CurrentError();
        frmWizDone::Unload();
        MsgBox(Global::ErrorText("", error), vbExclamation);
    }
}

void frmWiz::LeaveSetup() {
    if (m_ui->txtTitle->Text().empty()) {
        RefusePage(FieldsMissing, m_ui->txtTitle);
        return;
    }
    ShowPage(m_ui->Step2);
    m_ui->cmdBack->setEnabled(true);
}

// Returns the first empty control, or the end date of a range of less than two days. Returns null if the page
// is complete.
QWidget* frmWiz::MissingOfSchedule() const {
    return m_ui->cmbFreq1->Text().empty()                     ? static_cast<QWidget*>(m_ui->cmbFreq1)
           : m_ui->msTime->Text().empty()                     ? m_ui->msTime
           : m_ui->cmbFormat1->Text().empty()                 ? static_cast<QWidget*>(m_ui->cmbFormat1)
           : m_ui->txtReport1->Text().empty()                 ? m_ui->txtReport1
           : m_ui->stDate1->Value() >= m_ui->enDate1->Value() ? static_cast<QWidget*>(m_ui->enDate1)
                                                              : nullptr;
}

void frmWiz::LeaveSchedule() {
    if (QWidget* missing = MissingOfSchedule()) {
        RefusePage(FieldsMissing, missing);
        return;
    }
    m_ui->msTime->setFocus();  // the error names this box
    CDate(m_ui->msTime->Text());
    ShowPage(m_ui->Step3);
}

void frmWiz::LeaveReports() {
    if (m_ui->lsvReports->ListCount() == 0) {
        RefusePage("You must schedule at least one report.", m_ui->filList);
        return;
    }
    ShowPage(m_ui->Step4);
    m_ui->cmdSave->setText(FinishCaption);
    Global::PackageFormat = m_ui->cmbFormat1->Text();
}

// Hidden before the input is checked, and not shown again after a refusal or an error (sic): the next show
// brings the wizard back as it was.
void frmWiz::Finish() {
    Global::BusyCursor(true);
    hide();
    constexpr qsizetype ShortestRecipient = 2;
    if (m_ui->chkMail->Value() && m_ui->txtRecipient->text().size() < ShortestRecipient) {
        m_ui->txtRecipient->setFocus();  // the user corrects it here when the wizard is shown again
        MsgBox("You must enter the recipient's email address", vbExclamation);
        return;
    }
    // Events run while the rows are written.
    const QScopedValueRollback writing(m_writing, true);
    WritePackage();
    // Whatever happens now, a second Finish would make a second package.
    const auto done = qScopeGuard([this] {
        frmWizDone::Unload();
        Unload();
        Global::PackageCounter = 0;
        Global::BusyCursor(false);
    });
    // There is no active Desktop window while the history is in front.
    if (DeskWindow* const desk = Global::FindActiveDesk(); desk != nullptr && desk->Caption() == "Desktop") {
        desk->AddBatches();
    }
    MsgBox("Report package created successfully", vbInformation);
}

// The pauses give readers on other connections time to see the written rows.
void frmWiz::WritePackage() {
    constexpr double Pause = 4;  // seconds
    ADODB::Connection connection;
    connection.Open(Global::ConnectionString);
    Global::InsertPackage(connection, Package());
    frmWizDone::ShowForm();
    cmFunc::PauseSeconds(Pause);
    const std::int16_t id = Global::NewestPackageID();
    for (int i = 0; i < m_ui->lsvReports->ListCount(); ++i) {
        Global::InsertPackageReport(connection, id, m_ui->lsvReports->List(i), m_ui->lsvPaths->List(i),
                                    Global::PackageFormat);
    }
    cmFunc::PauseSeconds(Pause);
    Global::InsertPackageParameters(connection, id);
    Global::DeleteWaitingParameters(connection);
    connection.Close();
}

Global::NewPackage frmWiz::Package() const {
    return {.recipients = m_ui->txtRecipient->Text(),
            .frequency = m_ui->cmbFreq1->Text(),
            .runTime = m_ui->msTime->Text(),
            .startDate = cmFunc::FormatDateText(m_ui->stDate1->Value()),
            .endDate = cmFunc::FormatDateText(m_ui->enDate1->Value()),
            .nextRunDate = cmFunc::FormatDateText(m_ui->stDate1->Value()),
            .subject = m_ui->txtSubject->Text(),
            .message = m_ui->txtMsg->Text(),
            .destination = m_ui->txtReport1->Text(),
            .name = m_ui->txtTitle->Text(),
            .mailBatch = Global::MailBatchFlag};
}

void frmWiz::cmdBrowse_Click() {
    const std::string folder =
        ShellMod::BrowseForFolderDialog(HandleOf(*this), BrowseTitle, m_ui->txtReport1->Text());
    if (!folder.empty()) {
        m_ui->txtReport1->Text(WithBackslash(folder));
    }
}

// After a cancel the name is the file chosen before, by whichever form.
void frmWiz::cmdBrowse1_Click() {
    ResumeNext([this] {
        CommonDialog& cd = *Global::Frame->cd();
        cd.DialogTitle = "Select the path to save the scheduled reports...";
        cd.CancelError = true;
        cd.InitDir = m_ui->txtReport1->Text().empty() ? AppPath() : m_ui->txtReport1->Text();
        ResumeNext([&cd] { cd.ShowOpen(); });
        Global::BusyCursor(true);
        m_ui->txtReport1->Text(FolderOf(cd.FileName));
        Global::BusyCursor(false);
    });
}

void frmWiz::txtReport1_LostFocus() {
    m_ui->txtReport1->Text(WithBackslash(m_ui->txtReport1->Text()));
}

void frmWiz::dirList_Change() {
    m_ui->filList->Path(m_ui->dirList->Path());
}

bool frmWiz::BrowseForFolder() {
    const std::string folder =
        ShellMod::BrowseForFolderDialog(HandleOf(*this), BrowseTitle, m_ui->dirList->Path());
    m_ui->dirList->Path(folder);
    return !folder.empty();
}

void frmWiz::dirList_KeyDown(int keyCode) {
    constexpr int Escape = 27;  // handled by Cancel
    if (keyCode != Escape) {
        BrowseForFolder();
    }
}

void frmWiz::cmdFolder_Click() {
    if (!BrowseForFolder()) {
        return;  // cancelled
    }
    Global::DefPath = m_ui->dirList->Path();
    ShellMod::WriteSetting("DefPath", Global::DefPath);
}

void frmWiz::filList_MouseMove() {
    m_ui->filList->setToolTip(QString::fromStdString(m_ui->filList->FileName()));
}

void frmWiz::filList_DblClick() {
    cmbBrowse1_Click();
}

// Whatever was dropped, the selected file is added.
void frmWiz::lsvReports_OLEDragDrop() {
    cmbBrowse1_Click();
}

void frmWiz::cmbBrowse1_Click() {
    Global::BusyCursor(true);
    const std::string file = m_ui->filList->FileName();
    const std::string path = m_ui->filList->Path() + "\\" + file;
    ++Global::PackageCounter;
    Global::ParReportName = std::to_string(Global::PackageCounter) + ">" + file;
    m_ui->lsvReports->AddItem(Global::ParReportName);
    m_ui->lsvReports->item(m_ui->lsvReports->ListCount() - 1)
        ->setToolTip(QString::fromStdString(paths::ForUser(path)));
    m_ui->lsvPaths->AddItem(path);
    bool opened = false;
    ResumeNext([&path, &opened] {
        Global::OpenReport(path);
        opened = true;
    });
    Global::BusyCursor(false);
    // If the file did not open, CurrentReport is another report, and its parameters must not be asked for.
    if (opened && Global::OpenedReport().ParameterFieldCount() > 0) {
        // Another form may have set ParCaller since this one was loaded.
        Global::ParCaller = "frmWiz";
        Global::ParCancelled = false;
        frmPar::ShowModal();
        if (Global::ParCancelled) {
            TakeBackLastReport();
        }
    }
}

// A report without its values would fail at every run of the package.
void frmWiz::TakeBackLastReport() {
    const int last = m_ui->lsvReports->ListCount() - 1;
    m_ui->lsvPaths->RemoveItem(last);
    m_ui->lsvReports->RemoveItem(last);
    EnableRemove();
}

// Without a line to remove the command would end the program.
void frmWiz::EnableRemove() {
    m_ui->Command1->setEnabled(m_ui->lsvReports->ListIndex() >= 0);
}

void frmWiz::Command1_Click() {
    ADODB::Connection connection;
    connection.Open(Global::ConnectionString);
    connection.Execute("delete from tmpPar Where rptName = '" + m_ui->lsvReports->Text() + "'");
    connection.Close();
    const int line = m_ui->lsvReports->ListIndex();
    m_ui->lsvPaths->RemoveItem(line);
    m_ui->lsvReports->RemoveItem(line);
    EnableRemove();
}

void frmWiz::cmdTo_Click() {
    // A mnemonic does not move the focus. The button takes it: names are appended after a ";".
    m_ui->cmdTo->setFocus();
    Global::PickRecipients(*m_ui->txtRecipient);
    // The focus change cleans the picked names as well.
    m_ui->txtRecipient->setFocus();
}

void frmWiz::chkMail_Click() {
    const bool mail = m_ui->chkMail->Value();
    // First: a box that loses the focus because of this still changes its text.
    m_ui->txtRecipient->setEnabled(mail);
    m_ui->txtRecipient->Text(mail ? "" : "N/A");
    m_ui->txtSubject->setEnabled(mail);
    m_ui->txtMsg->setEnabled(mail);
    Global::MailBatchFlag = mail ? "T" : "F";
}

void frmWiz::txtTitle_LostFocus() {
    cmFunc::StripQuotes(*m_ui->txtTitle);
}

void frmWiz::txtSubject_LostFocus() {
    cmFunc::StripQuotes(*m_ui->txtSubject);
}

void frmWiz::txtMsg_LostFocus() {
    cmFunc::StripQuotes(*m_ui->txtMsg);
}

void frmWiz::txtRecipient_LostFocus() {
    CleanRecipients(*m_ui->txtRecipient);
}

void mnuQuick_Click() {
    frmWiz::Instance().ShowForm();
}
