// One of several options, of which one at most is ticked. Those with the same parent belong together.
#pragma once

#include <QRadioButton>

class OptionButton : public QRadioButton {
    Q_OBJECT
 public:
    explicit OptionButton(QWidget* parent = nullptr);

    bool Value() const { return isChecked(); }
    // Ticking it clears the others. Clearing it leaves none ticked.
    void Value(bool ticked);

 signals:
    void Click();  // it has been ticked, by a person or by code

 private:
    void TakeTab();
};
