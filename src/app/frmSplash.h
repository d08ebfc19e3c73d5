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
    explicit frmSplash(QWidget* parent = nullptr);
    ~frmSplash() override;

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
