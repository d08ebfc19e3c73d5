// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/window/parameter_bar.h"

#include <QAction>
#include <QCalendarWidget>
#include <QCheckBox>
#include <QComboBox>
#include <QEvent>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QToolButton>
#include <QWidgetAction>
#include <algorithm>

#include "platform/contracts/runtime.h"

namespace designer {
namespace {

constexpr int MostLines = 7;             // of the bar, in heights of a button; more are scrolled to
constexpr int LinesOfList = 4;           // that a list of values shows
constexpr std::size_t MostFields = 200;  // parameters after these have their defaults

QString Text(const std::string& text) {
    return QString::fromStdString(text);
}

void LimitLines(QWidget& list) {
    list.setMaximumHeight(list.fontMetrics().lineSpacing() * LinesOfList + 2 * list.fontMetrics().height());
}

// A button beside the line that picks the day from a calendar.
QWidget* WithCalendar(QLineEdit* line) {
    auto* whole = new QWidget;
    auto* layout = new QHBoxLayout(whole);
    layout->setContentsMargins(0, 0, 0, 0);
    auto* button = new QToolButton;
    button->setText("...");
    button->setAccessibleName(ParameterBar::tr("Pick a day"));
    button->setPopupMode(QToolButton::InstantPopup);
    auto* menu = new QMenu(button);
    auto* calendar = new QCalendarWidget;
    auto* action = new QWidgetAction(menu);
    action->setDefaultWidget(calendar);
    menu->addAction(action);
    button->setMenu(menu);
    QObject::connect(calendar, &QCalendarWidget::activated, line, [line, menu](QDate day) {
        line->setText(day.toString(Qt::ISODate));
        menu->close();
        line->setFocus();
    });
    layout->addWidget(line, 1);
    layout->addWidget(button);
    whole->setFocusProxy(line);
    return whole;
}

}  // namespace

ParameterBar::ParameterBar(QWidget* parent)
    : QWidget(parent), m_scroll(new QScrollArea(this)), m_run(new QPushButton(tr("Vie&w Report"), this)) {
    setObjectName("parameterBar");
    m_scroll->setWidgetResizable(true);
    m_scroll->setFrameShape(QFrame::NoFrame);
    m_scroll->setFocusPolicy(Qt::NoFocus);
    m_run->setObjectName("cmdViewReport");
    auto* layout = new QHBoxLayout(this);
    layout->addWidget(m_scroll, 1);
    layout->addWidget(m_run, 0, Qt::AlignTop);
    connect(m_run, &QPushButton::clicked, this, &ParameterBar::RunRequested);
    hide();
}

void ParameterBar::KeepTyped() {
    for (const Field& field : m_fields) {
        m_typed[Text(field.parameter.name)] = ValuesOf(field);
    }
    m_fields.clear();
}

void ParameterBar::Show(const std::vector<AskedParameter>& parameters, report::Report& report) {
    KeepTyped();
    m_page = new QWidget;
    m_grid = new QGridLayout(m_page);
    m_grid->setContentsMargins(0, 0, 0, 0);
    for (const AskedParameter& parameter : parameters) {
        for (int n = 1; n <= report.ParameterFieldCount() && m_fields.size() < MostFields; ++n) {
            if (report.Parameter(n).Name() == parameter.name) {
                AddField(parameter, report.Parameter(n));
                break;
            }
        }
    }
    m_grid->setColumnStretch(1, 1);
    m_grid->setColumnStretch(4, m_fields.size() > 1 ? 1 : 0);
    m_scroll->setWidget(m_page);
    setVisible(!m_fields.empty());
    FitHeight();
}

// Two parameters are beside each other.
void ParameterBar::AddField(const AskedParameter& parameter, const report::ParameterField& given) {
    Field field = MakeEditor(parameter);
    const QString prompt = Text(given.Prompt());  // which may have been an expression
    const int at = static_cast<int>(m_fields.size());
    const int row = at / 2, column = at % 2 * 3;
    auto* label = new QLabel(prompt);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    QWidget* focus = field.editor->focusProxy() ? field.editor->focusProxy() : field.editor;
    label->setBuddy(focus);
    focus->setObjectName("parameter" + Text(parameter.name));
    focus->setAccessibleName(prompt);
    const Qt::Alignment level = parameter.takesSeveral ? Qt::AlignTop : Qt::AlignVCenter;
    m_grid->addWidget(label, row, column, Qt::AlignRight | level);
    m_grid->addWidget(field.editor, row, column + 1, level);
    if (parameter.mayBeNull && !parameter.takesSeveral) {
        field.null = new QCheckBox(tr("Null"));
        field.null->setObjectName("null" + Text(parameter.name));
        field.null->setAccessibleName(tr("%1 is Null").arg(prompt));
        m_grid->addWidget(field.null, row, column + 2, level);
        connect(field.null, &QCheckBox::toggled, field.editor, &QWidget::setDisabled);
    }
    QStringList defaults;
    for (const std::string& value : given.DefaultValues()) {
        defaults.append(Text(value));
    }
    // A default that the engine does not give, or refuses, is left to the run.
    const bool isNull = defaults.isEmpty() && (!parameter.hasDefault || parameter.isNullDefault);
    const auto typed = m_typed.constFind(Text(parameter.name));
    const Values values = typed != m_typed.constEnd() ? *typed
                          : isNull && field.null      ? Values()
                                                      : Values(defaults);
    field.write(values.value_or(QStringList()));
    if (field.null) {
        field.null->setChecked(!values);
    }
    m_fields.push_back(std::move(field));
}

ParameterBar::Field ParameterBar::MakeEditor(const AskedParameter& parameter) {
    const bool hasList = !parameter.choices.empty();
    if (parameter.takesSeveral) {
        return hasList ? MakeList(parameter) : MakeLines(parameter);
    }
    return hasList || parameter.kind == AskedParameter::Kind::Boolean ? MakeBox(parameter)
                                                                      : MakeLine(parameter);
}

// What a query allows may depend on other values of the report: any text can be typed.
ParameterBar::Field ParameterBar::MakeBox(const AskedParameter& parameter) {
    auto* box = new QComboBox;
    box->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    box->setMinimumContentsLength(12);
    box->setEditable(!parameter.choiceSet.empty());
    for (const AskedChoice& choice : parameter.choices) {
        box->addItem(Text(choice.label), Text(choice.value));
    }
    if (parameter.choices.empty()) {
        box->addItem(tr("True"), "True");
        box->addItem(tr("False"), "False");
    }
    box->setCurrentIndex(-1);
    const auto read = [box] {
        const bool isChosen =
            box->currentIndex() >= 0 && box->currentText() == box->itemText(box->currentIndex());
        const QString value = isChosen ? box->currentData().toString() : box->currentText();
        return isChosen || !value.isEmpty() ? QStringList(value) : QStringList();
    };
    const auto write = [box](const QStringList& values) {
        const int index =
            values.isEmpty() ? -1 : box->findData(values.first(), Qt::UserRole, Qt::MatchFixedString);
        box->setCurrentIndex(index);
        if (index < 0 && box->isEditable() && !values.isEmpty()) {
            box->setEditText(values.first());
        }
    };
    return {parameter, box, nullptr, read, write};
}

ParameterBar::Field ParameterBar::MakeList(const AskedParameter& parameter) {
    auto* list = new QListWidget;
    for (const AskedChoice& choice : parameter.choices) {
        auto* item = new QListWidgetItem(Text(choice.label), list);
        item->setData(Qt::UserRole, Text(choice.value));
        item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable);
        item->setCheckState(Qt::Unchecked);
    }
    list->setCurrentRow(0);
    list->setToolTip(tr("Blank ticks a value; Ctrl+A ticks all, or none"));
    LimitLines(*list);
    auto* all = new QAction(tr("Tick &All or None"), list);
    all->setShortcut(QKeySequence::SelectAll);
    all->setShortcutContext(Qt::WidgetShortcut);
    list->addAction(all);
    list->setContextMenuPolicy(Qt::ActionsContextMenu);
    connect(all, &QAction::triggered, list, [list] {
        bool areAll = true;
        for (int row = 0; row < list->count(); ++row) {
            areAll = areAll && list->item(row)->checkState() == Qt::Checked;
        }
        for (int row = 0; row < list->count(); ++row) {
            list->item(row)->setCheckState(areAll ? Qt::Unchecked : Qt::Checked);
        }
    });
    const auto read = [list] {
        QStringList values;
        for (int row = 0; row < list->count(); ++row) {
            if (list->item(row)->checkState() == Qt::Checked) {
                values.append(list->item(row)->data(Qt::UserRole).toString());
            }
        }
        return values;
    };
    const auto write = [list](const QStringList& values) {
        for (int row = 0; row < list->count(); ++row) {
            const bool isOn =
                values.contains(list->item(row)->data(Qt::UserRole).toString(), Qt::CaseInsensitive);
            list->item(row)->setCheckState(isOn ? Qt::Checked : Qt::Unchecked);
        }
    };
    return {parameter, list, nullptr, read, write};
}

