// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/canvas/design_picture.h"

#include <chrono>
#include <utility>

#include "platform/contracts/runtime.h"
#include "platform/reports/rdl_engine.h"
#include "platform/reports/rdl_report.h"

namespace designer {
namespace {

constexpr int MostAttempts = 8;  // each lays the report out without one item more
constexpr std::chrono::seconds MostTime{5};
constexpr std::int64_t MostMegabytes = 1024;

}  // namespace

void DesignPicture::Make(const DesignModel& model) {
    m_failure.clear();
    DesignOptions options;
    options.folder = model.File().parent_path();
    for (int attempt = 0; attempt < MostAttempts; ++attempt) {
        DesignCopy copy = MakeDesignCopy(model.Source(), options);
        m_pages.reset();
        try {
            const auto report =
                reports::OpenRdlText(copy.text, model.File().empty() ? "report.rdl" : model.File());
            report->SetRunBounds({MostTime, MostTime, MostMegabytes});
            m_report = report;
            m_pages = m_report->OpenPages();
            const int last = copy.bands.empty() ? 1 : copy.bands.back().page;
            m_pages->Reach(last);
            m_bands = std::move(copy.bands);
            if (m_bands.size() != model.Items().bands.size()) {
                m_pages.reset();  // a body is missing
            }
            return;
        } catch (const RuntimeError& error) {
            m_pages.reset();
            if (m_failure.empty()) {
                m_failure = error.Description();
            }
            const ElementId item = ItemNamedIn(model.Source(), error.Description());
            if (item == NoElement || !options.boxes.insert(item).second) {
                return;
            }
        }
    }
}

void DesignPicture::PaintBand(std::size_t band, QPainter& painter) {
    if (!m_pages || band >= m_bands.size() || m_bands[band].page > m_pages->PagesMade()) {
        return;
    }
    const Rect& place = m_bands[band].place;
    painter.save();
    painter.setClipRect(QRectF(0, 0, place.width, place.height), Qt::IntersectClip);
    painter.translate(-place.left, -place.top);
    try {
        m_pages->Draw(m_bands[band].page, painter);
    } catch (const RuntimeError& error) {
        m_failure = error.Description();
    }
    painter.restore();
}

}  // namespace designer
