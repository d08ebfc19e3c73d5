// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/graphic_dialogs/chart_data_page.h"

#include <QComboBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QSpinBox>
#include <algorithm>

#include "designer/dialogs/form_row.h"
#include "designer/graphic_dialogs/chart_lists.h"
#include "designer/graphic_dialogs/expression_field.h"
#include "designer/graphics/chart_types.h"
#include "designer/tables/fields.h"
#include "platform/base/ascii.h"
#include "platform/base/caption.h"

namespace designer {
namespace {

constexpr std::string_view Aggregates[] = {"Sum",   "Avg",           "Min",  "Max",   "Count",
                                           "First", "CountDistinct", "Last", "StDev", "Var"};

std::string Aggregated(std::string_view aggregate, const std::string& field) {
    return "=" + std::string(aggregate) + "(" + FieldValue(field).substr(1) + ")";
}

// The parts of =Sum(Fields!Amount.Value); nullopt stands for any other expression.
struct FieldSummary {
    std::string_view aggregate;
    std::string field;
};

std::optional<FieldSummary> SummaryOf(const std::string& expression) {
    for (const std::string_view aggregate : Aggregates) {
        const std::string begin = "=" + std::string(aggregate) + "(";
        if (expression.size() > begin.size() && SameAscii(expression.substr(0, begin.size()), begin) &&
            expression.back() == ')') {
            const std::string field =
                FieldOfValue("=" + expression.substr(begin.size(), expression.size() - begin.size() - 1));
            return field.empty() ? std::nullopt : std::optional(FieldSummary{aggregate, field});
        }
    }
    return std::nullopt;
}

// A group stands further to the right than the one that it is in.
QString TextOfGroup(const ChartGroup& group) {
    return QString(qsizetype{group.level - 1} * 3, ' ') + QString::fromStdString(group.expression);
}

// Returns what `work` makes of the name of each field in the list.
template <typename Work>
std::vector<std::string> ForEachField(const QListWidget& fields, Work work) {
    std::vector<std::string> made;
    made.reserve(static_cast<std::size_t>(fields.count()));
    for (int index = 0; index < fields.count(); ++index) {
        made.push_back(work(fields.item(index)->text().toStdString()));
    }
    return made;
}

}  // namespace

ChartDataPage::ChartDataPage(const DesignModel& model, ChartDesign& design, bool isOlder, Opener open,
                             QWidget* parent)
    : QWidget(parent),
      m_model(model),
      m_design(design),
      m_isOlder(isOlder),
      m_open(std::move(open)),
      m_set(new QComboBox(this)),
      m_fields(new FieldList(this)),
      m_entry(new QGroupBox(this)),
      m_form(new QFormLayout(m_entry)) {
    m_set->setObjectName("cboDataSet");
    m_entry->setObjectName("entry");
    for (const ReportSet& set : SetsOf(model.Source())) {
        m_set->addItem(QString::fromStdString(set.name));
    }
    m_set->setCurrentIndex(m_set->findText(QString::fromStdString(design.dataSet), Qt::MatchFixedString));
    connect(m_set, &QComboBox::textActivated, this, [this](const QString& name) {
        m_design.dataSet = name.toStdString();
        ShowDesign();
    });
    auto* set = new QLabel(tr("Data s&et:"), this);
    set->setBuddy(m_set);
    auto* fields = new QLabel(tr("&Fields; drag them to a list:"), this);
    fields->setBuddy(m_fields);
    fields->setWordWrap(true);
    auto* left = new QVBoxLayout;
    for (QWidget* part : {static_cast<QWidget*>(set), static_cast<QWidget*>(m_set),
                          static_cast<QWidget*>(fields), static_cast<QWidget*>(m_fields)}) {
        left->addWidget(part, part == m_fields ? 1 : 0);
    }
    auto* layout = new QGridLayout(this);
    layout->addLayout(left, 0, 0, 3, 1);
    BuildLists();
    layout->addWidget(m_lists[0], 0, 1, 1, 2);
    layout->addWidget(m_lists[1], 1, 1);
    layout->addWidget(m_lists[2], 1, 2);
    layout->addWidget(m_entry, 2, 1, 1, 2);
    layout->setColumnStretch(0, 2);
    layout->setColumnStretch(1, 3);
    layout->setColumnStretch(2, 3);
    layout->setRowStretch(0, 1);
    layout->setRowStretch(1, 1);
    ShowDesign();
}

void ChartDataPage::BuildLists() {
    const std::pair<QString, const char*> titles[] = {
        {tr("Values"), "values"}, {tr("Categories"), "categories"}, {tr("Series groups"), "series"}};
    for (std::size_t index = 0; index < m_lists.size(); ++index) {
        const auto part = static_cast<Part>(index);
        m_lists[index] = new ChartList(titles[index].first, titles[index].second, index == 0 ? 4 : 2, this);
        m_lists[index]->SetAddText(tr("Adds the current field"));
        connect(m_lists[index], &ChartList::AddRequested, this, [this, part] {
            if (const auto field = m_fields->Current()) {
                Add(part, *field);
            }
        });
        connect(m_lists[index], &ChartList::Dropped, this,
                [this, part](const DraggedField& field) { Add(part, field); });
        connect(m_lists[index], &ChartList::RemoveRequested, this,
                [this, part](int row) { Remove(part, row); });
        connect(m_lists[index], &ChartList::MoveRequested, this,
                [this, part](int row, int to) { MoveEntry(part, row, to); });
        connect(m_lists[index], &ChartList::Chosen, this, [this, part, index] {
            m_rows[index] = m_lists[index]->Current();
            ShowEntry(part);
        });
    }
}

std::vector<ChartGroup>& ChartDataPage::Groups(Part part) {
    return part == Part::Categories ? m_design.categories : m_design.series;
}

void ChartDataPage::Add(Part part, const DraggedField& field) {
    int& row = m_rows[static_cast<std::size_t>(part)];
    if (part == Part::Values) {
        const auto sets = SetsOf(m_model.Source());
        bool isNumeric = false;
        for (const ReportSet& set : sets) {
            for (const ReportField& one : set.fields) {
                isNumeric = isNumeric || (SameAscii(set.name, field.dataSet) &&
                                          SameAscii(one.name, field.field) && one.IsNumeric());
            }
        }
        ChartValue value;
        value.label = CaptionOf(field.field);
        for (const std::string& name : ValueNamesOf(m_design)) {
            value.values[name] = Aggregated(isNumeric ? "Sum" : "Count", field.field);
        }
        m_design.values.push_back(value);
        row = static_cast<int>(m_design.values.size()) - 1;
    } else {
        const int level = Groups(part).empty() ? 1 : Groups(part).back().level + 1;
        Groups(part).push_back({NoElement, FieldValue(field.field), level});
        row = static_cast<int>(Groups(part).size()) - 1;
    }
    m_part = part;
    ShowLists();
}

void ChartDataPage::Remove(Part part, int row) {
    if (part == Part::Values) {
        m_design.values.erase(m_design.values.begin() + row);
    } else {
        Groups(part).erase(Groups(part).begin() + row);
        FitLevels(Groups(part));
    }
    m_part = part;
    ShowLists();
}

void ChartDataPage::MoveEntry(Part part, int row, int to) {
    const auto from = static_cast<std::size_t>(row), place = static_cast<std::size_t>(to);
    if (part == Part::Values) {
        std::swap(m_design.values[from], m_design.values[place]);
    } else {
        // The levels stay where they are.
        std::swap(Groups(part)[from], Groups(part)[place]);
        std::swap(Groups(part)[from].level, Groups(part)[place].level);
    }
    m_rows[static_cast<std::size_t>(part)] = to;
    m_part = part;
    ShowLists();
}

QString ChartDataPage::TextOf(const ChartValue& value) const {
    const std::vector<std::string> names = ValueNamesOf(m_design);
    const auto found = value.values.find(names.front());
    const QString expression =
        QString::fromStdString(found == value.values.end() ? std::string() : found->second);
    return value.label.empty() ? expression : QString::fromStdString(value.label) + ": " + expression;
}

void ChartDataPage::ShowDesign() {
    m_fields->ShowSet(m_model.Source(), m_design.dataSet);
    ShowLists();
}

void ChartDataPage::ShowLists() {
    QStringList values;
    for (const ChartValue& value : m_design.values) {
        values.append(TextOf(value));
    }
    std::array<QStringList, 3> texts{values, {}, {}};
    for (const Part part : {Part::Categories, Part::Series}) {
        for (const ChartGroup& group : Groups(part)) {
            texts[static_cast<std::size_t>(part)].append(TextOfGroup(group));
        }
    }
    for (std::size_t index = 0; index < m_lists.size(); ++index) {
        m_rows[index] = std::clamp(m_rows[index], texts[index].isEmpty() ? -1 : 0,
                                   static_cast<int>(texts[index].size()) - 1);
        m_lists[index]->Show(texts[index], m_rows[index]);
        m_lists[index]->setEnabled(!m_design.hasOtherGroups);
    }
    ShowEntry(m_part);
}

void ChartDataPage::Choose(Part part, std::size_t entry) {
    m_rows[static_cast<std::size_t>(part)] = static_cast<int>(entry);
    m_part = part;
    ShowLists();
    if (auto* line = m_entry->findChild<QComboBox*>("entryValue")) {
        line->setFocus();
    }
}

// The lines of the current entry are made again: each type of chart has values of its own.
void ChartDataPage::ShowEntry(Part part) {
    m_part = part;
    while (m_form->rowCount() > 0) {
        m_form->removeRow(0);
    }
    const int row = m_rows[static_cast<std::size_t>(part)];
    m_entry->setVisible(!m_design.hasOtherGroups);
    if (row < 0) {
        m_entry->setTitle(tr("Nothing is selected"));
        return;
    }
    const auto entry = static_cast<std::size_t>(row);
    if (part == Part::Values) {
        ShowValue(entry);
        return;
    }
    ShowGroup(part, entry);
}

void ChartDataPage::ShowGroup(Part part, std::size_t entry) {
    m_entry->setTitle(part == Part::Categories ? tr("Category") : tr("Series group"));
    const auto showTexts = [this, part] {
        QListWidget& list = m_lists[static_cast<std::size_t>(part)]->List();
        for (std::size_t row = 0; row < Groups(part).size(); ++row) {
            list.item(static_cast<int>(row))->setText(TextOfGroup(Groups(part)[row]));
        }
    };
    auto* field = new ExpressionField(tr("Group on"), m_entry);
    field->Line().setObjectName("entryValue");
    field->SetChoices(ForEachField(*m_fields, FieldValue));
    field->SetValue(Groups(part)[entry].expression);
    field->SetOpener([this, part, entry] { return m_open(part, entry, {}); });
    connect(field, &ExpressionField::Edited, this, [this, field, part, entry, showTexts] {
        Groups(part)[entry].expression = field->Value();
        showTexts();
    });
    AddFieldRow(*m_form, tr("&Group on:"), field);
    if (m_isOlder || entry == 0) {
        return;
    }
    auto* level = new QSpinBox(m_entry);
    level->setObjectName("entryLevel");
    level->setAccessibleName(tr("Level of the group"));
    level->setRange(1, Groups(part)[entry - 1].level + 1);
    level->setValue(Groups(part)[entry].level);
    level->setToolTip(tr(
        "A group is within the one before it of a lesser level; those of one level stand beside each other"));
    connect(level, &QSpinBox::valueChanged, this, [this, part, entry, showTexts](int value) {
        Groups(part)[entry].level = value;
        FitLevels(Groups(part));
        showTexts();
    });
    m_form->addRow(tr("Le&vel:"), level);
}

void ChartDataPage::ShowValue(std::size_t entry) {
    m_entry->setTitle(tr("Value"));
    const auto showText = [this, entry] {
        m_lists[0]->List().item(static_cast<int>(entry))->setText(TextOf(m_design.values[entry]));
    };
    auto* label = new ExpressionField(tr("Name in the legend"), m_entry);
    label->Line().setObjectName("entryLabel");
    label->SetValue(m_design.values[entry].label);
    label->SetOpener([this, entry] { return m_open(Part::Values, entry, "Label"); });
    connect(label, &ExpressionField::Edited, this, [this, label, entry, showText] {
        m_design.values[entry].label = label->Value();
        showText();
    });
    bool isFirst = true;
    for (const std::string& name : ValueNamesOf(m_design)) {
        const QString title = QString::fromUtf8(TitleOfValue(name));
        auto* line = new QWidget(m_entry);
        auto* aggregate = new QComboBox(line);
        auto* field = new ExpressionField(title, line);
        aggregate->setAccessibleName(tr("Aggregate of %1").arg(title));
        const QString caption = (isFirst ? "&" : "") + title + ":";
        aggregate->setObjectName(isFirst ? "entryAggregate" : "");
        field->Line().setObjectName(isFirst ? "entryValue" : "");
        isFirst = false;
        auto* layout = new QHBoxLayout(line);
        layout->setContentsMargins(0, 0, 0, 0);
        layout->addWidget(field, 1);
        layout->addWidget(aggregate);
        line->setFocusProxy(field);
        field->SetValue(m_design.values[entry].values[name]);
        TakeAggregate(*field, *aggregate);
        field->SetOpener([this, entry, name] { return m_open(Part::Values, entry, name); });
        connect(field, &ExpressionField::Edited, this, [this, field, aggregate, entry, name, showText] {
            m_design.values[entry].values[name] = field->Value();
            TakeAggregate(*field, *aggregate);
            showText();
        });
        connect(aggregate, &QComboBox::textActivated, this, [field](const QString& word) {
            if (const auto summary = SummaryOf(field->Value())) {
                field->Line().setEditText(
                    QString::fromStdString(Aggregated(word.toStdString(), summary->field)));
            }
        });
        AddFieldRow(*m_form, caption, line);
    }
    AddFieldRow(*m_form, tr("&Name in the legend:"), label);
}

// The aggregates are those of the field; any other expression has none to choose.
void ChartDataPage::TakeAggregate(ExpressionField& field, QComboBox& aggregate) {
    const auto summary = SummaryOf(field.Value());
    const QSignalBlocker quiet(&aggregate);
    if (aggregate.count() == 0) {
        for (const std::string_view word : Aggregates) {
            aggregate.addItem(QString::fromUtf8(word));
        }
    }
    aggregate.setCurrentIndex(summary ? aggregate.findText(QString::fromUtf8(summary->aggregate)) : -1);
    aggregate.setEnabled(summary.has_value());
    if (field.Line().count() == 0) {
        const std::string value = field.Value();
        field.SetChoices(
            ForEachField(*m_fields, [](const std::string& name) { return Aggregated("Sum", name); }));
        field.SetValue(value);
    }
}

}  // namespace designer
