// A frame on the screen, with room for child windows.
#pragma once

#include <QMdiSubWindow>

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
    // The child windows whose form is of the kind, in the order of their making.
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
    ChildArea area;
};

}  // namespace fakes
