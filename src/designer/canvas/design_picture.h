// SPDX-License-Identifier: GPL-3.0-or-later
// What the engine draws of a report's design: the pages of its design copy, band by band.
#pragma once

#include <QPainter>
#include <memory>
#include <string>
#include <vector>

#include "designer/model/design_model.h"
#include "platform/contracts/report_view.h"

namespace designer {

class DesignPicture {
 public:
    // Lays the report out as it is now. If that fails there is no picture, and Failure says why.
    void Make(const DesignModel& model);
    const std::string& Failure() const { return m_failure; }
    bool IsThere() const { return !m_pages.empty(); }

    // Draws a band of the model's Items at the painter's origin, one point as one unit. What cannot be drawn is left
    // out, and Failure says why.
    void PaintBand(const ReportItems& items, std::size_t band, QPainter& painter);

 private:
    std::vector<std::unique_ptr<report::PageView>> m_pages;  // one view for each section
    std::string m_failure;
};

}  // namespace designer
