// SPDX-License-Identifier: GPL-3.0-or-later
// Members of DesignCanvas: keys, and typing into a text box.
#include <QApplication>
#include <QKeyEvent>
#include <QScrollBar>
#include <algorithm>
#include <utility>

#include "designer/canvas/design_canvas.h"
#include "designer/canvas/text_editor.h"
#include "designer/graphics/part_tree.h"
#include "designer/model/item_text.h"
#include "designer/model/placing.h"
#include "designer/tables/fields.h"

namespace designer {
namespace {

constexpr double FineStep = 0.2;      // of the grid
constexpr qint64 NudgePause = 1000;   // milliseconds; nudges within it are one step
constexpr QSize LeastEditor(80, 24);  // pixels

// Keys of the window that take the typed text first: save, open, new, close, quit, preview and panes.
bool LeavesEditor(const QKeyEvent& key) {
    const bool isControl = key.modifiers().testFlag(Qt::ControlModifier);
    const int code = key.key();
    return code == Qt::Key_F5 || code == Qt::Key_F6 ||
           (isControl && (code == Qt::Key_S || code == Qt::Key_O || code == Qt::Key_N || code == Qt::Key_W ||
                          code == Qt::Key_Q));
}

// Keys of commands on the look of what is marked.
bool IsFormatKey(const QKeyEvent& key) {
    const Qt::KeyboardModifiers modifiers = key.modifiers() & ~Qt::KeypadModifier;
    const int code = key.key();
    return (modifiers == Qt::ControlModifier &&
            (code == Qt::Key_1 || code == Qt::Key_L || code == Qt::Key_R || code == Qt::Key_K)) ||
           (modifiers == (Qt::ControlModifier | Qt::ShiftModifier) &&
            (code == Qt::Key_Greater || code == Qt::Key_Less || code == Qt::Key_C));
}

// Alt and a character open a menu.
bool IsMnemonic(const QKeyEvent& key) {
    return (key.modifiers() & (Qt::AltModifier | Qt::ControlModifier)) == Qt::AltModifier;
}

}  // namespace

void DesignCanvas::SetTextSource(QWidget* source) {
    m_textSource = source;
    source->installEventFilter(this);
}

void DesignCanvas::keyPressEvent(QKeyEvent* event) {
    const bool fine = event->modifiers().testFlag(Qt::ControlModifier);
    const bool resizes = event->modifiers().testFlag(Qt::ShiftModifier);
    switch (event->key()) {
        case Qt::Key_Left:
            return StepInTable(-1, 0, fine, resizes) ? void() : Nudge(-1, 0, fine, resizes);
        case Qt::Key_Right:
            return StepInTable(1, 0, fine, resizes) ? void() : Nudge(1, 0, fine, resizes);
        case Qt::Key_Up:
            return StepInTable(0, -1, fine, resizes) ? void() : Nudge(0, -1, fine, resizes);
        case Qt::Key_Down:
            return StepInTable(0, 1, fine, resizes) ? void() : Nudge(0, 1, fine, resizes);
        case Qt::Key_Escape:
            if (m_drag.action != Action::None) {
                CancelDrag();
            } else if (m_tool) {
                SetTool(std::nullopt);
            } else {
                ClimbSelection();
            }
            return;
        case Qt::Key_Return:
        case Qt::Key_Enter:
            return event->modifiers().testFlag(Qt::AltModifier) ? event->ignore() : EditText();
        default:
            return TypeInto(event);
    }
}

// What is typed on a text box replaces its text.
void DesignCanvas::TypeInto(QKeyEvent* event) {
    const QString text = event->text();
    const bool isCommand = event->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier);
    if (isCommand || text.isEmpty() || !text.front().isPrint()) {
        return QAbstractScrollArea::keyPressEvent(event);
    }
    EditText();
    if (m_editor) {
        m_editor->insertPlainText(text);
    }
}

