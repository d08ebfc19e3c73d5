// SPDX-License-Identifier: GPL-3.0-or-later
// Members of DesignWindow: its menus.
#include <QAction>
#include <QApplication>
#include <QDockWidget>
#include <QFileInfo>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QTabWidget>
#include <QToolButton>
#include <tuple>
#include <utility>

#include "designer/item_dialogs/format_menu.h"
#include "designer/item_dialogs/group_dialogs.h"
#include "designer/panes/groups_pane.h"
#include "designer/panes/table_menu.h"
#include "designer/panes/toolbox_pane.h"
#include "designer/window/design_window.h"
#include "designer/window/designer_settings.h"
#include "designer/window/preview_page.h"

namespace designer {
namespace {

QAction& CommandOf(const DesignWindow& window, const char* name) {
    return *window.findChild<QAction*>(name);
}

}  // namespace

QAction* DesignWindow::AddCommand(QMenu& menu, const char* name, const QString& text,
                                  const QKeySequence& keys, const std::function<void()>& work) {
    auto* action = new QAction(text, this);
    action->setObjectName(name);
    action->setShortcut(keys);
    connect(action, &QAction::triggered, this, [work] { work(); });
    menu.addAction(action);
    return action;
}

void DesignWindow::BuildMenus() {
    BuildFileMenu();
    BuildEditMenu();
    BuildInsertMenu();
    m_table = new TableMenu(*m_model, this);
    menuBar()->addMenu(m_table);
    m_canvas->addAction(m_table->menuAction());
    connect(m_table, &TableMenu::Working, m_canvas, &DesignCanvas::FinishEditing);
    m_format = new FormatMenu(*m_model, this);
    m_format->AddTableCommands(*m_table);
    m_table->SetAsk([this](ElementId member, const std::string& value, QWidget* parent) {
        return AskForGroupExpression(*m_model, member, value, parent);
    });
    m_groups->addActions(m_table->actions());
    m_groups->setContextMenuPolicy(Qt::ActionsContextMenu);
    connect(m_groups, &GroupsPane::OpenRequested, this, [this](ElementId member) {
        HasDialog(member) ? DesignItem(member) : CommandOf(*this, "groupProperties").trigger();
    });
    menuBar()->addMenu(m_format);
    m_canvas->addAction(m_format->menuAction());
    connect(m_format, &FormatMenu::Working, m_canvas, &DesignCanvas::TakeTextPart);
    connect(m_format, &FormatMenu::Done, m_canvas, &DesignCanvas::ContinueText);
    BuildArrangeMenu();
    BuildReportMenu();
    BuildViewMenu();
    BuildHelpMenu();
    for (QMenu* menu : findChildren<QMenu*>()) {
        menu->installEventFilter(this);
    }
}

void DesignWindow::BuildFileMenu() {
    QMenu& menu = *menuBar()->addMenu(tr("&File"));
    AddCommand(menu, "fileNew", tr("&New"), QKeySequence::New, [this] { emit WindowRequested({}); });
    AddCommand(menu, "fileNewFromData", tr("New from &Data..."),
               QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_N), [this] { MakeFromData(); });
    AddCommand(menu, "fileOpen", tr("&Open..."), QKeySequence::Open, [this] { AskAndOpen(); });
    m_recent = menu.addMenu(tr("Open &Recent"));
    connect(m_recent, &QMenu::aboutToShow, this, &DesignWindow::ShowRecentFiles);
    menu.addSeparator();
    AddCommand(menu, "fileSave", tr("&Save"), QKeySequence::Save, [this] { Save(); });
    AddCommand(menu, "fileSaveAs", tr("Save &As..."), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_S),
               [this] { AskAndSaveAs(); });
    menu.addSeparator();
    AddScheduleCommand(menu);
    AddCommand(menu, "fileClose", tr("&Close"), QKeySequence(Qt::CTRL | Qt::Key_W), [this] { close(); });
    AddCommand(menu, "fileQuit", tr("&Quit"), QKeySequence(Qt::CTRL | Qt::Key_Q),
               [this] { emit QuitRequested(); });
}

