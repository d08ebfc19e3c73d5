// SPDX-License-Identifier: GPL-3.0-or-later
#include <gmock/gmock.h>

#include "platform/controls/check_box.h"
#include "platform/controls/option_button.h"
#include "shown_form.h"

using testing::ElementsAre;
using testing::IsEmpty;

TEST(BoxToTick, RaisesAClickWhoeverChangesIt) {
    CheckBox box;
    int clicks = 0;
    QObject::connect(&box, &CheckBox::Click, [&] { ++clicks; });
    box.Value(true);
    EXPECT_EQ(clicks, 1);
    box.Value(true);
    EXPECT_EQ(clicks, 1);
    QTest::keyClick(&box, Qt::Key_Space);
    EXPECT_EQ(clicks, 2);
    EXPECT_FALSE(box.Value());
}

class Options : public testing::Test {
 protected:
    void SetUp() override {
        form.Show(&daily, &weekly, &monthly);
        for (auto* option : {&daily, &weekly, &monthly}) {
            QObject::connect(option, &OptionButton::Click,
                             [this, option] { told.push_back(option->text().toStdString()); });
        }
        daily.setText("Daily");
        weekly.setText("Weekly");
        monthly.setText("Monthly");
    }

    ShownForm form;
    OptionButton daily, weekly, monthly;
    std::vector<std::string> told;
};

TEST_F(Options, NoneIsTickedAtFirst) {
    EXPECT_FALSE(daily.Value() || weekly.Value() || monthly.Value());
    EXPECT_THAT(told, IsEmpty());
}

TEST_F(Options, OnlyTheOneThatIsTickedRaisesAClick) {
    daily.Value(true);
    QTest::mouseClick(&weekly, Qt::LeftButton, {}, QPoint(8, weekly.height() / 2));
    weekly.setFocus();
    Press(Qt::Key_Down);
    EXPECT_THAT(told, ElementsAre("Daily", "Weekly", "Monthly"));
    EXPECT_FALSE(weekly.Value());
    EXPECT_TRUE(monthly.Value());
}

TEST_F(Options, ClearedByCodeLeavesNone) {
    weekly.Value(true);
    weekly.Value(false);
    EXPECT_FALSE(daily.Value() || weekly.Value() || monthly.Value());
    EXPECT_THAT(told, ElementsAre("Weekly"));
    daily.Value(true);
    weekly.Value(true);
    EXPECT_FALSE(daily.Value());
}