// Tab goes through the items in the order of the file, and after the last one to the next part of the window.
bool DesignCanvas::focusNextPrevChild(bool next) {
    const auto& items = m_model.Items().items;
    const auto now = std::find_if(items.begin(), items.end(),
                                  [this](const ReportItem& item) { return item.id == m_model.Leader(); });
    const bool isLast =
        items.empty() || (now != items.end() && &*now == (next ? &items.back() : &items.front()));
    if (!hasFocus() || isLast) {
        return QAbstractScrollArea::focusNextPrevChild(next);
    }
    SelectNext(next ? 1 : -1);
    return true;
}

void DesignCanvas::SelectNext(int step) {
    const auto& items = m_model.Items().items;
    const auto now = std::find_if(items.begin(), items.end(),
                                  [this](const ReportItem& item) { return item.id == m_model.Leader(); });
    if (now == items.end()) {
        m_model.Select({step > 0 ? items.front().id : items.back().id});
    } else {
        m_model.Select({(now + step)->id});
    }
    RevealSelection();
}

// From an item to what it is in, up to its band, and then to nothing.
void DesignCanvas::ClimbSelection() {
    const ReportItem* item = m_model.Item(m_model.Leader());
    const ElementId outer = item ? item->container : OwnerOfPart(m_model.Source(), m_model.Leader());
    m_model.Select(outer != NoElement ? std::vector{outer} : std::vector<ElementId>{});
}

void DesignCanvas::Nudge(int right, int down, bool fine, bool resizes) {
    const ReportItems items = m_model.Items();
    const std::vector<ElementId> ids =
        resizes ? Resizable(items, m_model.SelectedItems()) : Movable(items, m_model.SelectedItems());
    if (ids.empty()) {
        if (m_model.SelectedItems().empty()) {
            horizontalScrollBar()->setValue(horizontalScrollBar()->value() + right * 20);
            verticalScrollBar()->setValue(verticalScrollBar()->value() + down * 20);
        }
        return;
    }
    const double step = GridStep() * (fine ? FineStep : 1);
    std::vector<Placement> places = PlacesOf(ids);
    double leftmost = 0, topmost = 0;  // how far they may go before one is at an edge
    for (std::size_t index = 0; index < places.size(); ++index) {
        const ReportItem* container = m_model.Item(m_model.Item(ids[index])->container);
        const double left = places[index].place.left - (container ? container->place.left : 0);
        const double top = places[index].place.top - (container ? container->place.top : 0);
        leftmost = index == 0 ? -left : std::max(leftmost, -left);
        topmost = index == 0 ? -top : std::max(topmost, -top);
    }
    for (Placement& placement : places) {
        if (resizes) {
            placement.place = Resized(placement.place, Handle::BottomRight, right * step, down * step);
        } else {
            placement.place.left += std::max(leftmost, right * step);
            placement.place.top += std::max(topmost, down * step);
        }
    }
    if (!m_nudged.isValid() || m_nudged.elapsed() > NudgePause) {
        ++m_nudges;
    }
    m_nudged.restart();
    std::string key = (resizes ? "resize " : "move ") + std::to_string(m_nudges);
    for (const ElementId id : ids) {
        key += " " + std::to_string(id);
    }
    m_model.Edit(
        StepName(m_model, resizes ? tr("Resize") : tr("Move"), ids),
        [&](Document& document) { Place(document, items, places); }, key);
    RevealSelection();
}

ElementId DesignCanvas::TextBoxToType() const {
    const ElementId leader = m_model.Leader();
    const ReportItem* item =
        m_model.Item(m_model.Item(leader) ? leader : OwnerOfPart(m_model.Source(), leader));
    return item && item->kind == "Textbox" ? item->id : NoElement;
}

