// "Creating Report package....Please wait": stands on the screen while the rows of a package are written.
#pragma once

#include <QDialog>
#include <memory>

namespace Ui {
class frmWizDone;
}

class frmWizDone : public QDialog {
    Q_OBJECT
 public:
    // Made and loaded at the first use and at the first one behind an unload. Loading takes a second.
    static void ShowForm();
    // Nothing when it is not loaded.
    static void Unload();

    explicit frmWizDone(QWidget* parent = nullptr);
    ~frmWizDone() override;

    // Without its film the form hides itself behind a box.
    void Form_Load();

 private:
    std::unique_ptr<Ui::frmWizDone> m_ui;
};
