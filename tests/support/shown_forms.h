// SPDX-License-Identifier: GPL-3.0-or-later
// Windows that stand on the screen by themselves.
#pragma once

#include <QApplication>
#include <vector>

namespace fakes {

// Returns the top-level windows of this type that are shown.
template <typename Form>
std::vector<Form*> ShownForms() {
    std::vector<Form*> forms;
    for (QWidget* window : QApplication::topLevelWidgets()) {
        auto* form = qobject_cast<Form*>(window);
        if (form != nullptr && window->isVisible()) {
            forms.push_back(form);
        }
    }
    return forms;
}

// Returns one of them; null if there is none.
template <typename Form>
Form* ShownForm() {
    const std::vector<Form*> forms = ShownForms<Form>();
    return forms.empty() ? nullptr : forms.front();
}

}  // namespace fakes