void DesignCanvas::EditText() {
    const ElementId box = TextBoxToType();
    if (box == NoElement || m_editor) {
        return;
    }
    const auto part = TextPartOf(m_model.Source(), box, m_model.Selection());
    m_model.Select({box});
    const ReportItem* item = m_model.Item(box);
    m_edited = item->id;
    // The older schemas have texts without runs.
    const auto rich = RichTextOf(m_model.Source(), item->id);
    m_editor = new TextEditor(
        rich ? *rich : RichText{{0, {{TextOfItem(m_model.Source(), item->id).value_or(""), 0, 0}}}},
        viewport());
    m_opened = m_editor->Text();
    m_editor->setObjectName("txtInPlace");
    m_editor->setAccessibleName(tr("Text of %1").arg(QString::fromStdString(item->name)));
    m_editor->setToolTip(
        tr("Enter takes the text, Shift+Enter begins a new line, Escape leaves it as it was; Ctrl+B, I and U "
           "make it bold, italic and underlined, Ctrl+1 opens its style and Ctrl+E an expression"));
    m_editor->setTabChangesFocus(true);
    m_editor->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_editor->SetFieldNamer([this](const DraggedField& field) { return ExpressionOf(field); });
    m_editor->selectAll();
    if (part) {
        m_editor->Mark(*part);
    }
    connect(m_editor, &TextEditor::ExpressionOpened, this, &DesignCanvas::EditExpressionInText);
    m_editor->installEventFilter(this);
    RevealSelection();
    PlaceEditor();
    m_editor->show();
    m_editor->setFocus();
}

void DesignCanvas::PlaceEditor() {
    if (m_editor) {
        const QRect area = AreaOf(m_edited).toAlignedRect();
        const int line = m_editor->fontMetrics().height() + 12;
        m_editor->setGeometry(QRect(area.topLeft(), area.size().expandedTo({LeastEditor.width(), line})));
    }
}

bool DesignCanvas::eventFilter(QObject* watched, QEvent* event) {
    if (watched == m_textSource && event->type() == QEvent::FocusOut && m_editor) {
        const QWidget* next = QApplication::focusWidget();
        if (next != m_editor && next != m_textSource &&
            static_cast<QFocusEvent*>(event)->reason() != Qt::ActiveWindowFocusReason) {
            CloseEditor(true);
        }
    }
    if (watched != m_editor) {
        return QAbstractScrollArea::eventFilter(watched, event);
    }
    if (event->type() == QEvent::FocusOut && LeavesByFocus(*static_cast<QFocusEvent*>(event))) {
        const QWidget* next = QApplication::focusWidget();
        m_partPane&& next && m_partPane->isAncestorOf(next) ? TakeTextPart() : CloseEditor(true);
        m_continued = NoElement;
        return false;
    }
    if (event->type() == QEvent::ShortcutOverride) {
        const auto& key = *static_cast<QKeyEvent*>(event);
        if (LeavesEditor(key)) {
            CloseEditor(true);
            setFocus();
            return false;
        }
        if (IsMnemonic(key)) {
            return false;  // it opens a menu
        }
        // What was done before the text was opened is undone by the window.
        const bool isUndo = key.matches(QKeySequence::Undo) && !m_editor->document()->isUndoAvailable();
        if (IsFormatKey(key) || isUndo) {
            event->ignore();
            return true;
        }
        event->accept();  // what is typed is no command of the window
        return true;
    }
    return event->type() == QEvent::KeyPress && EditorKey(*static_cast<QKeyEvent*>(event));
}

// A click on the data of the report stays in the text: what is there can be put into it.
bool DesignCanvas::LeavesByFocus(const QFocusEvent& event) const {
    const QWidget* next = QApplication::focusWidget();
    const bool isSource = m_textSource && next && (next == m_textSource || m_textSource->isAncestorOf(next));
    return event.reason() != Qt::PopupFocusReason && event.reason() != Qt::MenuBarFocusReason &&
           event.reason() != Qt::ActiveWindowFocusReason && !isSource && !m_asksExpression;
}

