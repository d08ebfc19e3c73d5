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
    // The splash window; before a parent the About box, which takes the keyboard.
    explicit frmSplash(QWidget* parent = nullptr);
    ~frmSplash() override;

    // Shows it and returns when it is painted, or when the window system has not shown it for a second.
    void ShowPainted();

    void Form_Load();
    void Form_Click();
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

// "Version " and major, ".", minor and revision run together: 2.0.2 reads Version 2.02.
QString VersionText();
