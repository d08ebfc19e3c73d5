// SPDX-License-Identifier: GPL-3.0-or-later
// A frame on the screen, with space for child windows.
#pragma once

#include <QApplication>
#include <QMdiSubWindow>
#include <algorithm>

#include "platform/controls/child_area.h"
#include "support/fakes.h"

namespace fakes {

class MdiFrame : public FakeFrame {
 public:
    MdiFrame() {
        area.resize(1200, 800);
        area.show();
    }
    void AddChild(QWidget& form) override {
        FakeFrame::AddChild(form);
        area.Add(form);
    }
    // Returns the child windows with a form of this type, in the order in which they were made.
    template <typename Form>
    std::vector<Form*> Shown() const {
        std::vector<Form*> forms;
        for (QMdiSubWindow* window : area.subWindowList()) {
            auto* form = qobject_cast<Form*>(window->widget());
            if (form != nullptr && window->isVisible()) {
                forms.push_back(form);
            }
        }
        return forms;
    }
    // A preview in front of a dialog belongs to the real main window, and not to this frame.
    ~MdiFrame() override {
        const QWidgetList windows = QApplication::topLevelWidgets();  // the lists of its boxes are among them
        const auto preview = std::find_if(windows.begin(), windows.end(),
                                          [](const QWidget* window) { return window->inherits("frmTest"); });
        if (preview != windows.end()) {
            delete *preview;
        }
    }
    ChildArea area;
};

}  // namespace fakes
