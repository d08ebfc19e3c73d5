// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/qt/tray_icon.h"

#include <QIcon>
#include <QSystemTrayIcon>

TrayIcon::TrayIcon(QObject* parent) : QObject(parent), m_icon(new QSystemTrayIcon(this)) {
    connect(m_icon, &QSystemTrayIcon::activated, this, [this](QSystemTrayIcon::ActivationReason reason) {
        if (reason == QSystemTrayIcon::DoubleClick) {
            emit DoubleClick();
        } else {
            emit MouseUp();
        }
    });
}

void TrayIcon::SetIcon(const QIcon& icon) {
    m_icon->setIcon(icon);
}

void TrayIcon::SetTip(const std::string& tip) {
    m_tip = tip;
    m_icon->setToolTip(QString::fromStdString(tip));
}

void TrayIcon::SetEnabled(bool on) {
    m_enabled = on;
    Update();
}

void TrayIcon::SetVisible(bool on) {
    m_visible = on;
    Update();
}

void TrayIcon::Update() {
    m_icon->setVisible(IsShown());
}
