// SPDX-License-Identifier: GPL-3.0-or-later
// "Schedule Report Wizard": makes a single schedule of a report file. The visible page is the wizard's state.
// Nothing is written before Finish.
#pragma once

#include <QDialog>
#include <memory>
#include <string>

#include "platform/controls/folders/common_dialog.h"

namespace Ui {
class frmAddReport;
}

class frmAddReport : public QDialog {
    Q_OBJECT
 public:
    // Returns the one wizard. The first call, and the first call after an unload, makes and loads it.
    static frmAddReport& Instance();
    void ShowForm();
    // Shows the page of the report with this file, given by its path of the system, as if the user had typed
    // it. A file that does not open is reported when the page is left.
    void ShowReport(const std::string& file);

    explicit frmAddReport(QWidget* parent = nullptr);
    ~frmAddReport() override;

    void Form_Load();
    void cmdBack_Click();
    void cmdNext_Click();
    void cmdCancel_Click();
    void cmdBrowse_Click();
    void cmbFolder_DropDown();
    void cmbFolder_Click();
    void optFreq_Click(int index);  // from 1
    void cmdAd_Click();
    void txtBrowse_LostFocus();
    void Check1_Click();
    void cmdPar_Click();
    void cmdAdvance_Click();
    void cmdTest_Click();
    void txtTitle_LostFocus();
    void txtRecipient_LostFocus();
    void txtSubject_LostFocus();
    void txtMessage_LostFocus();
    void txtSelForm_LostFocus();

    void reject() override;  // Esc

 protected:
    void closeEvent(QCloseEvent* event) override;

 private:
    void ConnectPages();
    void ConnectLostFocus();
    void ShowPage(QWidget* page);
    QWidget* FirstControl(const QWidget* page) const;

    void OpenPickedReport();
    void OpenTypedReport();
    void TakeReportIn();
    void ListParameters();

    // One for each page: checks the page and leaves it for the next one.
    void LeaveSetup();
    void LeaveSchedule();
    void LeaveEmail();
    void LeaveProperties();
    bool ParametersAreSet();
    void ShowSummary();
    void Finish();
    void InsertSchedule(const std::string& cachePath);

    std::unique_ptr<Ui::frmAddReport> m_ui;
    CommonDialog cd;
    std::string FrequencyWord;
    std::string LoginRequired;  // "T" or "F"
    bool m_unloaded = false;
    bool m_pathTyped = false;  // the typed path is not opened yet
    bool m_titleTyped = false;
};

// Acts as the toolbar's "New Report" of the active Desktop window.
void mnuAdd_Click();
// Shows the wizard with this file, given by its path of the system.
void ScheduleReport(const std::string& file);
