// SPDX-License-Identifier: GPL-3.0-or-later
#include "dialogs/frmAddReport.h"

#include <QHeaderView>
#include <QPointer>
#include <QTreeView>
#include <algorithm>
#include <array>

#include "dialogs/DesktopList.h"
#include "dialogs/ModalForm.h"
#include "dialogs/ParameterRows.h"
#include "dialogs/ReportCache.h"
#include "dialogs/ScheduleFields.h"
#include "dialogs/ScheduleRecords.h"
#include "dialogs/frmAdvanced.h"
#include "dialogs/frmPar.h"
#include "execution/Preview.h"
#include "execution/RunReport.h"
#include "mail/PickRecipients.h"
#include "platform/base/convert.h"
#include "platform/base/resume_next.h"
#include "platform/base/text.h"
#include "platform/contracts/adodb.h"
#include "platform/contracts/prompts.h"
#include "platform/controls/kit/window_size.h"
#include "scheduler/Frequencies.h"
#include "shared/Global.h"
#include "shared/ShellMod.h"
#include "store/TextConventions.h"
#include "ui_frmAddReport.h"

namespace {

namespace frequencies = Global::frequencies;

// Indexed by the numbers of optFreq, from 1.
constexpr std::array<std::string_view, 5> FrequencyWords = {"", frequencies::Daily, frequencies::Weekdays,
                                                            frequencies::Weekly, frequencies::Monthly};

// Returns the text before the nth backslash, where n is the position of the first one (sic): three levels of
// folders on a drive, an empty text for a path that begins with a backslash.
std::string DefaultFolder(const std::string& file) {
    const std::size_t first = file.find('\\');
    if (first == std::string::npos) {
        return {};
    }
    const std::size_t stop = CountCharacters(std::string_view(file).substr(0, first)) + 1;
    std::size_t backslashes = 0;
    const auto end = std::find_if(file.begin(), file.end(), [&backslashes, stop](char c) {
        backslashes += c == '\\' ? 1 : 0;
        return backslashes == stop;
    });
    return {file.begin(), end};
}

}  // namespace

frmAddReport& frmAddReport::Instance() {
    static QPointer<frmAddReport> form;
    // A form that was just unloaded may not be destroyed yet.
    if (!form || form->m_unloaded) {
        form = new frmAddReport(dynamic_cast<QWidget*>(Global::Frame));
        form->setAttribute(Qt::WA_DeleteOnClose);
        LoadForm([] { form->Form_Load(); });
    }
    return *form;
}

void frmAddReport::ShowForm() {
    BringToFront(*this);
}

void frmAddReport::ShowReport(const std::string& file) {
    ShowForm();
    m_ui->txtBrowse->Text(file);
    m_pathTyped = true;
    txtBrowse_LostFocus();
    ShowPage(m_ui->Step1);
    m_ui->txtTitle->selectAll();
}

frmAddReport::frmAddReport(QWidget* parent)
    : QDialog(parent), m_ui(std::make_unique<Ui::frmAddReport>()), cd(this) {
    m_ui->setupUi(this);
    cd.setObjectName("cd");
    ListFormats(*m_ui->cmbFormat, Global::FormatList::Schedules);
    m_ui->txtBrowse->ShowsPaths(true);
    m_ui->lsvPar->View(ListView::ReportView);
    m_ui->lsvPar->LabelEdit(false);  // the names come from the report
    qobject_cast<QTreeView*>(m_ui->lsvPar->CurrentView())
        ->header()
        ->setSectionResizeMode(QHeaderView::Stretch);
    ConnectPages();
    ConnectLostFocus();
}

frmAddReport::~frmAddReport() = default;

