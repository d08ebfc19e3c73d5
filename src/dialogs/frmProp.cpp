// SPDX-License-Identifier: GPL-3.0-or-later
#include "dialogs/frmProp.h"

#include <QHeaderView>
#include <QTreeView>
#include <array>

#include "dialogs/ModalForm.h"
#include "dialogs/ParameterRows.h"
#include "dialogs/ReportCache.h"
#include "dialogs/ScheduleFields.h"
#include "dialogs/ScheduleRecords.h"
#include "dialogs/frmFolders.h"
#include "dialogs/frmPar.h"
#include "execution/Preview.h"
#include "execution/RunReport.h"
#include "mail/PickRecipients.h"
#include "platform/base/resume_next.h"
#include "platform/contracts/adodb.h"
#include "platform/controls/kit/window_size.h"
#include "scheduler/Frequencies.h"
#include "shared/Global.h"
#include "store/TextConventions.h"
#include "ui_frmProp.h"

namespace {

constexpr int NewPackageButton = 3, PreviewButton = 5;  // of the Desktop's Toolbar1

struct Frequency {
    OptionButton* option;
    std::string_view word;  // as it is stored
};

std::array<Frequency, 4> Frequencies(const Ui::frmProp& form) {
    namespace frequencies = Global::frequencies;
    return {{{form.optDaily, frequencies::Daily},
             {form.optWeekly, frequencies::Weekly},
             {form.optWeekDays, frequencies::WeekDaysOfProperties},
             {form.optMonthly, frequencies::Monthly}}};
}

void ShowFormat(ComboBox& cmbFormat, const std::string& word) {
    // The runner knows more words than the form offers: a stored one is kept.
    if (!word.empty() &&
        cmbFormat.findText(QString::fromStdString(word), Qt::MatchExactly | Qt::MatchCaseSensitive) < 0) {
        cmbFormat.AddItem(word);
    }
    cmbFormat.Text(word);
}

}  // namespace

frmProp& frmProp::Instance() {
    static QPointer<frmProp> form;
    // A form that was just unloaded may not be destroyed yet.
    if (!form || form->m_unloaded) {
        form = new frmProp(dynamic_cast<QWidget*>(Global::Frame));
        form->setAttribute(Qt::WA_DeleteOnClose);
        form->Form_Load();
    }
    return *form;
}

void frmProp::ShowForm() {
    BringToFront(*this);
}

frmProp::frmProp(QWidget* parent) : QDialog(parent), m_ui(std::make_unique<Ui::frmProp>()) {
    m_ui->setupUi(this);
    for (const char* tab : {"General", "Schedule", "Parameters", "Formula", "Report Logon", "Email"}) {
        m_ui->TabStrip1->Add(tab);
    }
    ListFormats(*m_ui->cmbFormat, Global::FormatList::Schedules);
    m_ui->lsvPar->View(ListView::ReportView);
    m_ui->lsvPar->LabelEdit(false);  // the names come from the report
    qobject_cast<QTreeView*>(m_ui->lsvPar->CurrentView())
        ->header()
        ->setSectionResizeMode(QHeaderView::Stretch);
    // These are shown and never saved.
    m_ui->txtPath->Locked(true);
    m_ui->txtPath->ShowsPaths(true);
    m_ui->txtDesc->Locked(true);
    m_ui->txtID->Locked(true);
    Check1_Click();
    ConnectCommands();
    ConnectLostFocus();
    m_ui->txtTitle->setFocus();
    constexpr int Characters = 75, Lines = 24;
    resize(SizeForText(*this, Characters, Lines));
}

frmProp::~frmProp() = default;

