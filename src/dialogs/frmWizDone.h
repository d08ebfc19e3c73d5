// SPDX-License-Identifier: GPL-3.0-or-later
// "Creating Report package....Please wait": shown while the rows of a package are written.
#pragma once

#include <QDialog>
#include <memory>

namespace Ui {
class frmWizDone;
}

class frmWizDone : public QDialog {
    Q_OBJECT
 public:
    // Shows the form; makes and loads it first if it is not loaded. Loading takes a second.
    static void ShowForm();
    // Does nothing if the form is not loaded.
    static void Unload();

    explicit frmWizDone(QWidget* parent = nullptr);
    ~frmWizDone() override;

    // If the film is missing, the form hides itself after a box.
    void Form_Load();

 private:
    std::unique_ptr<Ui::frmWizDone> m_ui;
};