void frmAddReport::ConnectPages() {
    connect(m_ui->cmdBack, &QPushButton::clicked, this, &frmAddReport::cmdBack_Click);
    connect(m_ui->cmdNext, &QPushButton::clicked, this, &frmAddReport::cmdNext_Click);
    connect(m_ui->cmdCancel, &QPushButton::clicked, this, &frmAddReport::cmdCancel_Click);
    connect(m_ui->cmdBrowse, &QPushButton::clicked, this, &frmAddReport::cmdBrowse_Click);
    connect(m_ui->cmbFolder, &ComboBox::DropDown, this, &frmAddReport::cmbFolder_DropDown);
    connect(m_ui->cmbFolder, &ComboBox::Click, this, &frmAddReport::cmbFolder_Click);
    const std::array options = {m_ui->optFreq1, m_ui->optFreq2, m_ui->optFreq3, m_ui->optFreq4};
    for (int index = 1; index <= static_cast<int>(options.size()); ++index) {
        connect(options[static_cast<std::size_t>(index) - 1], &OptionButton::Click, this,
                [this, index] { optFreq_Click(index); });
    }
    connect(m_ui->cmdAd, &QPushButton::clicked, this, &frmAddReport::cmdAd_Click);
    connect(m_ui->Check1, &CheckBox::Click, this, &frmAddReport::Check1_Click);
    connect(m_ui->cmdPar, &QPushButton::clicked, this, &frmAddReport::cmdPar_Click);
    connect(m_ui->cmdAdvance, &QPushButton::clicked, this, &frmAddReport::cmdAdvance_Click);
    connect(m_ui->cmdTest, &QPushButton::clicked, this, &frmAddReport::cmdTest_Click);
    // Enter and mnemonics do not move the focus. These buttons take it, so that the last box is cleaned
    // before its text is read or hidden.
    for (QPushButton* command : {m_ui->cmdBack, m_ui->cmdNext, m_ui->cmdPar}) {
        connect(command, &QPushButton::pressed, command, [command] { command->setFocus(); });
    }
}

void frmAddReport::ConnectLostFocus() {
    connect(m_ui->txtBrowse, &TextBox::textEdited, this, [this] { m_pathTyped = true; });
    connect(m_ui->txtTitle, &TextBox::textEdited, this, [this] { m_titleTyped = true; });
    connect(m_ui->txtBrowse, &TextBox::LostFocus, this, &frmAddReport::txtBrowse_LostFocus);
    connect(m_ui->txtTitle, &TextBox::LostFocus, this, &frmAddReport::txtTitle_LostFocus);
    connect(m_ui->txtRecipient, &TextBox::LostFocus, this, &frmAddReport::txtRecipient_LostFocus);
    connect(m_ui->txtSubject, &TextBox::LostFocus, this, &frmAddReport::txtSubject_LostFocus);
    connect(m_ui->txtMessage, &MultiLineTextBox::LostFocus, this, &frmAddReport::txtMessage_LostFocus);
    connect(m_ui->txtSelForm, &MultiLineTextBox::LostFocus, this, &frmAddReport::txtSelForm_LostFocus);
}

void frmAddReport::Form_Load() {
    // The size is computed while Frame4 is visible; ticking Check1 shows it again.
    constexpr int CharactersWide = 85, FormulaLines = 4;
    m_ui->txtSelForm->setFixedHeight(fontMetrics().lineSpacing() * FormulaLines);
    resize(SizeForText(*this, CharactersWide, 0));
    m_ui->Frame4->hide();
    SetFirstTimes(*m_ui->msTime, *m_ui->dtStart, *m_ui->dtEnd);
    m_ui->lsvPar->ColumnHeaders().Add("Parameter Name");
    m_ui->lsvPar->ColumnHeaders().Add("Parameter Value");
    FrequencyWord = frequencies::Daily;
    LoginRequired = "F";
    m_ui->cmdNext->setFocus();
}

void frmAddReport::ShowPage(QWidget* page) {
    m_ui->pages->setCurrentWidget(page);
    // Without a report the command would end the program.
    m_ui->cmdPar->setEnabled(Global::CurrentReport != nullptr);
    m_ui->cmdBack->setEnabled(page != m_ui->Frame1);
    m_ui->cmdNext->setText(page == m_ui->Step5 ? "&Finish" : "&Next >");
    FirstControl(page)->setFocus();
}