void frmProp::ConnectCommands() {
    connect(m_ui->TabStrip1, &TabStrip::Click, this, &frmProp::TabStrip1_Click);
    connect(m_ui->Check1, &CheckBox::Click, this, &frmProp::Check1_Click);
    connect(m_ui->cmbFolder, &ComboBox::DropDown, this, &frmProp::cmbFolder_DropDown);
    connect(m_ui->cmdFolder, &QPushButton::clicked, this, &frmProp::cmdFolder_Click);
    connect(m_ui->cmdBrowse, &QPushButton::clicked, this, &frmProp::cmdBrowse_Click);
    connect(m_ui->cmdSet, &QPushButton::clicked, this, &frmProp::cmdSet_Click);
    connect(m_ui->cmdClear, &QPushButton::clicked, this, &frmProp::cmdClear_Click);
    connect(m_ui->cmdRefresh, &QPushButton::clicked, this, &frmProp::cmdRefresh_Click);
    connect(m_ui->cmdTest, &QPushButton::clicked, this, &frmProp::cmdTest_Click);
    connect(m_ui->cmdOk, &QPushButton::clicked, this, &frmProp::cmdOk_Click);
    connect(m_ui->cmdCancel, &QPushButton::clicked, this, &frmProp::cmdCancel_Click);
    // Enter and mnemonics do not move the focus. These buttons take it, so that the last box is cleaned
    // before its text is used.
    for (QPushButton* command : {m_ui->cmdOk, m_ui->cmdTest}) {
        connect(command, &QPushButton::pressed, command, [command] { command->setFocus(); });
    }
}

void frmProp::ConnectLostFocus() {
    connect(m_ui->txtTitle, &TextBox::LostFocus, this, &frmProp::txtTitle_LostFocus);
    connect(m_ui->txtSendTo, &TextBox::LostFocus, this, &frmProp::txtSendTo_LostFocus);
    connect(m_ui->txtSubject, &TextBox::LostFocus, this, &frmProp::txtSubject_LostFocus);
    connect(m_ui->txtMsg, &MultiLineTextBox::LostFocus, this, &frmProp::txtMsg_LostFocus);
    connect(m_ui->txtRecForm, &MultiLineTextBox::LostFocus, this, &frmProp::txtRecForm_LostFocus);
}

void frmProp::Form_Load() {
    try {
        TakeDesktop();
        Global::BusyCursor(true);
        LoadSchedule();
        Global::BusyCursor(false);
    } catch (...) {
        const RuntimeError error = CurrentError();
        Global::BusyCursor(false);
        LeaveOnlyCancel();
        Global::ShowError(error);
    }
}

// A save would overwrite the record with empty fields, and the open report may be another one.
void frmProp::LeaveOnlyCancel() {
    m_ui->strips->setEnabled(false);
    m_ui->cmdOk->setEnabled(false);
    m_ui->cmdCancel->setDefault(true);
    m_ui->cmdCancel->setFocus();
}

void frmProp::TakeDesktop() {
    m_ui->strips->setCurrentWidget(m_ui->fraStrip0);
    DeskWindow& desk = Global::ActiveDesk();
    m_desk = dynamic_cast<QWidget*>(&desk);
    desk.EnableButton(NewPackageButton, true);
    desk.EnableForm(false);
}

void frmProp::LoadSchedule() {
    m_ui->txtID->Text(Global::SelectedReportID);
    ADODB::Recordset rows;
    rows.Open(
        "select * from reportscheduler r left outer join reportparameter x  on r.reportid = x.reportid where "
        "r.reportid = " +
            Global::SelectedReportID,
        Global::ConnectionString);
    FillFields(rows);
    FillLogon(rows);
    OpenUsersFile(rows);
    TickFrequency(rows.Fields("Frequency").Value.Text());
    m_ui->txtRecForm->Text(rows.Fields("SelectionForm").Value.Text());
    ListParameters(rows);
    rows.Close();
    const report::Report& report = Global::OpenedReport();
    m_ui->txtDesc->Text(report.Description());
    if (report.ParameterFieldCount() == 0) {
        m_ui->cmdSet->setEnabled(false);
        m_ui->cmdClear->setEnabled(false);
    }
}

