// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/controls/date_picker.h"

#include <QApplication>
#include <QClipboard>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenu>
#include <QMouseEvent>
#include <QSignalBlocker>
#include <QStyle>
#include <QStyleOptionComboBox>
#include <algorithm>
#include <utility>

#include "platform/base/convert.h"
#include "platform/contracts/regional.h"
#include "platform/controls/typed_date.h"

using namespace typed_date;

namespace {

const QString Separators = "-/. ";

QString RegionalFormat() {
    const RegionalSettings& region = Regional();
    const QString separator(QChar::fromLatin1(region.dateSeparator));
    switch (region.order) {
        case DateOrder::DayMonthYear:
            return QStringList{"dd", "MM", "yyyy"}.join(separator);
        case DateOrder::MonthDayYear:
            return QStringList{"MM", "dd", "yyyy"}.join(separator);
        case DateOrder::YearMonthDay:
            break;
    }
    return QStringList{"yyyy", "MM", "dd"}.join(separator);
}

bool IsModifier(int key) {
    switch (key) {
        case Qt::Key_Shift:
        case Qt::Key_Control:
        case Qt::Key_Alt:
        case Qt::Key_AltGr:
        case Qt::Key_Meta:
        case Qt::Key_CapsLock:
        case Qt::Key_NumLock:
            return true;
        default:
            return false;
    }
}

}  // namespace

DTPicker::DTPicker(QWidget* parent) : QDateEdit(parent) {
    setDateRange(QDate(FirstYear, 1, 1), QDate(LastYear, Months, LongestMonth));
    setCalendarPopup(true);
    setDisplayFormat(RegionalFormat());
    lineEdit()->installEventFilter(this);
    lineEdit()->setAcceptDrops(false);
    connect(this, &QDateEdit::dateChanged, this, &DTPicker::Change);
}

DateValue DTPicker::Value() const {
    const QDate typed = DayOf(IsOpen() || IsImpossible() ? PartsBefore()
                              : m_typing                 ? With(*m_typing, PartsNow())
                                                         : PartsNow());
    const QDate day = typed.isValid() ? typed : date();
    return DateSerial(day.year(), day.month(), day.day());
}

void DTPicker::Value(DateValue value) {
    const DateParts parts = Split(value);
    if (parts.year < FirstYear || parts.year > LastYear) {
        throw RuntimeError(err::InvalidPropertyValue, "Invalid property value");
    }
    m_run.reset();
    m_typing.reset();
    m_parts.reset();
    setDate(QDate(parts.year, parts.month, parts.day));
}

DTPicker::Parts DTPicker::PartsNow() const {
    return m_parts.value_or(Parts{date().year(), date().month(), date().day()});
}

// Before the run under way.
DTPicker::Parts DTPicker::PartsBefore() const {
    return m_run->before.value_or(Parts{date().year(), date().month(), date().day()});
}

// Digits that are no number of their part leave the part unchanged.
DTPicker::Parts DTPicker::With(const Typing& typing, Parts parts) const {
    const Section section = sectionAt(typing.part);
    if (const int number = NumberOf(section, typing.digits); Fits(section, number)) {
        NumberIn(parts, section) = number;
    }
    return parts;
}

int DTPicker::PartOf(Section section) const {
    int part = 0;
    while (sectionAt(part) != section) {
        ++part;
    }
    return part;
}

// Where the selection begins, or the cursor stands.
int DTPicker::PartOfSelection() const {
    const QLineEdit& edit = *lineEdit();
    const int place = edit.hasSelectedText() ? edit.selectionStart() : edit.cursorPosition();
    return static_cast<int>(edit.text().left(place).count(displayFormat().at(PlacesOf(sectionAt(0)))));
}

void DTPicker::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_F4 ||
        (event->key() == Qt::Key_Down && (event->modifiers() & Qt::AltModifier) != 0)) {
        OpenCalendar();
        return;
    }
    if (AnswerKey(*event)) {
        return;
    }
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (enter && !Settle()) {
        return;  // the dialog must not be left with a date that nobody typed
    }
    if (!IsModifier(event->key())) {
        EndRun();
    }
    QDateEdit::keyPressEvent(event);
}

// Handles every key that changes the text, and returns true for these.
bool DTPicker::AnswerKey(const QKeyEvent& event) {
    const QString text = event.text();
    const bool plain = (event.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) == 0;
    if (event.matches(QKeySequence::Paste)) {
        Paste(QApplication::clipboard()->text());
    } else if (event.matches(QKeySequence::Cut)) {
        lineEdit()->copy();
        Erase(Erased::Before);
    } else if (event.key() == Qt::Key_Backspace || event.key() == Qt::Key_Delete) {
        Erase(event.key() == Qt::Key_Backspace ? Erased::Before : Erased::After);
    } else if (plain && text.size() == 1 && (IsDigit(text[0]) || Separators.contains(text))) {
        TypeCharacter(text[0]);
    } else {
        return plain && text.size() == 1 && text[0].isPrint();
    }
    return true;
}

// Takes a date in any form that the system reads, not only in the one that is shown. Digits count as typed.
void DTPicker::Paste(const QString& text) {
    EndRun();
    const QString given = text.trimmed();
    const bool digitsOnly = std::all_of(given.begin(), given.end(), IsDigit);
    if (digitsOnly && given.size() <= PlacesOf(YearSection)) {
        for (const QChar digit : given) {
            TypeCharacter(digit);
        }
        return;
    }
    try {
        if (!digitsOnly) {
            Value(CDate(given.toStdString()));
            return;
        }
    } catch (const RuntimeError&) {
        // The text is not a date; handled below.
    }
    Complain();
}

