// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/controls/kit/focus_look.h"

#include <QPainter>
#include <QProxyStyle>
#include <QStyleOption>
#include <QWidget>

namespace {

class FocusAsLine : public QProxyStyle {
 public:
    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override {
        if (element != PE_FrameFocusRect) {
            QProxyStyle::drawPrimitive(element, option, painter, widget);
            return;
        }
        if ((option->state & State_Selected) != 0) {
            return;  // the selection shows the focus
        }
        painter->save();
        QPen pen(option->palette.color(QPalette::Text), 0, Qt::DotLine);
        painter->setPen(pen);
        painter->setBrush(Qt::NoBrush);
        painter->drawRect(option->rect.adjusted(0, 0, -1, -1));
        painter->restore();
    }
};

}  // namespace

void ShowFocusAsLine(QWidget& view) {
    auto* style = new FocusAsLine;
    style->setParent(&view);
    view.setStyle(style);
}
