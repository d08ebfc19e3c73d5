// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include "platform/qt/application.h"
#include "platform/qt/display.h"

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    FallBackToOffscreen();
    Application application(argc, argv);
    return RUN_ALL_TESTS();
}
