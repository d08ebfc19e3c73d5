// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/graphic_dialogs/gauge_dialog.h"

#include <QColorDialog>
#include <QPushButton>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include "designer/graphic_dialogs/expression_field.h"
#include "designer/graphic_dialogs/parts_table.h"

namespace designer {
namespace {

constexpr int ColourColumn = 2;

}  // namespace

GaugeDialog::GaugeDialog(DesignModel& model, ElementId panel, QWidget* parent)
    : ItemDialog(model, panel, tr("Gauge"), parent),
      m_design(ReadGaugeDesign(model.Source(), panel).value_or(GaugeDesign{})) {
    setObjectName("gaugeDialog");
    const auto scale = [](const Document& document, ElementId item) { return GaugeScaleOf(document, item); };
    m_value = AddLine(
        tr("&Value:"), "gaugeValue", m_design.value,
        [](const Document& document, ElementId item) { return GaugePointerOf(document, item); },
        "GaugeInputValue/Value");
    m_least = AddLine(tr("&Minimum:"), "gaugeLeast", m_design.least, scale, "MinimumValue/Value");
    m_most = AddLine(tr("Ma&ximum:"), "gaugeMost", m_design.most, scale, "MaximumValue/Value");
    QStringList heads{tr("From"), tr("To"), tr("Colour")};
    if (m_design.isIndicator) {
        heads.append(tr("Icon"));
    }
    m_ranges = new PartsTable(m_design.isIndicator ? tr("&States:") : tr("Ran&ges:"), heads, this);
    Below().addWidget(m_ranges, 1);
    auto* colour = m_ranges->AddButton(tr("&Colour..."));
    colour->setObjectName("colour");
    connect(colour, &QPushButton::clicked, this, &GaugeDialog::ChooseColour);
    connect(&m_ranges->Table(), &QTableWidget::itemChanged, this, &GaugeDialog::ShowColours);
    ShowRanges();
}

void GaugeDialog::ShowRanges() {
    std::vector<PartsRow> rows;
    for (const GaugeRange& range : m_design.ranges) {
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

void GaugeDialog::Write(Document& document, ElementId panel) const {
    GaugeDesign design = m_design;
    design.value = m_value->Value();
    design.least = m_least->Value();
    design.most = m_most->Value();
    design.ranges.clear();
    for (const PartsRow& row : m_ranges->Rows()) {
        design.ranges.push_back({row.old, row.texts[0].toStdString(), row.texts[1].toStdString(),
                                 row.texts[2].toStdString(), row.texts.value(3).toStdString()});
    }
    PutGaugeDesign(document, panel, design);
}

}  // namespace designer
