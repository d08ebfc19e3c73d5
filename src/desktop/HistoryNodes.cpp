// SPDX-License-Identifier: GPL-3.0-or-later
#include "desktop/HistoryNodes.h"

#include <regex>

#include "platform/contracts/runtime.h"
#include "platform/controls/items/tree_view.h"

namespace history {

const Node& ParentOf(const Node& node) {
    if (node.Parent() == nullptr) {
        throw RuntimeError(err::ObjectNotSet);
    }
    return *node.Parent();
}

std::string ScheduleText(const Node& node) {
    static const std::regex number("[0-9]:"), time("[0-9]:[0-9][0-9]:");
    const std::string text = node.Text();
    if (node.Image() == ReportNode) {
        return text;  // also for a title that holds a time
    }
    const bool namesSchedule = std::regex_search(text, number) && !std::regex_search(text, time);
    return namesSchedule ? text : ParentOf(node).Text();
}

}  // namespace history
