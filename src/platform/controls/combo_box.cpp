// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/controls/combo_box.h"

#include <QLineEdit>
#include <QSignalBlocker>
#include <QWheelEvent>

#include "platform/contracts/runtime.h"
#include "platform/controls/kit/focus.h"

namespace {

constexpr std::int32_t PropertyIsReadOnly = 383;

}  // namespace

ComboBox::ComboBox(QWidget* parent) : QComboBox(parent) {
    connect(this, &QComboBox::activated, this, &ComboBox::Click);
}

void ComboBox::Text(const std::string& text) {
    const QString wanted = QString::fromStdString(text);
    if (isEditable()) {
        setEditText(wanted);
        lineEdit()->setCursorPosition(0);
        return;
    }
    const int index = findText(wanted, Qt::MatchExactly | Qt::MatchCaseSensitive);
    if (index < 0 && !text.empty()) {
        throw RuntimeError(PropertyIsReadOnly, "\"" + text + "\" is not in the list");
    }
    ListIndex(index);
}

// A list that was empty would choose its first entry.
void ComboBox::AddItem(const std::string& text) {
    const int chosen = currentIndex();
    const QString stood = currentText();
    const QSignalBlocker silent(this);
    addItem(QString::fromStdString(text));
    setCurrentIndex(chosen);
    if (isEditable() && currentText() != stood) {
        setEditText(stood);
    }
}

std::string ComboBox::List(int index) const {
    return itemText(index).toStdString();
}

void ComboBox::Clear() {
    const QSignalBlocker silent(this);
    clear();
    clearEditText();
}

int ComboBox::ListIndex() const {
    return currentIndex() >= 0 && itemText(currentIndex()) == currentText() ? currentIndex() : -1;
}

void ComboBox::ListIndex(int index) {
    if (index < -1 || index >= count()) {
        throw RuntimeError(err::InvalidPropertyValue, "Invalid property value");
    }
    if (index == ListIndex()) {
        return;
    }
    setCurrentIndex(index);
    emit Click();
}

void ComboBox::setEditable(bool editable) {
    QComboBox::setEditable(editable);
    if (editable) {
        setInsertPolicy(QComboBox::NoInsert);
        setCompleter(nullptr);
        // When the focus leaves, Qt would choose an entry that differs from the typed text only in case.
        disconnect(lineEdit(), &QLineEdit::editingFinished, this, nullptr);
    }
}

void ComboBox::showPopup() {
    emit DropDown();
    QComboBox::showPopup();
}

void ComboBox::focusOutEvent(QFocusEvent* event) {
    QComboBox::focusOutEvent(event);
    if (FocusHasLeft(*event)) {
        emit LostFocus();
    }
}

// The wheel scrolls the page below the box, unless the box has the focus.
void ComboBox::wheelEvent(QWheelEvent* event) {
    if (hasFocus()) {
        QComboBox::wheelEvent(event);
    } else {
        event->ignore();
    }
}
