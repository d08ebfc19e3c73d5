#include "platform/controls/text_box.h"
