// SPDX-License-Identifier: GPL-3.0-or-later
// Members of DTPicker: what is typed in one go, how it becomes a date, and when it is refused.
#include <QApplication>
#include <QLineEdit>
#include <QTimer>
#include <QToolTip>
#include <algorithm>
#include <utility>

#include "platform/controls/date_picker.h"
#include "platform/controls/typed_date.h"

using typed_date::Fits;
using typed_date::IsDigit;
using typed_date::NumberOf;
using typed_date::PlacesOf;

namespace {

constexpr QChar YearFirstSeparator = u'-';

}  // namespace

void DTPicker::BeginRun(const Typing& begin) {
    QToolTip::hideText();  // of a refusal before
    m_run = Run{.before = m_parts, .begin = begin, .text = {}, .part = begin.part};
    m_typing = begin;
}

void DTPicker::TypeCharacter(QChar character) {
    if (!m_run) {
        BeginRun({PartOfSelection(), {}, 0});
    }
    if (m_run->refused) {
        QApplication::beep();
    } else if (IsDigit(character)) {
        m_run->text += character;
        TypeDigit(character);
    } else {
        TypeSeparator(character);
        m_run->text += character;
    }
}

// Whether all that was typed may be the year of a whole date.
bool DTPicker::BeginsWithAYear() const {
    const QString& text = m_run->text;
    return m_run->begin.part == 0 && m_run->begin.digits.isEmpty() && text.size() <= PlacesOf(YearSection) &&
           std::all_of(text.begin(), text.end(), IsDigit);
}

// Assigns the digits typed so far to the year instead of day and month.
void DTPicker::TakeYearFirst() {
    m_run->yearFirst = true;
    m_run->handedOn = m_run->complete = false;
    m_run->part = PartOf(YearSection);
    m_parts = m_run->before;
    m_typing = Typing{m_run->part, m_run->text, m_run->text.size()};
    ShowTyping();
}

// Whether a date with the year first still lacks a part: the parts that it has are not taken then.
bool DTPicker::IsOpen() const {
    const bool atDay = m_run && sectionAt(m_run->part) == DaySection;
    return m_run && m_run->yearFirst && !m_run->complete && !m_run->refused &&
           !(atDay && m_typing && !m_typing->digits.isEmpty());
}

// Returns true if the typed digits are not a valid value of the part.
bool DTPicker::IsImpossible() const {
    const Section section = m_typing ? sectionAt(m_typing->part) : NoSection;
    return m_typing && !m_typing->digits.isEmpty() && !Fits(section, NumberOf(section, m_typing->digits));
}

void DTPicker::TypeDigit(QChar digit) {
    m_run->handedOn = false;
    if (!m_typing) {
        m_typing = Typing{m_run->part, {}, 0};
    }
    const Section section = sectionAt(m_typing->part);
    if (m_run->complete || m_typing->digits.size() >= PlacesOf(section)) {
        Refuse();
        return;
    }
    m_typing->digits.insert(m_typing->cursor++, digit);
    if (m_typing->digits.size() < PlacesOf(section)) {
        ShowTyping();
    } else if (IsImpossible()) {
        if (BeginsWithAYear() && section != YearSection) {
            TakeYearFirst();
        } else {
            Refuse();
        }
    } else if (m_run->yearFirst && section == YearSection) {
        ShowTyping();  // its separator shows that it is one
    } else {
        HandOn();
        m_run->handedOn = !m_run->complete;
    }
}

void DTPicker::TypeSeparator(QChar separator) {
    const QChar own = displayFormat().at(PlacesOf(sectionAt(0)));
    const bool whole = m_run->text.size() == PlacesOf(YearSection) && BeginsWithAYear();
    if (whole && separator == YearFirstSeparator &&
        (own != YearFirstSeparator || sectionAt(0) != YearSection)) {
        TakeYearFirst();
    }
    if (separator != (m_run->yearFirst ? YearFirstSeparator : own) || m_run->complete || IsImpossible()) {
        Refuse();
        return;
    }
    if (std::exchange(m_run->handedOn, false)) {
        return;
    }
    const bool empty = !m_typing || m_typing->digits.isEmpty();
    const bool lacking = m_run->yearFirst && (empty || (sectionAt(m_run->part) == YearSection && !whole));
    HandOn();
    if (lacking || m_run->complete) {
        Refuse();
    }
}

// Selects the next part in the order of the form.
void DTPicker::HandOn() {
    ClosePart();
    const int last = sectionCount() - 1;
    if (!m_run->yearFirst) {
        m_run->complete = m_run->part == last;
        m_run->part = std::min(m_run->part + 1, last);
    } else {
        const Section section = sectionAt(m_run->part);
        m_run->complete = section == DaySection;
        m_run->part = m_run->complete ? last : PartOf(section == YearSection ? MonthSection : DaySection);
    }
    SelectPart(m_run->part);
}

void DTPicker::Refuse() {
    m_run->refused = true;
    m_parts = m_run->before;
    m_typing.reset();
    SelectPart(m_run->begin.part);
    Complain();
}

void DTPicker::Complain() {
    QApplication::beep();
    // Later: a focus that goes to another box would take the tip away.
    QTimer::singleShot(0, this, [this] {
        const QString own = date().toString(displayFormat()), yearFirst = date().toString(Qt::ISODate);
        const QString tip = own == yearFirst ? tr("A date is typed like this: %1").arg(own)
                                             : tr("A date is typed like this: %1 or %2").arg(own, yearFirst);
        if (isVisible()) {
            QToolTip::showText(mapToGlobal(rect().bottomLeft()), tip, this);
        }
    });
}

// Returns false if a part of it was refused.
bool DTPicker::EndRun() {
    if (!m_run) {
        return true;
    }
    if (!m_run->refused && (IsOpen() || IsImpossible())) {
        Refuse();
    }
    ClosePart();
    if (m_run->yearFirst && !m_run->refused) {
        SelectPart(sectionCount() - 1);
    }
    return !std::exchange(m_run, {})->refused;
}

// Backspace takes the last character back, in whichever part it stands. Otherwise a selected part is emptied,
// and what is typed then takes its place; left empty, it is as it was.
void DTPicker::Erase(Erased side) {
    if (m_run && m_run->refused) {
        m_run.reset();
    }
    if (m_run && !m_run->text.isEmpty()) {
        if (side == Erased::Before) {
            TakeBack();
        }
        return;
    }
    if (!m_run) {
        const int part = PartOfSelection();
        const int cursor = lineEdit()->cursorPosition();
        const bool selected = lineEdit()->hasSelectedText();
        SelectPart(part);
        const QString digits = lineEdit()->selectedText();
        const int inPart = cursor - lineEdit()->selectionStart();
        BeginRun(selected ? Typing{part, {}, 0} : Typing{part, digits, inPart});
        if (selected) {
            ShowTyping();
            return;
        }
    }
    Typing& begin = m_run->begin;
    const qsizetype place = begin.cursor - (side == Erased::Before ? 1 : 0);
    if (place >= 0 && place < begin.digits.size()) {
        begin.digits.remove(place, 1);
        begin.cursor = place;
    }
    m_typing = begin;
    ShowTyping();
}

void DTPicker::TakeBack() {
    const Run run = *m_run;
    m_parts = run.before;
    BeginRun(run.begin);
    ShowTyping();
    for (const QChar character : run.text.chopped(1)) {
        TypeCharacter(character);
    }
}
