// SPDX-License-Identifier: GPL-3.0-or-later
// The pictures of the Desktop windows, by the numbers that give the kind of an item.
#pragma once

#include "platform/controls/items/image_list.h"

// Pictures of items and nodes of the Desktop: 1 folder, 2 report, 3 root of the tree, 4 folder of the tree, 9
// package, 10 report of a package.
const ImageList& ItemImages();

// Pictures of the toolbar's buttons, by position: 1 New Folder, 2 New Report, 3 New Package, 5 Preview, 6
// Delete, 8 History, 9 Design, 10 Options, 11 Help.
const ImageList& ToolbarImages();

// Pictures of the history window, which has numbers of its own: 5 report, 7 failed run, 8 next run, 9
// successful run, 10 frequency, 11 selected frequency, 12 package.
const ImageList& HistoryImages();
