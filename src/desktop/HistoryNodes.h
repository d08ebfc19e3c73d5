// The nodes of the Schedule History window. A node's image says what it is, and the number at the start of a
// text names its row.
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

// 91 for a node at the root.
const Node& ParentOf(const Node& node);

// The text that names the schedule of a node: its own when it is a schedule, or when it holds a number with a
// colon but no time, "5: Sales"; else its parent's, 91 when there is none.
std::string ScheduleText(const Node& node);

}  // namespace history
