// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/canvas/design_picture.h"

#include <algorithm>
#include <chrono>
#include <utility>

#include "platform/contracts/runtime.h"
#include "platform/reports/rdl_engine.h"
#include "platform/reports/rdl_report.h"

namespace designer {
namespace {

constexpr int MostAttempts = 40;  // each lays the report out without one item more
constexpr std::chrono::seconds MostTime{5};
constexpr std::chrono::seconds MostTries{2};  // no further attempt begins after these
constexpr std::int64_t MostMegabytes = 1024;

// Leaves what the message names out of the next attempt. Returns false if nothing more can be left out.
bool LeaveOut(const Document& document, const std::string& message, DesignOptions& options) {
    const ElementId item = ItemNamedIn(document, message);
    if (item != NoElement) {
        return options.boxes.insert(item).second;
    }
    const std::string picture = PictureNamedIn(document, message);
    return !picture.empty() && options.pictures.insert(picture).second;
}

}  // namespace

void DesignPicture::Make(const DesignModel& model) {
    m_failures.clear();
    const auto begin = std::chrono::steady_clock::now();
    DesignOptions options;
    options.folder = model.File().parent_path();
    for (int attempt = 0; attempt < MostAttempts; ++attempt) {
        DesignCopy copy = MakeDesignCopy(model.Source(), options);
        m_pages.reset();
        try {
            const auto report = reports::OpenRdlText(copy.text, model.RunName());
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
            m_failures.push_back(error.Description());
            if (!LeaveOut(model.Source(), error.Description(), options) ||
                std::chrono::steady_clock::now() - begin > MostTries) {
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
        if (std::find(m_failures.begin(), m_failures.end(), error.Description()) == m_failures.end()) {
            m_failures.push_back(error.Description());
        }
    }
    painter.restore();
}

}  // namespace designer
