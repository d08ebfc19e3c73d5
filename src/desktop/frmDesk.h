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
    void ListMousePointer(int pointer) override;

 protected:
    void closeEvent(QCloseEvent* event) override;
};