void DesignWindow::ShowRecentFiles() {
    m_recent->clear();
    int number = 0;
    for (const QString& file : RecentFiles()) {
        QString name = file;
        name.replace("&", "&&");
        m_recent->addAction(QString("&%1 %2").arg(++number % 10).arg(name), this,
                            [this, file] { emit WindowRequested(file); });
    }
    if (number == 0) {
        m_recent->addAction(tr("No recent files"))->setEnabled(false);
    }
}

void DesignWindow::BuildEditMenu() {
    QMenu& menu = *menuBar()->addMenu(tr("&Edit"));
    AddCommand(menu, "editUndo", tr("&Undo"), QKeySequence::Undo, [this] {
        FinishTyping();
        m_model->Undo();
    });
    AddCommand(menu, "editRedo", tr("&Redo"), QKeySequence::Redo, [this] { m_model->Redo(); });
    menu.addSeparator();
    AddCommand(menu, "editCut", tr("Cu&t"), QKeySequence::Cut, [this] { CutSelection(); });
    AddCommand(menu, "editCopy", tr("&Copy"), QKeySequence::Copy, [this] { CopySelection(); });
    AddCommand(menu, "editPaste", tr("&Paste"), QKeySequence::Paste, [this] { Paste(); });
    AddCommand(menu, "editDuplicate", tr("&Duplicate"), QKeySequence(Qt::CTRL | Qt::Key_D),
               [this] { DuplicateSelection(); });
    AddCommand(menu, "editDelete", tr("De&lete"), QKeySequence::Delete, [this] { DeleteSelection(); });
    menu.addSeparator();
    AddCommand(menu, "editSelectAll", tr("Select &All"), QKeySequence::SelectAll, [this] { SelectAll(); });
    AddCommand(menu, "editText", tr("Edit Te&xt"), QKeySequence(Qt::Key_F2),
               [this] { m_canvas->EditText(); });
    AddCommand(menu, "editReset", tr("Re&set Property"), QKeySequence(Qt::CTRL | Qt::Key_Backspace),
               [this] { m_properties->Reset(); });
    // These keys mean something else in the panes.
    for (const char* name : {"editCut", "editCopy", "editPaste", "editDelete", "editSelectAll", "editText"}) {
        QAction& action = CommandOf(*this, name);
        action.setShortcutContext(Qt::WidgetShortcut);
        m_canvas->addAction(&action);
    }
    m_canvas->addAction(&CommandOf(*this, "editDuplicate"));
    m_canvas->setContextMenuPolicy(Qt::ActionsContextMenu);
}

void DesignWindow::BuildInsertMenu() {
    QMenu& menu = *menuBar()->addMenu(tr("&Insert"));
    constexpr Qt::Key Keys[] = {Qt::Key_T, Qt::Key_L, Qt::Key_R, Qt::Key_I, Qt::Key_B, Qt::Key_M,
                                Qt::Key_U, Qt::Key_1, Qt::Key_2, Qt::Key_3, Qt::Key_4, Qt::Key_5};
    // Where the character is that chooses the command in the menu: each has one of its own.
    constexpr int Marks[] = {0, 0, 0, 0, 2, 0, 2, 0, 0, 2, 5, 1};
    const Qt::Key* key = Keys;
    const int* mark = Marks;
    for (const ToolText& tool : Tools()) {
        const QString name = "insert" + tool.name.simplified().remove(' ');
        const QString text = QString(tool.name).insert(*mark++, '&');
        QAction* action = AddCommand(menu, name.toUtf8(), text, QKeySequence(Qt::CTRL | Qt::ALT | *key++),
                                     [this, kind = tool.kind] {
                                         m_canvas->InsertAtMiddle(kind);
                                         m_canvas->setFocus();
                                     });
        action->setIcon(ToolIcon(tool.kind, palette()));
    }
    menu.addSeparator();
    const std::tuple<const char*, QString, Qt::Key, BandKind> bands[] = {
        {"pageHeader", tr("Page &Header"), Qt::Key_H, BandKind::PageHeader},
        {"pageFooter", tr("Page &Footer"), Qt::Key_F, BandKind::PageFooter}};
    for (const auto& [name, text, keyCode, kind] : bands) {
        AddCommand(menu, name, text, QKeySequence(Qt::CTRL | Qt::ALT | keyCode), [this, band = kind] {
            TogglePageBand(band);
        })->setCheckable(true);
    }
}

