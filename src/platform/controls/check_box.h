// A box to tick.
#pragma once

#include <QCheckBox>

class CheckBox : public QCheckBox {
    Q_OBJECT
 public:
    explicit CheckBox(QWidget* parent = nullptr);

    bool Value() const { return isChecked(); }
    void Value(bool ticked) { setChecked(ticked); }

 signals:
    // The box has been ticked or cleared, by a person or by code. Code that leaves it as it was raises
    // nothing.
    void Click();
};
