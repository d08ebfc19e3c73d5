// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/controls/items/label_delegate.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QTextLayout>
#include <QToolTip>
#include <algorithm>

#include "platform/controls/items/list_model.h"
#include "platform/controls/kit/plain_tip.h"

namespace {

constexpr int Margin = 4;        // around an item
constexpr int LargeChars = 15;   // width of an item below its picture, in average characters
constexpr int SmallChars = 26;   // width of an item beside its picture
constexpr int EditorChars = 18;  // minimum width of the editor
constexpr int EditorMost = 44;   // maximum width that it takes from the items next to it
constexpr int LinesBelow = 2;

// Adds line breaks after the characters that join words in names, and between capitals.
QString Breakable(const QString& text) {
    const QChar mayBreak(0x200B);
    QString result;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (i > 0 && text[i].isUpper() && text[i - 1].isLower()) {
            result += mayBreak;
        }
        result += text[i];
        if (QString("_-.,;+&@").contains(text[i])) {
            result += mayBreak;
        }
    }
    return result;
}

// Returns the part of the text that fits in the lines below a picture. Words that are too long are broken at
// any character: styles would cut them at the end of the first line and show part of a line too many.
QString LinesOf(const QString& name, const QFont& font, int width) {
    const QString text = Breakable(name);
    QTextLayout layout(text, font);
    QTextOption wrapped;
    wrapped.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    layout.setTextOption(wrapped);
    QString lines;
    layout.beginLayout();
    for (int i = 0; i < LinesBelow; ++i) {
        QTextLine line = layout.createLine();
        if (!line.isValid()) {
            break;
        }
        line.setLineWidth(width);
        const bool last = i + 1 == LinesBelow;
        lines += i > 0 ? QString(QChar::LineSeparator) : QString();
        lines += last ? QFontMetrics(font).elidedText(text.mid(line.textStart()).simplified(), Qt::ElideRight,
                                                      width)
                      : text.mid(line.textStart(), line.textLength()).trimmed();
    }
    layout.endLayout();
    return lines.remove(QChar(0x200B));
}

}  // namespace

QSize LabelDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const {
    const QFontMetrics metrics(option.font);
    const int row = std::max(SmallPicture, metrics.height()) + Margin;
    switch (m_shape) {
        case Shape::Large:
            return {std::max(LargePicture, LargeChars * metrics.averageCharWidth()) + 2 * Margin,
                    LargePicture + LinesBelow * metrics.lineSpacing() + 3 * Margin};
        case Shape::Small:
            return {SmallPicture + SmallChars * metrics.averageCharWidth() + 2 * Margin, row};
        case Shape::Row:
            break;
    }
    const QSize size = QStyledItemDelegate::sizeHint(option, index);
    return {size.width(), std::max(size.height(), row)};
}

void LabelDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const {
    QStyledItemDelegate::initStyleOption(option, index);
    if (m_shape != Shape::Large) {
        option->decorationSize = {SmallPicture, SmallPicture};
        return;
    }
    option->icon = index.data(ListModel::LargeIconRole).value<QIcon>();
    option->features |= QStyleOptionViewItem::HasDecoration | QStyleOptionViewItem::WrapText;
    option->decorationSize = {LargePicture, LargePicture};
    option->decorationPosition = QStyleOptionViewItem::Top;
    option->decorationAlignment = Qt::AlignHCenter | Qt::AlignTop;
    option->displayAlignment = Qt::AlignHCenter | Qt::AlignTop;
    option->text = LinesOf(option->text, option->font, sizeHint(*option, index).width() - 2 * Margin);
}

QWidget* LabelDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem&,
                                     const QModelIndex& index) const {
    auto* editor = new QLineEdit(parent);
    editor->setObjectName("LabelEdit");
    editor->setAccessibleName(tr("New name"));
    editor->setText(index.data(Qt::EditRole).toString());
    m_editor = editor;
    m_edited = index;
    return editor;
}

