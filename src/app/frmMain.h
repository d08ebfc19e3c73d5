// SPDX-License-Identifier: GPL-3.0-or-later
// The main window. It owns the menus, the status bar, the poll timer and the tray icon. In the editor it is
// visible and its timer is off. In the scheduler it stays hidden and only the timer and the tray icon are in
// use.
#pragma once

#include <QMainWindow>
#include <QTimer>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "platform/controls/child_area.h"
#include "platform/qt/tray_icon.h"
#include "shared/Frame.h"

class CommonDialog;
class QAction;
class QLabel;
class QMenu;

class frmMain : public QMainWindow, public MainFrame {
    Q_OBJECT
 public:
    // Returns the one main window. The first call makes and loads it.
    static frmMain& Instance();
    frmMain();
    ~frmMain() override;

    // MainFrame
    void EnableTimer1(bool enabled) override;
    void HideWindow() override;
    void ScreenMousePointer(int pointer) override;
    CommonDialog* cd() override { return m_cd; }
    void AddChild(QWidget& form) override;
    void ClickEntry(const std::string& entry) override;
    void EntryCaption(const std::string& entry, const std::string& caption) override;
    void EntryVisible(const std::string& entry, bool visible) override;
    void EntryEnabled(const std::string& entry, bool enabled) override;
    void PopupMenu(const std::string& menu) override;
    void PopupMenu(const std::string& menu, int x, int y) override;

    void SetStatusPanel(int panel, const std::string& text);  // panel 1 or 2
    std::string StatusPanel(int panel) const;
    ChildArea& Children() { return *m_children; }
    QMenu* Menu(const std::string& name) const;  // null if there is no such menu
    QAction* Entry(const std::string& name) const;
    bool BusyShown() const { return m_busy; }

    QTimer* Timer1;
    TrayIcon* TrayIcon1;

    void MDIForm_Load();
    void MDIForm_QueryUnload();
    void MDIForm_Unload();
    void Timer1_Timer();

 protected:
    void closeEvent(QCloseEvent* event) override;

 private:
    void BuildMenus();
    void AddMenu(const struct MenuRow& row);
    void ListChildWindows();
    void GreyEntries(const std::string& menu);  // that have nothing to act on
    ChildArea* m_children;
    CommonDialog* m_cd;
    QLabel* m_panels[2];
    std::map<std::string, QMenu*> m_menus;
    std::map<std::string, QAction*> m_entries;
    // listed after the commands of mnuWin; made again whenever it opens
    std::vector<QAction*> m_windowEntries;
    bool m_busy = false;
};

// Releases the reference of every Desktop window and ends the process at once.
void mnuEnd_Click();
// Ends the process at once.
void mnutbExit_Click();
// Shows the splash window as About box.
void mnuAbout_Click();
// Opens a further Desktop window.
void mnuDesktop_Click();
void mnuCasc_Click();
void mnuTile_Click();
void mnuArr_Click();
