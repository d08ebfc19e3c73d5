// SPDX-License-Identifier: GPL-3.0-or-later
// Members of DesignWindow: what is asked of charts, gauges, bar codes and subreports, when they are new and
// later.
#include <QFileDialog>
#include <QFileInfo>

#include "designer/graphic_dialogs/barcode_dialog.h"
#include "designer/graphic_dialogs/chart_dialog.h"
#include "designer/graphic_dialogs/chart_gallery.h"
#include "designer/graphic_dialogs/gauge_dialog.h"
#include "designer/graphic_dialogs/subreport_dialog.h"
#include "designer/graphics/part_tree.h"
#include "designer/tables/fields.h"
#include "designer/window/design_window.h"

namespace designer {
namespace {

// Returns the name of the file in the report, relative to the folder of the report if the file is in it or
// below.
QString NameInReport(const QString& file, const std::filesystem::path& report) {
    if (report.empty()) {
        return file;
    }
    const QDir folder(QString::fromStdString(report.parent_path().string()));
    const QString relative = folder.relativeFilePath(file);
    return relative.startsWith("..") ? file : relative;
}

}  // namespace

void DesignWindow::ConnectGraphics() {
    m_canvas->SetAsker([this](NewItem kind, GraphicChoice& choice) { return AskFor(kind, choice); });
    connect(m_canvas, &DesignCanvas::DesignRequested, this, &DesignWindow::DesignItem);
}

// A part of a chart or gauge has the dialog of its item.
ElementId DesignWindow::WithDialog(ElementId id) const {
    return m_model->Item(id) ? id : OwnerOfPart(m_model->Source(), id);
}

bool DesignWindow::HasDialog(ElementId part) const {
    const Document& document = m_model->Source();
    const ElementId id = WithDialog(part);
    const ReportItem* item = m_model->Item(id);
    return item && ((item->kind == "Chart" && HasChartDesign(document, id)) || item->kind == "GaugePanel" ||
                    item->kind == "Subreport" || HasBarcodeDesign(document, id));
}

void DesignWindow::DesignItem(ElementId part) {
    FinishTyping();
    if (!HasDialog(part)) {
        return;
    }
    const ElementId id = WithDialog(part);
    const std::string kind = m_model->Item(id)->kind;
    if (kind == "Chart") {
        ChartDialog(*m_model, id, this).exec();
    } else if (kind == "GaugePanel") {
        GaugeDialog(*m_model, id, this).exec();
    } else if (kind == "Subreport") {
        SubreportDialog(
            *m_model, id, [this] { return AskForSubreport(); }, this)
            .exec();
    } else {
        BarcodeDialog(*m_model, id, this).exec();
    }
}

bool DesignWindow::AskFor(NewItem kind, GraphicChoice& choice) {
    if (kind == NewItem::Subreport) {
        choice.report = AskForSubreport().toStdString();
        return !choice.report.empty();
    }
    // Without a data set the document refuses the chart, and says so.
    if (kind != NewItem::Chart || SetsOf(m_model->Source()).empty()) {
        return true;
    }
    NewChartDialog dialog(m_model->Source(), this);
    choice = dialog.exec() == QDialog::Accepted ? dialog.Choice() : GraphicChoice{};
    return dialog.result() == QDialog::Accepted;
}

QString DesignWindow::AskForSubreport() {
    const QString folder = QString::fromStdString(m_model->File().parent_path().string());
    const QString file = QFileDialog::getOpenFileName(this, tr("Subreport"), folder,
                                                      tr("Reports (*.rdl *.rdlc *.rpt);;All files (*)"));
    return file.isEmpty() ? file : NameInReport(file, m_model->File());
}

}  // namespace designer
