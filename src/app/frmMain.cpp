// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/frmMain.h"

#include <QApplication>
#include <QCloseEvent>
#include <QCursor>
#include <QFontMetrics>
#include <QIcon>
#include <QLabel>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMenuBar>
#include <QStatusBar>

#include "app/MenuHandlers.h"
#include "app/Menus.h"

#include "desktop/DeskMenus.h"
#include "platform/base/convert.h"
#include "platform/contracts/clock.h"
#include "platform/contracts/loop.h"
#include "platform/controls/folders/common_dialog.h"
#include "scheduler/BatchReport.h"
#include "scheduler/PollTrace.h"
#include "scheduler/RunLog.h"
#include "scheduler/Schedchk.h"
#include "shared/Global.h"

namespace {

constexpr int TimerInterval = 1000;  // milliseconds
constexpr int Hourglass = 11;
constexpr int LongestTitle = 60;  // of a window in the menu, in average characters

}  // namespace

// The images are in a static library, so that only this call registers them. It must be outside every
// namespace.
static void RegisterImages() {
    Q_INIT_RESOURCE(app);
}

frmMain& frmMain::Instance() {
    // Never destroyed: the process ends without unwinding.
    static auto* const form = new frmMain;
    return *form;
}

frmMain::frmMain()
    : Timer1(new QTimer(this)),
      TrayIcon1(new TrayIcon(this)),
      m_children(new ChildArea(this)),
      m_cd(new CommonDialog(this)),
      m_panels{} {
    RegisterImages();
    setObjectName("frmMain");
    Timer1->setObjectName("Timer1");
    Timer1->setInterval(TimerInterval);
    TrayIcon1->setObjectName("TrayIcon1");
    m_cd->setObjectName("cd");
    setCentralWidget(m_children);
    statusBar()->setObjectName("Status");
    for (QLabel*& panel : m_panels) {
        panel = new QLabel(this);
        panel->setFrameStyle(static_cast<int>(QFrame::Panel) | static_cast<int>(QFrame::Sunken));
        statusBar()->addWidget(panel, panel == m_panels[1] ? 1 : 0);
    }
    BuildMenus();
    connect(m_menus.at("mnuWin"), &QMenu::aboutToShow, this, &frmMain::ListChildWindows);
    for (const char* menu : {"mnuTools", "mnuViewType"}) {
        connect(m_menus.at(menu), &QMenu::aboutToShow, this, [this, menu] { GreyEntries(menu); });
    }
    const QIcon icon(":/images/logo.svg");
    setWindowIcon(icon);
    QApplication::setWindowIcon(icon);  // of boxes without a parent window
    TrayIcon1->SetIcon(icon);
    connect(Timer1, &QTimer::timeout, this, &frmMain::Timer1_Timer);
    for (const auto event : {&TrayIcon::MouseUp, &TrayIcon::DoubleClick}) {
        connect(TrayIcon1, event, this, [this] { PopupMenu("mnutb"); });
    }
    Global::Frame = this;
    MDIForm_Load();
}

frmMain::~frmMain() {
    if (Global::Frame == this) {
        Global::Frame = nullptr;
    }
}

void frmMain::BuildMenus() {
    for (const MenuRow& row : MenuTable()) {
        if (row.name == nullptr) {
            AddMenu(row);
            continue;
        }
        QAction* entry = m_menus.at(row.menu)->addAction(QString::fromUtf8(row.caption));
        entry->setObjectName(row.name);
        m_entries[row.name] = entry;
        if (entry->text() == "-") {
            entry->setText({});  // else Qt shows it next to the separator
            entry->setSeparator(true);
            continue;
        }
        if (const auto handler = FindMenuHandler(row.name)) {
            connect(entry, &QAction::triggered, this, handler);
        }
    }
    EntryEnabled("mnuRefHis", false);  // until there is a history window
}

void frmMain::AddMenu(const MenuRow& row) {
    auto* menu = new QMenu(QString::fromUtf8(row.caption), this);
    menu->setObjectName(row.menu);
    m_menus[row.menu] = menu;
    if (!row.popup) {
        menuBar()->addMenu(menu);
    }
}