QWidget* frmAddReport::FirstControl(const QWidget* page) const {
    if (page == m_ui->Step1) {
        // A picked report sets the title as well.
        return m_ui->txtBrowse->Text().empty() ? static_cast<QWidget*>(m_ui->cmdBrowse) : m_ui->txtTitle;
    }
    return page == m_ui->Step2   ? static_cast<QWidget*>(m_ui->dtStart)
           : page == m_ui->Step3 ? m_ui->txtRecipient
           : page == m_ui->Step4 ? static_cast<QWidget*>(m_ui->Check1)
                                 : m_ui->cmdNext;
}

void frmAddReport::cmdBack_Click() {
    m_ui->pages->setCurrentIndex(m_ui->pages->currentIndex() - 1);
    ShowPage(m_ui->pages->currentWidget());
}

void frmAddReport::cmdNext_Click() {
    try {
        const QWidget* page = m_ui->pages->currentWidget();
        if (page == m_ui->Frame1) {
            ShowPage(m_ui->Step1);
        } else if (page == m_ui->Step1) {
            LeaveSetup();
        } else if (page == m_ui->Step2) {
            LeaveSchedule();
        } else if (page == m_ui->Step3) {
            LeaveEmail();
        } else if (page == m_ui->Step4) {
            LeaveProperties();
        } else {
            Finish();
        }
    } catch (...) {
        const RuntimeError error = CurrentError();
        MsgBox(error.Number() == err::SubscriptOutOfRange
                   ? "Please fill in the parameters for the report"
                   : Global::ErrorText("An error was detected. ", error),
               vbExclamation);
    }
}

void frmAddReport::LeaveSetup() {
    if (m_ui->txtTitle->Text().empty()) {
        RefusePage(FieldsMissing, m_ui->txtTitle);
    } else if (m_ui->txtBrowse->Text().empty()) {
        RefusePage(FieldsMissing, m_ui->cmdBrowse);
    } else if (m_ui->cmbFolder->Text().empty()) {
        RefusePage(FieldsMissing, m_ui->cmbFolder);
    } else {
        if (m_pathTyped) {
            m_ui->txtBrowse->setFocus();  // the user corrects the path there
            OpenTypedReport();
        }
        ShowPage(m_ui->Step2);
    }
}

void frmAddReport::LeaveSchedule() {
    if (m_ui->dtStart->Value() >= m_ui->dtEnd->Value()) {
        RefusePage("", m_ui->dtEnd);
        return;
    }
    m_ui->msTime->setFocus();  // the user corrects the time there
    CDate(m_ui->msTime->Text());
    ShowPage(m_ui->Step3);
}

void frmAddReport::LeaveEmail() {
    if (m_ui->txtRecipient->Text().empty()) {
        RefusePage(FieldsMissing, m_ui->txtRecipient);
    } else {
        ShowPage(m_ui->Step4);
    }
}

void frmAddReport::LeaveProperties() {
    if (!ParametersAreSet()) {
        return;
    }
    if (LoginRequired == "T" && (m_ui->txtUserName->Text().empty() || m_ui->txtPassword->Text().empty())) {
        RefusePage("Please provide both the username and password for the report's database connection.",
                   m_ui->txtUserName->Text().empty() ? m_ui->txtUserName : m_ui->txtPassword);
        return;
    }
    ShowPage(m_ui->Step5);
    ShowSummary();
    Global::OpenedReport().SetRecordSelectionFormula(m_ui->txtSelForm->Text());
}

// A report without parameters needs no format either (sic).
bool frmAddReport::ParametersAreSet() {
    for (int i = 1; i <= Global::OpenedReport().ParameterFieldCount(); ++i) {
        m_ui->cmdPar->setFocus();  // this button gets the missing names
        const bool unnamed = Global::ParNameSlot(i).empty();
        if (unnamed || m_ui->cmbFormat->Text().empty()) {
            RefusePage("Please set up the report parameters and specify the format of the report output.",
                       unnamed ? static_cast<QWidget*>(m_ui->cmdPar) : m_ui->cmbFormat);
            return false;
        }
    }
    return true;
}

