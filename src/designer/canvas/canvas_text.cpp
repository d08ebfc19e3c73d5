// SPDX-License-Identifier: GPL-3.0-or-later
// Members of DesignCanvas: typing into text boxes.
#include <QApplication>
#include <QKeyEvent>
#include <algorithm>
#include <utility>

#include "designer/canvas/design_canvas.h"
#include "designer/canvas/text_editor.h"
#include "designer/canvas/text_look.h"
#include "designer/graphics/part_tree.h"
#include "designer/model/item_text.h"
#include "platform/base/ascii.h"

namespace designer {
namespace {

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

// The older schemas have texts without runs, whose style is that of the text box.
RichText TextToType(const Document& document, ElementId box) {
    if (const auto rich = RichTextOf(document, box)) {
        return *rich;
    }
    const auto has = [&](const char* style, std::string_view word) {
        return SameAscii(Trim(document.TextAt(box, style).value_or("")), word);
    };
    return {{0,
             {{TextOfItem(document, box).value_or(""), 0, 0, has("Style/FontWeight", "Bold"),
               has("Style/FontStyle", "Italic"), has("Style/TextDecoration", "Underline")}}}};
}

// Returns the text that was typed into another text box, in the look of the first run of this one. What was
// made bold, italic or underlined there is so here.
RichText InLookOf(const RichText& own, RichText text, const RichText& opened) {
    const auto first = [](const RichText& of) {
        return of.empty() || of.front().runs.empty() ? RichRun{} : of.front().runs.front();
    };
    const RichRun mine = first(own), there = first(opened);
    for (RichParagraph& paragraph : text) {
        paragraph.like = own.empty() ? -1 : own.front().like;
        for (RichRun& run : paragraph.runs) {
            run.paragraph = mine.paragraph;
            run.run = mine.run;
            for (const auto format : {&RichRun::isBold, &RichRun::isItalic, &RichRun::isUnderlined}) {
                run.*format = run.*format == there.*format ? mine.*format : run.*format;
            }
        }
    }
    return text;
}

}  // namespace

void DesignCanvas::SetTextSource(QWidget* source) {
    m_textSource = source;
    source->installEventFilter(this);
}

// What is typed on text boxes replaces their texts: the leader shows it while it is typed.
void DesignCanvas::TypeInto(QKeyEvent* event) {
    const QString text = event->text();
    const bool isCommand = event->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier);
    std::vector<ElementId> boxes = m_model.Selection();
    std::erase_if(boxes, [this](ElementId id) {
        const ReportItem* item = m_model.Item(id);
        return !item || item->kind != "Textbox";
    });
    if (isCommand || text.isEmpty() || !text.front().isPrint() || m_editor || m_model.Selection().empty()) {
        return QAbstractScrollArea::keyPressEvent(event);
    }
    if (boxes.empty()) {
        emit StatusTextChanged(tr("Only a text box takes text"));
        return;
    }
    OpenEditor(boxes);
    m_editor->insertPlainText(text);
    if (boxes.size() > 1) {
        emit StatusTextChanged(tr("What you type goes into %1 text boxes").arg(boxes.size()));
    }
}

ElementId DesignCanvas::TextBoxToType() const {
    const ElementId leader = m_model.Leader();
    const ReportItem* item =
        m_model.Item(m_model.Item(leader) ? leader : OwnerOfPart(m_model.Source(), leader));
    return item && item->kind == "Textbox" ? item->id : NoElement;
}

// Of several selected items the leader is opened, and selected alone: it is the one that changes.
void DesignCanvas::EditText() {
    const ElementId box = TextBoxToType();
    if (box == NoElement || m_editor) {
        return;
    }
    const auto part = TextPartOf(m_model.Source(), box, m_model.Selection());
    m_model.Select({box});
    OpenEditor({box});
    if (part) {
        m_editor->Mark(*part);
    }
}

