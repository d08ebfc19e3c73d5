// SPDX-License-Identifier: GPL-3.0-or-later
// An icon in the desktop's tray, with a tip and a menu that any mouse action opens.
#pragma once

#include <QObject>
#include <string>

class QIcon;
class QSystemTrayIcon;

class TrayIcon : public QObject {
    Q_OBJECT
 public:
    explicit TrayIcon(QObject* parent = nullptr);
    void SetIcon(const QIcon& icon);
    void SetTip(const std::string& tip);
    const std::string& Tip() const { return m_tip; }
    // The icon is shown while both switches are on.
    void SetEnabled(bool on);
    void SetVisible(bool on);
    bool IsShown() const { return m_enabled && m_visible; }

 signals:
    void MouseUp();
    void DoubleClick();

 private:
    void Update();
    QSystemTrayIcon* m_icon;
    std::string m_tip;
    bool m_enabled = false, m_visible = false;
};
