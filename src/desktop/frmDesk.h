// A Desktop window.
#pragma once

#include <QWidget>
#include <string>

#include "app/Frame.h"

class frmDesk : public QWidget, public DeskWindow {
    Q_OBJECT
 public:
    explicit frmDesk(QWidget* parent = nullptr);

    std::string Tag;  // the number of the window's slot

    void Form_Activate();
    void Form_Unload();
    std::string Caption() const override;
    void ListMousePointer(int pointer) override;
    std::string SelectedText() const override;
    std::string SelectedKey() const override;
    void ComAction(int command) override;

 protected:
    void closeEvent(QCloseEvent* event) override;
};