void DesignWindow::BuildArrangeMenu() {
    struct Entry {
        const char* name;
        QString text;
        QKeySequence keys;
        Arrangement arrangement;
        QString verb;
    };
    const auto keys = [](Qt::Key key) { return QKeySequence(Qt::CTRL | Qt::SHIFT | key); };
    const Entry entries[] = {
        {"alignLeft", tr("Align &Left"), keys(Qt::Key_L), Arrangement::AlignLeft, tr("Align")},
        {"alignCentre", tr("Align &Centres"), keys(Qt::Key_E), Arrangement::AlignCentre, tr("Align")},
        {"alignRight", tr("Align &Right"), keys(Qt::Key_R), Arrangement::AlignRight, tr("Align")},
        {"alignTop", tr("Align &Top"), keys(Qt::Key_T), Arrangement::AlignTop, tr("Align")},
        {"alignMiddle", tr("Align &Middles"), keys(Qt::Key_M), Arrangement::AlignMiddle, tr("Align")},
        {"alignBottom", tr("Align &Bottom"), keys(Qt::Key_B), Arrangement::AlignBottom, tr("Align")},
        {"distributeAcross", tr("Distribute &Across"), keys(Qt::Key_H), Arrangement::DistributeAcross,
         tr("Distribute")},
        {"distributeDown", tr("Distribute &Down"), keys(Qt::Key_V), Arrangement::DistributeDown,
         tr("Distribute")},
        {"sameWidth", tr("Same &Width"), keys(Qt::Key_W), Arrangement::SameWidth, tr("Resize")},
        {"sameHeight", tr("Same &Height"), keys(Qt::Key_G), Arrangement::SameHeight, tr("Resize")},
        {"sameSize", tr("Same &Size"), keys(Qt::Key_D), Arrangement::SameSize, tr("Resize")},
    };
    QMenu& menu = *menuBar()->addMenu(tr("&Arrange"));
    for (const Entry& entry : entries) {
        if (entry.arrangement == Arrangement::DistributeAcross ||
            entry.arrangement == Arrangement::SameWidth) {
            menu.addSeparator();
        }
        AddCommand(menu, entry.name, entry.text, entry.keys,
                   [this, arrangement = entry.arrangement, verb = entry.verb] {
                       ArrangeSelection(arrangement, verb);
                   });
    }
    menu.addSeparator();
    AddCommand(menu, "toFront", tr("Bring to &Front"), QKeySequence(Qt::CTRL | Qt::Key_BracketRight),
               [this] { SelectionToFront(); });
    AddCommand(menu, "toBack", tr("Send to Bac&k"), QKeySequence(Qt::CTRL | Qt::Key_BracketLeft),
               [this] { SelectionToBack(); });
    menu.addSeparator();
    AddCommand(menu, "group", tr("&Group into a Rectangle"), QKeySequence(Qt::CTRL | Qt::ALT | Qt::Key_J),
               [this] { GroupSelection(); });
    AddCommand(menu, "ungroup", tr("&Ungroup"), QKeySequence(Qt::CTRL | Qt::ALT | Qt::Key_K),
               [this] { UngroupSelection(); });
    menu.addSeparator();
    QAction* snap =
        AddCommand(menu, "snap", tr("Sna&p to Grid and Items"), QKeySequence(Qt::CTRL | Qt::Key_G),
                   [this] { m_canvas->SetSnaps(CommandOf(*this, "snap").isChecked()); });
    snap->setCheckable(true);
    snap->setChecked(true);
}