ParameterBar::Field ParameterBar::MakeLines(const AskedParameter& parameter) {
    auto* lines = new QPlainTextEdit;
    lines->setPlaceholderText(tr("One value a line"));
    lines->setTabChangesFocus(true);
    LimitLines(*lines);
    const auto read = [lines] { return lines->toPlainText().split('\n', Qt::SkipEmptyParts); };
    const auto write = [lines](const QStringList& values) { lines->setPlainText(values.join('\n')); };
    return {parameter, lines, nullptr, read, write};
}

ParameterBar::Field ParameterBar::MakeLine(const AskedParameter& parameter) {
    auto* line = new QLineEdit;
    connect(line, &QLineEdit::returnPressed, this, &ParameterBar::RunRequested);
    const bool isBlankAllowed = parameter.mayBeBlank && parameter.kind == AskedParameter::Kind::String;
    const auto read = [line, isBlankAllowed] {
        return line->text().isEmpty() && !isBlankAllowed ? QStringList() : QStringList(line->text());
    };
    const auto write = [line](const QStringList& values) { line->setText(values.value(0)); };
    if (parameter.kind == AskedParameter::Kind::DateTime) {
        return {parameter, WithCalendar(line), nullptr, read, write};
    }
    if (parameter.kind == AskedParameter::Kind::Integer) {
        line->setPlaceholderText(tr("Whole number"));
    } else if (parameter.kind == AskedParameter::Kind::Float) {
        line->setPlaceholderText(tr("Number"));
    }
    return {parameter, line, nullptr, read, write};
}

