// SPDX-License-Identifier: GPL-3.0-or-later
// Members of DesignWindow: which commands are possible, and why the others are not.
#include <QDockWidget>
#include <QKeyEvent>
#include <QLabel>
#include <QMenu>
#include <QMouseEvent>
#include <QStatusBar>
#include <QTabWidget>

#include "designer/item_dialogs/format_menu.h"
#include "designer/model/new_items.h"
#include "designer/model/page_setup.h"
#include "designer/panes/property_pane.h"
#include "designer/panes/reasons.h"
#include "designer/panes/table_menu.h"
#include "designer/window/design_window.h"
#include "designer/window/preview_page.h"

namespace designer {

void DesignWindow::Allow(const char* name, const QString& reason) {
    ShowReason(*findChild<QAction*>(name), reason);
}

// Returns why nothing on the canvas can be changed; empty if it can.
QString DesignWindow::ReasonWithoutCanvas() const {
    return IsText()                              ? tr("Mend the file first")
           : m_tabs->currentWidget() != m_canvas ? tr("Go to the tab Design first")
                                                 : QString();
}

void DesignWindow::ShowCommands() {
    const QString off = ReasonWithoutCanvas();
    const auto selected = m_model->SelectedItems();
    const auto allow = [&](std::initializer_list<const char*> names, bool isAllowed, const QString& reason) {
        for (const char* name : names) {
            Allow(name, !off.isEmpty() ? off : isAllowed ? QString() : reason);
        }
    };
    ShowUndoCommands(off);
    allow({"editCut", "editCopy", "editDuplicate", "editDelete", "toFront", "toBack"}, !selected.empty(),
          tr("Select an item"));
    allow({"editPaste",     "editSelectAll",   "snap",
           "zoomIn",        "zoomOut",         "zoomWhole",
           "zoomWidth",     "nextPane",        "insertTextBox",
           "insertLine",    "insertRectangle", "insertImage",
           "insertTable",   "insertMatrix",    "insertList",
           "insertChart",   "insertGauge",     "insertIndicator",
           "insertBarCode", "insertSubreport"},
          true, {});
    const std::size_t section = SectionOfSelection(*m_model);
    for (const auto& [name, kind] :
         {std::pair("pageHeader", BandKind::PageHeader), std::pair("pageFooter", BandKind::PageFooter)}) {
        allow({name}, true, {});
        findChild<QAction*>(name)->setChecked(PageBandOf(m_model->Source(), kind, section) != NoElement);
    }
    allow({"editReset"}, m_properties->CurrentRow(), tr("Choose a property first"));
    allow({"reportItem"}, HasDialog(m_model->Leader()),
          tr("Select a chart, gauge, indicator, bar code or subreport"));
    allow({"reportExpression"}, ExpressionRow().has_value(),
          tr("Select a text box, or a property that takes an expression"));
    allow({"editText"}, m_canvas->TextBoxToType() != NoElement, tr("Select a text box"));
    allow({"alignLeft", "alignCentre", "alignRight", "alignTop", "alignMiddle", "alignBottom", "sameWidth",
           "sameHeight", "sameSize", "group"},
          selected.size() >= 2, tr("Select two items or more"));
    allow({"distributeAcross", "distributeDown"}, selected.size() >= 3, tr("Select three items or more"));
    allow({"ungroup"}, HasRectangle(), tr("Select a rectangle"));
    m_table->ShowCommands(off);
    m_format->ShowCommands(off);
    ShowDataCommands(off);
    for (const char* name : {"fileSchedule", "viewDesign", "viewPreview", "viewXml"}) {
        Allow(name, IsText() ? off : QString());
    }
    // The viewer has the key for its own file while the preview is open.
    findChild<QAction*>("fileSave")
        ->setShortcut(m_tabs->currentWidget() != m_preview || IsText() ? QKeySequence(QKeySequence::Save)
                                                                       : QKeySequence());
    for (QDockWidget* dock : findChildren<QDockWidget*>()) {
        dock->widget()->setEnabled(off.isEmpty());
    }
    m_zoomLabel->setText(QString("%1 %").arg(qRound(m_canvas->Zoom())));
}

void DesignWindow::ShowUndoCommands(const QString& off) {
    const Document& document = m_model->Source();
    const QString undo = QString::fromStdString(document.UndoName());
    const QString redo = QString::fromStdString(document.RedoName());
    findChild<QAction*>("editUndo")->setText(undo.isEmpty() ? tr("&Undo") : tr("&Undo %1").arg(undo));
    findChild<QAction*>("editRedo")->setText(redo.isEmpty() ? tr("&Redo") : tr("&Redo %1").arg(redo));
    const auto reason = [&off](bool isAllowed, const QString& nothing) {
        return !off.isEmpty() ? off : isAllowed ? QString() : nothing;
    };
    Allow("editUndo", reason(document.UndoCount() > 0, tr("There is nothing to undo")));
    Allow("editRedo", reason(document.RedoCount() > 0, tr("There is nothing to redo")));
}

// The keys of a grey command come here, as nothing else takes them.
void DesignWindow::keyPressEvent(QKeyEvent* event) {
    const QKeySequence keys(event->keyCombination());
    for (const QAction* action : findChildren<QAction*>()) {
        if (!action->isEnabled() && !action->statusTip().isEmpty() && action->shortcuts().contains(keys)) {
            m_model->Refuse(action->statusTip());
            return;
        }
    }
    QMainWindow::keyPressEvent(event);
}

// A style does not give a grey entry to the pointer: the status bar has its reason all the same.
bool DesignWindow::eventFilter(QObject* watched, QEvent* event) {
    const auto* menu = qobject_cast<QMenu*>(watched);
    const bool isMove = event->type() == QEvent::MouseMove;
    if (menu && (isMove || event->type() == QEvent::Hide)) {
        const QAction* under =
            isMove ? menu->actionAt(static_cast<QMouseEvent*>(event)->position().toPoint()) : nullptr;
        const QString reason = under && !under->isEnabled() ? under->statusTip() : QString();
        if (reason != m_reason) {
            m_reason = reason;
            statusBar()->showMessage(reason);
        }
    }
    return QMainWindow::eventFilter(watched, event);
}

}  // namespace designer
