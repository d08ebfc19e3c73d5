// SPDX-License-Identifier: GPL-3.0-or-later
// A picture of a text box with a style, while the style is being chosen.
#pragma once

#include <QColor>
#include <QFont>
#include <QWidget>
#include <array>

namespace designer {

struct SampleBorder {
    Qt::PenStyle style = Qt::NoPen;
    double width = 1;  // points
    QColor colour = Qt::black;
};

struct SampleLook {
    QString text;
    QFont font;
    QColor colour = Qt::black, fill;  // a fill that is not valid is none
    Qt::Alignment alignment = Qt::AlignLeft | Qt::AlignTop;
    std::array<SampleBorder, 4> borders;  // left, right, top, bottom
};

class StyleSample : public QWidget {
    Q_OBJECT
 public:
    explicit StyleSample(QWidget* parent = nullptr);
    void Show(const SampleLook& look);
    QSize sizeHint() const override;

 protected:
    void paintEvent(QPaintEvent* event) override;

 private:
    SampleLook m_look;
};

}  // namespace designer