ParameterBar::Values ParameterBar::ValuesOf(const Field& field) {
    return field.null && field.null->isChecked() ? Values() : Values(field.read());
}

bool ParameterBar::IsComplete() const {
    return std::all_of(m_fields.begin(), m_fields.end(), [](const Field& field) {
        const Values values = ValuesOf(field);
        return !values || !values->isEmpty() || field.parameter.hasDefault;
    });
}

void ParameterBar::GiveTo(report::Report& report) const {
    for (int n = 1; n <= report.ParameterFieldCount(); ++n) {
        report::ParameterField& given = report.Parameter(n);
        const auto field = std::find_if(m_fields.begin(), m_fields.end(),
                                        [&](const Field& one) { return one.parameter.name == given.Name(); });
        if (field == m_fields.end()) {
            continue;
        }
        given.ClearCurrentValueAndRange();
        const Values values = ValuesOf(*field);
        try {
            if (!values) {
                given.AddCurrentValue(Variant());
            }
            for (const QString& value : values.value_or(QStringList())) {
                given.AddCurrentValue(value.toStdString());
            }
        } catch (const RuntimeError&) {
            field->editor->setFocus();
            throw;
        }
    }
}

void ParameterBar::FocusFirst() const {
    if (!m_fields.empty()) {
        m_fields.front().editor->setFocus();
    }
}

void ParameterBar::FitHeight() {
    if (m_page) {
        const int most = MostLines * (m_run->sizeHint().height() + 4);
        m_scroll->setFixedHeight(std::min(m_page->sizeHint().height() + 2, most));
    }
}

void ParameterBar::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange) {
        FitHeight();
    }
}

}  // namespace designer
