// SPDX-License-Identifier: GPL-3.0-or-later
// The Options dialog. A save changes the settings and the variables of this process. Another process reads
// the settings when it starts.
#pragma once

#include <QDialog>
#include <memory>
#include <string>

namespace Ui {
class frmConfig;
}

class frmConfig : public QDialog {
    Q_OBJECT
 public:
    explicit frmConfig(QWidget* parent = nullptr);
    ~frmConfig() override;

    void ShowPollingInterval(const std::string& seconds);

    void Form_Load();
    void Command1_Click();
    void cmdAddress_Click();
    void cmdDSN_Click();
    void cmdSave_Click();
    void cmdCancel_Click();

 private:
    std::unique_ptr<Ui::frmConfig> m_ui;
};

// Shows the Options dialog with the poll interval that the settings hold now.
void mnuPollInt_Click();
