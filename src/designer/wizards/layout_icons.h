// SPDX-License-Identifier: GPL-3.0-or-later
// Small drawings of the layouts of new reports.
#pragma once

#include <QIcon>
#include <QPalette>

#include "designer/new_report/new_report.h"

namespace designer {

inline constexpr int LayoutIconWidth = 56, LayoutIconHeight = 42;

QIcon LayoutIcon(ReportLayout layout, const QPalette& palette);

}  // namespace designer
