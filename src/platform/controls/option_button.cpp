#include "platform/controls/option_button.h"

OptionButton::OptionButton(QWidget* parent) : QRadioButton(parent) {
    connect(this, &QRadioButton::toggled, this, [this](bool ticked) {
        if (ticked) {
            emit Click();
        }
    });
}

void OptionButton::Value(bool ticked) {
    // Among options that exclude each other the ticked one cannot be cleared.
    setAutoExclusive(ticked);
    setChecked(ticked);
    setAutoExclusive(true);
}
