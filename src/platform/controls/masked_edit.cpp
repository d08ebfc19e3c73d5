// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/controls/masked_edit.h"

#include <QApplication>
#include <QClipboard>
#include <QKeyEvent>
#include <QMouseEvent>

#include "platform/contracts/runtime.h"
#include "platform/controls/kit/focus.h"
#include "platform/controls/typed_date.h"

namespace {

using typed_date::IsDigit;

constexpr QChar DigitPlace = '#';

// Returns how many values the part of a format has; 0 for a part that is not counted.
int ValuesOf(QChar character) {
    constexpr int Hours = 24, Sixty = 60;
    const QChar lower = character.toLower();
    return lower == 'h' ? Hours : lower == 'm' || lower == 'n' || lower == 's' ? Sixty : 0;
}

}  // namespace

MaskEdBox::MaskEdBox(QWidget* parent) : QLineEdit(parent) {
    setInputMethodHints(Qt::ImhPreferNumbers);
}

void MaskEdBox::Mask(const QString& mask) {
    m_mask = mask;
    UseMask();
}

void MaskEdBox::PromptChar(const QString& prompt) {
    m_prompt = prompt;
    UseMask();
}

void MaskEdBox::UseMask() {
    QString mask;
    for (const QChar character : m_mask) {
        mask += character == DigitPlace ? QString("9") : QString("\\") + character;
    }
    setInputMask(mask + ";" + m_prompt);
}

MaskEdBox::Part MaskEdBox::PartAt(int cursor) const {
    const int length = static_cast<int>(m_mask.size());
    int first = std::min(cursor, length);
    while (first > 0 && m_mask[first - 1] == DigitPlace) {
        --first;
    }
    int end = first;
    while (end < length && m_mask[end] == DigitPlace) {
        ++end;
    }
    return {first, end};
}

// Returns the text with every part at its full length; a null text if its form differs from the mask.
QString MaskEdBox::Shaped(const QString& text) const {
    QString shaped;
    qsizetype next = 0;
    for (int place = 0; place < m_mask.size();) {
        if (m_mask[place] != DigitPlace) {
            if (next >= text.size() || text[next++] != m_mask[place]) {
                return {};
            }
            shaped += m_mask[place++];
            continue;
        }
        const Part part = PartAt(place);
        QString digits;
        while (next < text.size() && digits.size() < part.end - part.first &&
               (IsDigit(text[next]) || text[next] == m_prompt)) {
            digits += text[next++];
        }
        if (digits.isEmpty()) {
            return {};
        }
        shaped += digits.rightJustified(part.end - part.first, '0');
        place = part.end;
    }
    return shaped;
}

void MaskEdBox::Text(const std::string& text) {
    const QString given = QString::fromStdString(text);
    const QString shaped = Shaped(given);
    if (shaped.isNull() && !given.isEmpty()) {
        throw RuntimeError(err::InvalidPropertyValue, "Invalid property value");
    }
    setText(shaped);
    setCursorPosition(0);
}

void MaskEdBox::focusInEvent(QFocusEvent* event) {
    QLineEdit::focusInEvent(event);
    m_selectOnRelease = event->reason() == Qt::MouseFocusReason;
    if (FocusHasLeft(*event)) {  // the focus comes from another control
        selectAll();
    }
}

void MaskEdBox::focusOutEvent(QFocusEvent* event) {
    QLineEdit::focusOutEvent(event);
    if (FocusHasLeft(*event)) {
        emit LostFocus();
    }
}

// The click that brings the focus selects the whole text; the next click sets the cursor.
void MaskEdBox::mouseReleaseEvent(QMouseEvent* event) {
    QLineEdit::mouseReleaseEvent(event);
    if (m_selectOnRelease && !hasSelectedText()) {
        selectAll();
    }
    m_selectOnRelease = false;
}

void MaskEdBox::keyPressEvent(QKeyEvent* event) {
    if (isReadOnly()) {
        QLineEdit::keyPressEvent(event);
        return;
    }
    if (event->matches(QKeySequence::Paste)) {
        const QString shaped = Shaped(QApplication::clipboard()->text().trimmed());
        if (!shaped.isNull()) {
            setText(shaped);
            return;
        }
    }
    const bool answered = event->key() == Qt::Key_Up     ? Step(1)
                          : event->key() == Qt::Key_Down ? Step(-1)
                                                         : ClosePart(event->text());
    if (!answered) {
        QLineEdit::keyPressEvent(event);
    }
}

// A separator typed after too few digits ends the part: "8:" becomes "08:".
bool MaskEdBox::ClosePart(const QString& typed) {
    const Part part = PartAt(cursorPosition());
    if (hasSelectedText() || part.end >= m_mask.size() || typed != m_mask.mid(part.end, 1)) {
        return false;
    }
    QString digits = displayText().mid(part.first, part.end - part.first).remove(m_prompt);
    if (digits.isEmpty()) {
        return false;
    }
    digits = digits.rightJustified(part.end - part.first, '0');
    setText(displayText().replace(part.first, digits.size(), digits));
    setCursorPosition(part.end + 1);
    return true;
}

bool MaskEdBox::Step(int by) {
    const int cursor = hasSelectedText() ? selectionStart() : cursorPosition();
    const Part part = PartAt(cursor);
    const int values = part.first < m_format.size() ? ValuesOf(m_format[part.first]) : 0;
    if (values == 0) {
        return false;
    }
    const QString digits = displayText().mid(part.first, part.end - part.first).remove(m_prompt);
    const int next = digits.isEmpty() ? (by > 0 ? 0 : values - 1) : (digits.toInt() + by + values) % values;
    const QString shown = QString::number(next).rightJustified(part.end - part.first, '0');
    setText(displayText().replace(part.first, shown.size(), shown));
    setSelection(part.first, part.end - part.first);
    return true;
}
