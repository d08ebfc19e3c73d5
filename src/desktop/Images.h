// The pictures of the Desktop windows, by the numbers that tell what an item is.
#pragma once

#include "platform/controls/items/image_list.h"

// Items and nodes of the Desktop: 1 folder, 2 report, 3 root of the tree, 4 folder of the tree, 9 package,
// 10 report of a package.
const ImageList& ItemImages();

// The toolbar's buttons by their places: 1 New Folder, 2 New Report, 3 New Package, 5 Preview, 6 Delete,
// 8 History, 9 Design, 10 Options, 11 Help.
const ImageList& ToolbarImages();

// Nodes of the history window, which counts its own way: 5 report, 7 failed run, 8 next run, 9 run that went
// well, 10 and 11 frequency and selected frequency, 12 package.
const ImageList& HistoryImages();
