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
#include <algorithm>

#include "designer/dialogs/form_row.h"
#include "designer/dialogs/note.h"
#include "designer/document/properties/properties.h"
#include "designer/expressions/expression_check.h"
#include "designer/expressions/expression_dialog.h"
#include "designer/graphic_dialogs/chart_gallery.h"
#include "designer/graphic_dialogs/expression_field.h"
#include "designer/graphic_dialogs/report_copy.h"
#include "designer/graphics/chart_types.h"
#include "designer/panes/property_rows.h"

namespace designer {
namespace {

// The words that a property of the element can have.
QStringList WordsOf(const Document& document, std::string_view element, std::string_view path) {
    QStringList words;
    for (const Property* property : PropertiesOf(element, Schemas::Newer)) {
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
        std::for_each(value.copies.begin(), value.copies.end(), take);
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
      m_isOlder(IsOlderChart(model.Source(), chart)),
      m_design(ReadChartDesign(model.Source(), chart)),
      m_tabs(new QTabWidget(this)) {
    setObjectName("chartDialog");
    setWindowTitle(
        tr("Chart %1").arg(QString::fromStdString(model.Source().Attribute(chart, "Name").value_or(""))));
    m_tabs->setObjectName("chartTabs");
    m_tabs->setAccessibleName(tr("Parts of the chart"));
    m_data = new ChartDataPage(
        model, m_design, m_isOlder,
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
        m_note->ShowText(tr(
            "A group of this chart has several expressions or none. Change the groups in the Outline and the "
            "Properties."));
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
    m_gallery = new ChartGallery(m_isOlder, page);
    m_gallery->SetType(TypeOf(m_design));
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

std::optional<std::string> ChartDialog::Ask(
    const QString& title, const std::string& value,
    const std::function<void(ChartDesign&, const std::string&)>& set) {
    const auto write = [this, set](Document& copy, const std::string& text) {
        ChartDesign wanted = m_design;
        set(wanted, text);
        PutChartDesign(copy, InCopy(m_model.Source(), m_chart, copy),
                       DesignInCopy(m_model.Source(), wanted, copy));
    };
    return AskForExpression(m_model, {title, write}, value, this);
}

ExpressionField* ChartDialog::MakeTitle(const QString& title, const char* name,
                                        std::string ChartDesign::*text) {
    auto* field = new ExpressionField(title, m_tabs);
    field->Line().setObjectName(name);
    field->SetValue(m_design.*text);
    connect(field, &ExpressionField::Edited, this, [this, field, text] { m_design.*text = field->Value(); });
    field->SetOpener([this, title, text] {
        return Ask(title, m_design.*text,
                   [text](ChartDesign& design, const std::string& value) { design.*text = value; });
    });
    return field;
}

QWidget* ChartDialog::MakeLookPage() {
    auto* page = new QWidget(m_tabs);
    auto* form = new QFormLayout(page);
    AddFieldRow(*form, tr("T&itle:"), MakeTitle(tr("Title"), "chartTitle", &ChartDesign::title));
    AddFieldRow(*form, tr("&Category axis:"),
                MakeTitle(tr("Title of the category axis"), "categoryTitle", &ChartDesign::categoryTitle));
    AddFieldRow(*form, tr("&Value axis:"),
                MakeTitle(tr("Title of the value axis"), "valueTitle", &ChartDesign::valueTitle));
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
    using Part = ChartDataPage::Part;
    const bool isLabel = part == Part::Values && name == "Label";
    const auto place = [part, entry, name, isLabel](ChartDesign& design) -> std::string& {
        if (part != Part::Values) {
            return (part == Part::Categories ? design.categories : design.series).at(entry).expression;
        }
        return isLabel ? design.values.at(entry).label : design.values.at(entry).values[name];
    };
    const QString title = part == Part::Categories ? tr("Category")
                          : part == Part::Series   ? tr("Series group")
                          : isLabel                ? tr("Name in the legend")
                                                   : tr("Value");
    return Ask(title, place(m_design),
               [place](ChartDesign& design, const std::string& value) { place(design) = value; });
}

// Looks whether the chart can be as it is shown, and says why not.
bool ChartDialog::IsComplete() {
    const auto refuse = [this](ChartDataPage::Part part, std::size_t entry, const QString& text) {
        m_tabs->setCurrentWidget(m_data);
        m_note->ShowFault(text);
        m_data->Choose(part, entry);
        return false;
    };
    const std::vector<std::string> names = ValueNamesOf(m_design);
    for (std::size_t entry = 0; entry < m_design.values.size(); ++entry) {
        const auto& values = m_design.values[entry].values;
        const auto found = values.find(names.front());
        if (TypeOf(m_design) && (found == values.end() || found->second.empty())) {
            return refuse(ChartDataPage::Part::Values, entry,
                          tr("Value %1 has no expression").arg(entry + 1));
        }
    }
    for (const auto part : {ChartDataPage::Part::Categories, ChartDataPage::Part::Series}) {
        const auto& groups = part == ChartDataPage::Part::Categories ? m_design.categories : m_design.series;
        for (std::size_t entry = 0; entry < groups.size(); ++entry) {
            const std::string& text = groups[entry].expression;
            const bool isName = part == ChartDataPage::Part::Categories && !m_isOlder && !text.empty() &&
                                text.front() != '=' && groups.size() > 1;
            if (!isName && (text.size() < 2 || text.front() != '=')) {
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
    const std::string fault = FaultOfEdit(m_model, [this](Document& copy) {
        PutChartDesign(copy, InCopy(m_model.Source(), m_chart, copy),
                       DesignInCopy(m_model.Source(), m_design, copy));
    });
    if (!fault.empty()) {
        m_note->ShowFault(QString::fromStdString(fault));
        m_tabs->setFocus();
    }
    return fault.empty();
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
