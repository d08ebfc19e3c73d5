// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/controls/toolbar.h"

#include <QAction>
#include <QEvent>
#include <QToolButton>
#include <algorithm>

#include "platform/controls/kit/collections.h"

namespace {

constexpr int PictureSize = 24;  // pixels at scale 1
constexpr const char* NoTip = "noTip";

}  // namespace

ToolBarButton::ToolBarButton(QAction& action, std::string key, std::string tip)
    : m_action(action), m_key(std::move(key)), m_tip(std::move(tip)) {}

ToolBarButton& ToolBarButtons::Add(const std::string& caption, const std::string& tip, int image) {
    const QString text = QString::fromStdString(caption);
    auto* action = new QAction(text, &m_bar);
    action->setObjectName(text);
    action->setToolTip(QString::fromStdString(tip));
    if (m_bar.Icons() != nullptr) {
        action->setIcon(m_bar.Icons()->Image(image));
    }
    m_bar.addAction(action);
    // Qt leaves a toolbar's buttons out of the tab order.
    QWidget* button = m_bar.widgetForAction(action);
    button->setObjectName(text);
    button->setFocusPolicy(Qt::TabFocus);
    button->setProperty(NoTip, tip.empty());
    button->installEventFilter(&m_bar);
    m_buttons.emplace_back(*action, caption, tip);
    QObject::connect(action, &QAction::triggered, &m_bar,
                     [this, index = Count(), caption] { emit m_bar.ButtonClick(index, caption); });
    return m_buttons.back();
}

void ToolBarButtons::AddSeparator() {
    m_buttons.emplace_back(*m_bar.addSeparator(), std::string(), std::string());
}

ToolBarButton& ToolBarButtons::operator()(int index) {
    return m_buttons[PlaceOf(index, m_buttons.size())];
}

ToolBarButton& ToolBarButtons::operator()(const std::string& key) {
    const auto found = std::find_if(m_buttons.begin(), m_buttons.end(),
                                    [&](const ToolBarButton& button) { return button.Key() == key; });
    if (found == m_buttons.end() || key.empty()) {
        throw RuntimeError(err::ElementNotFound);
    }
    return *found;
}

ToolBar::ToolBar(QWidget* parent) : QToolBar(parent) {
    setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
    setIconSize({PictureSize, PictureSize});
    setMovable(false);
    setContextMenuPolicy(Qt::PreventContextMenu);
}

// A button without a tip would show its caption as one.
bool ToolBar::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::ToolTip && watched->property(NoTip).toBool()) {
        return true;
    }
    return QToolBar::eventFilter(watched, event);
}
