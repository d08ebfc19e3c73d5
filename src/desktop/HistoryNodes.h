// SPDX-License-Identifier: GPL-3.0-or-later
// The nodes of the Schedule History window. A node's image gives its kind; the number at the start of its
// text is the key of its row.
#pragma once

#include <string>

class Node;

namespace history {

// In the tree of schedules a ReportNode is a schedule; in the tree of packages it is a report of a package.
inline constexpr int ReportNode = 5;
inline constexpr int FailedRunNode = 7;
inline constexpr int NextRunNode = 8;
inline constexpr int RunNode = 9;
inline constexpr int FrequencyNode = 10;
inline constexpr int SelectedFrequency = 11;  // the picture of a frequency while it is selected
inline constexpr int PackageNode = 12;

// Returns the parent of a node. Raises 91 for a node at the root.
const Node& ParentOf(const Node& node);

// Returns the text that names the schedule of a node. That is its own text if the node is a schedule, or if
// the text holds a number and a colon that is not part of a time ("5: Sales"). Otherwise it is the parent's
// text; raises 91 if there is no parent.
std::string ScheduleText(const Node& node);

}  // namespace history
