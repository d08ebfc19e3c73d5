// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/panes/toolbox_pane.h"

#include <QEvent>
#include <QGridLayout>
#include <QKeyEvent>
#include <QPainter>
#include <QToolButton>

namespace designer {
namespace {

constexpr int IconSize = 16, Columns = 2;

void DrawGraphic(QPainter& painter, NewItem kind, const QColor& colour) {
    switch (kind) {
        case NewItem::Chart:
            painter.drawPolyline(QPolygonF({{1.5, 2}, {1.5, 13.5}, {14.5, 13.5}}));
            painter.fillRect(QRectF(4, 8, 2.5, 5), colour);
            painter.fillRect(QRectF(7.5, 4, 2.5, 9), colour);
            painter.fillRect(QRectF(11, 6, 2.5, 7), colour);
            break;
        case NewItem::Gauge:
            painter.drawArc(QRectF(1.5, 3, 13, 13), -20 * 16, 220 * 16);
            painter.drawLine(QPointF(8, 10), QPointF(11.5, 5.5));
            painter.setBrush(colour);
            painter.drawEllipse(QPointF(8, 10), 1.2, 1.2);
            break;
        case NewItem::Indicator:
            painter.setBrush(colour);
            painter.drawPolygon(QPolygonF({{8, 2}, {13.5, 8}, {10, 8}, {10, 14}, {6, 14}, {6, 8}, {2.5, 8}}));
            break;
        case NewItem::BarCode: {
            double left = 1.5;
            for (const double width : {2.0, 1.0, 1.0, 2.5, 1.0, 1.5}) {
                painter.fillRect(QRectF(left, 3, width, 10), colour);
                left += width + 0.9;
            }
            break;
        }
        case NewItem::Subreport:
            painter.drawRect(QRectF(3.5, 1.5, 9, 13));
            painter.drawRect(QRectF(5.5, 6.5, 5, 5));
            painter.drawLine(QPointF(5.5, 4), QPointF(10.5, 4));
            break;
        default:
            break;
    }
}

void DrawTool(QPainter& painter, NewItem kind, const QColor& colour) {
    painter.setPen(QPen(colour, 1.2));
    switch (kind) {
        case NewItem::TextBox: {
            painter.drawRect(QRectF(1.5, 3.5, 13, 9));
            painter.drawLine(QPointF(5, 6), QPointF(11, 6));
            painter.drawLine(QPointF(8, 6), QPointF(8, 11));
            break;
        }
        case NewItem::Line:
            painter.drawLine(QPointF(2, 13), QPointF(14, 3));
            break;
        case NewItem::Rectangle:
            painter.drawRect(QRectF(1.5, 3.5, 13, 9));
            break;
        case NewItem::Image:
            painter.drawRect(QRectF(1.5, 2.5, 13, 11));
            painter.drawPolyline(QPolygonF({{2, 12}, {6, 7}, {9, 10}, {11, 8}, {14, 11}}));
            painter.drawEllipse(QPointF(11, 5.5), 1.2, 1.2);
            break;
        case NewItem::Table:
        case NewItem::Matrix:
            painter.drawRect(QRectF(1.5, 2.5, 13, 11));
            painter.drawLine(QPointF(1.5, 6), QPointF(14.5, 6));
            painter.drawLine(QPointF(6, 2.5), QPointF(6, 13.5));
            if (kind == NewItem::Table) {
                painter.drawLine(QPointF(1.5, 9.7), QPointF(14.5, 9.7));
                painter.drawLine(QPointF(10.2, 2.5), QPointF(10.2, 13.5));
            } else {
                painter.fillRect(QRectF(1.5, 2.5, 4.5, 3.5), colour);
            }
            break;
        case NewItem::List:
            painter.drawRect(QRectF(1.5, 2.5, 13, 4.5));
            painter.drawRect(QRectF(1.5, 9, 13, 4.5));
            break;
        default:
            DrawGraphic(painter, kind, colour);
            break;
    }
}

}  // namespace

std::vector<ToolText> Tools() {
    return {{NewItem::TextBox, ToolboxPane::tr("Text Box")},
            {NewItem::Line, ToolboxPane::tr("Line")},
            {NewItem::Rectangle, ToolboxPane::tr("Rectangle")},
            {NewItem::Image, ToolboxPane::tr("Image")},
            {NewItem::Table, ToolboxPane::tr("Table")},
            {NewItem::Matrix, ToolboxPane::tr("Matrix")},
            {NewItem::List, ToolboxPane::tr("List")},
            {NewItem::Chart, ToolboxPane::tr("Chart")},
            {NewItem::Gauge, ToolboxPane::tr("Gauge")},
            {NewItem::Indicator, ToolboxPane::tr("Indicator")},
            {NewItem::BarCode, ToolboxPane::tr("Bar Code")},
            {NewItem::Subreport, ToolboxPane::tr("Subreport")}};
}

QIcon ToolIcon(NewItem kind, const QPalette& palette) {
    QIcon icon;
    for (const int scale : {1, 2}) {
        QPixmap picture(IconSize * scale, IconSize * scale);
        picture.setDevicePixelRatio(scale);
        picture.fill(Qt::transparent);
        QPainter painter(&picture);
        painter.setRenderHint(QPainter::Antialiasing);
        DrawTool(painter, kind, palette.color(QPalette::ButtonText));
        painter.end();
        icon.addPixmap(picture);
    }
    return icon;
}

ToolboxPane::ToolboxPane(QWidget* parent) : QWidget(parent) {
    setObjectName("toolbox");
    auto* layout = new QGridLayout(this);
    layout->setContentsMargins(4, 4, 4, 4);
    layout->setSpacing(2);
    for (const ToolText& tool : Tools()) {
        auto* button = new QToolButton(this);
        button->setObjectName("tool" + tool.name.simplified().remove(' '));
        button->setText(tool.name);
        button->setAccessibleName(tr("Draw: %1").arg(tool.name));
        button->setToolTip(
            tr("%1: click, then draw a rectangle on the page; Enter inserts one").arg(tool.name));
        button->setIcon(ToolIcon(tool.kind, palette()));
        button->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
        button->setCheckable(true);
        button->setAutoRaise(true);
        button->setFocusPolicy(Qt::StrongFocus);
        button->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
        button->installEventFilter(this);
        connect(button, &QToolButton::clicked, this, [this, kind = tool.kind](bool checked) {
            ShowTool(checked ? std::optional(kind) : std::nullopt);
            emit ToolPicked(checked ? std::optional(kind) : std::nullopt);
        });
        const int number = static_cast<int>(m_buttons.size());
        layout->addWidget(button, number / Columns, number % Columns);
        m_buttons.push_back(button);
    }
    layout->setRowStretch(layout->rowCount(), 1);
}

void ToolboxPane::ShowTool(std::optional<NewItem> tool) {
    const auto tools = Tools();
    for (std::size_t index = 0; index < m_buttons.size(); ++index) {
        m_buttons[index]->setChecked(tools[index].kind == tool);
    }
}

bool ToolboxPane::eventFilter(QObject* watched, QEvent* event) {
    const auto found = std::find(m_buttons.begin(), m_buttons.end(), watched);
    const bool isEnter =
        event->type() == QEvent::KeyPress && (static_cast<QKeyEvent*>(event)->key() == Qt::Key_Return ||
                                              static_cast<QKeyEvent*>(event)->key() == Qt::Key_Enter);
    if (found != m_buttons.end() && (isEnter || event->type() == QEvent::MouseButtonDblClick)) {
        emit InsertRequested(Tools()[static_cast<std::size_t>(found - m_buttons.begin())].kind);
        return true;
    }
    return QWidget::eventFilter(watched, event);
}

void ToolboxPane::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) {
        const auto tools = Tools();
        for (std::size_t index = 0; index < m_buttons.size(); ++index) {
            m_buttons[index]->setIcon(ToolIcon(tools[index].kind, palette()));
        }
    }
}

}  // namespace designer