void frmProp::FillFields(const ADODB::Recordset& row) {
    const auto text = [&row](const char* column) { return row.Fields(column).Value.Text(); };
    m_ui->txtTitle->Text(text("ReportTitle"));
    m_ui->txtPath->Text(text("originalpath"));
    m_ui->cmbFolder->Text(Global::CurrentFolder);
    m_ui->msExec->Text(text("RunAt"));
    m_ui->txtSendTo->Text(text("SendTo"));
    m_ui->txtSubject->Text(text("Subject"));
    m_ui->txtMsg->Text(text("message"));
    ShowFormat(*m_ui->cmbFormat, text("Format"));
}

void frmProp::FillLogon(const ADODB::Recordset& row) {
    if (row.Fields("LoginReq").Value.Text() != "T") {
        return;
    }
    m_ui->txtUserName->Text(row.Fields("UserName").Value.Text());
    m_ui->txtPassword->Text(row.Fields("Password").Value.Text());
    m_ui->Check1->Value(true);
}

void frmProp::OpenUsersFile(const ADODB::Recordset& row) {
    report::Report& report = Global::OpenReport(m_ui->txtPath->Text());
    if (row.Fields("LoginReq").Value.Text() == "T") {
        Global::LogTablesOn(report, row.Fields("UserName").Value.Text(), row.Fields("Password").Value.Text());
    }
}

// Matches exactly the words that this form writes. "Weekdays", which the wizard writes, matches no button
// (sic).
void frmProp::TickFrequency(const std::string& word) {
    for (const auto& [option, itsWord] : Frequencies(*m_ui)) {
        if (word == itsWord) {
            option->Value(true);
        }
    }
}

// Returns an empty text if no button is ticked.
std::string frmProp::FrequencyWord() const {
    for (const auto& [option, word] : Frequencies(*m_ui)) {
        if (option->Value()) {
            return std::string(word);
        }
    }
    return {};
}

// For a schedule without stored values the join gives one row without a name.
void frmProp::ListParameters(ADODB::Recordset& rows) {
    m_ui->lsvPar->ColumnHeaders().Add("Parameter Name");
    m_ui->lsvPar->ColumnHeaders().Add("Parameter Value");
    for (int count = 1; !rows.EOF_(); ++count) {
        const Variant& name = rows.Fields("ParName").Value;
        if (!name.IsNull()) {
            m_ui->lsvPar->ListItems()
                .Add(name + std::to_string(count), name.Text())
                .SubItems(1, rows.Fields("ParValue").Value.Text());
        }
        rows.MoveNext();
    }
}

void frmProp::Form_Unload() {
    if (auto* desk = dynamic_cast<DeskWindow*>(m_desk.data())) {
        desk->EnableButton(PreviewButton, false);
        desk->EnableForm(true);
    }
}

void frmProp::closeEvent(QCloseEvent* event) {
    if (!m_unloaded) {
        m_unloaded = true;
        Form_Unload();
    }
    // QDialog's closeEvent would call reject, which is the Cancel button here.
    // NOLINTNEXTLINE(bugprone-parent-virtual-call)
    QWidget::closeEvent(event);
}

void frmProp::reject() {
    cmdCancel_Click();
}

void frmProp::cmdCancel_Click() {
    close();
}

void frmProp::TabStrip1_Click() {
    const bool onStrip = m_ui->TabStrip1->hasFocus();
    const int tab = m_ui->TabStrip1->SelectedItem();
    m_ui->strips->setCurrentIndex(tab - 1);
    // If the user moves along the tabs with keys, the focus stays there; else it goes to the page.
    if (!onStrip) {
        const std::array<QWidget*, 6> firstControls = {m_ui->txtTitle,   m_ui->msExec, m_ui->lsvPar,
                                                       m_ui->txtRecForm, m_ui->Check1, m_ui->txtSendTo};
        firstControls.at(static_cast<std::size_t>(tab) - 1)->setFocus();
    }
}

void frmProp::Check1_Click() {
    const bool clear = !m_ui->Check1->Value();
    m_ui->txtUserName->Locked(clear);
    m_ui->txtPassword->Locked(clear);
}