void DesignWindow::BuildReportMenu() {
    QMenu& menu = *menuBar()->addMenu(tr("&Report"));
    BuildDataCommands(menu);
    menu.addSeparator();
    AddCommand(menu, "reportExpression", tr("&Expression..."), QKeySequence(Qt::CTRL | Qt::Key_E),
               [this] { EditExpression(); });
    AddCommand(menu, "reportItem", tr("&Item..."), QKeySequence(Qt::CTRL | Qt::Key_Return),
               [this] { DesignItem(m_model->Leader()); });
    m_canvas->addAction(&CommandOf(*this, "reportItem"));
    m_properties->addAction(&CommandOf(*this, "reportExpression"));
    m_properties->addAction(&CommandOf(*this, "editReset"));
    m_properties->setContextMenuPolicy(Qt::ActionsContextMenu);
}

void DesignWindow::BuildViewMenu() {
    QMenu& menu = *menuBar()->addMenu(tr("&View"));
    AddCommand(menu, "viewDesign", tr("&Design"), QKeySequence(Qt::Key_F7),
               [this] { m_tabs->setCurrentIndex(0); });
    AddCommand(menu, "viewPreview", tr("&Preview"), QKeySequence(Qt::Key_F5), [this] {
        if (m_tabs->currentWidget() == m_preview) {
            m_preview->Open(*m_model);
        }
        m_tabs->setCurrentWidget(m_preview);
    });
    AddCommand(menu, "viewXml", tr("&XML"), QKeySequence(Qt::Key_F8), [this] { m_tabs->setCurrentIndex(2); });
    menu.addSeparator();
    AddCommand(menu, "zoomIn", tr("Zoom &In"), QKeySequence(Qt::CTRL | Qt::Key_Plus),
               [this] { m_canvas->StepZoom(1); });
    CommandOf(*this, "zoomIn")
        .setShortcuts({QKeySequence(Qt::CTRL | Qt::Key_Plus), QKeySequence(Qt::CTRL | Qt::Key_Equal)});
    AddCommand(menu, "zoomOut", tr("Zoom &Out"), QKeySequence(Qt::CTRL | Qt::Key_Minus),
               [this] { m_canvas->StepZoom(-1); });
    AddCommand(menu, "zoomWhole", tr("&Actual Size"), QKeySequence(Qt::CTRL | Qt::Key_0),
               [this] { m_canvas->SetZoom(100); });
    AddCommand(menu, "zoomWidth", tr("Fit &Width"), QKeySequence(Qt::CTRL | Qt::Key_9),
               [this] { m_canvas->FitWidth(); });
    menu.addSeparator();
    AddCommand(menu, "nextPane", tr("&Next Pane"), QKeySequence(Qt::Key_F6), [this] {
        QList<QWidget*> parts{m_canvas};
        for (const QDockWidget* dock : findChildren<QDockWidget*>()) {
            if (dock->isVisible()) {
                parts.append(dock->widget());
            }
        }
        qsizetype now = -1;
        for (qsizetype index = 0; index < parts.size(); ++index) {
            const QWidget* focus = QApplication::focusWidget();
            now = focus && (parts[index] == focus || parts[index]->isAncestorOf(focus)) ? index : now;
        }
        QWidget* next = parts[(now + 1) % parts.size()];
        auto* first = next->focusPolicy() == Qt::NoFocus ? next->findChild<QToolButton*>() : nullptr;
        (first ? static_cast<QWidget*>(first) : next)->setFocus(Qt::ShortcutFocusReason);
    });
    int number = 1;
    for (QDockWidget* dock : findChildren<QDockWidget*>()) {
        QAction* action = dock->toggleViewAction();
        action->setShortcut(QKeySequence(Qt::ALT | static_cast<Qt::Key>(Qt::Key_0 + number++)));
        menu.addAction(action);
    }
}

}  // namespace designer
