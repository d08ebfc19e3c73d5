// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/graphic_dialogs/subreport_dialog.h"

#include <QFormLayout>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <algorithm>

#include "designer/dialogs/form_row.h"
#include "designer/dialogs/note.h"
#include "designer/document/report_file.h"
#include "designer/graphic_dialogs/parts_table.h"
#include "designer/graphic_dialogs/report_copy.h"
#include "designer/tables/tablix_shape.h"
#include "platform/base/ascii.h"
#include "platform/contracts/runtime.h"
#include "platform/reports/failure.h"
#include "platform/reports/machine_host.h"
#include "rdl/api/subreport_file.h"

namespace designer {

SubreportDialog::SubreportDialog(DesignModel& model, ElementId subreport, std::function<QString()> choose,
                                 QWidget* parent)
    : ItemDialog(model, subreport, tr("Subreport"), parent), m_choose(std::move(choose)) {
    setObjectName("subreportDialog");
    const SubreportDesign design = ReadSubreportDesign(model.Source(), subreport);
    auto* line = new QWidget(this);
    m_report = new QLineEdit(QString::fromStdString(design.report), line);
    m_report->setObjectName("subreportFile");
    m_report->setAccessibleName(tr("Report"));
    auto* file = new QPushButton(tr("&File..."), line);
    file->setObjectName("chooseFile");
    file->setAutoDefault(false);
    auto* parts = new QHBoxLayout(line);
    parts->setContentsMargins(0, 0, 0, 0);
    parts->addWidget(m_report, 1);
    parts->addWidget(file);
    line->setFocusProxy(m_report);
    AddFieldRow(Form(), tr("Re&port:"), line);
    m_parameters = new PartsTable(tr("Para&meters:"), {tr("Name"), tr("Value")}, this);
    Below().addWidget(m_parameters, 1);
    std::vector<PartsRow> rows;
    for (const SubreportParameter& one : design.parameters) {
        rows.push_back({one.old, {QString::fromStdString(one.name), QString::fromStdString(one.value)}});
    }
    m_parameters->SetRows(rows);
    auto* expression = m_parameters->AddButton(tr("f&x"));
    expression->setObjectName("parameterExpression");
    expression->setAccessibleName(tr("Expression of the parameter"));
    auto* fill = m_parameters->AddButton(tr("&Those of the File"));
    fill->setObjectName("parametersOfFile");
    connect(expression, &QPushButton::clicked, this, &SubreportDialog::OpenExpression);
    connect(fill, &QPushButton::clicked, this, &SubreportDialog::AddParameters);
    connect(file, &QPushButton::clicked, this, [this] {
        const QString name = m_choose();
        if (!name.isEmpty()) {
            m_report->setText(name);
            AddParameters();
        }
    });
}

SubreportDesign SubreportDialog::Design() const {
    SubreportDesign design{m_report->text().trimmed().toStdString(), {}};
    for (const PartsRow& row : m_parameters->Rows()) {
        design.parameters.push_back({row.old, row.texts[0].toStdString(), row.texts[1].toStdString()});
    }
    return design;
}

void SubreportDialog::Write(Document& document, ElementId subreport) const {
    const SubreportDesign design = Design();
    if (design.report.empty()) {
        throw EditError("The subreport needs the file of a report");
    }
    for (const SubreportParameter& one : design.parameters) {
        if (one.name.empty()) {
            throw EditError("The parameter with the value \"" + one.value + "\" has no name");
        }
    }
    PutSubreportDesign(document, subreport, design);
}

void SubreportDialog::OpenExpression() {
    QTableWidget& table = m_parameters->Table();
    const int row = table.currentRow();
    if (row < 0) {
        return;
    }
    const int old = m_parameters->Rows()[static_cast<std::size_t>(row)].old;
    const auto value = EditInCopy(
        Model(),
        [&](Document& copy) {
            const ElementId item = InCopy(Source(), Item(), copy);
            // Removed ones are still there, so that the numbers are those of the report.
            SubreportDesign design = ReadSubreportDesign(copy, item);
            const QString text = table.item(row, 1)->text();
            if (old < 0) {
                design.parameters.push_back({-1, "NewParameter", text.toStdString()});
            } else {
                design.parameters[static_cast<std::size_t>(old)].value = text.toStdString();
            }
            PutSubreportDesign(copy, item, design);
            const auto made = ChildrenNamed(copy, item, "Parameters", "Parameter");
            return old < 0 ? made.back() : made[static_cast<std::size_t>(old)];
        },
        "Value", this);
    if (value) {
        table.item(row, 1)->setText(QString::fromStdString(*value));
    }
}

void SubreportDialog::AddParameters() {
    try {
        reports::UseMachineHost();
        const std::string name = m_report->text().trimmed().toStdString();
        const auto file = reports::Translated([&] { return rdl::SubreportFile(name, Model().File()); });
        AddMissing(ParametersOfReport(ReadReportFile(file)));
        Message().Clear();
    } catch (const RuntimeError& error) {
        Message().ShowFault(QString::fromStdString(error.Description()));
    } catch (const SourceFlaw& flaw) {
        Message().ShowFault(QString::fromUtf8(flaw.what()));
    }
}

void SubreportDialog::AddMissing(const std::vector<std::string>& parameters) {
    for (const std::string& parameter : parameters) {
        const std::vector<PartsRow> rows = m_parameters->Rows();
        if (std::none_of(rows.begin(), rows.end(), [&](const PartsRow& row) {
                return SameAscii(row.texts[0].toStdString(), parameter);
            })) {
            m_parameters->AddRow({-1, {QString::fromStdString(parameter), QString()}});
        }
    }
}

}  // namespace designer
