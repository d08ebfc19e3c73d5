// SPDX-License-Identifier: GPL-3.0-or-later
// The splash window and the About box in one.
#pragma once

#include <QWidget>
#include <memory>

namespace Ui {
class frmSplash;
}

class frmSplash : public QWidget {
    Q_OBJECT
 public:
    // Without a parent it is the splash window. With a parent it is the About box, which takes the keyboard
    // focus.
    explicit frmSplash(QWidget* parent = nullptr);
    ~frmSplash() override;

    // Shows the window and returns once it is painted, after a second at the latest.
    void ShowPainted();

    void Form_Load();
    void Form_Click();  // a press closes the window before there is a click: Form_MouseDown
    void Form_KeyDown();
    void Form_MouseDown();
    void imgLogo_Click();
    void Label3_Click();

 protected:
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;

 private:
    std::unique_ptr<Ui::frmSplash> m_ui;
};

// Returns "Version " followed by major, ".", minor and revision without a separator: 2.0.2 gives "Version
// 2.02".
QString VersionText();
