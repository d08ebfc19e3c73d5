// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/wizards/report_picture.h"

#include <QCoreApplication>
#include <QPainter>
#include <algorithm>

#include "designer/dialogs/row_text.h"
#include "designer/new_report/parts.h"
#include "platform/base/paths.h"
#include "platform/contracts/runtime.h"
#include "platform/reports/rdl_engine.h"
#include "platform/reports/rdl_report.h"

namespace designer {
namespace {

constexpr std::size_t MostRows = 200;  // more than a page of most layouts
constexpr int MostPages = 100;         // that are made for their number
constexpr int Margin = 8;

// The headings of the rows are the names of the fields.
std::vector<std::string> FieldsOf(const ReportDraft& draft) {
    std::vector<std::string> fields(draft.rows.columns.size());
    for (std::size_t index = 0; index < fields.size(); ++index) {
        const auto& columns = draft.report.columns;
        const auto found = std::find_if(columns.begin(), columns.end(), [&](const ReportColumn& column) {
            return column.name == draft.rows.columns[index];
        });
        fields[index] = found == columns.end() ? std::string() : found->field;
    }
    return fields;
}

}  // namespace

ReportPicture::ReportPicture(QWidget* parent) : QWidget(parent) {
    setObjectName("picture");
    setAccessibleName(QCoreApplication::translate("ReportPicture", "The first page"));
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

QSize ReportPicture::sizeHint() const {
    const int unit = fontMetrics().height();
    return {unit * 20, unit * 26};
}

bool ReportPicture::ShowReport(const ReportDraft& draft) {
    m_failure.clear();
    m_image = {};
    m_pages.reset();
    try {
        const std::string text = NewReportText(draft.report);
        const std::string csv = CsvOf(draft.rows, FieldsOf(draft), MostRows);
        if (!m_rows.open() || !m_rows.resize(0) ||
            m_rows.write(csv.data(), static_cast<qint64>(csv.size())) < 0 || !m_rows.flush()) {
            throw RuntimeError(err::DeviceIo, m_rows.errorString().toStdString());
        }
        const auto report = reports::OpenRdlText(text, "report.rdl");
        report->SetRows(std::string(DataSetName), paths::FromMachine(m_rows.fileName().toStdString()));
        m_report = report;
        m_pages = m_report->OpenPages();
        m_pages->Reach(1);
        if (m_pages->WaitsForTotal()) {
            m_pages->Reach(MostPages);
        }
    } catch (const RuntimeError& error) {
        m_pages.reset();
        m_failure = QString::fromStdString(error.Description());
    }
    update();
    return m_pages != nullptr;
}

QRectF ReportPicture::Paper() const {
    const QSizeF page(m_pages->Width(1), m_pages->Height(1));
    const QSizeF size = page.scaled(QSizeF(width() - 2 * Margin, height() - 2 * Margin), Qt::KeepAspectRatio);
    return {QPointF((width() - size.width()) / 2, (height() - size.height()) / 2), size};
}

void ReportPicture::Render() {
    const QSize pixels = (Paper().size() * devicePixelRatioF()).toSize();
    if (m_image.size() == pixels || pixels.isEmpty()) {
        return;
    }
    m_image = QImage(pixels, QImage::Format_RGB32);
    m_image.fill(Qt::white);
    QPainter painter(&m_image);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing |
                           QPainter::SmoothPixmapTransform);
    const double scale = pixels.width() / m_pages->Width(1);
    painter.scale(scale, scale);
    try {
        m_pages->Draw(1, painter);
    } catch (const RuntimeError& error) {
        m_failure = QString::fromStdString(error.Description());
    }
}

void ReportPicture::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    if (!m_pages) {
        painter.drawText(rect().adjusted(Margin, Margin, -Margin, -Margin),
                         Qt::AlignCenter | Qt::TextWordWrap, m_failure);
        return;
    }
    Render();
    const QRectF paper = Paper();
    painter.fillRect(paper.translated(3, 3), QColor(0, 0, 0, 60));
    painter.drawImage(paper, m_image);
    painter.setPen(palette().color(QPalette::Mid));
    painter.drawRect(paper);
}

}  // namespace designer
