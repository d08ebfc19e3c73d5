#include "platform/controls/date_picker.h"

#include <QApplication>
#include <QClipboard>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMouseEvent>
#include <QStyle>
#include <QStyleOptionComboBox>

#include "platform/convert.h"
#include "platform/regional.h"

namespace {

constexpr int FirstYear = 100, LastYear = 9999;
constexpr std::int32_t InvalidPropertyValue = 380;

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

}  // namespace

DTPicker::DTPicker(QWidget* parent) : QDateEdit(parent) {
    setDateRange(QDate(FirstYear, 1, 1), QDate(LastYear, 12, 31));
    setCalendarPopup(true);
    setDisplayFormat(RegionalFormat());
    connect(this, &QDateEdit::dateChanged, this, &DTPicker::Change);
}

DateValue DTPicker::Value() const {
    return DateSerial(date().year(), date().month(), date().day());
}

void DTPicker::Value(DateValue value) {
    const DateParts parts = Split(value);
    if (parts.year < FirstYear || parts.year > LastYear) {
        throw RuntimeError(InvalidPropertyValue, "Invalid property value");
    }
    setDate(QDate(parts.year, parts.month, parts.day));
}

void DTPicker::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_F4 ||
        (event->key() == Qt::Key_Down && (event->modifiers() & Qt::AltModifier) != 0)) {
        OpenCalendar();
        return;
    }
    // A part that is full hands on to the next by itself; the separator typed then would skip that one.
    const bool separator = event->text().size() == 1 && QString("-/.").contains(event->text());
    if (separator && lineEdit()->selectedText() == sectionText(currentSection())) {
        return;
    }
    if (event->matches(QKeySequence::Paste)) {
        // A date in any form that the system reads, not only in the one that is shown.
        try {
            Value(CDate(QApplication::clipboard()->text().trimmed().toStdString()));
            return;
        } catch (const RuntimeError&) {
            // No date: whatever the field makes of it.
        }
    }
    QDateEdit::keyPressEvent(event);
}

// Qt opens its calendar by a press on the arrow only.
void DTPicker::OpenCalendar() {
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