void frmProp::cmbFolder_DropDown() {
    ListFolders(*m_ui->cmbFolder);
}

void frmProp::cmdFolder_Click() {
    frmFolders::ShowModal(*m_ui->cmbFolder);
}

void frmProp::cmdBrowse_Click() {
    Global::PickRecipients(*m_ui->txtSendTo);
    // The focus change cleans the picked names as well.
    m_ui->txtSendTo->setFocus();
}

void frmProp::cmdSet_Click() {
    Global::ParCaller = "frmPar";
    frmPar::ShowModal(m_ui->lsvPar);
}

void frmProp::cmdClear_Click() {
    Global::ClearReportParameters();
    m_ui->lsvPar->ListItems().Clear();
}

// The statement lacks its closing mark (sic): after the copy is renewed, the database refuses the statement,
// and no handler catches the error.
void frmProp::cmdRefresh_Click() {
    Global::BusyCursor(true);
    const std::string reportID = m_ui->txtID->Text();
    ADODB::Recordset row;
    row.Open("Select originalpath from reportscheduler where reportid = " + reportID,
             Global::ConnectionString);
    Global::CopyToCache(row.Fields("originalpath").Value.Text());
    ADODB::Connection connection;
    connection.Open(Global::ConnectionString);
    connection.Execute("update reportscheduler set selectionform = '" +
                       Global::OpenedReport().RecordSelectionFormula() + "' where reportid = '" + reportID);
    connection.Close();
    row.Close();
    Global::BusyCursor(false);
}

// A value that the report cannot take leaves its parameter unchanged.
void frmProp::cmdTest_Click() {
    ListItems& lines = m_ui->lsvPar->ListItems();
    for (int i = 1; i <= lines.Count(); ++i) {
        ResumeNext([&lines, i] {
            Global::HandOverParameter(Global::OpenedReport(), i, lines(i).SubItems(1),
                                      Global::OtherFieldRule::HandOver);
        });
    }
    ResumeNext([this] { Global::OpenedReport().SetRecordSelectionFormula(m_ui->txtRecForm->Text()); });
    ResumeNext([this] { Global::ShowPreview(this); });
}

void frmProp::cmdOk_Click() {
    const auto valueOfLine = [this](int n) { return m_ui->lsvPar->ListItems()(n).SubItems(1); };
    if (WriteSchedule() && Global::ReplaceParameterRows(m_ui->txtID->Text(), valueOfLine)) {
        close();
    }
}

// Without the tick the statement has no user and password and cannot be built: nothing is saved.
bool frmProp::WriteSchedule() {
    Global::ScheduleChange change{
        .title = m_ui->txtTitle->Text(),
        .sendTo = m_ui->txtSendTo->Text(),
        .subject = m_ui->txtSubject->Text(),
        .message = m_ui->txtMsg->Text(),
        .runAt = m_ui->msExec->Text(),
        .frequency = FrequencyWord(),
        .format = m_ui->cmbFormat->Text(),
        .selectionForm = m_ui->txtRecForm->Text(),
        .parent = m_ui->cmbFolder->Text(),
        .loginReq = "F",
        .userName = {},
        .password = {},
    };
    if (m_ui->Check1->Value()) {
        change.loginReq = "T";
        change.userName = m_ui->txtUserName->Text();
        change.password = m_ui->txtPassword->Text();
    }
    return Global::UpdateSchedule(m_ui->txtID->Text(), change);
}

void frmProp::txtTitle_LostFocus() {
    cmFunc::StripQuotes(*m_ui->txtTitle);
}

void frmProp::txtSendTo_LostFocus() {
    CleanRecipients(*m_ui->txtSendTo);
}

void frmProp::txtSubject_LostFocus() {
    cmFunc::StripQuotes(*m_ui->txtSubject);
}

void frmProp::txtMsg_LostFocus() {
    cmFunc::StripQuotes(*m_ui->txtMsg);
}

void frmProp::txtRecForm_LostFocus() {
    cmFunc::StripQuotes(*m_ui->txtRecForm);
}
