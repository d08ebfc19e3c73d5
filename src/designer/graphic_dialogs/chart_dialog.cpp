// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/graphic_dialogs/chart_dialog.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QScreen>
#include <QTabWidget>
#include <QVBoxLayout>

#include "designer/dialogs/note.h"
#include "designer/document/properties/properties.h"
#include "designer/graphic_dialogs/chart_gallery.h"
#include "designer/graphic_dialogs/expression_field.h"
#include "designer/graphic_dialogs/report_copy.h"
#include "designer/graphics/chart_types.h"
#include "designer/panes/property_rows.h"
#include "designer/tables/tablix_shape.h"

namespace designer {
namespace {

constexpr const char* SeriesCollection = "ChartData/ChartSeriesCollection";

// The words that a property of the element can have.
QStringList WordsOf(const Document& document, std::string_view element, std::string_view path) {
    QStringList words;
    for (const Property* property : PropertiesOf(element, false)) {
        if (property->path == path) {
            for (const std::string& word : ChoicesFor(document, *property)) {
                words.append(QString::fromStdString(word));
            }
            return words;
        }
    }
    return words;
}

// The ids of a design are those of the report, and others in a copy of it.
ChartDesign DesignInCopy(const Document& document, const ChartDesign& design, const Document& copy) {
    ChartDesign same = design;
    const auto take = [&](ElementId& id) { id = id == NoElement ? id : InCopy(document, id, copy); };
    for (ChartValue& value : same.values) {
        take(value.series);
    }
    for (std::vector<ChartGroup>* groups : {&same.categories, &same.series}) {
        for (ChartGroup& group : *groups) {
            take(group.member);
        }
    }
    return same;
}

}  // namespace

ChartDialog::ChartDialog(DesignModel& model, ElementId chart, QWidget* parent)
    : QDialog(parent),
      m_model(model),
      m_chart(chart),
      m_design(ReadChartDesign(model.Source(), chart)),
      m_tabs(new QTabWidget(this)) {
    setObjectName("chartDialog");
    setWindowTitle(
        tr("Chart %1").arg(QString::fromStdString(model.Source().Attribute(chart, "Name").value_or(""))));
    m_tabs->setObjectName("chartTabs");
    m_data = new ChartDataPage(
        model, m_design,
        [this](ChartDataPage::Part part, std::size_t entry, const std::string& name) {
            return Open(part, entry, name);
        },
        m_tabs);
    m_tabs->addTab(MakeTypePage(), tr("&Type"));
    m_tabs->addTab(m_data, tr("&Data"));
    m_tabs->addTab(MakeLookPage(), tr("&Look"));
    m_tabs->setCurrentWidget(m_data);
    m_note = new Note(*m_tabs, this);
    if (m_design.hasOtherGroups) {
        m_note->ShowText(
            tr("The groups of this chart are not in each other one by one: they are changed in "
               "the Outline and the Properties"));
    }
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &ChartDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &ChartDialog::reject);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_tabs, 1);
    layout->addWidget(m_note);
    layout->addWidget(buttons);
    const QSize wanted(fontMetrics().averageCharWidth() * 110, fontMetrics().height() * 34);
    resize(wanted.expandedTo(minimumSizeHint()).boundedTo(screen()->availableSize() * 9 / 10));
}

QWidget* ChartDialog::MakeTypePage() {
    auto* page = new QWidget(m_tabs);
    m_gallery = new ChartGallery(page);
    m_gallery->SetType(FindChartType(m_design.type, m_design.subtype));
    auto* layout = new QVBoxLayout(page);
    layout->addWidget(m_gallery);
    connect(m_gallery, &QListWidget::currentRowChanged, this, [this] {
        if (const ChartType* type = m_gallery->Type()) {
            m_design.type = type->type;
            m_design.subtype = type->subtype;
            m_data->ShowDesign();
        }
    });
    return page;
}

ExpressionField* ChartDialog::MakeTitle(const QString& title, const char* name,
                                        std::string ChartDesign::*text, const char* path) {
    auto* field = new ExpressionField(title, m_tabs);
    field->Line().setObjectName(name);
    field->SetValue(m_design.*text);
    connect(field, &ExpressionField::Edited, this, [this, field, text] { m_design.*text = field->Value(); });
    field->SetOpener([this, text, path] {
        ChartDesign wanted = m_design;
        // Without a text there is no title that could have one.
        wanted.*text = (wanted.*text).empty() ? " " : wanted.*text;
        return EditInCopy(
            m_model,
            [&](Document& copy) {
                const ElementId chart = InCopy(m_model.Source(), m_chart, copy);
                PutChartDesign(copy, chart, DesignInCopy(m_model.Source(), wanted, copy));
                return copy.Find(chart, path);
            },
            "Caption", this);
    });
    return field;
}