void frmAddReport::ShowSummary() {
    const auto show = [](QLabel& label, const std::string& text) {
        label.setText(QString::fromStdString(text));
    };
    show(*m_ui->lblFormat, "- Format: " + m_ui->cmbFormat->Text());
    show(*m_ui->lblFreq, "- Frequency: " + FrequencyWord);
    // A zero-width space after each ";" lets a list without blanks wrap.
    constexpr const char* MayBreak = ";\u200b";
    show(*m_ui->lblSendTo, "- Send To: " + Replace(m_ui->txtRecipient->Text(), ";", MayBreak));
}

// An error after the insert leaves the row, and a second Finish inserts another one (sic).
void frmAddReport::Finish() {
    if (Global::CurrentFolder.empty()) {
        throw RuntimeError(err::ObjectRequired);
    }
    InsertSchedule(Global::CopyToCache(m_ui->txtBrowse->Text()));
    Global::AddParameterRows(Global::OpenedReport().ParameterFieldCount());
    ADODB::Recordset folder;
    folder.Open("select folderid from folders where foldername = '" + Global::CurrentFolder + "'",
                Global::ConnectionString);
    Global::RefreshDesktopList(Global::CurrentFolder, Global::ActiveDesk(),
                               folder.Fields("folderid").Value.Text());
    folder.Close();
    close();
}

// The first run is on the start date, whatever the frequency and the time of day are.
void frmAddReport::InsertSchedule(const std::string& cachePath) {
    const std::string start = cmFunc::FormatDateText(m_ui->dtStart->Value());
    ADODB::Connection connection;
    connection.Open(Global::ConnectionString);
    Global::InsertSchedule(connection, {.sendTo = m_ui->txtRecipient->Text(),
                                        .subject = m_ui->txtSubject->Text(),
                                        .message = m_ui->txtMessage->Text(),
                                        .startDate = start,
                                        .endDate = cmFunc::FormatDateText(m_ui->dtEnd->Value()),
                                        .runAt = m_ui->msTime->Text(),
                                        .frequency = FrequencyWord,
                                        .nextRun = start,
                                        .reportPath = cachePath,
                                        .title = m_ui->txtTitle->Text(),
                                        .selectionForm = m_ui->txtSelForm->Text(),
                                        .format = m_ui->cmbFormat->Text(),
                                        .parent = Global::CurrentFolder,
                                        .originalPath = m_ui->txtBrowse->Text(),
                                        .userName = m_ui->txtUserName->Text(),
                                        .password = m_ui->txtPassword->Text(),
                                        .loginReq = LoginRequired});
    connection.Close();
}

void frmAddReport::cmdCancel_Click() {
    close();
}

void frmAddReport::reject() {
    cmdCancel_Click();
}

void frmAddReport::closeEvent(QCloseEvent* event) {
    m_unloaded = true;
    // QDialog's closeEvent would call reject, which is the Cancel button here.
    // NOLINTNEXTLINE(bugprone-parent-virtual-call)
    QWidget::closeEvent(event);
}

// After a failed step the next one runs, also after a cancel: the file picked before is opened again (sic).
void frmAddReport::cmdBrowse_Click() {
    cd.DialogTitle = "Select the report to schedule...";
    cd.Filter = "Crystal Reports (*.rpt)|*.rpt|";
    cd.CancelError = true;
    cd.InitDir = Global::DefPath;
    ResumeNext([this] { cd.ShowOpen(); });
    ResumeNext([] { Global::BusyCursor(true); });
    m_ui->txtBrowse->Text(cd.FileName);
    Global::DefPath = DefaultFolder(cd.FileName);
    ResumeNext([] { ShellMod::WriteSetting("DefPath", Global::DefPath); });
    OpenPickedReport();
    ResumeNext([] { Global::BusyCursor(false); });
}

void frmAddReport::OpenPickedReport() {
    m_pathTyped = m_titleTyped = false;
    ResumeNext([this] { Global::OpenReport(m_ui->txtBrowse->Text()); });
    TakeReportIn();
    ResumeNext([this] { m_ui->txtTitle->Text(Global::OpenedReport().Title()); });
    m_ui->txtTitle->selectAll();
    m_ui->txtTitle->setFocus();
}

