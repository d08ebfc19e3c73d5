// SPDX-License-Identifier: GPL-3.0-or-later
// "Multiple Reports Wizard": makes a package, a named set of reports that run and are mailed together. It has
// four pages, one of them visible. The caption of cmdSave distinguishes Next from Finish.
//
// lsvReports and lsvPaths are parallel: "<number>><file name>" and the full path. The line is the report's
// title in the package and the key of its values in tmpPar, where they wait for Finish.
#pragma once

#include <QDialog>
#include <memory>
#include <string>

#include "dialogs/PackageRecords.h"

namespace Ui {
class frmWiz;
}

class frmWiz : public QDialog {
    Q_OBJECT
 public:
    // Returns the one wizard. The first call, and the first call after an unload, makes, loads and shows it.
    static frmWiz& Instance();
    // Shows a hidden wizard as it was, but not while its package is being written.
    void ShowForm();

    explicit frmWiz(QWidget* parent = nullptr);
    ~frmWiz() override;

    void Form_Load();
    void cmdBack_Click();
    void cmdCancel_Click();
    void cmdSave_Click();
    void cmdBrowse_Click();
    void cmdBrowse1_Click();
    void dirList_Change();
    void dirList_KeyDown(int keyCode);
    void cmdFolder_Click();
    void filList_MouseMove();
    void filList_DblClick();
    void cmbBrowse1_Click();
    void Command1_Click();
    void lsvReports_OLEDragDrop();
    void cmdTo_Click();
    void chkMail_Click();
    void txtTitle_LostFocus();
    void txtReport1_LostFocus();
    void txtRecipient_LostFocus();
    void txtSubject_LostFocus();
    void txtMsg_LostFocus();

    void reject() override;  // Esc and the close box: as Cancel

 private:
    void FillControls();
    void ConnectSchedule();
    void ConnectReports();
    void ConnectEmail();
    void ShowPage(QWidget* page);
    bool BrowseForFolder();
    void EmptyWorkTable();
    void TakeBackLastReport();
    void EnableRemove();
    void Unload();

    // One for each page: checks the page and leaves it for the next one.
    void LeaveSetup();
    void LeaveSchedule();
    void LeaveReports();
    QWidget* MissingOfSchedule() const;
    void Finish();
    void WritePackage();
    Global::NewPackage Package() const;

    std::unique_ptr<Ui::frmWiz> m_ui;
    bool m_unloaded = false;
    bool m_writing = false;
};

void mnuQuick_Click();
