// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/graphic_dialogs/gauge_dialog.h"

#include <QColorDialog>
#include <QComboBox>
#include <QFormLayout>
#include <QPushButton>
#include <QSignalBlocker>
#include <QVBoxLayout>
#include <algorithm>
#include <initializer_list>

#include "designer/graphic_dialogs/expression_field.h"
#include "designer/graphic_dialogs/parts_table.h"
#include "designer/graphic_dialogs/report_copy.h"

namespace designer {
namespace {

constexpr int ColourColumn = 2, IconColumn = 3;

}  // namespace

GaugeDialog::GaugeDialog(DesignModel& model, ElementId panel, QWidget* parent)
    : ItemDialog(model, panel, tr("Gauge"), parent),
      m_designs(ReadGauges(model.Source(), panel)),
      m_gauges(new QComboBox(this)),
      m_kind(new QComboBox(this)) {
    setObjectName("gaugeDialog");
    BuildGauges();
    const auto gauge = [this](const Document& document, ElementId item) { return Shown(document, item); };
    const auto scale = [gauge](const Document& document, ElementId item) {
        const ElementId found = gauge(document, item);
        return found == NoElement ? NoElement : GaugeScaleOf(document, found);
    };
    m_value = AddLine(
        tr("&Value:"), "gaugeValue", {},
        [gauge](const Document& document, ElementId item) {
            const ElementId found = gauge(document, item);
            return found == NoElement ? NoElement : GaugePointerOf(document, found);
        },
        "GaugeInputValue/Value");
    m_least = AddLine(tr("&Minimum:"), "gaugeLeast", {}, scale, "MinimumValue/Value");
    m_most = AddLine(tr("Ma&ximum:"), "gaugeMost", {}, scale, "MaximumValue/Value");
    m_ranges =
        new PartsTable(tr("Ran&ges or states:"), {tr("From"), tr("To"), tr("Colour"), tr("Icon")}, this);
    Below().addWidget(m_ranges, 1);
    auto* colour = m_ranges->AddButton(tr("&Colour..."));
    colour->setObjectName("colour");
    connect(colour, &QPushButton::clicked, this, &GaugeDialog::ChooseColour);
    connect(&m_ranges->Table(), &QTableWidget::itemChanged, this, &GaugeDialog::ShowColours);
    m_current = m_designs.empty() ? -1 : 0;
    ShowGauges();
}

// The gauge that is shown, in a copy to which all were written: new ones are the last of their kind.
ElementId GaugeDialog::Shown(const Document& document, ElementId panel) const {
    if (m_current < 0) {
        return NoElement;
    }
    const auto current = m_designs.begin() + m_current;
    const auto after = std::count_if(current + 1, m_designs.end(), [&](const GaugeDesign& one) {
        return one.gauge == NoElement && one.kind == current->kind;
    });
    std::vector<GaugeDesign> written = ReadGauges(document, panel);
    std::erase_if(written, [&](const GaugeDesign& one) {
        return one.kind != current->kind || (current->gauge != NoElement && one.name != current->name);
    });
    const auto number = static_cast<std::size_t>(current->gauge == NoElement ? after : 0);
    return number < written.size() ? written[written.size() - 1 - number].gauge : NoElement;
}

void GaugeDialog::BuildGauges() {
    m_gauges->setObjectName("gauges");
    m_kind->setObjectName("gaugeKind");
    auto* buttons = new QHBoxLayout;
    const auto add = [&](const QString& text, const char* name, auto work) {
        auto* button = new QPushButton(text, this);
        button->setObjectName(name);
        button->setAutoDefault(false);
        connect(button, &QPushButton::clicked, this, work);
        buttons->addWidget(button);
        return button;
    };
    add(tr("Add &Dial"), "addDial", [this] { Add(GaugeKind::Dial); });
    add(tr("Add &Linear Gauge"), "addLinear", [this] { Add(GaugeKind::Linear); });
    add(tr("Add &Indicator"), "addIndicator", [this] { Add(GaugeKind::Indicator); });
    m_remove = add(tr("R&emove It"), "removeGauge", [this] { RemoveGauge(); });
    buttons->addStretch(1);
    Form().addRow(tr("Ga&uge:"), m_gauges);
    Form().addRow(QString(), buttons);
    Form().addRow(tr("&Kind:"), m_kind);
    connect(m_gauges, &QComboBox::currentIndexChanged, this, [this](int index) {
        m_designs = Designs();
        m_current = index;
        ShowGauge();
    });
    connect(m_kind, &QComboBox::currentIndexChanged, this, [this](int index) {
        GaugeDesign& design = m_designs.at(static_cast<std::size_t>(m_current));
        design.kind = design.kind == GaugeKind::Indicator ? design.kind
                      : index == 0                        ? GaugeKind::Dial
                                                          : GaugeKind::Linear;
    });
}

// A new one begins with the value and the limits of the one that is shown.
void GaugeDialog::Add(GaugeKind kind) {
    m_designs = Designs();
    GaugeDesign design{.kind = kind, .name = tr("(new %1)").arg(m_designs.size() + 1).toStdString()};
    if (m_current >= 0) {
        const GaugeDesign& like = m_designs[static_cast<std::size_t>(m_current)];
        design.value = like.value;
        design.least = like.least;
        design.most = like.most;
    }
    m_designs.push_back(design);
    m_current = static_cast<int>(m_designs.size()) - 1;
    ShowGauges();
}

// The last one stays: a panel without any is no gauge.
void GaugeDialog::RemoveGauge() {
    m_designs.erase(m_designs.begin() + m_current);
    m_current = std::min(m_current, static_cast<int>(m_designs.size()) - 1);
    ShowGauges();
}

void GaugeDialog::ShowGauges() {
    {
        const QSignalBlocker quiet(m_gauges);
        m_gauges->clear();
        for (const GaugeDesign& design : m_designs) {
            const QString kind = design.kind == GaugeKind::Dial     ? tr("Dial")
                                 : design.kind == GaugeKind::Linear ? tr("Linear gauge")
                                                                    : tr("Indicator");
            m_gauges->addItem(kind + " " + QString::fromStdString(design.name));
        }
        m_gauges->setCurrentIndex(m_current);
    }
    m_remove->setEnabled(m_designs.size() > 1);
    ShowGauge();
}

void GaugeDialog::ShowGauge() {
    const bool isThere = m_current >= 0;
    const GaugeDesign design = isThere ? m_designs[static_cast<std::size_t>(m_current)] : GaugeDesign{};
    const bool isIndicator = design.kind == GaugeKind::Indicator;
    const QSignalBlocker quiet(m_kind);
    m_kind->clear();
    m_kind->addItems(isIndicator ? QStringList(tr("Indicator"))
                                 : QStringList({tr("Dial"), tr("Linear gauge")}));
    m_kind->setCurrentIndex(design.kind == GaugeKind::Linear ? 1 : 0);
    m_kind->setEnabled(isThere && !isIndicator);
    m_value->SetValue(design.value);
    m_least->SetValue(design.least);
    m_most->SetValue(design.most);
    for (QWidget* part : std::initializer_list<QWidget*>{m_value, m_least, m_most, m_ranges}) {
        part->setEnabled(isThere);
    }
    m_ranges->Table().setColumnHidden(IconColumn, !isIndicator);
    ShowRanges();
}

void GaugeDialog::ShowRanges() {
    std::vector<PartsRow> rows;
    const auto ranges =
        m_current < 0 ? std::vector<GaugeRange>{} : m_designs[static_cast<std::size_t>(m_current)].ranges;
    for (const GaugeRange& range : ranges) {
        PartsRow& row = rows.emplace_back();
        row.old = range.old;
        for (const std::string* text : {&range.from, &range.to, &range.colour, &range.icon}) {
            row.texts.append(QString::fromStdString(*text));
        }
    }
    m_ranges->SetRows(rows);
    ShowColours();
}

// A small square in front of each colour.
void GaugeDialog::ShowColours() {
    QTableWidget& table = m_ranges->Table();
    const QSignalBlocker quiet(&table);
    for (int row = 0; row < table.rowCount(); ++row) {
        QTableWidgetItem* cell = table.item(row, ColourColumn);
        const QColor colour = cell ? QColor::fromString(cell->text().trimmed()) : QColor();
        if (cell) {
            cell->setData(Qt::DecorationRole, colour.isValid() ? QVariant(colour) : QVariant());
        }
    }
}

void GaugeDialog::ChooseColour() {
    QTableWidget& table = m_ranges->Table();
    QTableWidgetItem* cell = table.item(table.currentRow(), ColourColumn);
    if (!cell) {
        return;
    }
    const QColor colour = QColorDialog::getColor(QColor::fromString(cell->text()), this, tr("Colour"));
    if (colour.isValid()) {
        cell->setText(colour.name());
    }
}

std::vector<GaugeDesign> GaugeDialog::Designs() const {
    std::vector<GaugeDesign> designs = m_designs;
    if (m_current < 0) {
        return designs;
    }
    GaugeDesign& design = designs.at(static_cast<std::size_t>(m_current));
    design.value = m_value->Value();
    design.least = m_least->Value();
    design.most = m_most->Value();
    design.ranges.clear();
    for (const PartsRow& row : m_ranges->Rows()) {
        design.ranges.push_back({row.old, row.texts[0].toStdString(), row.texts[1].toStdString(),
                                 row.texts[2].toStdString(), row.texts.value(3).toStdString()});
    }
    return designs;
}

// The ids of the designs are those of the report.
void GaugeDialog::Write(Document& document, ElementId panel) const {
    std::vector<GaugeDesign> designs = Designs();
    for (GaugeDesign& design : designs) {
        if (&document != &Source() && design.gauge != NoElement) {
            design.gauge = InCopy(Source(), design.gauge, document);
        }
    }
    PutGauges(document, panel, designs);
}

}  // namespace designer