void frmAddReport::TakeReportIn() {
    ResumeNext([this] { ListParameters(); });
    ResumeNext([this] { m_ui->txtSelForm->Text(Global::OpenedReport().RecordSelectionFormula()); });
    txtSelForm_LostFocus();
}

// As for a picked report, but the focus stays where it is and a typed title is kept. Raises as OpenReport.
void frmAddReport::OpenTypedReport() {
    const std::string path = m_ui->txtBrowse->Text();
    Global::OpenReport(path);
    m_ui->txtBrowse->Text(path);
    m_pathTyped = false;
    TakeReportIn();
    if (!m_titleTyped) {
        m_ui->txtTitle->Text(Global::OpenedReport().Title());
    }
}

// Adds the parameters after those of the reports picked before. Leaves out a line whose key is already there.
void frmAddReport::ListParameters() {
    report::Report& report = Global::OpenedReport();
    for (int i = 1; i <= report.ParameterFieldCount(); ++i) {
        ResumeNext([this, &report, i] {
            const std::string name = report.Parameter(i).Name();
            m_ui->lsvPar->ListItems().Add(name + std::to_string(i), name);
        });
    }
}

void frmAddReport::cmbFolder_DropDown() {
    ListFolders(*m_ui->cmbFolder);
}

void frmAddReport::cmbFolder_Click() {
    Global::CurrentFolder = m_ui->cmbFolder->Text();
}

void frmAddReport::optFreq_Click(int index) {
    FrequencyWord = FrequencyWords.at(static_cast<std::size_t>(index));
}

void frmAddReport::cmdAd_Click() {
    Global::PickRecipients(*m_ui->txtRecipient);
    // The focus change cleans the picked names as well.
    m_ui->txtRecipient->setFocus();
}

void frmAddReport::Check1_Click() {
    LoginRequired = m_ui->Check1->Value() ? "T" : "F";
    m_ui->Frame4->setVisible(m_ui->Check1->Value());
}

void frmAddReport::cmdPar_Click() {
    if (Global::OpenedReport().ParameterFieldCount() == 0) {
        MsgBox("This report has no parameters.", vbInformation);
        return;
    }
    Global::ParCaller = "frmAddReport";
    frmPar::ShowModal(m_ui->lsvPar);
}

void frmAddReport::cmdAdvance_Click() {
    frmAdvanced::ShowModal(*m_ui->txtSelForm);
}

void frmAddReport::cmdTest_Click() {
    if (!m_ui->txtUserName->Text().empty() && !m_ui->txtPassword->Text().empty()) {
        Global::LogTablesOn(Global::OpenedReport(), m_ui->txtUserName->Text(), m_ui->txtPassword->Text());
    }
    Global::ShowPreview(this);
    m_ui->cmdNext->setEnabled(true);
}

// A file that does not open is reported when Next leaves the page.
void frmAddReport::txtBrowse_LostFocus() {
    if (m_pathTyped && !m_ui->txtBrowse->Text().empty()) {
        ResumeNext([this] { OpenTypedReport(); });
    }
}

void frmAddReport::txtTitle_LostFocus() {
    cmFunc::StripQuotes(*m_ui->txtTitle);
}

void frmAddReport::txtRecipient_LostFocus() {
    CleanRecipients(*m_ui->txtRecipient);
}

void frmAddReport::txtSubject_LostFocus() {
    cmFunc::StripQuotes(*m_ui->txtSubject);
}

void frmAddReport::txtMessage_LostFocus() {
    cmFunc::StripQuotes(*m_ui->txtMessage);
}

// Statements put the formula between ' marks.
void frmAddReport::txtSelForm_LostFocus() {
    m_ui->txtSelForm->Text(WithoutMarks(m_ui->txtSelForm->Text()));
}

void mnuAdd_Click() {
    Global::ActiveDesk().ComAction(NewReportCommand);
}

void ScheduleReport(const std::string& file) {
    mnuAdd_Click();
    frmAddReport::Instance().ShowReport(file);
}