void DesignCanvas::OpenEditor(const std::vector<ElementId>& boxes) {
    const ReportItem* item = m_model.Item(boxes.back());
    m_edited = item->id;
    m_typedInto = boxes;
    m_editor = new TextEditor(TextToType(m_model.Source(), item->id), TextLookOf(m_model.Source(), item->id),
                              m_zoom / 100, viewport());
    m_opened = m_editor->Text();
    m_editor->setObjectName("txtInPlace");
    m_editor->setAccessibleName(boxes.size() > 1 ? tr("Text of %1 text boxes").arg(boxes.size())
                                                 : tr("Text of %1").arg(QString::fromStdString(item->name)));
    m_editor->setToolTip(
        tr("Enter takes the text, Shift+Enter begins a new line, Escape leaves it as it was; Ctrl+B, I and U "
           "make it bold, italic and underlined, Ctrl+1 opens its style and Ctrl+E an expression"));
    m_editor->setTabChangesFocus(true);
    m_editor->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_editor->SetFieldNamer(
        [this](const DraggedField& field) { return ExpressionIn(m_model, m_edited, field); });
    m_editor->selectAll();
    connect(m_editor, &TextEditor::ExpressionOpened, this, &DesignCanvas::EditExpressionInText);
    m_editor->installEventFilter(this);
    RevealSelection();
    PlaceEditor();
    m_editor->show();
    m_editor->setFocus();
}

void DesignCanvas::PlaceEditor() {
    if (m_editor) {
        m_editor->SetScale(m_zoom / 100);
        m_editor->SetArea(AreaOf(m_edited).toAlignedRect());
    }
}

bool DesignCanvas::eventFilter(QObject* watched, QEvent* event) {
    if (watched == m_textSource && event->type() == QEvent::FocusOut && m_editor) {
        const QWidget* next = QApplication::focusWidget();
        if (next != m_editor && next != m_textSource &&
            static_cast<QFocusEvent*>(event)->reason() != Qt::ActiveWindowFocusReason) {
            FinishEditing();
        }
    }
    if (watched != m_editor) {
        return QAbstractScrollArea::eventFilter(watched, event);
    }
    if (event->type() == QEvent::FocusOut && LeavesByFocus(*static_cast<QFocusEvent*>(event))) {
        const QWidget* next = QApplication::focusWidget();
        m_partPane&& next && m_partPane->isAncestorOf(next) ? TakeTextPart() : FinishEditing();
        m_continued = NoElement;
        return false;
    }
    if (event->type() == QEvent::ShortcutOverride) {
        const auto& key = *static_cast<QKeyEvent*>(event);
        if (LeavesEditor(key)) {
            FinishEditing();
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
        isEnter ? FinishEditing() : CloseEditor(TypedText::Discard);
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
    FinishEditing();
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

bool DesignCanvas::InsertIntoText(const std::string& expression) {
    if (m_editor) {
        m_editor->InsertExpression(expression);
        m_editor->setFocus();
    }
    return m_editor != nullptr;
}

bool DesignCanvas::InsertIntoText(const DraggedField& field) {
    return InsertIntoText(m_editor ? ExpressionIn(m_model, m_edited, field) : std::string());
}

void DesignCanvas::CloseEditor(TypedText typed) {
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
    std::vector<ElementId> boxes = m_typedInto;
    std::erase_if(boxes, [this](ElementId box) { return !m_model.Source().Has(box); });
    emit StatusTextChanged({});
    if (typed == TypedText::Discard || boxes.empty() || (boxes.size() == 1 && text == m_opened)) {
        return;
    }
    m_model.Edit(StepName(m_model, tr("Edit"), boxes), [&](Document& document) {
        for (const ElementId box : boxes) {
            const auto own = RichTextOf(document, box);
            own ? PutRichText(document, box, box == m_edited ? text : InLookOf(*own, text, m_opened))
                : SetTextOfItem(document, box, plain);
        }
    });
}

}  // namespace designer
