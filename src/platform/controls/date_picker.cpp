#include "platform/controls/date_picker.h"

#include <QApplication>
#include <QClipboard>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenu>
#include <QMouseEvent>
#include <QRegularExpression>
#include <QSignalBlocker>
#include <QStyle>
#include <QStyleOptionComboBox>
#include <algorithm>
#include <array>
#include <utility>

#include "platform/base/convert.h"
#include "platform/contracts/regional.h"

namespace {

constexpr int FirstYear = 100, LastYear = 9999, Months = 12, LongestMonth = 31;
constexpr std::int32_t InvalidPropertyValue = 380;
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

bool IsDigit(QChar letter) {
    return letter >= '0' && letter <= '9';
}

int PlacesOf(QDateTimeEdit::Section section) {
    return section == QDateTimeEdit::YearSection ? 4 : 2;
}

int LargestOf(QDateTimeEdit::Section section) {
    return section == QDateTimeEdit::YearSection    ? LastYear
           : section == QDateTimeEdit::MonthSection ? Months
                                                    : LongestMonth;
}

// A year of one or two digits belongs to the century that conversions choose.
int NumberOf(QDateTimeEdit::Section section, const QString& digits) {
    constexpr int ShortYear = 2, FirstOfLastCentury = 30, LastCentury = 1900, ThisCentury = 2000;
    const int number = digits.toInt();
    if (section != QDateTimeEdit::YearSection || digits.isEmpty() || digits.size() > ShortYear) {
        return number;
    }
    return number + (number < FirstOfLastCentury ? ThisCentury : LastCentury);
}

bool Fits(QDateTimeEdit::Section section, int number) {
    return number >= (section == QDateTimeEdit::YearSection ? FirstYear : 1) && number <= LargestOf(section);
}

// Returns true if no further digit can follow.
bool IsFull(QDateTimeEdit::Section section, const QString& digits) {
    constexpr int Ten = 10;
    return digits.size() >= PlacesOf(section) ||
           (section != QDateTimeEdit::YearSection && digits.toInt() * Ten > LargestOf(section));
}

template <typename Held>
auto& PartOf(Held& parts, QDateTimeEdit::Section section) {
    return section == QDateTimeEdit::YearSection    ? parts.year
           : section == QDateTimeEdit::MonthSection ? parts.month
                                                    : parts.day;
}

// A day beyond the end of the month becomes the last day of the month.
QDate DayOf(int year, int month, int day) {
    return {year, month, std::min(day, QDate(year, month, 1).daysInMonth())};
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
    const Parts parts = m_typing ? With(*m_typing, PartsNow()) : PartsNow();
    const QDate day = DayOf(parts.year, parts.month, parts.day);
    return DateSerial(day.year(), day.month(), day.day());
}

void DTPicker::Value(DateValue value) {
    const DateParts parts = Split(value);
    if (parts.year < FirstYear || parts.year > LastYear) {
        throw RuntimeError(InvalidPropertyValue, "Invalid property value");
    }
    m_typing.reset();
    m_parts.reset();
    setDate(QDate(parts.year, parts.month, parts.day));
}

DTPicker::Parts DTPicker::PartsNow() const {
    return m_parts.value_or(Parts{date().year(), date().month(), date().day()});
}

// Digits that are no number of their part leave the part unchanged.
DTPicker::Parts DTPicker::With(const Typing& typing, Parts parts) const {
    const Section section = sectionAt(typing.part);
    if (const int number = NumberOf(section, typing.digits); Fits(section, number)) {
        PartOf(parts, section) = number;
    }
    return parts;
}

// Returns the part at the start of the selection or at the cursor.
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
    m_handedOn = false;
    if (event->key() == Qt::Key_Tab || event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        TakeWhole();
    }
    m_whole.clear();
    ClosePart();
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
        Erase(true);
    } else if (event.key() == Qt::Key_Backspace || event.key() == Qt::Key_Delete) {
        Erase(event.key() == Qt::Key_Backspace);
    } else if (plain && text.size() == 1 && IsDigit(text[0])) {
        TypeDigit(text[0]);
    } else if (plain && text.size() == 1 && Separators.contains(text)) {
        TypeSeparator();
    } else {
        return plain && text.size() == 1 && text[0].isPrint();
    }
    return true;
}

// A date with the year first that is typed over a whole selection is that day in every region: part by part
// its year would be read as a day and a month.
void DTPicker::KeepWhole(QChar character) {
    if (!m_typing && lineEdit()->hasSelectedText() && lineEdit()->selectedText() == lineEdit()->text()) {
        m_whole = character;
    } else if (!m_whole.isEmpty()) {
        m_whole += character;
    }
}

// If the typed text is such a date, takes it and returns true.
bool DTPicker::TakeWhole() {
    static const QRegularExpression YearFirst(QStringLiteral("^[0-9]{4}-[0-9]{1,2}-[0-9]{1,2}$"));
    if (sectionAt(0) == YearSection || !YearFirst.match(m_whole).hasMatch()) {
        return false;
    }
    try {
        Value(CDate(std::exchange(m_whole, {}).toStdString()));
        return true;
    } catch (const RuntimeError&) {
        return false;  // there is no such month or day: the parts keep what could be read
    }
}

