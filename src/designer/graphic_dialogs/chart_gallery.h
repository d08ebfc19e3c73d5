// SPDX-License-Identifier: GPL-3.0-or-later
// The types of charts as a list of pictures, and the dialog that asks for the type of a new chart.
#pragma once

#include <QDialog>
#include <QListWidget>

#include "designer/document/document.h"
#include "designer/graphics/new_graphics.h"

class QComboBox;

namespace designer {

class ChartGallery : public QListWidget {
    Q_OBJECT
 public:
    // `isOlder`: only types that charts of 2003 and 2005 can have.
    explicit ChartGallery(bool isOlder, QWidget* parent = nullptr);
    // Shows a type as chosen; null: none.
    void SetType(const ChartType* type);
    const ChartType* Type() const;  // null: none is chosen

    QSize sizeHint() const override;
};

class NewChartDialog : public QDialog {
    Q_OBJECT
 public:
    explicit NewChartDialog(const Document& document, QWidget* parent = nullptr);
    GraphicChoice Choice() const;

 private:
    ChartGallery* m_gallery;
    QComboBox* m_set;
};

}  // namespace designer