// The first nine have their number as mnemonic. The active one is checked.
void frmMain::ListChildWindows() {
    QMenu& menu = *m_menus.at("mnuWin");
    for (QAction* entry : m_windowEntries) {
        delete entry;
    }
    m_windowEntries.clear();
    const QList<QMdiSubWindow*> windows = m_children->subWindowList();
    if (!windows.isEmpty()) {
        m_windowEntries.push_back(menu.addSeparator());
    }
    int number = 0;
    for (QMdiSubWindow* window : windows) {
        ++number;
        const QFontMetrics metrics = menu.fontMetrics();
        const QString title = metrics
                                  .elidedText(window->windowTitle().simplified(), Qt::ElideRight,
                                              LongestTitle * metrics.averageCharWidth())
                                  .replace("&", "&&");
        QAction* entry = menu.addAction((number < 10 ? "&" : "") + QString::number(number) + " " + title);
        entry->setCheckable(true);
        entry->setChecked(window == m_children->currentSubWindow());
        connect(entry, &QAction::triggered, window, [window] { ChildArea::Activate(*window->widget()); });
        m_windowEntries.push_back(entry);
    }
}

void frmMain::GreyEntries(const std::string& menu) {
    for (QAction* entry : m_menus.at(menu)->actions()) {
        if (const auto open = HasWhatItActsOn(entry->objectName().toStdString())) {
            entry->setEnabled(*open);
        }
    }
}

void frmMain::MDIForm_Load() {
    SetStatusPanel(1, DateText(Today()));
    setWindowTitle("Oxbow Courier");
}

void frmMain::Timer1_Timer() {
    const auto showCountdown = [this] {
        TrayIcon1->SetTip("Time to poll: " + std::to_string(Global::PollCountdown));
    };
    if (Global::PollCountdown > 0) {
        --Global::PollCountdown;
        showCountdown();
        DoEvents();
        return;
    }
    TrayIcon1->SetTip("Report Scheduler polling...");
    DoEvents();
    Global::RunLog::Instance().PollBegins();
    Global::BatchReport();
    Global::Schedchk();
    Global::WritePollTrace();
    Global::RunLog::Instance().PollEnds();
    Global::CurrentReport.reset();
    Global::PollCountdown = Global::PollSeconds;
    showCountdown();
}

void frmMain::EnableTimer1(bool enabled) {
    if (!enabled) {
        Timer1->stop();
    } else if (!Timer1->isActive()) {
        Timer1->start();
    }
}

void frmMain::HideWindow() {
    hide();
}

void frmMain::ScreenMousePointer(int pointer) {
    const bool busy = pointer == Hourglass;
    if (busy && !m_busy) {
        QApplication::setOverrideCursor(Qt::WaitCursor);
    } else if (!busy && m_busy) {
        QApplication::restoreOverrideCursor();
    }
    m_busy = busy;
}

void frmMain::AddChild(QWidget& form) {
    m_children->Add(form);
}

void frmMain::SetStatusPanel(int panel, const std::string& text) {
    m_panels[panel - 1]->setText(QString::fromStdString(text));
}

std::string frmMain::StatusPanel(int panel) const {
    return m_panels[panel - 1]->text().toStdString();
}

QMenu* frmMain::Menu(const std::string& name) const {
    const auto found = m_menus.find(name);
    return found == m_menus.end() ? nullptr : found->second;
}

QAction* frmMain::Entry(const std::string& name) const {
    const auto found = m_entries.find(name);
    return found == m_entries.end() ? nullptr : found->second;
}

void frmMain::ClickEntry(const std::string& entry) {
    // Also for a hidden entry, whose action cannot be triggered.
    if (const auto handler = FindMenuHandler(entry)) {
        handler();
    }
}

void frmMain::EntryCaption(const std::string& entry, const std::string& caption) {
    m_entries.at(entry)->setText(QString::fromStdString(caption));
}

void frmMain::EntryVisible(const std::string& entry, bool visible) {
    m_entries.at(entry)->setVisible(visible);
}

void frmMain::EntryEnabled(const std::string& entry, bool enabled) {
    m_entries.at(entry)->setEnabled(enabled);
}

void frmMain::PopupMenu(const std::string& menu) {
    PopupMenu(menu, QCursor::pos().x(), QCursor::pos().y());
}

void frmMain::PopupMenu(const std::string& menu, int x, int y) {
    GreyEntries(menu);
    ClickEntry(menu);  // some menus have a handler of their own
    m_menus.at(menu)->popup({x, y});
}

void frmMain::closeEvent(QCloseEvent* event) {
    MDIForm_QueryUnload();
    event->accept();
}

// The close cannot be cancelled and waits for no operation.
void frmMain::MDIForm_QueryUnload() {
    MDIForm_Unload();
}

void frmMain::MDIForm_Unload() {
    mnuEnd_Click();
}