// The digits become the part. The text shows what was typed until the box is left.
void DTPicker::ClosePart() {
    if (m_typing) {
        const Typing typing = *std::exchange(m_typing, {});
        m_parts = With(typing, PartsNow());
        SelectPart(typing.part);
    }
}

// Makes what was typed the date. Returns false if a part of it was refused.
bool DTPicker::Settle() {
    bool taken = EndRun();
    QDate settled = date();
    if (const std::optional<Parts> parts = std::exchange(m_parts, {})) {
        const QDate typed = DayOf(*parts);
        taken = taken && typed.isValid();
        if (typed.isValid()) {
            settled = typed;
        } else {
            Complain();
        }
    }
    setDate(settled);  // also the same: the base class forgets the day of a text that it has read
    const QSignalBlocker silent(lineEdit());
    lineEdit()->setText(textFromDateTime(dateTime()));
    return taken;
}

void DTPicker::SelectPart(int part) {
    ShowTyping();  // first: the base class looks for the part in the text
    setSelectedSection(sectionAt(part));
    ShowTyping();
    const QSignalBlocker silent(lineEdit());
    lineEdit()->setSelection(FirstOf(part), PlacesOf(sectionAt(part)));
}

// Where a part begins in the text.
int DTPicker::FirstOf(int part) const {
    int first = 0;
    for (int before = 0; before < part; ++before) {
        first += PlacesOf(sectionAt(before)) + 1;
    }
    return first;
}

QString DTPicker::TextOf(const Parts& parts) const {
    QStringList texts;
    for (int part = 0; part < sectionCount(); ++part) {
        const Section section = sectionAt(part);
        const bool typed = m_typing && m_typing->part == part;
        texts << (typed ? m_typing->digits
                        : QString::number(NumberIn(parts, section)).rightJustified(PlacesOf(section), '0'));
    }
    return texts.join(displayFormat().at(PlacesOf(sectionAt(0))));
}

// Bypasses the base class, which would read the text.
void DTPicker::ShowTyping() {
    const QSignalBlocker silent(lineEdit());
    lineEdit()->setText(TextOf(PartsNow()));
    if (m_typing) {
        lineEdit()->setCursorPosition(FirstOf(m_typing->part) + static_cast<int>(m_typing->cursor));
    }
}

// The base class would correct text that is only half typed.
QValidator::State DTPicker::validate(QString& text, int& place) const {
    return m_run || m_parts ? QValidator::Acceptable : QDateEdit::validate(text, place);
}

QDateTime DTPicker::dateTimeFromText(const QString& text) const {
    return m_run || m_parts ? dateTime() : QDateEdit::dateTimeFromText(text);
}

QString DTPicker::textFromDateTime(const QDateTime& moment) const {
    return m_run || m_parts ? TextOf(PartsNow()) : QDateEdit::textFromDateTime(moment);
}

void DTPicker::stepBy(int steps) {
    const int part = PartOfSelection();
    const bool taken = Settle();
    SelectPart(part);
    if (taken) {
        QDateEdit::stepBy(steps);
    }
}

bool DTPicker::eventFilter(QObject* watched, QEvent* event) {
    if (watched != lineEdit()) {
        return QDateEdit::eventFilter(watched, event);
    }
    const auto mouse = [event] { return static_cast<QMouseEvent*>(event); };
    switch (event->type()) {
        case QEvent::MouseButtonPress:
            EndRun();
            break;
        case QEvent::MouseButtonDblClick:
            lineEdit()->setCursorPosition(lineEdit()->cursorPositionAt(mouse()->pos()));
            SelectPart(PartOfSelection());
            return true;
        case QEvent::MouseButtonRelease:
            if (mouse()->button() == Qt::MiddleButton) {
                Paste(QApplication::clipboard()->text(QClipboard::Selection));
                return true;
            }
            if (mouse()->button() == Qt::LeftButton && !lineEdit()->hasSelectedText()) {
                SelectPart(PartOfSelection());
            }
            break;
        default:
            break;
    }
    return QDateEdit::eventFilter(watched, event);
}

void DTPicker::mousePressEvent(QMouseEvent* event) {
    Settle();
    QDateEdit::mousePressEvent(event);
}

void DTPicker::focusOutEvent(QFocusEvent* event) {
    Settle();
    QDateEdit::focusOutEvent(event);
}

bool DTPicker::focusNextPrevChild(bool next) {
    EndRun();
    return QDateEdit::focusNextPrevChild(next);
}

// The context menu of the text would change it without the parts.
void DTPicker::contextMenuEvent(QContextMenuEvent* event) {
    EndRun();
    QMenu menu(this);
    menu.addAction(tr("&Copy"), lineEdit(), &QLineEdit::copy)->setEnabled(lineEdit()->hasSelectedText());
    menu.addAction(tr("&Paste"), this, [this] { Paste(QApplication::clipboard()->text()); });
    menu.addAction(tr("Select All"), lineEdit(), &QLineEdit::selectAll);
    menu.exec(event->globalPos());
}

// Qt opens its calendar only on a press on the arrow.
void DTPicker::OpenCalendar() {
    Settle();
    QStyleOptionComboBox arrow;
    arrow.initFrom(this);
    arrow.editable = true;
    arrow.subControls = QStyle::SC_All;
    const QPointF place =
        style()->subControlRect(QStyle::CC_ComboBox, &arrow, QStyle::SC_ComboBoxArrow, this).center();
    QMouseEvent press(QEvent::MouseButtonPress, place, mapToGlobal(place), Qt::LeftButton, Qt::LeftButton,
                      Qt::NoModifier);
    mousePressEvent(&press);
}
