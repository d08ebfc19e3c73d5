// SPDX-License-Identifier: GPL-3.0-or-later
// What the engine draws of a report's design: the pages of its design copy, band by band. An item that the
// engine refuses is a plain box.
#pragma once

#include <QPainter>
#include <memory>
#include <string>
#include <vector>

#include "designer/document/design_copy.h"
#include "designer/model/design_model.h"
#include "platform/contracts/report_engine.h"

namespace designer {

class DesignPicture {
 public:
    // Lays the report out as it is now. If that fails there is no picture. Failures says why, and why
    // the items that are boxes are.
    void Make(const DesignModel& model);
    const std::vector<std::string>& Failures() const { return m_failures; }
    bool IsThere() const { return m_pages != nullptr; }

    // Draws a band of the model's Items at the painter's origin, one point as one unit. An item that
    // cannot be drawn is omitted, and Failures says why.
    void PaintBand(std::size_t band, QPainter& painter);

 private:
    std::shared_ptr<report::Report> m_report;  // outlives its pages
    std::unique_ptr<report::PageView> m_pages;
    std::vector<DesignBand> m_bands;
    std::vector<std::string> m_failures;
};

}  // namespace designer
