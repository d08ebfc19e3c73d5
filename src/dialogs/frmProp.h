// SPDX-License-Identifier: GPL-3.0-or-later
// "Report Properties": one single schedule on six tabs. It works on the user's own report file, not on the
// copy in the cache; from the load on CurrentReport is that file. The Desktop window that is active at the
// load stays disabled until the unload.
#pragma once

#include <QDialog>
#include <QPointer>
#include <memory>
#include <string>

namespace ADODB {
class Recordset;
}
namespace Ui {
class frmProp;
}

class frmProp : public QDialog {
    Q_OBJECT
 public:
    // Returns the one form. The first call, and the first call after an unload, makes it and loads the
    // schedule SelectedReportID. A form that is open keeps its schedule.
    static frmProp& Instance();
    void ShowForm();

    explicit frmProp(QWidget* parent = nullptr);
    ~frmProp() override;

    // Shows its errors itself. After an error the form stays open, filled up to the error, and can only be
    // cancelled.
    void Form_Load();
    void Form_Unload();
    void TabStrip1_Click();
    void Check1_Click();
    void cmbFolder_DropDown();
    void cmdFolder_Click();
    void cmdBrowse_Click();
    void cmdSet_Click();
    void cmdClear_Click();
    void cmdRefresh_Click();
    void cmdTest_Click();
    void cmdOk_Click();
    void cmdCancel_Click();
    void txtTitle_LostFocus();
    void txtSendTo_LostFocus();
    void txtSubject_LostFocus();
    void txtMsg_LostFocus();
    void txtRecForm_LostFocus();

    void reject() override;  // Esc

 protected:
    void closeEvent(QCloseEvent* event) override;

 private:
    void ConnectCommands();
    void ConnectLostFocus();
    void TakeDesktop();
    void LeaveOnlyCancel();
    void LoadSchedule();
    void FillFields(const ADODB::Recordset& row);
    void FillLogon(const ADODB::Recordset& row);
    void OpenUsersFile(const ADODB::Recordset& row);
    void TickFrequency(const std::string& word);
    std::string FrequencyWord() const;
    void ListParameters(ADODB::Recordset& rows);
    bool WriteSchedule();

    std::unique_ptr<Ui::frmProp> m_ui;
    QPointer<QWidget> m_desk;  // the window to enable again; null once it is closed
    bool m_unloaded = false;
};