// The view removes the editor itself when the item is removed.
void LabelDelegate::destroyEditor(QWidget* editor, const QModelIndex& index) const {
    if (editor == m_editor) {
        m_editor = nullptr;
    }
    QStyledItemDelegate::destroyEditor(editor, index);
}

// At the position of the text, as wide as the text needs, and inside the view.
void LabelDelegate::updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                                         const QModelIndex& index) const {
    QStyleOptionViewItem item = option;
    initStyleOption(&item, index);
    const QStyle& style = *(item.widget != nullptr ? item.widget->style() : QApplication::style());
    const QRect text = style.subElementRect(QStyle::SE_ItemViewItemText, &item, item.widget);
    const QFontMetrics metrics(item.font);
    const int wanted =
        std::max(metrics.horizontalAdvance(item.text) + 6 * Margin, EditorChars * metrics.averageCharWidth());
    const QRect room = editor->parentWidget()->rect();
    QRect place(text.topLeft(), QSize(std::min(wanted, room.width()), editor->sizeHint().height()));
    if (m_shape == Shape::Large) {
        place.moveLeft(text.center().x() - place.width() / 2);
    } else {
        place.moveTop(text.center().y() - place.height() / 2);
    }
    place.moveLeft(std::max(room.left(), std::min(place.left(), room.right() + 1 - place.width())));
    place.moveTop(std::max(room.top(), std::min(place.top(), room.bottom() + 1 - place.height())));
    editor->setGeometry(place);
}

// Shows a text that is cut off as a tooltip.
bool LabelDelegate::helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                              const QModelIndex& index) {
    if (event->type() != QEvent::ToolTip || !index.isValid() || TextFits(option, index)) {
        QToolTip::hideText();
        return false;
    }
    QToolTip::showText(event->globalPos(), PlainTip(index.data().toString()), view);
    return true;
}

bool LabelDelegate::TextFits(const QStyleOptionViewItem& option, const QModelIndex& index) const {
    QStyleOptionViewItem item = option;
    initStyleOption(&item, index);
    const QStyle& style = *(item.widget != nullptr ? item.widget->style() : QApplication::style());
    const QRect text = style.subElementRect(QStyle::SE_ItemViewItemText, &item, item.widget);
    const QFontMetrics metrics(item.font);
    if (m_shape != Shape::Large) {
        return metrics.horizontalAdvance(item.text) + 2 * Margin <= text.width();
    }
    return !item.text.endsWith(QChar(0x2026)) || index.data().toString().endsWith(QChar(0x2026));
}

// Enter, Tab and a lost focus accept the text; Esc cancels the edit. The editor's own menu and windows in
// front of it leave it open.
bool LabelDelegate::eventFilter(QObject* watched, QEvent* event) {
    // An editor that is destroyed with its window is no line edit any more: its text is lost.
    auto* editor = qobject_cast<QLineEdit*>(watched);
    if (editor == nullptr || editor != m_editor) {
        return false;
    }
    if (event->type() == QEvent::ShortcutOverride || event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        const bool takes = key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Tab;
        if (!takes && key != Qt::Key_Escape) {
            return false;
        }
        event->accept();
        if (event->type() == QEvent::KeyPress) {
            Finish(*editor, takes ? Typed::Taken : Typed::Dropped);
        }
        return true;
    }
    if (event->type() == QEvent::FocusOut && QApplication::activePopupWidget() == nullptr &&
        (!editor->isActiveWindow() || QApplication::focusWidget() != editor)) {
        Finish(*editor, Typed::Taken);
    }
    return false;
}

// The editor closes first: a handler of the new text may open boxes or the editor again.
void LabelDelegate::Finish(QLineEdit& editor, Typed typed) {
    const QPersistentModelIndex item = m_edited;
    const QString text = editor.text();
    m_editor = nullptr;
    m_edited = QModelIndex();
    emit closeEditor(&editor, QAbstractItemDelegate::NoHint);
    if (typed == Typed::Taken && item.isValid()) {
        emit Edited(item, text);
    }
}
