#pragma once
#include "platform/controls/image_list.h"
const ImageList& ItemImages();
const ImageList& ToolbarImages();
