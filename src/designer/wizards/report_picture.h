// SPDX-License-Identifier: GPL-3.0-or-later
// The first page of a report that is being made, drawn by the engine with rows that were read already.
#pragma once

#include <QImage>
#include <QTemporaryFile>
#include <QWidget>
#include <memory>

#include "designer/wizards/report_draft.h"
#include "platform/contracts/report_engine.h"

namespace designer {

class ReportPicture : public QWidget {
 public:
    explicit ReportPicture(QWidget* parent = nullptr);
    // Returns false if there is no picture: Failure says why.
    bool ShowReport(const ReportDraft& draft);
    const QString& Failure() const { return m_failure; }
    bool HasPage() const { return m_pages != nullptr; }

    QSize sizeHint() const override;

 protected:
    void paintEvent(QPaintEvent* event) override;

 private:
    QRectF Paper() const;  // on the widget
    void Render();

    QTemporaryFile m_rows;
    std::shared_ptr<report::Report> m_report;  // outlives its pages
    std::unique_ptr<report::PageView> m_pages;
    QImage m_image;
    QString m_failure;
};

}  // namespace designer