QWidget* ChartDialog::MakeLookPage() {
    auto* page = new QWidget(m_tabs);
    auto* form = new QFormLayout(page);
    form->addRow(tr("T&itle:"),
                 MakeTitle(tr("Title"), "chartTitle", &ChartDesign::title, "ChartTitles/ChartTitle"));
    form->addRow(tr("&Category axis:"),
                 MakeTitle(tr("Title of the category axis"), "categoryTitle", &ChartDesign::categoryTitle,
                           "ChartAreas/ChartArea/ChartCategoryAxes/ChartAxis/ChartAxisTitle"));
    form->addRow(tr("&Value axis:"),
                 MakeTitle(tr("Title of the value axis"), "valueTitle", &ChartDesign::valueTitle,
                           "ChartAreas/ChartArea/ChartValueAxes/ChartAxis/ChartAxisTitle"));
    const auto choice = [&](const char* name, const QStringList& words, const std::string& now) {
        auto* list = new QComboBox(page);
        list->setObjectName(name);
        list->setEditable(true);  // an expression stays
        list->addItems(words);
        list->setEditText(QString::fromStdString(now));
        return list;
    };
    const QString none = tr("(none)");
    auto* legend = choice("legend", QStringList(none) + WordsOf(m_model.Source(), "ChartLegend", "Position"),
                          m_design.legend.empty() ? none.toStdString() : m_design.legend);
    connect(legend, &QComboBox::editTextChanged, this, [this, none](const QString& text) {
        m_design.legend = text == none ? std::string() : text.trimmed().toStdString();
    });
    form->addRow(tr("Le&gend:"), legend);
    auto* palette = choice("palette", WordsOf(m_model.Source(), "Chart", "Palette"), m_design.palette);
    connect(palette, &QComboBox::editTextChanged, this,
            [this](const QString& text) { m_design.palette = text.trimmed().toStdString(); });
    form->addRow(tr("&Palette:"), palette);
    auto* labels = new QCheckBox(tr("Values at the p&oints"), page);
    labels->setObjectName("labels");
    labels->setChecked(m_design.showsLabels);
    connect(labels, &QCheckBox::toggled, this, [this](bool shows) { m_design.showsLabels = shows; });
    form->addRow(QString(), labels);
    return page;
}

std::optional<std::string> ChartDialog::Open(ChartDataPage::Part part, std::size_t entry,
                                             const std::string& name) {
    const bool isValue = part == ChartDataPage::Part::Values, isLabel = isValue && name == "Label";
    ChartDesign wanted = m_design;
    // What is empty may have no element that could have a text.
    if (isValue) {
        ChartValue& value = wanted.values.at(entry);
        std::string& text = isLabel ? value.label : value.values[name];
        text = text.empty() ? " " : text;
    }
    const auto place = [&](Document& copy) {
        const ElementId chart = InCopy(m_model.Source(), m_chart, copy);
        PutChartDesign(copy, chart, DesignInCopy(m_model.Source(), wanted, copy));
        const ChartDesign made = ReadChartDesign(copy, chart);
        const auto& groups = part == ChartDataPage::Part::Categories ? made.categories : made.series;
        if (!isValue) {
            return entry < groups.size() ? copy.Find(groups[entry].member, "Group") : NoElement;
        }
        ElementId owner = copy.Find(chart, isLabel ? "ChartSeriesHierarchy" : "");
        for (std::size_t level = 0; isLabel && owner != NoElement && level < made.series.size(); ++level) {
            owner = copy.Find(owner, "ChartMembers/ChartMember");
        }
        if (owner == NoElement) {
            return NoElement;
        }
        const auto members = isLabel ? ChildrenNamed(copy, owner, "ChartMembers", "ChartMember")
                                     : ChildrenNamed(copy, owner, SeriesCollection, "ChartSeries");
        return entry >= members.size() ? NoElement
               : isLabel               ? members[entry]
                                       : copy.Find(members[entry], "ChartDataPoints/ChartDataPoint");
    };
    const std::string path = !isValue  ? "GroupExpressions/GroupExpression"
                             : isLabel ? name
                                       : "ChartDataPointValues/" + name;
    return EditInCopy(m_model, place, path, this);
}

// Looks whether the chart can be as it is shown, and says why not.
bool ChartDialog::IsComplete() {
    const auto refuse = [this](ChartDataPage::Part part, std::size_t entry, const QString& text) {
        m_tabs->setCurrentWidget(m_data);
        m_note->ShowFault(text);
        m_data->Choose(part, entry);
        return false;
    };
    const std::vector<std::string> names = ValueNamesOf(FindChartType(m_design.type, m_design.subtype));
    for (std::size_t entry = 0; entry < m_design.values.size(); ++entry) {
        const auto& values = m_design.values[entry].values;
        const auto found = values.find(names.front());
        if (FindChartType(m_design.type, m_design.subtype) &&
            (found == values.end() || found->second.empty())) {
            return refuse(ChartDataPage::Part::Values, entry,
                          tr("Value %1 has no expression").arg(entry + 1));
        }
    }
    for (const auto part : {ChartDataPage::Part::Categories, ChartDataPage::Part::Series}) {
        const auto& groups = part == ChartDataPage::Part::Categories ? m_design.categories : m_design.series;
        for (std::size_t entry = 0; entry < groups.size(); ++entry) {
            const std::string& text = groups[entry].expression;
            if (text.size() < 2 || text.front() != '=') {
                return refuse(part, entry,
                              tr("A group needs an expression, not \"%1\": =Fields!Region.Value")
                                  .arg(QString::fromStdString(text)));
            }
        }
    }
    if (m_design.values.empty()) {
        m_tabs->setCurrentWidget(m_data);
        m_note->ShowFault(tr("The chart needs a value"));
        return false;
    }
    const QString fault = FaultAfter(m_model, [this](Document& copy) {
        PutChartDesign(copy, InCopy(m_model.Source(), m_chart, copy),
                       DesignInCopy(m_model.Source(), m_design, copy));
    });
    if (!fault.isEmpty()) {
        m_note->ShowFault(fault);
        m_tabs->setFocus();
    }
    return fault.isEmpty();
}

void ChartDialog::accept() {
    const bool isSame = m_design == ReadChartDesign(m_model.Source(), m_chart);
    if (!isSame && !IsComplete()) {
        return;
    }
    if (isSame || m_model.Edit(StepName(m_model, tr("Change"), {m_chart}),
                               [this](Document& document) { PutChartDesign(document, m_chart, m_design); })) {
        QDialog::accept();
    }
}

}  // namespace designer