void DTPicker::TypeDigit(QChar digit) {
    KeepWhole(digit);
    constexpr int WholeLength = 10;
    if (m_whole.size() == WholeLength && TakeWhole()) {
        m_handedOn = false;
        return;
    }
    m_handedOn = false;
    if (!m_typing) {
        m_typing = Typing{PartOfSelection(), {}, 0};
    }
    m_typing->digits.insert(m_typing->cursor++, digit);
    const int part = m_typing->part;
    const Section section = sectionAt(part);
    if (!IsFull(section, m_typing->digits)) {
        ShowTyping();
        return;
    }
    const bool fits = Fits(section, NumberOf(section, m_typing->digits));
    ClosePart();
    const bool next = fits && part + 1 < sectionCount();
    SelectPart(next ? part + 1 : part);
    m_handedOn = next;
}

void DTPicker::TypeSeparator() {
    if (!m_whole.isEmpty()) {
        m_whole += '-';
    }
    if (std::exchange(m_handedOn, false)) {
        return;
    }
    const int part = m_typing ? m_typing->part : PartOfSelection();
    ClosePart();
    SelectPart(std::min(part + 1, sectionCount() - 1));
}

// Empties a selected part; typed digits then fill it. A part that stays empty gets its former value back.
void DTPicker::Erase(bool before) {
    m_whole.clear();
    m_handedOn = false;
    if (!m_typing) {
        const int part = PartOfSelection();
        const int cursor = lineEdit()->cursorPosition();
        const bool selected = lineEdit()->hasSelectedText();
        SelectPart(part);
        const QString digits = lineEdit()->selectedText();
        const int inPart = cursor - lineEdit()->selectionStart();
        m_typing = selected ? Typing{part, {}, 0} : Typing{part, digits, inPart};
        if (selected) {
            ShowTyping();
            return;
        }
    }
    const qsizetype place = m_typing->cursor - (before ? 1 : 0);
    if (place >= 0 && place < m_typing->digits.size()) {
        m_typing->digits.remove(place, 1);
        m_typing->cursor = place;
    }
    ShowTyping();
}

// Accepts a date in any form that the system reads, not only in the form that is shown. Other digits act as
// if they were typed.
void DTPicker::Paste(const QString& text) {
    const QString given = text.trimmed();
    const bool digitsOnly = std::all_of(given.begin(), given.end(), IsDigit);
    if (digitsOnly && given.size() <= PlacesOf(YearSection)) {
        for (const QChar digit : given) {
            TypeDigit(digit);
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
    QApplication::beep();
}

// The digits become the part, and the date changes at once. The text shows the typed digits until the box
// loses the focus.
void DTPicker::ClosePart() {
    if (!m_typing) {
        return;
    }
    const Typing typing = *std::exchange(m_typing, {});
    const Section section = sectionAt(typing.part);
    if (!typing.digits.isEmpty() && !Fits(section, NumberOf(section, typing.digits))) {
        QApplication::beep();
    }
    m_parts = With(typing, PartsNow());
    setDate(DayOf(m_parts->year, m_parts->month, m_parts->day));
    SelectPart(typing.part);
}

void DTPicker::Settle() {
    TakeWhole();
    m_whole.clear();
    ClosePart();
    if (std::exchange(m_parts, {})) {
        setDate(date());
        const QSignalBlocker silent(lineEdit());
        lineEdit()->setText(textFromDateTime(dateTime()));
    }
    m_handedOn = false;
}

void DTPicker::SelectPart(int part) {
    setSelectedSection(sectionAt(part));
    ShowTyping();
    int first = 0;
    for (int before = 0; before < part; ++before) {
        first += PlacesOf(sectionAt(before)) + 1;
    }
    const QSignalBlocker silent(lineEdit());
    lineEdit()->setSelection(first, PlacesOf(sectionAt(part)));
}

// Bypasses the base class, which would read the text.
void DTPicker::ShowTyping() {
    const Parts parts = PartsNow();
    QStringList texts;
    qsizetype cursor = 0;
    for (int part = 0; part < sectionCount(); ++part) {
        const Section section = sectionAt(part);
        const bool typed = m_typing && m_typing->part == part;
        if (typed) {
            cursor = texts.join('-').size() + (part > 0 ? 1 : 0) + m_typing->cursor;
        }
        texts << (typed ? m_typing->digits
                        : QString::number(PartOf(parts, section)).rightJustified(PlacesOf(section), '0'));
    }
    const QSignalBlocker silent(lineEdit());
    lineEdit()->setText(texts.join(displayFormat().at(PlacesOf(sectionAt(0)))));
    lineEdit()->setCursorPosition(static_cast<int>(cursor));
}

// The base class would correct text that is only half typed.
QValidator::State DTPicker::validate(QString& text, int& place) const {
    return m_typing || m_parts ? QValidator::Acceptable : QDateEdit::validate(text, place);
}

void DTPicker::stepBy(int steps) {
    const int part = PartOfSelection();
    Settle();
    SelectPart(part);
    QDateEdit::stepBy(steps);
}

bool DTPicker::eventFilter(QObject* watched, QEvent* event) {
    if (watched != lineEdit()) {
        return QDateEdit::eventFilter(watched, event);
    }
    const auto mouse = [event] { return static_cast<QMouseEvent*>(event); };
    switch (event->type()) {
        case QEvent::MouseButtonPress:
            m_whole.clear();
            m_handedOn = false;
            ClosePart();
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
    ClosePart();
    return QDateEdit::focusNextPrevChild(next);
}

// The context menu of the text would change it without the parts.
void DTPicker::contextMenuEvent(QContextMenuEvent* event) {
    ClosePart();
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