// Returns whether the key means something else than what it types.
bool DesignCanvas::EditorKey(const QKeyEvent& key) {
    const bool isEnter = key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter;
    const bool isShifted = key.modifiers().testFlag(Qt::ShiftModifier);
    if (key.key() == Qt::Key_Escape || (isEnter && !isShifted)) {
        CloseEditor(isEnter);
        setFocus();
        return true;
    }
    if (isEnter) {
        m_editor->BeginLine();
        return true;
    }
    if (key.modifiers() == Qt::ControlModifier && RichTextOf(m_model.Source(), m_edited)) {
        switch (key.key()) {
            case Qt::Key_B:
                m_editor->ToggleBold();
                return true;
            case Qt::Key_I:
                m_editor->ToggleItalic();
                return true;
            case Qt::Key_U:
                m_editor->ToggleUnderline();
                return true;
            case Qt::Key_E:
                EditExpressionInText();
                return true;
            default:
                return false;
        }
    }
    return IsMnemonic(key);
}

// Without a placeholder at the cursor the expression is a new one there.
void DesignCanvas::EditExpressionInText() {
    if (!m_expressionAsker || !m_editor || m_asksExpression) {
        return;
    }
    const std::string old = m_editor->ExpressionAtCursor();
    m_asksExpression = true;
    const auto value = m_expressionAsker(m_edited, old.empty() ? "=" : old);
    m_asksExpression = false;
    if (!m_editor) {
        return;  // the text box is gone
    }
    if (value && *value != old && *value != "=") {
        m_editor->PutExpression(*value);
    }
    m_editor->setFocus();
}

void DesignCanvas::TakeTextPart() {
    const ElementId box = m_editor ? m_edited : NoElement;
    const auto part = m_editor ? m_editor->MarkedPart() : std::nullopt;
    m_continued = box;
    m_continuedPart = m_editor ? std::optional(m_editor->Selection()) : std::nullopt;
    CloseEditor(true);
    if (part && m_model.Source().Has(box)) {
        m_model.SelectMade(StepName(m_model, tr("Mark part of"), {box}),
                           [&](Document& document) { return CutTextPart(document, box, *part); });
    }
}

void DesignCanvas::ContinueText() {
    const ElementId box = std::exchange(m_continued, NoElement);
    if (!m_model.Item(box)) {
        return;
    }
    m_model.Select({box});
    EditText();
    if (m_editor && m_continuedPart) {
        m_editor->Mark(*m_continuedPart);
    }
}

// A field in a table is that of the row; elsewhere it is the one of the first row.
std::string DesignCanvas::ExpressionOf(const DraggedField& field) const {
    for (const ReportItem* item = m_model.Item(m_edited); item; item = m_model.Item(item->container)) {
        const ReportItem* outer = m_model.Item(item->container);
        if (item->cell != NoElement || (outer && outer->kind == "List")) {
            return FieldValue(field.field);
        }
    }
    return "=First(Fields!" + field.field + ".Value, \"" + field.dataSet + "\")";
}

bool DesignCanvas::InsertIntoText(const std::string& expression) {
    if (m_editor) {
        m_editor->InsertExpression(expression);
        m_editor->setFocus();
    }
    return m_editor != nullptr;
}

bool DesignCanvas::InsertIntoText(const DraggedField& field) {
    return InsertIntoText(m_editor ? ExpressionOf(field) : std::string());
}

void DesignCanvas::CloseEditor(bool keeps) {
    TextEditor* const editor = m_editor;
    m_editor = nullptr;  // losing the focus closes it too
    if (!editor) {
        return;
    }
    editor->removeEventFilter(this);
    const RichText text = editor->Text();
    const std::string plain = editor->toPlainText().toStdString();
    editor->setObjectName({});
    editor->hide();
    editor->deleteLater();
    const ElementId item = m_edited;
    if (keeps && m_model.Source().Has(item) && text != m_opened) {
        m_model.Edit(StepName(m_model, tr("Edit"), {item}), [&](Document& document) {
            RichTextOf(document, item) ? PutRichText(document, item, text)
                                       : SetTextOfItem(document, item, plain);
        });
    }
}

}  // namespace designer
