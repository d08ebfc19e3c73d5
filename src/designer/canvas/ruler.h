// SPDX-License-Identifier: GPL-3.0-or-later
// A ruler beside the canvas. An upright one begins again at each band.
#pragma once

#include <QWidget>
#include <vector>

namespace designer {

// Lengths on the screen in the unit of the report.
struct RulerUnit {
    double points = 72;  // of one unit
    int parts = 8;       // small steps of a unit
    const char* name = "in";
};

// Returns the unit for a size as it is written, "17cm": centimetres for all metric sizes.
RulerUnit UnitOf(const std::string& size);

class Ruler : public QWidget {
    Q_OBJECT
 public:
    explicit Ruler(Qt::Orientation orientation, QWidget* parent = nullptr);
    static int Thickness(const QWidget& widget);

    // A part of the ruler in pixels of the widget, with its zero at `begin`.
    struct Stretch {
        double begin = 0, length = 0;
    };
    // `scale` is pixels in a point.
    void Show(std::vector<Stretch> stretches, double scale, const RulerUnit& unit);
    void ShowPointer(int at);  // pixels of the widget; below 0: none

 protected:
    void paintEvent(QPaintEvent* event) override;

 private:
    void PaintStretch(QPainter& painter, const Stretch& stretch) const;

    Qt::Orientation m_orientation;
    std::vector<Stretch> m_stretches;
    double m_scale = 1;
    RulerUnit m_unit;
    int m_pointer = -1;
};

}  // namespace designer
