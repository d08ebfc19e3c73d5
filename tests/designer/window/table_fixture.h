// SPDX-License-Identifier: GPL-3.0-or-later
// A window over a report with the table T.
#pragma once

#include <string>

#include "../tables/small_tables.h"
#include "designer/document/tablix_grid.h"
#include "window_fixture.h"

namespace designer::test {

class TableWindowTest : public WindowTest {
 protected:
    explicit TableWindowTest(const std::string& report = Placed(Report(ListTablix()))) : WindowTest(report) {}
    TablixGrid Grid() { return GridOf(Model().Source(), Id("T")); }
    std::string Widths() {
        std::string text;
        for (const GridTrack& column : Grid().columns) {
            text += Model().Source().TextAt(column.element, "Width").value_or("-") + " ";
        }
        return text;
    }
};

}  // namespace designer::test
